#include "engines/network/Threads.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <thread>
#include <vector>

namespace engines {

int processors() { return std::max(1, static_cast<int>(std::thread::hardware_concurrency())); }

void inParallel(int count, const std::function<void(int)>& work, int threads) {
    std::vector<std::exception_ptr> failures(static_cast<std::size_t>(std::max(count, 0)));
    std::atomic<int> next{0};
    const auto takeTurns = [&] {
        for (int i = next++; i < count; i = next++) {
            try {
                work(i);
            } catch (...) {
                failures[static_cast<std::size_t>(i)] = std::current_exception();
            }
        }
    };
    std::vector<std::jthread> others;
    for (int t = std::min(threads > 0 ? threads : processors(), count); t > 1; --t) others.emplace_back(takeTurns);
    takeTurns();
    others.clear();
    for (const std::exception_ptr& failure : failures)
        if (failure) std::rethrow_exception(failure);
}

}  // namespace engines
