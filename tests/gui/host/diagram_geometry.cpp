#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <set>

#include "tests/gui/host/diagram_fixture.h"

using diagram::Figure;
using diagram::Kind;
using diagram_test::demonstration;
using diagram_test::Drawn;
using diagram_test::smallNetwork;
using testing::IsEmpty;

namespace {

double distanceToBar(const Drawn& d, const std::string& node, const QPointF& point) {
    const int n = d.index.node(node), bar = d.index.bar(n) >= 0 ? d.index.bar(n) : n;
    for (const Figure& f : d.drawing.figures) {
        if ((f.kind != Kind::Bar && f.kind != Kind::Point) || f.index != bar) continue;
        const QPointF a = f.legs[0].path.first(), b = f.legs[0].path.last();
        return std::hypot(std::max({a.x() - point.x(), point.x() - b.x(), 0.0}),
                          std::max({a.y() - point.y(), point.y() - b.y(), 0.0}));
    }
    return std::numeric_limits<double>::max();
}

/// Ends of elements that do not touch the node they belong to.
std::vector<std::string> looseEnds(const Drawn& d) {
    std::vector<std::string> loose;
    const auto check = [&](const Figure& f, const std::string& node, const QPointF& end) {
        if (distanceToBar(d, node, end) > 0.6)
            loose.push_back(diagram::nameOf(d.model, d.index, f).toStdString() + " at " + node);
    };
    for (const Figure& f : d.drawing.figures) {
        const auto both = [&](const std::string& i, const std::string& j) {
            check(f, i, f.legs.front().path.first()), check(f, j, f.legs.back().path.last());
        };
        const auto at = static_cast<std::size_t>(f.index);
        if (f.kind == Kind::Line) both(d.model.lines[at].i, d.model.lines[at].j);
        if (f.kind == Kind::Switch) both(d.model.switches[at].i, d.model.switches[at].j);
        if (f.kind == Kind::Transformer2) both(d.model.transformers2[at].i.node, d.model.transformers2[at].j.node);
        if (f.kind == Kind::Transformer3)
            for (std::size_t w = 0; w < 3; ++w)
                check(f, d.model.transformers3[at].winding[w].node, f.legs[w].path.first());
        if (f.kind == Kind::Generator) check(f, d.model.generators[at].node, f.legs[0].path.first());
        if (f.kind == Kind::Shunt) check(f, d.model.shunts[at].node, f.legs[0].path.first());
        if (f.kind == Kind::Load) check(f, d.model.loads[at].node, f.legs[0].path.first());
    }
    return loose;
}

std::size_t elements(const host::NetworkModel& m) {
    return m.lines.size() + m.switches.size() + m.transformers2.size() + m.transformers3.size() + m.generators.size() +
           m.shunts.size() + m.loads.size();
}

int drawnElements(const Drawn& d) {
    return static_cast<int>(std::count_if(d.drawing.figures.begin(), d.drawing.figures.end(), [](const Figure& f) {
        return f.kind != Kind::Bar && f.kind != Kind::Point;
    }));
}

std::vector<std::string> overlappingBars(const Drawn& d) {
    std::vector<std::pair<QRectF, std::string>> bars;
    for (const Figure& f : d.drawing.figures)
        if (f.kind == Kind::Bar)
            bars.emplace_back(f.legs[0].path.boundingRect().adjusted(-2, -6, 2, 6),
                              diagram::nameOf(d.model, d.index, f).toStdString());
    std::sort(bars.begin(), bars.end(), [](const auto& a, const auto& b) { return a.first.left() < b.first.left(); });
    std::vector<std::string> pairs;
    for (std::size_t a = 0; a < bars.size(); ++a)
        for (std::size_t b = a + 1; b < bars.size() && bars[b].first.left() <= bars[a].first.right(); ++b)
            if (bars[a].first.intersects(bars[b].first)) pairs.push_back(bars[a].second + " / " + bars[b].second);
    return pairs;
}

/// Pairs of names that cover each other.
int coveredNames(const Drawn& d) {
    int covered = 0;
    const auto& all = d.drawing.captions;
    for (std::size_t a = 0; a < all.size(); ++a)
        for (std::size_t b = a + 1; b < all.size(); ++b)
            covered += !all[a].box.isEmpty() && all[a].box.intersects(all[b].box);
    return covered;
}

TEST(DiagramGeometry, DrawsEveryElementOfTheDemonstrationOnItsNodes) {
    const Drawn d(demonstration());
    EXPECT_EQ(drawnElements(d), static_cast<int>(elements(d.model)));
    EXPECT_EQ(d.drawing.leftOut, 0);
    EXPECT_THAT(looseEnds(d), IsEmpty());
    EXPECT_THAT(overlappingBars(d), IsEmpty());
    EXPECT_EQ(coveredNames(d), 0);
    EXPECT_EQ(d.drawing.frames.size(), d.model.stations.size());
}

TEST(DiagramGeometry, TellsWhatEachPlaceHits) {
    const Drawn d(demonstration());
    const auto at = [&](Kind kind, const char* name, int percent, int winding = 0) {
        return d.infoAt(diagram::pointAlong(d.figure(kind, name), percent, winding));
    };
    for (int percent : {10, 60, 90}) {
        const CHandleGraphInfo line = at(Kind::Line, "青龙", percent);
        EXPECT_EQ(line.name, "青龙");
        EXPECT_EQ(line.type, 6);
        EXPECT_NEAR(line.percent, percent, 1);
        EXPECT_EQ(line.recid, 0);
    }
    for (int winding = 1; winding <= 3; ++winding) {
        const CHandleGraphInfo hit = at(Kind::Transformer3, "龙泉1号主变", 50, winding);
        EXPECT_EQ(hit.type, 12);
        EXPECT_EQ(hit.winding, winding);
    }
    const auto symbol = [&](Kind kind, const char* name) { return d.infoAt(d.figure(kind, name).centre); };
    EXPECT_EQ(symbol(Kind::Transformer2, "白水1号主变").type, 10);
    EXPECT_EQ(symbol(Kind::Generator, "北网等值").type, 1);
    EXPECT_EQ(symbol(Kind::Shunt, "龙泉35kV电容器").type, 4);
    EXPECT_EQ(symbol(Kind::Shunt, "白水220kV电抗器").type, 5);
    EXPECT_EQ(symbol(Kind::Switch, "青山220母联开关").type, 13);
    EXPECT_EQ(symbol(Kind::Switch, "青山220母联开关").name, "青山220母联开关");
    EXPECT_TRUE(symbol(Kind::Switch, "青山220母联I母刀闸").name.isEmpty());
    EXPECT_TRUE(symbol(Kind::Load, "青山变负荷").name.isEmpty());
    EXPECT_EQ(d.infoAt(d.drawing.bounds.topLeft()).type, -1);
}

TEST(DiagramGeometry, TellsGroupsBarsAndOrdinaryNodesApart) {
    host::NetworkModel m = smallNetwork();
    for (const char* name : {"丙一段", "丙二段"}) {
        host::Node n;
        n.name = name, n.baseKv = 110, n.bus = "丙母线", n.station = "丙站", n.physicalBus = true;
        m.nodes.push_back(n);
    }
    host::Node point;
    point.name = "丙出线", point.baseKv = 110, point.station = "丙站";
    m.nodes.push_back(point);
    host::Node section = point;
    section.name = "丙三段", section.physicalBus = true;
    m.nodes.push_back(section);
    m.switches = {{"丙开关", "丙三段", "丙出线", true, false}};
    const Drawn d(m);
    const auto kindOf = [&](Kind kind, const char* name) { return d.infoAt(d.figure(kind, name).centre); };
    EXPECT_EQ(kindOf(Kind::Bar, "丙母线").nodeKind, 0);
    EXPECT_EQ(kindOf(Kind::Bar, "甲220").nodeKind, 1);
    EXPECT_EQ(kindOf(Kind::Bar, "丙三段").nodeKind, 1);
    EXPECT_EQ(kindOf(Kind::Point, "丙出线").nodeKind, 2);
    EXPECT_EQ(kindOf(Kind::Bar, "丙母线").type, 0);
}

TEST(DiagramGeometry, KeepsParallelLinesApart) {
    const Drawn d(smallNetwork());
    const auto& first = d.figure(Kind::Line, "甲乙一线").legs[0].path;
    const auto& second = d.figure(Kind::Line, "甲乙二线").legs[0].path;
    EXPECT_GT(QLineF(first.first(), second.first()).length(), 15);
    EXPECT_GT(QLineF(first.last(), second.last()).length(), 15);
    const QLineF middle(first[1], first[2]), other(second[1], second[2]);
    EXPECT_EQ(middle.intersects(other, nullptr) == QLineF::BoundedIntersection, false);
}

TEST(DiagramGeometry, LaysOutNetworksWithoutCoordinatesWithoutOverlaps) {
    for (const char* name : {"matpower/case118.m", "matpower/case_ACTIVSg2000.m", "cgmes3_smallgrid"}) {
        if (!std::filesystem::exists(diagram_test::shared(name))) GTEST_SKIP() << "no " << diagram_test::shared(name);
        import::Report report;
        const Drawn d(import::read(diagram_test::shared(name), {}, report));
        EXPECT_EQ(drawnElements(d), static_cast<int>(elements(d.model))) << name;
        EXPECT_THAT(overlappingBars(d), IsEmpty()) << name;
        EXPECT_THAT(looseEnds(d), IsEmpty()) << name;
        if (d.model.nodes.size() < 500) {
            EXPECT_EQ(coveredNames(d), 0) << name;
        }
    }
}

TEST(DiagramGeometry, GivesTheSamePlacesTwice) {
    const Drawn first(smallNetwork()), second(smallNetwork());
    ASSERT_EQ(first.drawing.figures.size(), second.drawing.figures.size());
    for (std::size_t f = 0; f < first.drawing.figures.size(); ++f)
        EXPECT_EQ(first.drawing.figures[f].centre, second.drawing.figures[f].centre);
}

TEST(DiagramGeometry, LeavesOutElementsOnMissingNodes) {
    host::NetworkModel m = smallNetwork();
    m.lines[1].j = "没有的节点";
    m.loads[0].node = "也没有";
    m.switches = {{"孤开关", "甲10", "无", true, true}};
    m.transformers3[0].winding[2].node = "无";
    const Drawn d(m);
    EXPECT_EQ(d.drawing.leftOut, 4);
    EXPECT_EQ(drawnElements(d), static_cast<int>(elements(m)) - 4);
}

TEST(DiagramGeometry, BearsBadCoordinates) {
    const double bad = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [x, y] : {std::pair{bad, 1.0}, {7.0, 7.0}, {1e300, -1e300}, {bad, bad}}) {
        host::NetworkModel m = smallNetwork();
        for (host::Node& n : m.nodes) n.x = x, n.y = y, n.hasPosition = true;
        const Drawn d(m);
        EXPECT_TRUE(std::isfinite(d.drawing.bounds.width()) && d.drawing.bounds.width() < 5000) << x;
        EXPECT_THAT(overlappingBars(d), IsEmpty());
    }
    host::NetworkModel m = smallNetwork();
    for (std::size_t n = 0; n < m.nodes.size(); ++n)
        m.nodes[n].x = n < 4 ? 100.0 * static_cast<double>(n) : bad, m.nodes[n].y = 0, m.nodes[n].hasPosition = true;
    const Drawn d(m);
    EXPECT_THAT(looseEnds(d), IsEmpty());
    EXPECT_TRUE(std::isfinite(d.drawing.bounds.width()));
}

TEST(DiagramGeometry, DrawsASingleBus) {
    host::NetworkModel m;
    m.nodes.resize(1);
    m.nodes[0].name = "独母线", m.nodes[0].baseKv = 10;
    const Drawn d(m);
    EXPECT_EQ(d.drawing.figures.size(), 1U);
    EXPECT_EQ(d.infoAt(d.drawing.figures[0].centre).name, "独母线");
}

TEST(DiagramGeometry, ReadsOnlyACompleteLayout) {
    EXPECT_FALSE(diagram::layoutPlaces("1 2\n3 4\n", 3));
    EXPECT_FALSE(diagram::layoutPlaces("1 2\nnan 4\n", 2));
    EXPECT_FALSE(diagram::layoutPlaces("", 1));
    const auto places = diagram::layoutPlaces("1.5 2\n-3 4\n", 2);
    ASSERT_TRUE(places);
    EXPECT_EQ((*places)[1], QPointF(-3, 4));
}

}  // namespace
