#pragma once

#include <QProcess>

/// A second run of the test program that opens a session on the project "P", changes a table and waits to be killed.
class KilledSession {
  public:
    static bool isAsked() { return qEnvironmentVariableIsSet(variable); }
    static int waitToBeKilled();

    /// \return whether the session is open and the table changed
    bool start();
    void kill();

  private:
    static constexpr const char* variable = "MORVANE_TEST_OPENS_SESSION";
    QProcess process_;
};
