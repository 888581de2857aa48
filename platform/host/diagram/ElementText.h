#pragma once

#include <QCoreApplication>

#include "platform/host/diagram/Drawing.h"
#include "platform/host/diagram/NetworkIndex.h"
#include "platform/host/ui/CHandleGraph.h"

namespace diagram {

/// What the diagram says about an element.
class ElementText {
    Q_DECLARE_TR_FUNCTIONS(DiagramView)
  public:
    ElementText(const host::NetworkModel& model, const NetworkIndex& index) : model_(model), index_(index) {}

    /// Kind and name in one line.
    [[nodiscard]] QString title(const Figure& figure) const;
    /// Rows of name and value: nodes, voltages, impedances, ratings, state.
    [[nodiscard]] QStringList rows(const Figure& figure) const;
    /// Title and rows as rich text, names escaped.
    [[nodiscard]] QString toolTip(const Figure& figure) const;

  private:
    [[nodiscard]] QString kindName(const Figure& figure) const;
    [[nodiscard]] QStringList node(const host::Node& node, bool group) const;
    [[nodiscard]] QStringList line(const host::Line& line) const;
    [[nodiscard]] QStringList transformer2(const host::Transformer2& transformer) const;
    [[nodiscard]] QStringList transformer3(const host::Transformer3& transformer) const;
    [[nodiscard]] QStringList generator(const host::Generator& generator) const;
    [[nodiscard]] QStringList shunt(const host::Shunt& shunt) const;
    [[nodiscard]] QStringList load(const host::Load& load) const;
    [[nodiscard]] QStringList winding(const host::Winding& winding) const;
    [[nodiscard]] QString baseKv(const std::string& node) const;

    const host::NetworkModel& model_;
    const NetworkIndex& index_;
};

/// The element's name in the base network; of a bar that stands for a group the diagram bus.
QString nameOf(const host::NetworkModel& model, const NetworkIndex& index, const Figure& figure);
/// What a handler is told about a gesture there. A load or a disconnector is none of the elements it knows: no name.
CHandleGraphInfo infoOf(const host::NetworkModel& model, const NetworkIndex& index, const Figure& figure,
                        const Hit& hit);

}  // namespace diagram
