#pragma once

#include <atomic>
#include <functional>
#include <thread>

/// Work shared out to threads. What is computed never depends on how many there are: each piece is computed by one
/// thread alone, and the pieces are put together in their order.
namespace engines {

/// Threads that this machine runs at once, at least 1.
int processors();

/// Calls work(0) to work(count - 1), each once, in any order and on several threads. Of the exceptions that are thrown
/// the one of the smallest number is passed on.
/// \param threads  at most so many; 0: as many as there are processors
void inParallel(int count, const std::function<void(int)>& work, int threads = 0);

/// A lock that is held for moments only: who waits looks again instead of being put to sleep and woken.
class BriefLock {
  public:
    void lock() {
        constexpr int kLooks = 100;
        for (int look = 0; taken_.test_and_set(std::memory_order_acquire); ++look)
            if (look > kLooks) std::this_thread::yield();
    }
    void unlock() { taken_.clear(std::memory_order_release); }

  private:
    std::atomic_flag taken_;
};

}  // namespace engines
