#include "exchange/NumberIndex.h"

#include <algorithm>
#include <cstdint>

namespace exchange {

namespace {

using Entries = std::vector<std::pair<int, int>>;

/// A table may be this many times as long as there are numbers.
constexpr std::int64_t kSpread = 8;
constexpr std::int64_t kAlwaysTable = 1024;

std::vector<int> distinctNumbers(const Entries& entries) {
    std::vector<int> numbers;
    for (const auto& entry : entries) numbers.push_back(entry.first);
    std::ranges::sort(numbers);
    const auto rest = std::ranges::unique(numbers);
    numbers.erase(rest.begin(), rest.end());
    return numbers;
}

}  // namespace

NumberIndex::NumberIndex(const Entries& entries) {
    if (entries.empty()) return;
    const auto [low, high] = std::ranges::minmax_element(entries, {}, &std::pair<int, int>::first);
    const std::int64_t range = std::int64_t{high->first} - low->first + 1;
    lowest_ = low->first;
    slots_ = static_cast<std::size_t>(range);
    if (range > kAlwaysTable + kSpread * static_cast<std::int64_t>(entries.size())) {
        numbers_ = distinctNumbers(entries);
        slots_ = numbers_.size();
    }
    starts_.resize(slots_ + 1);
    rows_.resize(entries.size());
    for (const auto& entry : entries) ++starts_[slot(entry.first) + 1];
    for (std::size_t s = 0; s < slots_; ++s) starts_[s + 1] += starts_[s];
    std::vector<int> next(starts_.begin(), starts_.end() - 1);
    for (const auto& [number, row] : entries) rows_[static_cast<std::size_t>(next[slot(number)]++)] = row;
}

/// `slots_` when the number is not there.
std::size_t NumberIndex::slot(int number) const {
    if (numbers_.empty()) {
        const std::int64_t place = std::int64_t{number} - lowest_;
        return place < 0 || place >= static_cast<std::int64_t>(slots_) ? slots_ : static_cast<std::size_t>(place);
    }
    const auto found = std::ranges::lower_bound(numbers_, number);
    return found == numbers_.end() || *found != number ? slots_ : static_cast<std::size_t>(found - numbers_.begin());
}

std::span<const int> NumberIndex::at(int number) const {
    const std::size_t s = slot(number);
    if (s == slots_) return {};
    const auto first = static_cast<std::size_t>(starts_[s]);
    return std::span(rows_).subspan(first, static_cast<std::size_t>(starts_[s + 1]) - first);
}

int NumberIndex::first(int number) const {
    const auto rows = at(number);
    return rows.empty() ? -1 : rows.front();
}

}  // namespace exchange
