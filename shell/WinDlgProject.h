#pragma once

#include <QDialog>
#include <functional>

#include "shell/ProjectJob.h"

class QCheckBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QStackedWidget;

namespace shell {

class ImportReportPage;
class Settings;

/// Makes a project, brings a network into one, or copies one: asks for what is missing, shows the progress, and then
/// the report of the import.
class WinDlgProject : public QDialog {
    Q_OBJECT
  public:
    /// \param beforeStore  called when the databases are about to be written: no project may be open then
    WinDlgProject(const ProjectJob::Wish& wish, Settings& settings, std::function<void()> beforeStore,
                  QWidget* parent = nullptr);

    /// Starts at once with the wish as given, and ends by itself when all went well.
    void startAtOnce();
    [[nodiscard]] QString projectName() const;

  public slots:
    void accept() override;
    void reject() override;

  private:
    void makeForm();
    void makeProgress();
    void addSource(QFormLayout& form);
    QString captionOf(ProjectJob::Wish::Kind kind) const;
    void chooseFile();
    void chooseFolder();
    void check();
    QString whyNotName() const;
    QString kindOfSource(bool* usable) const;
    void start();
    void networkRead(ProjectJob::Outcome outcome);
    void stored(ProjectJob::Outcome outcome);
    void backToForm(ProjectJob::Outcome outcome);

    ProjectJob::Wish wish_;
    Settings& settings_;
    std::function<void()> beforeStore_;
    ProjectJob job_;
    bool atOnce_ = false;
    bool done_ = false;

    QStackedWidget* pages_ = nullptr;
    QLineEdit *lineEdit_Name = nullptr, *lineEdit_Source = nullptr;
    QLabel *textLabel_Name = nullptr, *textLabel_Kind = nullptr, *textLabel_Reason = nullptr;
    QLabel* textLabel_Step = nullptr;
    QCheckBox *checkBox_Shorten = nullptr, *checkBox_Defaults = nullptr;
    QProgressBar* progressBar = nullptr;
    ImportReportPage* report_ = nullptr;
    QPushButton *pushButton_Ensure = nullptr, *pushButton_Cancel = nullptr;
};

}  // namespace shell
