// Starts the database server and stops it when the last client is gone.
// Usage: morvane-server-keeper CLIENTS_LOCK SERVER [ARGUMENTS...]; descriptor 3 is the lock that says "a server runs".

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace {

constexpr unsigned stopLimitSeconds = 60;

pid_t startServer(char** argv) {
    const pid_t keeper = getpid();
    const pid_t child = fork();
    if (child != 0) return child;
    prctl(PR_SET_PDEATHSIG, SIGTERM);  // a killed keeper takes the server along
    if (getppid() != keeper) _exit(1);
    execv(argv[0], argv);
    _exit(127);
}

// Clients hold the lock shared: it is granted here when there is none left, whatever ended them. It stays held until
// this process ends, so that a new client waits until the server is down.
void stopWhenAlone(const char* lockFile, pid_t serverProcess) {
    const int lock = open(lockFile, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    while (lock >= 0 && flock(lock, LOCK_EX) != 0 && errno == EINTR) {
    }
    kill(serverProcess, SIGTERM);
    sleep(stopLimitSeconds);
    kill(serverProcess, SIGKILL);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    signal(SIGHUP, SIG_IGN);
    const pid_t serverProcess = startServer(argv + 2);
    if (serverProcess < 0) return 1;
    std::thread(stopWhenAlone, argv[1], serverProcess).detach();
    while (waitpid(serverProcess, nullptr, 0) < 0 && errno == EINTR) {
    }
    _exit(0);
}
