#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QToolButton;

/// What a run does: how far it is, what it calculates, how long it takes, and what the program says. Draws some times a
/// second however often it is told something.
class RunProgress : public QWidget {
    Q_OBJECT
  public:
    explicit RunProgress(QWidget* parent);

    /// Starts the clock. \param expects  the time left can be told from the steps done
    void begin(const QString& what, bool expects);
    void setSteps(int done, int total);
    /// A program starts on this. A sign of life, as is a message.
    void setStep(const QString& what);
    void addMessage(const QString& line, bool warning);
    /// The run waits for the user.
    void pause(const QString& what);
    /// \param whole  all steps are done
    void end(const QString& outcome, bool whole);
    /// A line while nothing runs.
    void say(const QString& text);

    /// After how long without a sign of life the user is told that the program still runs.
    void setPatience(int milliseconds) { patience_ = milliseconds; }
    [[nodiscard]] int warnings() const { return warnings_; }

  signals:
    void beat();  ///< some times a second while a run is under way

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void layOut();
    void draw();
    void showTime();
    void showSilence();
    void showMessages();

    QProgressBar* progressBar_Run;
    QLabel* label_Step;
    QLabel* label_Time;
    QLabel* label_Silence;
    QToolButton* toolButton_Messages;
    QPlainTextEdit* textEdit_Messages;

    QTimer clock_;
    QElapsedTimer run_, sign_;
    QString step_;
    QStringList unshown_;
    int done_ = 0, total_ = 0, messages_ = 0, warnings_ = 0, patience_ = 10000;
    bool expects_ = false, working_ = false;
};
