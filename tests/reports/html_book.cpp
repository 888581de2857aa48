#include <QSet>
#include <QXmlStreamReader>

#include "programs/reports/BookHtml.h"
#include "tests/reports/HandMadeCase.h"

namespace {

/// A page read as XML: its anchors, links and text. A page that is not well-formed fails the test.
struct Page {
    QSet<QString> anchors, links;
    QString text;
    int scripts = 0, loads = 0;

    explicit Page(const QString& name) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        QXmlStreamReader xml(&file);
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isCharacters()) text += xml.text();
            if (!xml.isStartElement()) continue;
            const auto attributes = xml.attributes();
            if (attributes.hasAttribute("id")) {
                EXPECT_FALSE(anchors.contains(attributes.value("id").toString())) << "an anchor twice";
                anchors.insert(attributes.value("id").toString());
            }
            if (attributes.hasAttribute("href")) links.insert(attributes.value("href").toString());
            scripts += xml.name() == QString("script");
            loads += attributes.hasAttribute("src") || xml.name() == QString("link");
        }
        EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString() << " in line " << xml.lineNumber();
        text = text.simplified();
    }
    void expectWhole() const {
        EXPECT_EQ(scripts + loads, 0);
        for (const QString& link : links)
            EXPECT_TRUE(link.startsWith('#') && anchors.contains(link.mid(1))) << link.toStdString();
    }
    void expectText(const char* words) const {
        EXPECT_TRUE(text.contains(words)) << words << " not in\n" << text.toStdString();
    }
};

class HtmlBook : public HandMadeCase {};
class HtmlBookOfARun : public BookFixture {};

TEST_F(HtmlBook, TellsEveryRuleWithWhatDecidedIt) {
    ASSERT_TRUE(exportBookHtml(request(7, 3), file()));
    const Page page(file());
    page.expectWhole();
    for (const char* anchor : {"r1", "r1p1", "r1p1n3901", "r2p1n3902", "r2p2n3903", "r2k"})
        EXPECT_TRUE(page.anchors.contains(anchor)) << anchor;
    page.expectText("手工 <\"甲\" & '乙'>");
    page.expectText("500 A大方式，甲线 距 甲站 35% 处三相短路接地（R=0.05，X=0.125），检修 甲线（交流线）");
    page.expectText("已删除的运行方式 99");
    page.expectText("小方式，丙变高压侧 距 乙站 100% 处单相短路接地（R=0，X=0.01），检修 1号机（发电机）");
    page.expectText("三相短路接地，同时 甲线 距 甲站 99% 处三相断线，检修 名称超过十二个字符的线路名");
    page.expectText("0.254小方式");
    page.expectText("1.75");
    page.expectText("1.5 = 180 / 120");
    page.expectText("参量值为 0，没有灵敏度");
    EXPECT_FALSE(page.text.contains("1.75 = ")) << "no quotient gives this figure";
}

TEST_F(HtmlBookOfARun, PutsTheNumbersIntoTheFormulas) {
    ASSERT_NO_FATAL_FAILURE(installRelays(3));
    ASSERT_NO_FATAL_FAILURE(calculate(3));
    ASSERT_TRUE(exportBookHtml(request(1, 3), file()));
    const Page page(file());
    page.expectWhole();
    page.expectText("Idz = 1.3 × 1441.51 = 1873.96 A");
    page.expectText("Idz = 1.1 × 1009 × 0.371269 = 412.071 A");
    page.expectText("没有结果：规定的故障下保护没有电流");
    page.expectText("零序0.371269");  // the coefficient of that formula among those of its relay
    page.expectText("平石 距 平湖变220kV母线 0% 处三相短路接地");
    EXPECT_FALSE(page.text.contains("没有留下"));
    EXPECT_TRUE(page.links.contains("#r1p2n3201"));
    ASSERT_TRUE(exportBookHtml(request(0, 3, true), file()));
    const Page parameters(file());
    parameters.expectWhole();
    parameters.expectText("灵敏度参量计算书");
    parameters.expectText("3I0 = 988.356");
}

TEST_F(HtmlBook, ThatCannotBeMadeLeavesTheOneBefore) {
    ASSERT_TRUE(exportBookHtml(request(7, 3), file()));
    const qint64 size = QFileInfo(file()).size();
    EXPECT_FALSE(exportBookHtml(request(8, 3), file()));
    EXPECT_EQ(errors, QStringList{"没有计算结果，不能生成计算书"});
    EXPECT_FALSE(exportBookHtml(request(7, 3), folder.path() + "/没有的文件夹/book.html"));
    EXPECT_TRUE(errors.last().startsWith("不能写文件 ")) << errors.last().toStdString();
    EXPECT_EQ(QFileInfo(file()).size(), size);
}

}  // namespace
