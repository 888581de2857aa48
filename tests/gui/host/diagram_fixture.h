#pragma once

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>

#include "platform/host/diagram/Blocks.h"
#include "platform/host/diagram/DiagramLayout.h"
#include "platform/host/diagram/DiagramView.h"
#include "platform/host/diagram/ElementText.h"
#include "platform/import/Import.h"

namespace diagram_test {

inline host::NetworkModel demonstration() {
    import::Report report;
    return import::read(MORVANE_SOURCE_DIR "/data/networks/demo", {}, report);
}

inline std::filesystem::path shared(const std::string& name) {
    const QByteArray place = qgetenv("MORVANE_SHARED_NETWORKS");
    return std::filesystem::path(place.isEmpty() ? MORVANE_SHARED_NETWORKS : place.toStdString()) / name;
}

/// A network with its drawing, as the view makes it.
struct Drawn {
    explicit Drawn(host::NetworkModel network) : model(std::move(network)), index(model) {
        const diagram::Plan plan = diagram::hasNodePlaces(model) ? diagram::planByPlaces(model, index) : laidOut();
        drawing = diagram::wire(model, index, plan);
        diagram::placeCaptions(model, index, drawing);
    }

    const diagram::Figure& figure(diagram::Kind kind, const QString& name) const {
        static const diagram::Figure none;
        for (const diagram::Figure& f : drawing.figures)
            if (f.kind == kind && diagram::nameOf(model, index, f) == name) return f;
        ADD_FAILURE() << "not drawn: " << name.toStdString();
        return none;
    }

    CHandleGraphInfo infoAt(const QPointF& point) const {
        const diagram::Hit hit = diagram::hitAt(drawing, point, 4);
        return hit.figure < 0 ? CHandleGraphInfo{} : diagram::infoOf(model, index, drawing.figures[hit.figure], hit);
    }

    host::NetworkModel model;
    diagram::NetworkIndex index;
    diagram::Drawing drawing;

  private:
    diagram::Plan laidOut() const {
        const diagram::Blocks blocks = diagram::arrangeBlocks(model, index);
        DiagramLayout layout;
        std::vector<QPointF> middles;
        QObject::connect(&layout, &DiagramLayout::finished, &layout,
                         [&](const std::vector<QPointF>& places, const QString& sentence) {
                             middles = places;
                             EXPECT_TRUE(sentence.isEmpty()) << sentence.toStdString();
                         });
        layout.start(blocks);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !layout.isRunning(); }, 60000));
        return diagram::placeBlocks(model, index, blocks, middles);
    }
};

/// Two stations of two voltages without coordinates; every kind of element once.
inline host::NetworkModel smallNetwork() {
    host::NetworkModel m;
    m.name = "小网";
    const auto node = [&](const std::string& name, double kv, const std::string& station) {
        host::Node n;
        n.name = n.bus = name, n.baseKv = kv, n.station = station, n.physicalBus = true;
        m.nodes.push_back(n);
    };
    node("甲220", 220, "甲站"), node("甲110", 110, "甲站"), node("甲10", 10, "甲站");
    node("乙110", 110, "乙站"), node("乙10", 10, "乙站");
    m.stations = {{"甲站"}, {"乙站"}};
    m.lines.resize(2);
    m.lines[0].name = "甲乙一线", m.lines[1].name = "甲乙二线";
    for (auto& l : m.lines) l.i = "甲110", l.j = "乙110";
    m.transformers2.resize(1);
    m.transformers2[0].name = "乙主变", m.transformers2[0].i.node = "乙110", m.transformers2[0].j.node = "乙10";
    m.transformers3.resize(1);
    m.transformers3[0].name = "甲主变", m.transformers3[0].star = "甲中性点";
    const char* windings[] = {"甲220", "甲110", "甲10"};
    for (int w = 0; w < 3; ++w) m.transformers3[0].winding[w].node = windings[w];
    m.generators.resize(1);
    m.generators[0].name = "甲机", m.generators[0].node = "甲220";
    m.loads = {{"乙荷", "乙10", 5, 1, true}};
    m.shunts.resize(2);
    m.shunts[0].name = "乙容", m.shunts[0].node = "乙10", m.shunts[0].x1 = -9;
    m.shunts[1].name = "甲抗", m.shunts[1].node = "甲220", m.shunts[1].x1 = 9;
    return m;
}

}  // namespace diagram_test
