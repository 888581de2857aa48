#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QTabWidget>
#include <QToolButton>
#include <QXmlStreamReader>

#include "programs/workflow/ImpedancePicture.h"
#include "programs/workflow/StepPicture.h"
#include "programs/workflow/ui/PictureCanvas.h"
#include "programs/workflow/ui/PictureExport.h"
#include "programs/workflow/ui/SettingPictures.h"
#include "tests/gui/workflow/WorkflowWindows.h"

using testing::Contains;
using testing::HasSubstr;

namespace {

const QStringList kLines{"白石", "青白I", "青白II", "龙平", "平石", "青龙", "龙石"};

class Pictures : public WorkflowWindows {
  protected:
    /// A case of all parts of the relays at both ends of lines, calculated.
    void calculate(int type) {
        QVector<RelayRequest> requests;
        for (const QString& line : kLines)
            for (const int side : {1, 2})
                if (const Location at = place(line.toUtf8(), side); !at.ID_Name.isEmpty())
                    requests.append({at, type, 240, 2200, {}});
        ASSERT_EQ(RelayStore::install(requests), requests.size());
        CaseForm form;
        form.name = "演示";
        form.source = "基础方案";
        form.bigSys = {ModeStore::numberOf("最大方式")};
        form.smallSys = {ModeStore::numberOf("最小方式")};
        QVector<int> relays;
        for (int rNo = 1; rNo <= requests.size(); ++rNo) relays.append(rNo);
        cases.insert(type, 0, -1, form.source);
        ASSERT_TRUE(cases.addRelays(form, relays) && cases.SaveRecord(1, form));
        exec("UPDATE RLY_CASEINF SET RValid=0 WHERE RuleNo=?", {1000 * type + 202});
        ASSERT_EQ(start(), "ready") << said();
        session = std::make_unique<RunSession>(*cases.current(), places);
        ASSERT_TRUE(session->open());
        ASSERT_EQ(run(*session, RunSession::Sensitivity), "complete") << said();
        ASSERT_EQ(run(*session, RunSession::Automatic), "complete") << said();
    }
    void TearDown() override {
        if (session) session->cancel();
        WorkflowWindows::TearDown();
    }
    static int relayAt(const QString& line, int side) {
        return value("SELECT RNo FROM RLY_RUD WHERE ID_Name=? AND Side=?", {line, side}).toInt();
    }
    static std::unique_ptr<SettingPictures> pictures(int type, int rNo, int part) {
        auto window = std::make_unique<SettingPictures>(1, type);
        window->resize(1000, 640);
        window->show();
        window->showPart(rNo, part);
        return window;
    }
    static const PictureScene& scene(const QWidget& window, const char* name) {
        return part<PictureCanvas>(window, name).scene();
    }
    static std::string legendOf(const PictureScene& scene) {
        QStringList texts;
        for (const PictureLegendEntry& entry : scene.legend) texts << entry.text;
        return texts.join('\n').toStdString();
    }
    /// The texts of an SVG file without blanks, joined as they follow one another; a text of two fonts is in pieces.
    static std::string textsOf(const QString& svg) {
        QFile file(svg);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QXmlStreamReader reader(&file);
        QString texts;
        while (!reader.atEnd())
            if (reader.readNext() == QXmlStreamReader::Characters) texts += reader.text();
        EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
        return texts.remove(' ').remove('\n').toStdString();
    }
    static int coloursOf(const QImage& image) {
        QSet<QRgb> colours;
        for (int y = 0; y < image.height(); y += 2)
            for (int x = 0; x < image.width(); x += 2) colours.insert(image.pixel(x, y));
        return int(colours.size());
    }
    /// A file of the public networks; empty when it is not there.
    static QString sharedNetwork(const QString& file) {
        const QString path = qEnvironmentVariable("MORVANE_SHARED_NETWORKS", MORVANE_SHARED_NETWORKS) + "/" + file;
        return QFile::exists(path) ? path : QString();
    }
    std::unique_ptr<RunSession> session;
};

}  // namespace

