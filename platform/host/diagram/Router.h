#pragma once

#include "platform/host/diagram/Attachments.h"

namespace diagram {

/// Finds right-angled ways for lines between stations, past symbols and bars, with few bends and crossings.
class Router {
  public:
    /// \param drawing  everything but the lines, with the frames
    /// \param ends  the attachments of all lines: each gets a column and a row of its own
    Router(const Drawing& drawing, const std::vector<Attachment>& ends);

    /// A way from one end to the other; later ways keep clear of it. Empty when there is none.
    QPolygonF route(const Attachment& from, const Attachment& to);

    /// More is not worth the time: straight lines serve.
    static bool isWorthwhile(const Drawing& drawing, std::size_t lines);

  private:
    enum Way { Right, Down, Left, Up, wayCount };
    struct Cell {
        float right = 0, down = 0;  ///< cost of the edge to the next column and row, besides its length
    };
    struct Step {
        float estimate = 0;
        int state = 0;
        bool operator<(const Step& other) const { return estimate > other.estimate; }
    };

    [[nodiscard]] int columns() const { return static_cast<int>(xs_.size()); }
    [[nodiscard]] int rows() const { return static_cast<int>(ys_.size()); }
    [[nodiscard]] Cell& cell(int x, int y) { return cells_[static_cast<std::size_t>(y) * xs_.size() + x]; }
    void occupy(const QPointF& a, const QPointF& b, float along, float across);
    void occupy(const QRectF& box, float perUnit);
    [[nodiscard]] float edgeCost(int x, int y, Way way);
    [[nodiscard]] std::vector<int> search(const Attachment& from, const Attachment& to);
    [[nodiscard]] int nodeAt(const QPointF& point) const;
    [[nodiscard]] QPointF pointOf(int node) const;
    static int wayOf(const QPointF& leaves);

    std::vector<double> xs_, ys_;
    std::vector<Cell> cells_;
    std::vector<float> best_;  ///< by state: node times wayCount plus way
    std::vector<int> before_;
};

}  // namespace diagram
