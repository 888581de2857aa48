#pragma once

#include <QByteArray>
#include <QObject>
#include <QProcess>
#include <QString>
#include <functional>

/// One of the external programs. Started without an argument in the working directory; what it writes on standard
/// error goes to the dock line by line.
class EngineProcess : public QObject {
    Q_OBJECT

  public:
    enum class Outcome {
        None,  ///< never started
        Running,
        Done,        ///< ended by itself with status 0
        Failed,      ///< ended by itself with another status
        Crashed,     ///< ended by a signal that was not ours
        Aborted,     ///< ended by abort()
        NotStarted,  ///< could not be started
    };

    /// \param program       file name of the program
    /// \param failureLevel  level of the message when it cannot be started
    explicit EngineProcess(const char* program, int failureLevel);
    ~EngineProcess() override;

    /// Starts the program and returns; processExited() comes later, from the event loop, also when this gives false.
    /// \param exeDir, workDir  directories, each ending in a slash
    /// \return false when it cannot be started or is still running (the latter raises no signal); the dock then says so
    bool start(const QString& exeDir, const QString& workDir);
    /// Ends a program that runs, hanging or not; processExited() follows.
    void abort();
    /// Offers every line of standard error to a reader first; what it takes (true) does not go to the dock.
    void setLineReader(std::function<bool(const QString&)> reader) { reader_ = std::move(reader); }

    [[nodiscard]] bool isRunning() const { return outcome_ == Outcome::Running; }
    /// How the last run ended: its result files are to be read only after Done.
    [[nodiscard]] Outcome outcome() const { return outcome_; }

  signals:
    void processExited();

  private:
    void showLine(const QByteArray& line);
    void showLines(bool rest);
    void onFinished(int status, QProcess::ExitStatus how);

    QString program_;
    int failureLevel_;
    QProcess process_;
    QByteArray errors_;
    std::function<bool(const QString&)> reader_;
    Outcome outcome_ = Outcome::None;
    bool aborting_ = false;
};