TEST_F(Pictures, DistanceStagesAgreeWithTheHandCalculation) {
    calculate(1);
    auto window = pictures(1, relayAt("白石", 2), 2);
    const PictureScene& plane = scene(*window, "picture_Plane");
    std::vector<double> diameters, marks;
    for (const PictureShape& shape : plane.shapes) {
        if (shape.form == PictureShape::Form::Circle) diameters.push_back(2 * shape.radius);
        if (shape.form == PictureShape::Form::Mark && shape.tip.startsWith("青白I线"))
            marks.push_back(std::hypot(shape.points.first().x(), shape.points.first().y()));
    }
    EXPECT_THAT(diameters, Contains(testing::DoubleNear(25.5652, 1e-3)));
    EXPECT_THAT(diameters, Contains(testing::DoubleNear(42.8264, 1e-3)));
    EXPECT_THAT(marks, Contains(testing::DoubleNear(30.0767 + 1.446822 * 14.9130, 1e-2)));  // nearly one angle
    const std::string legend = legendOf(plane);
    for (const char* text : {"本线路 白石 30.08 ohm ∠79.0°", "青白I线 白水青白I线侧 17.54 ohm，助增系数 1.447",
                             "测量阻抗 30.08 ohm  本线路末端两相短路时的相间测量阻抗（最大）"})
        EXPECT_THAT(legend, HasSubstr(text));
    takeScreenshot(*window, "pictures-plane");
    part<QComboBox>(*window, "comboBox_Neighbour").setCurrentIndex(1);
    takeScreenshot(*window, "pictures-plane-neighbour");
    part<QTabWidget>(*window, "tabWidget_Pictures").setCurrentIndex(1);
    takeScreenshot(*window, "pictures-steps-neighbour");
}

TEST_F(Pictures, AMissingTimeStepStandsInTheLegendAndAtTheNeighbour) {
    calculate(1);
    const int relay = relayAt("白石", 2);
    auto window = pictures(1, relay, 2);
    EXPECT_TRUE(scene(*window, "picture_Steps").findings.isEmpty());
    exec("UPDATE RLY_RLYOBJ_TEM SET NDz11=30.5,NDz21=60 WHERE RNo=? AND Cdz='Zdz'", {relay});
    window->showPart(relay, 2);
    const QStringList findings = scene(*window, "picture_Steps").findings;
    // the two lines run side by side and have the same data: what holds for one holds for the other
    EXPECT_EQ(findings, (QStringList{"Ⅰ段伸出本线路末端：30.50 ohm > 30.08 ohm",
                                     "Ⅱ段与青白I线 白水青白I线侧的Ⅱ段时差 0.00 s < 0.30 s",
                                     "Ⅱ段与青白II线 白水青白II线侧的Ⅱ段时差 0.00 s < 0.30 s"}));
    const auto& neighbours = part<QComboBox>(*window, "comboBox_Neighbour");
    EXPECT_EQ(neighbours.itemText(1), "青白I线 白水青白I线侧（须检查）");
    EXPECT_EQ(neighbours.itemText(2), "青白II线 白水青白II线侧（须检查）");
    part<QTabWidget>(*window, "tabWidget_Pictures").setCurrentIndex(1);
    takeScreenshot(*window, "pictures-missing-step");
    part<QComboBox>(*window, "comboBox_Measure").setCurrentIndex(1);
    EXPECT_THAT(scene(*window, "picture_Steps").xTitle.toStdString(), HasSubstr("（二次）"));
    takeScreenshot(*window, "pictures-missing-step-secondary");
}

TEST_F(Pictures, CurrentStagesHaveNoPlane) {
    calculate(3);
    auto window = pictures(3, relayAt("白石", 2), 2);
    auto& tabs = part<QTabWidget>(*window, "tabWidget_Pictures");
    EXPECT_FALSE(tabs.isTabEnabled(0));
    EXPECT_FALSE(tabs.tabToolTip(0).isEmpty());
    EXPECT_EQ(tabs.currentIndex(), 1);
    const PictureScene& steps = scene(*window, "picture_Steps");
    EXPECT_TRUE(steps.logX);
    for (const char* text :
         {"Ⅰ段 1195 A 0.00 s", "Ⅱ段 330.8 A 0.30 s", "919.0 A  一段：躲过本线路末端接地故障最大零序电流",
          "青白I线 白水青白I线侧，分支系数 0.217"})
        EXPECT_THAT(legendOf(steps), HasSubstr(text));
    EXPECT_TRUE(steps.findings.isEmpty()) << steps.findings.join('|').toStdString();
    takeScreenshot(*window, "pictures-currents");
}

