#include <gmock/gmock.h>

#include <QContextMenuEvent>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QSvgRenderer>
#include <QWheelEvent>

#include "platform/host/diagram/Labels.h"
#include "platform/rtdb/CaseRecords.h"
#include "platform/rtdb/Records.h"
#include "platform/rtdb/dbCursor.h"
#include "tests/gui/host/diagram_fixture.h"

using diagram::Kind;
using diagram_test::demonstration;
using diagram_test::smallNetwork;
using testing::ElementsAre;

namespace {

/// Notes the gestures that it is handed.
class Gestures : public CHandleGraph {
  public:
    bool OnLabelClicked(const CHandleGraphInfo& info) override { return labels.push_back(info), true; }
    bool OnElementOpen(const CHandleGraphInfo& info) override { return opened.push_back(info), true; }
    void OnContextMenu(const CHandleGraphInfo& info, QMenu*) override { menus.push_back(info); }
    bool OnHandleDefault() override { return ++others, true; }
    std::vector<CHandleGraphInfo> labels, opened, menus;
    int others = 0;
};

class Diagram : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(realTime.open(folder.filePath("case.rtdb")));
        view.resize(1200, 800);
        view.setHandler(&gestures);
        view.show();
    }

    void show(host::NetworkModel model) {
        QSignalSpy ready(&view, &DiagramView::ready);
        view.showNetwork(model);
        if (ready.isEmpty()) {
            ASSERT_TRUE(ready.wait(60000));
        }
        shown = model;
        notice = ready.first().first().toString();
    }

    void addLabel(const QString& text, int element, const QStringList& names, int percent, int flags = 0x02) {
        norvdb::addition_graph label;
        label.text = text, label.ele_num = element, label.percent_pos = percent, label.flags = flags;
        label.id_name = names[0], label.i_name = names[1], label.j_name = names[2];
        label.module_num = 14, label.recid = ++lastLabel;
        dbCursor<norvdb::addition_graph> cursor(realTime, dbCursorForUpdate);
        ASSERT_TRUE(cursor.insert(label));
    }

    const diagram::Figure& figure(const QString& name) {
        EXPECT_TRUE(view.selectElement(name)) << name.toStdString();
        const diagram::NetworkIndex index(shown);
        for (const auto& f : view.drawing().figures)
            if (diagram::nameOf(shown, index, f) == name) return f;
        return view.drawing().figures.front();
    }

    QPoint place(const QPointF& scene) { return view.mapFromScene(scene); }

    QTemporaryDir folder;
    dbDatabase realTime;
    Gestures gestures;
    DiagramView view;
    host::NetworkModel shown = demonstration();
    QString notice;
    int lastLabel = 1;
};

TEST_F(Diagram, HandsGesturesOnElementsToTheHandler) {
    show(shown);
    const QPoint line = place(diagram::pointAlong(figure("青龙"), 80));
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, line);
    ASSERT_EQ(gestures.opened.size(), 1U);
    EXPECT_EQ(gestures.opened[0].name, "青龙");
    EXPECT_GT(gestures.opened[0].percent, 50);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, line, view.viewport()->mapToGlobal(line));
    QApplication::sendEvent(view.viewport(), &menu);
    ASSERT_EQ(gestures.menus.size(), 1U);
    EXPECT_EQ(gestures.menus[0].type, 6);
    const QPoint nowhere = place(view.drawing().bounds.topLeft());
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, nowhere);
    EXPECT_EQ(gestures.opened.size(), 1U);
    EXPECT_TRUE(gestures.labels.empty());
}

