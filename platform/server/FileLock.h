#pragma once

#include <QString>

namespace server {

/// A lock on a file between processes, given up when the object or the process ends, however it ends.
class FileLock {
  public:
    enum class Mode { Shared, Exclusive };

    FileLock() = default;
    ~FileLock();
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;

    /// Waits for the lock. The file is created when absent. \return not held() when the file cannot be opened
    static FileLock wait(const QString& path, Mode mode);
    /// \return not held() when another process holds it
    static FileLock tryExclusive(const QString& path);

    [[nodiscard]] bool held() const { return descriptor_ >= 0; }
    /// For handing the lock on to a started process: it then lives as long as that one.
    [[nodiscard]] int descriptor() const { return descriptor_; }

  private:
    static FileLock take(const QString& path, int operation);
    int descriptor_ = -1;
};

}  // namespace server