TEST_F(Pictures, WithoutValuesOrARelayTheySayWhy) {
    calculate(1);
    exec("UPDATE RLY_RLYOBJ_TEM SET NDz11=0,NDz21=0,NDz31=0 WHERE RNo=1");
    auto window = pictures(1, 1, 1);
    EXPECT_THAT(scene(*window, "picture_Steps").empty.toStdString(), HasSubstr("没有可画的段"));
    part<QTabWidget>(*window, "tabWidget_Pictures").setCurrentIndex(1);
    takeScreenshot(*window, "pictures-no-values");
    window->showPart(0, 0);
    EXPECT_EQ(scene(*window, "picture_Plane").empty, "没有选定保护");
    EXPECT_FALSE(part<QComboBox>(*window, "comboBox_Neighbour").isEnabled());
    part<PictureCanvas>(*window, "picture_Plane").zoomIn();
    EXPECT_FALSE(part<PictureCanvas>(*window, "picture_Plane").isZoomed());
}

TEST_F(Pictures, GoIntoFilesAndTheClipboardAndFollowTheValues) {
    calculate(1);
    const int relay = relayAt("白石", 2);
    auto window = pictures(1, relay, 2);
    const auto save = [&](const QString& file) {
        whenOpen([file](QDialog& dialog) {
            auto& files = dynamic_cast<QFileDialog&>(dialog);
            part<QLineEdit>(files, "fileNameEdit").setText(file);
            QMetaObject::invokeMethod(&files, "accept");
        });
        QTest::mouseClick(&part<QToolButton>(*window, "toolButton_Export"), Qt::LeftButton);
    };
    const QString svg = folder.filePath("a.svg"), png = folder.filePath("a.png");
    save(svg);
    save(png);
    const std::string written = textsOf(svg);
    for (const char* text : {"阻抗平面图白石线石桥厂220kV母线侧", "Ⅱ段42.83ohm0.30s", "演示线路相间距离保护Ⅱ段"})
        EXPECT_THAT(written, HasSubstr(text));
    const QImage before(png);
    EXPECT_EQ(before.width(), 2200);
    EXPECT_GT(coloursOf(before), 20);
    exec("UPDATE RLY_RLYOBJ_TEM SET NDz21=50 WHERE RNo=? AND Cdz='Zdz'", {relay});
    window->showPart(relay, 2);
    ASSERT_TRUE(QFile::remove(png));
    save(png);
    EXPECT_NE(QImage(png), before);
    QTest::mouseClick(&part<QToolButton>(*window, "toolButton_Copy"), Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32),
              QImage(png).convertToFormat(QImage::Format_RGB32));
    QString error;
    EXPECT_FALSE(PictureExport::write(scene(*window, "picture_Plane"), folder.filePath("no/such/a.svg"), &error));
    EXPECT_THAT(error.toStdString(), HasSubstr("no/such/a.svg"));
}