TEST_F(Diagram, DrawsLiveLabelsNearTheEndsAndHandsTheirNumbers) {
    addLabel("甲型距离 \n乙型零序 \n", 6, {"青龙", "青山青龙线", "龙泉青龙线"}, 3);
    addLabel("乙型零序 \n", 6, {"青龙", "青山青龙线", "龙泉青龙线"}, 97);
    addLabel("停用", 6, {"青龙", "青山青龙线", "龙泉青龙线"}, 50, 0);
    addLabel("无处可放", 6, {"没有的线", "甲", "乙"}, 3);
    addLabel("主变", 10, {"龙泉1号主变", "龙泉1号主变中性点", "龙泉变35kV母线"}, 70);
    show(shown);
    view.refreshLabels(realTime);
    ASSERT_EQ(view.labels().size(), 3U);
    const diagram::Figure& line = figure("青龙");
    EXPECT_LT(QLineF(view.labels()[0].anchor, line.legs[0].path.first()).length(),
              QLineF(view.labels()[0].anchor, line.legs[0].path.last()).length());
    EXPECT_GT(QLineF(view.labels()[1].anchor, line.legs[0].path.first()).length(),
              QLineF(view.labels()[1].anchor, line.legs[0].path.last()).length());
    EXPECT_GT(view.labels()[0].box.height(), 1.5 * view.labels()[1].box.height());
    EXPECT_FALSE(view.labels()[0].box.intersects(view.labels()[1].box));
    const auto& winding = figure("龙泉1号主变").legs[2].path;
    EXPECT_TRUE(winding.boundingRect().adjusted(-1, -1, 1, 1).contains(view.labels()[2].anchor));

    view.selectElement("青龙");
    view.centerOn(view.labels()[1].box.center());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place(view.labels()[1].box.center()));
    ASSERT_EQ(gestures.labels.size(), 1U);
    EXPECT_EQ(gestures.labels[0].recid, 3);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place(view.labels()[1].box.center()));
    ASSERT_FALSE(gestures.opened.empty());
    EXPECT_EQ(gestures.opened.back().recid, 3);
}

TEST_F(Diagram, PutsALabelAtTheNamedEndWhenTheRecordTurnsTheLineRound) {
    addLabel("甲", 6, {"青龙", "龙泉青龙线", "青山青龙线"}, 3);
    show(shown);
    view.refreshLabels(realTime);
    ASSERT_EQ(view.labels().size(), 1U);
    const auto& path = figure("青龙").legs[0].path;
    EXPECT_LT(QLineF(view.labels()[0].anchor, path.last()).length(),
              QLineF(view.labels()[0].anchor, path.first()).length());
}

TEST_F(Diagram, ShowsTheStatesOfTheCase) {
    show(shown);
    view.refreshStates(realTime);
    EXPECT_FALSE(figure("青龙").off) << "an empty case says nothing";
    dbCursor<norvdb::nd> nodes(realTime, dbCursorForUpdate);
    norvdb::nd node;
    node.id = "青山青龙线";
    ASSERT_TRUE(nodes.insert(node));
    dbCursor<norvdb::ln> lines(realTime, dbCursorForUpdate);
    for (const char* name : {"青白I_ac", "青白II_ac"}) {
        norvdb::ln line;
        line.id = name, line.valid = QString(name) == "青白I_ac", line.i_break = 0;
        ASSERT_TRUE(lines.insert(line));
    }
    dbCursor<norvdb::cb> switches(realTime, dbCursorForUpdate);
    norvdb::cb breaker;
    breaker.id = "青山220母联开关_brk", breaker.flags = 1, breaker.closed = 0;
    ASSERT_TRUE(switches.insert(breaker));
    dbCursor<norvdb::xf> windings(realTime, dbCursorForUpdate);
    norvdb::xf winding;
    winding.id = "龙泉1号主变_3w2", winding.kind = 32;
    ASSERT_TRUE(windings.insert(winding));
    view.refreshStates(realTime);
    EXPECT_FALSE(figure("青白I").off);
    EXPECT_TRUE(figure("青白I").openAtI);
    EXPECT_TRUE(figure("青白II").off) << "not valid";
    EXPECT_TRUE(figure("青龙").off) << "not in the case";
    EXPECT_TRUE(figure("青山220母联开关").open);
    EXPECT_FALSE(figure("龙泉1号主变").off);
    EXPECT_TRUE(figure("龙泉2号主变").off);
}

