#pragma once

#include <QSizeF>

#include "platform/host/diagram/Yard.h"

namespace diagram {

/// The yards of a block as trees: the highest voltage on top, below each yard those that its transformers lead to.
class YardTree {
  public:
    YardTree(const host::NetworkModel& model, const NetworkIndex& index, const Load& load,
             const std::vector<int>& nodes, Plan& plan);

    /// Gives the nodes their places, x around 0, y from 0 downwards. \return the extent
    QSizeF arrange();
    /// Rows of yards.
    [[nodiscard]] int depth() const { return static_cast<int>(rows_.size()); }

  private:
    struct Branch {
        int row = -1;
        std::vector<int> below;  ///< yards, from left to right
        double width = 0;        ///< with everything below it
        double middle = 0;
    };
    struct Row {
        double above = 0, below = 0, y = 0;
    };

    void connect(const host::NetworkModel& model);
    void grow();
    double measure(int yard);
    void place(int yard, double left);
    void move(int yard);

    const NetworkIndex& index_;
    const Load& load_;
    Plan& plan_;
    std::vector<Yard> yards_;
    std::vector<std::vector<int>> joined_;  ///< yards that transformers join with each
    std::vector<Branch> branches_;
    std::vector<int> roots_;
    std::vector<Row> rows_;
};

}  // namespace diagram
