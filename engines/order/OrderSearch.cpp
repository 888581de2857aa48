#include "engines/order/OrderSearch.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace engines {

namespace {

constexpr double kStart = 0.6;
constexpr double kEnd = 0.08;
constexpr int kTemperatures = 120;
constexpr std::size_t kMostConflicts = 12;
constexpr std::int64_t kLast = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kEndStride = std::int64_t{1} << 32;  // at the ends of the list halving would use up the labels

std::size_t at(int vertex) { return static_cast<std::size_t>(vertex); }

}  // namespace

OrderSearch::OrderSearch(const Digraph& out, const Digraph& in, const std::vector<int>& set)
    : out_(out),
      in_(in),
      head_(static_cast<int>(out.size())),
      next_(out.size() + 1, head_),
      previous_(out.size() + 1, head_),
      label_(out.size() + 1, kOutside),
      placeInExcluded_(out.size(), -1),
      best_(set) {
    placeAll(set);
}

void OrderSearch::placeAll(const std::vector<int>& set) {
    std::vector<bool> inSet(out_.size());
    for (const int v : set) {
        inSet[at(v)] = true;
        exclude(v);
    }
    label_[at(head_)] = 0;
    for (const int v : topologicalOrder(inSet)) {
        const int last = previous_[at(head_)];
        next_[at(last)] = previous_[at(head_)] = v;
        previous_[at(v)] = last;
        next_[at(v)] = head_;
    }
    relabel();
}

std::vector<int> OrderSearch::topologicalOrder(const std::vector<bool>& without) const {
    std::vector<int> waitingFor(out_.size()), order;
    for (int v = 0; v < head_; ++v) {
        for (const int u : in_[at(v)]) waitingFor[at(v)] += without[at(u)] ? 0 : 1;
        if (!without[at(v)] && waitingFor[at(v)] == 0) order.push_back(v);
    }
    for (std::size_t i = 0; i < order.size(); ++i)
        for (const int w : out_[at(order[i])])
            if (!without[at(w)] && --waitingFor[at(w)] == 0) order.push_back(w);
    return order;
}

void OrderSearch::relabel() {
    const std::int64_t gap = kLast / static_cast<std::int64_t>(out_.size() + 2);
    std::int64_t label = 0;
    for (int v = next_[at(head_)]; v != head_; v = next_[at(v)]) label_[at(v)] = label += gap;
}

/// A label between two neighbours; not above that of `before` when there is none left.
std::int64_t OrderSearch::labelBetween(int before, int behind) const {
    const std::int64_t low = label_[at(before)];
    const std::int64_t high = behind == head_ ? kLast : label_[at(behind)];
    const std::int64_t half = (high - low) / 2;
    if (behind == head_) return low + std::min(half, kEndStride);
    return before == head_ ? high - std::max<std::int64_t>(std::min(half, kEndStride), 1) : low + half;
}

void OrderSearch::insertAfter(int before, int vertex) {
    const int behind = next_[at(before)];
    if (labelBetween(before, behind) <= label_[at(before)]) relabel();
    label_[at(vertex)] = labelBetween(before, behind);
    next_[at(before)] = previous_[at(behind)] = vertex;
    previous_[at(vertex)] = before;
    next_[at(vertex)] = behind;
}

void OrderSearch::unlink(int vertex) {
    next_[at(previous_[at(vertex)])] = next_[at(vertex)];
    previous_[at(next_[at(vertex)])] = previous_[at(vertex)];
    label_[at(vertex)] = kOutside;
}

void OrderSearch::exclude(int vertex) {
    placeInExcluded_[at(vertex)] = static_cast<int>(excluded_.size());
    excluded_.push_back(vertex);
}

void OrderSearch::include(int vertex) {
    const int place = placeInExcluded_[at(vertex)];
    excluded_[at(place)] = excluded_.back();
    placeInExcluded_[at(excluded_.back())] = place;
    excluded_.pop_back();
}

int OrderSearch::lastBefore(int vertex) const {
    int last = head_;
    for (const int u : in_[at(vertex)])
        if (label_[at(u)] > label_[at(last)]) last = u;
    return last;
}

int OrderSearch::firstBehind(int vertex) const {
    int first = head_;
    for (const int w : out_[at(vertex)])
        if (placed(w) && (first == head_ || label_[at(w)] < label_[at(first)])) first = w;
    return first;
}

bool OrderSearch::accepted(std::size_t conflicts) {
    if (conflicts <= 1) return true;
    return conflicts - 1 < limit_.size() && random_() < limit_[conflicts - 1];
}

int OrderSearch::placeBehindPredecessors(int vertex) {
    const int before = lastBefore(vertex);
    for (const int w : out_[at(vertex)])
        if (placed(w) && label_[at(w)] <= label_[at(before)]) conflicts_.push_back(w);
    return before;
}

int OrderSearch::placeBeforeSuccessors(int vertex) {
    const int first = firstBehind(vertex);
    for (const int u : in_[at(vertex)])
        if (first != head_ && label_[at(u)] >= label_[at(first)]) conflicts_.push_back(u);
    return previous_[at(first)];
}

void OrderSearch::step() {
    const std::uint64_t draw = random_();
    const int vertex = excluded_[(draw >> 1) % excluded_.size()];
    conflicts_.clear();
    const int before = draw & 1 ? placeBehindPredecessors(vertex) : placeBeforeSuccessors(vertex);
    if (!accepted(conflicts_.size())) return;
    insertAfter(before, vertex);
    include(vertex);
    for (const int other : conflicts_) {
        unlink(other);
        exclude(other);
    }
}

void OrderSearch::coolTo(double temperature) {
    limit_.assign(1, 0);
    for (std::size_t more = 1; more <= kMostConflicts; ++more)
        limit_.push_back(
            static_cast<std::uint64_t>(std::ldexp(std::exp(-static_cast<double>(more) / temperature), 63)) * 2);
}

std::vector<int> OrderSearch::run(std::size_t moves) {
    for (int i = 0; i < kTemperatures; ++i) {
        coolTo(kStart * std::pow(kEnd / kStart, static_cast<double>(i) / (kTemperatures - 1)));
        for (std::size_t move = 0; move < moves / kTemperatures && !excluded_.empty(); ++move) {
            step();
            if (excluded_.size() < best_.size()) best_ = excluded_;
        }
    }
    return best_;
}

}  // namespace engines