TEST_F(Diagram, FindsAndShowsElementsByName) {
    show(shown);
    EXPECT_THAT(view.find("青白I线开关"), testing::Contains(QString("青山青白I线开关")));
    EXPECT_TRUE(view.find("").isEmpty());
    EXPECT_TRUE(view.find("查无此名").isEmpty());
    EXPECT_THAT(view.find("龙泉变"), testing::Contains(QString("龙泉变")));
    QSignalSpy selected(&view, &DiagramView::elementSelected);
    EXPECT_TRUE(view.selectElement("岭东"));
    ASSERT_EQ(selected.size(), 1);
    const QPoint at = place(diagram::pointAlong(figure("岭东"), 50));
    EXPECT_TRUE(view.viewport()->rect().contains(at));
    EXPECT_TRUE(view.selectElement("龙泉变"));
    EXPECT_FALSE(view.selectElement("查无此名"));
}

TEST_F(Diagram, KeepsThePointUnderTheMouseWhileZooming) {
    show(shown);
    const QPoint mouse(300, 500);
    const QPointF before = view.mapToScene(mouse);
    QWheelEvent wheel(mouse, view.viewport()->mapToGlobal(mouse), {}, {0, 480}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &wheel);
    EXPECT_GT(view.transform().m11(), 1.5 * 0.3);
    EXPECT_LT(QLineF(before, view.mapToScene(mouse)).length(), 3);
    const QPointF middle = view.mapToScene(view.viewport()->rect().center());
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_GT(view.mapToScene(view.viewport()->rect().center()).x(), middle.x());
    QTest::keyClick(&view, Qt::Key_Home);
    const QRectF visible = view.mapToScene(view.viewport()->rect()).boundingRect();
    EXPECT_TRUE(visible.adjusted(-3, -3, 3, 3).contains(view.drawing().bounds));
}

TEST_F(Diagram, DragPansAndIsNoClick) {
    show(shown);
    const QPointF before = view.mapToScene(QPoint(400, 400));
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, {400, 400});
    QTest::mouseMove(view.viewport(), {450, 430});
    QTest::mouseMove(view.viewport(), {500, 460});
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, {500, 460});
    EXPECT_LT(QLineF(before, view.mapToScene(QPoint(500, 460))).length(), 3);
    EXPECT_EQ(gestures.others, 0);
}

TEST_F(Diagram, TabGoesRoundTheNeighboursOfTheSelection) {
    show(smallNetwork());
    QSignalSpy selected(&view, &DiagramView::elementSelected);
    ASSERT_TRUE(view.selectElement("乙10"));
    QStringList names;
    for (int k = 0; k < 4; ++k) {
        QTest::keyClick(&view, Qt::Key_Tab);
        names << selected.last().first().toString();
    }
    names.sort();
    EXPECT_EQ(names, (QStringList{"乙10", "乙主变", "乙容", "乙荷"}));
}

/// Share of a picture that is not light.
double inked(const QImage& image) {
    qint64 dark = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) dark += qGray(image.pixel(x, y)) < 200;
    return static_cast<double>(dark) / image.width() / image.height();
}

