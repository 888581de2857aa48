#pragma once

#include <array>
#include <map>

#include "platform/host/diagram/Plan.h"

namespace diagram {

/// Where an end of an element touches its node.
struct Attachment {
    QPointF point;
    QPointF from;    ///< the node itself where the element stands beside it, else the point
    QPointF leaves;  ///< (0, -1) upwards, (0, 1) downwards, (0, 0) in any direction
    bool onBar = false;
};

/// Gives each end of each element a place of its own on its bar, so that connections cross as little as possible.
class Attachments {
  public:
    Attachments(const host::NetworkModel& model, const NetworkIndex& index, const Plan& plan);

    /// Null when a node of the element is missing.
    [[nodiscard]] const Attachment* at(Kind kind, int index, int end) const;
    /// The bar with all that is connected to it.
    [[nodiscard]] const BarSpan& span(int bar) const { return spans_[bar]; }

  private:
    enum Side { Above, Below };      ///< of an upright bar left and right
    using Key = std::array<int, 3>;  ///< kind, position, end
    struct Request {
        Key key;
        double along = 0;  ///< where the other end lies in the bar's direction
        double rise = 0;   ///< how far it lies above, or to the left of an upright bar
    };

    [[nodiscard]] int carrier(const std::string& node) const;
    [[nodiscard]] QPointF middle(int node) const;
    [[nodiscard]] double along(int bar, const QPointF& point) const;
    [[nodiscard]] double across(int bar, const QPointF& point) const;
    [[nodiscard]] Side sideOf(int bar, const QPointF& point) const;
    void giveNear(const Key& key, int bar, Side side, double along);
    void pairAligned(const Key& first, const Key& second, int a, int b);
    void transformer3(int number);
    void balance(int bar, std::array<std::vector<Request>, 2>& sides);
    void give(const Key& key, int node, double x, Side side);
    void giveAtPoint(const Key& key, int node);
    [[nodiscard]] QPointF pointLeaves(int node) const;
    void bays();
    void bay(int point, const std::vector<int>& switches);
    void switches();
    void transformers();
    void pair(const Key& first, const Key& second, int a, int b);
    void lines();
    void lineEnd(int line, int end, int node, const QPointF& other);
    void hangings();
    void hanging(Kind kind, int index, const std::string& node);
    void serve();
    void serveSide(int bar, Side side, std::vector<Request>& requests);
    [[nodiscard]] bool isFree(int bar, Side side, double x, double room = pitch) const;
    [[nodiscard]] double freeNear(int bar, Side side, double x) const;

    const host::NetworkModel& model_;
    const NetworkIndex& index_;
    const Plan& plan_;
    std::vector<BarSpan> spans_;
    std::vector<std::array<std::vector<double>, 2>> used_;  ///< places taken above and below each bar
    std::map<Key, Attachment> given_;
    std::map<int, std::array<std::vector<Request>, 2>> requests_;
    std::map<int, int> atPoint_;
};

}  // namespace diagram
