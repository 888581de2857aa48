#include "platform/server/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <utility>

namespace server {

FileLock::~FileLock() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

FileLock::FileLock(FileLock&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

FileLock FileLock::take(const QString& path, int operation) {
    FileLock lock;
    lock.descriptor_ = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (lock.descriptor_ < 0) return lock;
    int result = 0;
    do result = ::flock(lock.descriptor_, operation);
    while (result != 0 && errno == EINTR);
    return result == 0 ? std::move(lock) : FileLock();
}

FileLock FileLock::wait(const QString& path, Mode mode) { return take(path, mode == Mode::Shared ? LOCK_SH : LOCK_EX); }

FileLock FileLock::tryExclusive(const QString& path) { return take(path, LOCK_EX | LOCK_NB); }

}  // namespace server
