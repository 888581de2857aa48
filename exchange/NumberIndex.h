#pragma once

#include <span>
#include <utility>
#include <vector>

namespace exchange {

/// Which rows carry a number: built once, then every look-up is local. Numbers that lie close together are places of a
/// table, others are found by bisection.
class NumberIndex {
  public:
    NumberIndex() = default;
    /// \param entries  number and row; the rows of one number keep their order
    explicit NumberIndex(const std::vector<std::pair<int, int>>& entries);

    [[nodiscard]] std::span<const int> at(int number) const;
    /// The first row with the number; -1 when there is none.
    [[nodiscard]] int first(int number) const;

  private:
    [[nodiscard]] std::size_t slot(int number) const;

    int lowest_ = 0;
    std::size_t slots_ = 0;
    std::vector<int> numbers_;  // by slot; empty when the slot is the number less the lowest one
    std::vector<int> starts_;   // by slot and one more
    std::vector<int> rows_;
};

}  // namespace exchange
