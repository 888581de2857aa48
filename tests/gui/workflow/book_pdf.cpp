#include <sys/resource.h>

#include <csignal>

#include "programs/reports/ui/BookExport.h"
#include "tests/gui/workflow/PdfReader.h"
#include "tests/reports/HandMadeCase.h"

namespace {

constexpr double kFoot = 776;  // points; the page number stands below

class PdfBook : public HandMadeCase {
  protected:
    [[nodiscard]] QString pdf() const {
        const QString pictures = qEnvironmentVariable("MORVANE_SCREENSHOTS");
        return (pictures.isEmpty() ? folder.path() : pictures) + "/book.pdf";
    }
    /// Relays from number 101 on: part 1 has 1 to 9 rules, so that headings fall on every height of a page, part 2 one.
    static void addRelays(int count) {
        QVector<QVariantList> texts, results;
        for (int rule = 4001; rule <= 4008; ++rule) texts.append({rule, "躲过母线故障", "Idz=Kk×I"});
        rules({"RULEINF", "RuleNo,Note,Formula"}, texts);
        for (int relay = 101; relay <= 100 + count; ++relay) {
            const QString line = "线" + QString::number(relay);
            const auto row = [&](int part, int rule) {
                results.append({7, relay, line, "甲站", "乙站", 1, part, "Idz", rule, 100 + rule % 7});
            };
            row(1, 3901);
            for (int rule = 4001; rule < 4001 + relay % 9; ++rule) row(1, rule);
            row(2, 3902);
        }
        project({"RLY_RDZTEM", "Case_No,RNo,ID_Name,I_Name,J_Name,Side,PNo,Cdz,RuleNo,Rdz"}, results);
        copyChoices();
    }
    /// What relay 1 has for its rule, for every relay added.
    static void copyChoices() {
        const QString relays = " r.RNo FROM (SELECT DISTINCT RNo FROM RLY_RDZTEM WHERE RNo>100) r JOIN ";
        for (const auto& [table, columns] : std::vector<std::pair<QString, QString>>{
                 {"RLY_RRVIN", "Case_No,PNo,RuleNo,V,VarNo"},
                 {"RLY_FAULTINF", "Case_No,PNo,RuleNo,RMNo,NSela,NSelb,NSelc,NSys"},
                 {"RLY_CRUDRM", "Case_No,PNo,RuleNo,RMode,MType,ID_No,I_No,J_No,K_Loc,FType,R,X"},
                 {"RLY_RLYOBJ_TEM", "DzNo,Cdz,NDz11,NDz21,NDz12,NDz22"}}) {
            const QString own = "t." + QString(columns).replace(",", ",t.");
            exec("INSERT INTO " + table + "(" + columns + ",RNo) SELECT " + own + "," + relays + table +
                 " t WHERE t.RNo=1");
        }
    }
    static QStringList titles(const PdfReader& book) {
        QStringList shown;
        for (const auto& heading : book.outline) shown += QString(heading.level * 2, '.') + heading.title;
        return shown;
    }
    /// Every entry of the outline leads to its heading, which is not the last on its page.
    static void expectHeadingsInPlace(const PdfReader& book) {
        for (const auto& [title, level, at] : book.outline) {
            ASSERT_GE(at.page, 0) << title.toStdString();
            const QString found = book.textIn(at.page, {0, at.y - 1, 600, 24});
            EXPECT_TRUE(found.startsWith(QString(title).remove(' ').normalized(QString::NormalizationForm_KC)))
                << title.toStdString() << " is not on page " << at.page + 1 << " at " << at.y << " but "
                << found.toStdString();
            EXPECT_NE(book.textIn(at.page, {0, at.y + 18, 600, kFoot - at.y - 18}), "")
                << title.toStdString() << " ends page " << at.page + 1;
        }
    }
    static void expectLinksLead(const PdfReader& book) {
        for (const auto& link : book.links) {
            ASSERT_TRUE(book.headingAt(link.target)) << "page " << link.page + 1;
            EXPECT_NE(book.textIn(link.page, link.area), "") << "page " << link.page + 1 << ": nothing to click on";
        }
    }
    /// Titles of the headings to which links with a text lead from the first pages.
    static QStringList targets(const PdfReader& book, const QString& text) {
        QStringList found;
        for (const auto& link : book.links)
            if (link.page < 2 && book.textIn(link.page, link.area) == text)
                found += book.headingAt(link.target)->title + " p" + QString::number(link.target.page + 1);
        return found;
    }
    /// Where the links lead that stand in the first row of the overview with a rule.
    static QStringList besides(const PdfReader& book, const QString& ruleNo) {
        const auto found = std::find_if(book.links.begin(), book.links.end(), [&](const auto& link) {
            return link.page == 1 && book.textIn(1, link.area).startsWith(ruleNo);
        });
        QStringList titles;
        for (const auto& link : book.links)
            if (found != book.links.end() && link.page == 1 &&
                std::abs(link.area.center().y() - found->area.center().y()) < 3)
                titles += book.headingAt(link.target)->title;
        return titles;
    }
};

TEST_F(PdfBook, HasItsOwnFontsAndAnOutlineOfRelaysPartsAndRules) {
    ASSERT_TRUE(exportBookPdf(request(7, 3), pdf()));
    PdfReader book(pdf());
    EXPECT_TRUE(book.whole);
    EXPECT_GE(book.fonts, 1);
    EXPECT_EQ(book.embedded, book.fonts);
    EXPECT_EQ(book.root().getKey("/PageMode").getName(), "/UseOutlines");
    EXPECT_EQ(book.root().getKey("/Lang").getUTF8Value(), "zh-CN");
    const QString type = readRelayTypes().value(3).RTypeCode;
    const std::string all = titles(book).join('\n').toStdString();
    EXPECT_EQ(all, ("目录\n定值一览\n甲线线 甲站侧 " + type + "\n..1 段\n....3901 故障量\n甲线线 乙站侧 " + type +
                    "\n..1 段\n....3902 没有变量\n..2 段\n....3903 配合\n..分支系数")
                       .toStdString());
    if (book.words.isEmpty()) GTEST_SKIP() << "pdftotext is not installed, the text of the book is not read back";
    expectHeadingsInPlace(book);
    QString text;
    for (int page = 0; page < book.pageCount(); ++page) text += book.textIn(page, {0, 0, 600, 850});
    for (const char* words : {"继电保护整定计算书", "第1", "三相短路接地", "参量值为0,没有灵敏度"})
        EXPECT_TRUE(text.contains(words)) << words << " not in\n" << text.toStdString();
}

TEST_F(PdfBook, LinksTheContentsToRelaysAndEachNumberToItsRule) {
    ASSERT_TRUE(exportBookPdf(request(7, 3), pdf()));
    const PdfReader book(pdf());
    if (book.words.isEmpty()) GTEST_SKIP() << "pdftotext is not installed, the words of the links are not read back";
    expectLinksLead(book);
    EXPECT_EQ(targets(book, "定值一览"), QStringList{"定值一览 p2"});
    EXPECT_EQ(targets(book, "2段"), QStringList{"2 段 p4"});
    const QString rule = "3901 故障量";  // from the primary and the secondary value and from the rule's own name
    EXPECT_EQ(besides(book, "3901"), (QStringList{book.outline[2].title, "1 段", rule, rule, rule}));
    EXPECT_EQ(besides(book, "3902").mid(2), (QStringList{"3902 没有变量", "3902 没有变量", "3902 没有变量"}));
}

TEST_F(PdfBook, OfManyRelaysIsWholeAndLeavesNoHeadingAtTheFootOfAPage) {
    addRelays(300);
    ASSERT_TRUE(exportBookPdf(request(7, 3), pdf()));
    const PdfReader book(pdf());
    int rules = 3;
    for (int relay = 101; relay <= 400; ++relay) rules += 2 + relay % 9;
    EXPECT_EQ(book.outline.size(), 3 + 302 + 603 + rules);
    EXPECT_TRUE(book.whole);
    if (book.words.isEmpty()) GTEST_SKIP() << "pdftotext is not installed, the places of the headings are not read";
    expectHeadingsInPlace(book);
    expectLinksLead(book);
}

TEST_F(PdfBook, ThatCannotBeWrittenIsTold) {
    EXPECT_FALSE(exportBookPdf(request(7, 3), folder.path() + "/没有的文件夹/book.pdf"));
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].startsWith("不能写文件 ")) << errors[0].toStdString();
    EXPECT_FALSE(exportBookPdf(request(8, 3), pdf()));
}

TEST_F(PdfBook, StaysAsItWasWhenTheDiskIsFull) {
    const QString file = folder.filePath("kept.pdf");
    ASSERT_TRUE(exportBookPdf(request(7, 3), file));
    const qint64 size = QFileInfo(file).size();
    const QStringList before = QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit little{4096, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &little);
    const bool written = exportBookPdf(request(7, 3), file);
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(written);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].startsWith("不能写文件 ")) << errors[0].toStdString();
    EXPECT_EQ(QFileInfo(file).size(), size);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden), before);
}

}  // namespace