TEST_F(Pictures, ZoomMoveAndTellWhatIsUnderThePointer) {
    calculate(1);
    auto window = pictures(1, relayAt("白石", 2), 2);
    auto& canvas = part<PictureCanvas>(*window, "picture_Plane");
    const QImage whole = canvas.grab().toImage();
    QSet<QString> tips;
    for (int x = 0; x < canvas.width(); x += 3)
        for (int y = 0; y < canvas.height(); y += 3) tips.insert(canvas.tipAt(QPointF(x, y)).section('\n', 0, 0));
    EXPECT_TRUE(tips.contains("Ⅱ段 42.83 ohm 0.30 s"));
    EXPECT_TRUE(tips.contains("30.08 ohm  本线路末端两相短路时的相间测量阻抗（最大）"));
    QTest::mouseClick(&part<QToolButton>(*window, "toolButton_ZoomIn"), Qt::LeftButton);
    EXPECT_TRUE(canvas.isZoomed());
    EXPECT_NE(canvas.grab().toImage(), whole);
    window->showPart(relayAt("白石", 2), 2);
    EXPECT_TRUE(canvas.isZoomed()) << "a new value of the same relay keeps what is looked at";
    QTest::mouseDClick(&canvas, Qt::LeftButton, {}, {100, 100});
    EXPECT_EQ(canvas.grab().toImage(), whole);
    QTest::keyClick(&canvas, Qt::Key_Right);
    EXPECT_NE(canvas.grab().toImage(), whole);
    window->showPart(relayAt("白石", 1), 2);
    EXPECT_FALSE(canvas.isZoomed());
}

TEST_F(Pictures, ManyNeighboursAreDrawnFast) {
    const QString file = sharedNetwork("matpower/case118.m");
    if (file.isEmpty()) GTEST_SKIP() << "the public network case118 is not there";
    import::Report report;
    ASSERT_TRUE(host::storeNetwork(import::read(file.toStdString(), {}, report)) && SearchDumRelay());
    QVector<RelayRequest> requests;
    for (const Location& at : RelayStore::locations(6)) requests.append({at, 1, 240, 2200, {}});
    const int relays = RelayStore::install(requests);
    ASSERT_GT(relays, 300);
    exec(
        "UPDATE RLY_RDZ d JOIN RLY_RUD u ON u.RNo=d.RNo SET NRdz11=20+d.RNo%17,NRdz21=40+d.RNo%29,NRdz31=90"
        " WHERE Cdz='Zdz'");
    CaseForm form;
    form.name = "演示";
    form.source = value("SELECT SchName FROM CDB_SCHEMEINFBAK LIMIT 1");
    cases.insert(1, 0, -1, form.source);
    const int busiest =
        value(
            "SELECT RNo FROM RLY_RUD u JOIN (SELECT I_Name n,COUNT(*) c FROM (SELECT I_Name FROM CDB_ACLINEBAK"
            " UNION ALL SELECT J_Name FROM CDB_ACLINEBAK) e GROUP BY 1 ORDER BY c DESC LIMIT 1) b"
            " ON u.J_Name=b.n AND u.Side=1 LIMIT 1")
            .toInt();
    ASSERT_TRUE(cases.addRelays(form, {busiest}) && cases.SaveRecord(1, form));
    ASSERT_EQ(start(), "ready") << said();
    exec("UPDATE RLY_RLYOBJ_TEM SET NDz11=50,NDz21=80,NDz31=120 WHERE Cdz='Zdz'");
    auto window = pictures(1, busiest, 2);
    part<QComboBox>(*window, "comboBox_Neighbour").setCurrentIndex(0);
    EXPECT_GT(part<QComboBox>(*window, "comboBox_Neighbour").count(), 8);
    for (const int tab : {0, 1}) {
        part<QTabWidget>(*window, "tabWidget_Pictures").setCurrentIndex(tab);
        takeScreenshot(*window, QString("pictures-many-%1").arg(tab));
    }
    PictureData data = readPictureData(1, busiest, PictureNetwork(1));
    while (data.neighbours.size() < 30) data.neighbours.append(data.neighbours[data.neighbours.size() % 11]);
    QElapsedTimer timer;
    for (const char* name : {"picture_Plane", "picture_Steps"}) {
        auto& canvas = part<PictureCanvas>(*window, name);
        timer.start();
        for (int k = 0; k < 10; ++k) {
            canvas.setScene(name == QString("picture_Plane") ? impedancePicture(data, {}) : stepPicture(data, {}));
            canvas.grab();
        }
        const double drawing = timer.elapsed() / 10.0;
        std::cout << name << " of 30 neighbours in " << drawing << " ms\n";
        EXPECT_LT(drawing, 150);
    }
}