TEST_F(Diagram, ExportsFilesThatOpen) {
    show(shown);
    QString error;
    for (const char* name : {"网.svg", "网.pdf", "网.png"})
        ASSERT_TRUE(view.exportTo(folder.filePath(name), &error)) << error.toStdString();
    QSvgRenderer svg(folder.filePath("网.svg"));
    ASSERT_TRUE(svg.isValid());
    QImage painted(view.drawing().bounds.size().toSize(), QImage::Format_RGB32);
    painted.fill(Qt::white);
    QPainter painter(&painted);
    svg.render(&painter);
    painter.end();
    int names = 0;
    for (const diagram::Caption& caption : view.drawing().captions) {
        if (!caption.text.endsWith("母线") || caption.box.isEmpty()) continue;
        const QRectF box = caption.box.translated(-view.drawing().bounds.topLeft());
        EXPECT_GT(inked(painted.copy(box.toAlignedRect())), 0.05) << caption.text.toStdString();
        ++names;
    }
    EXPECT_GT(names, 10);
    QFile pdf(folder.filePath("网.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.readAll().startsWith("%PDF"));
    const QImage png(folder.filePath("网.png"));
    EXPECT_GT(png.width(), view.drawing().bounds.width());
    EXPECT_GT(inked(png), 0.005);

    view.selectElement("岭东");
    ASSERT_TRUE(view.exportVisibleTo(folder.filePath("局部.png"), &error)) << error.toStdString();
    EXPECT_LT(QImage(folder.filePath("局部.png")).width(), png.width());
}

TEST_F(Diagram, SaysInOneSentenceWhyAnExportFails) {
    show(shown);
    for (const QString& file : {folder.filePath("没有/网.svg"), folder.filePath("网.bmp"), folder.filePath("网")}) {
        QString error;
        EXPECT_FALSE(view.exportTo(file, &error));
        EXPECT_TRUE(error.contains(file)) << error.toStdString();
        EXPECT_FALSE(QFile::exists(file));
    }
    show({});
    QString error;
    EXPECT_FALSE(view.exportTo(folder.filePath("空.svg"), &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST_F(Diagram, KeepsTheLayoutForTheSameNetworkOnly) {
    view.setLayoutDirectory(folder.path());
    host::NetworkModel m = smallNetwork();
    show(m);
    const QPointF first = figure("乙主变").centre;
    view.showNetwork(m);
    ASSERT_TRUE(view.isReady()) << "kept places need no layout";
    EXPECT_EQ(figure("乙主变").centre, first);
    m.lines[0].j = "甲220";
    view.showNetwork(m);
    EXPECT_FALSE(view.isReady());
    show(smallNetwork());
    QFile kept(folder.filePath("diagram.layout"));
    ASSERT_TRUE(kept.open(QIODevice::ReadWrite));
    ASSERT_TRUE(kept.resize(kept.size() - 8));
    kept.close();
    view.showNetwork(smallNetwork());
    EXPECT_FALSE(view.isReady()) << "a damaged file is not used";
}

TEST_F(Diagram, TellsWhatItCannotDraw) {
    show({});
    EXPECT_FALSE(notice.isEmpty());
    EXPECT_TRUE(view.isReady());
    EXPECT_FALSE(view.grab().isNull());
    EXPECT_FALSE(view.selectElement("甲"));
    host::NetworkModel m = smallNetwork();
    m.loads[0].node = "无";
    show(m);
    EXPECT_TRUE(notice.contains("1")) << notice.toStdString();
}

TEST_F(Diagram, DrawsTenThousandBuses) {
    host::NetworkModel m;
    for (int n = 0; n < 10000; ++n) {
        host::Node node;
        node.name = std::to_string(n), node.baseKv = 110, node.physicalBus = node.hasPosition = true;
        node.x = n % 100, node.y = n / 100;
        m.nodes.push_back(node);
        if (n == 0) continue;
        host::Line line;
        line.name = std::to_string(n) + "-", line.i = m.nodes[n - 1].name, line.j = node.name;
        m.lines.push_back(line);
    }
    show(m);
    EXPECT_EQ(view.drawing().figures.size(), 19999U);
    EXPECT_TRUE(view.selectElement("7777"));
    EXPECT_FALSE(view.grab().isNull());
}

TEST_F(Diagram, FollowsThePalette) {
    show(shown);
    const auto corner = [&] { return view.grab().toImage().pixelColor(3, 3).lightness(); };
    EXPECT_GT(corner(), 200);
    QPalette dark = view.palette();
    dark.setColor(QPalette::Base, QColor(0x1e2127));
    view.setPalette(dark);
    EXPECT_LT(corner(), 60);
}

}  // namespace
