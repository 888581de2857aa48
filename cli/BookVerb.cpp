#include <CLI/CLI.hpp>
#include <QSaveFile>
#include <memory>

#include "cli/CaseVerbs.h"
#include "cli/TextTable.h"
#include "platform/sql/Sql.h"
#include "programs/frame/TableDefinitions.h"
#include "programs/reports/BookHtml.h"
#include "programs/reports/BookText.h"

namespace cli {

namespace {

struct BookWish {
    std::string project, caseName;
    std::string kind = "setting", format = "text", out;
};

/// Gives this connection its own working tables of the case's settings and sensitivities, filled from the case: what
/// the tables of the project hold belongs to whoever works in it.
bool loadPrivately(Context& context, CaseStore& cases) {
    for (const QString table : {"RLY_RLYOBJ_TEM", "RLY_RKLMTEM_TEM"})
        if (!sql::Query().exec("CREATE TEMPORARY TABLE " + table + tables::ofName(table)->layout.columnsText()))
            return context.stop(Internal, {});
    return loadCase(context, cases);
}

/// The results of sensitivity parameters bear no case: they are this case's when they are for its relays.
bool parametersAreOf(Context& context) {
    const auto count = [](const char* condition) {
        return sql::scalar({}, QString("SELECT COUNT(*) FROM RLY_RDZTEM WHERE Case_No=0") + condition).toInt();
    };
    if (count("") == 0) return context.stop(NoResult, "灵敏度参量还没有计算，请先运行 case klm");
    return count(" AND RNo NOT IN (SELECT RNo FROM RLY_RLYOBJ_TEM)") == 0 ||
           context.stop(NoResult, "灵敏度参量是另一个作业的，请先对这个作业运行 case klm");
}

bool openPrivately(Context& context, const BookWish& wish, CaseStore& cases) {
    if (!context.openProject(wish.project, Access::Read)) return false;
    if (!cases.UpdateCaseChain(1)) return context.stop(Internal, {});
    return selectCase(context, wish.caseName, cases) && loadPrivately(context, cases);
}

BookRequest requestOf(Context& context, const CaseNode& node, bool sensitivity) {
    return {sensitivity ? 0 : node.Case_No, node.RTypeNo, node.RTypeCode, node.Case_Name, sensitivity,
            context.places().workDir};
}

void give(Context& context, const QByteArray& bytes, const QString& out) {
    QSaveFile file(out);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        context.stop(BadInput, "不能写文件 " + out + "：" + file.errorString());
}

/// In GBK to a file, where it is what the book's viewer expects; in UTF-8 to standard output.
void giveText(Context& context, const BookRequest& request, const QString& out) {
    const auto book = readBookContent(request);
    if (!book || book->parts.isEmpty()) {
        context.stop(book ? NoResult : Internal, book ? "没有计算结果，不能生成计算书" : "");
        return;
    }
    const QString text = bookText(*book, QDateTime::currentDateTime());
    out.isEmpty() ? print(text) : give(context, bookBytes(text), out);
}

void giveHtml(Context& context, const BookRequest& request, const QString& out) {
    const auto page = bookHtml(request);
    if (!page) {
        context.exitCode = NoResult;
        return;
    }
    out.isEmpty() ? print(QString::fromUtf8(*page)) : give(context, *page, out);
}

void writeBook(Context& context, const BookWish& wish) {
    CaseStore cases;
    const bool sensitivity = wish.kind == "sensitivity";
    if (!openPrivately(context, wish, cases) || (sensitivity && !parametersAreOf(context))) return;
    const BookRequest request = requestOf(context, *cases.current(), sensitivity);
    const QString out = QString::fromStdString(wish.out);
    wish.format == "html" ? giveHtml(context, request, out) : giveText(context, request, out);
}

}  // namespace

void addBook(CLI::App& app, Context& context) {
    auto wish = std::make_shared<BookWish>();
    CLI::App* verb = app.add_subcommand("book", "计算书：每个定值或灵敏度参量由何而来");
    verb->add_option("PROJECT", wish->project, "工程名")->required();
    verb->add_option("--case", wish->caseName, "作业名或作业号")->required();
    verb->add_option("--kind", wish->kind, "setting 整定计算书（缺省），sensitivity 灵敏度参量计算书")
        ->check(CLI::IsMember({"setting", "sensitivity"}));
    verb->add_option("--format", wish->format, "text 文本（缺省），html 网页")->check(CLI::IsMember({"text", "html"}));
    verb->add_option("--out", wish->out, "写到文件，文本以 GBK 编码；缺省写到标准输出，以 UTF-8 编码");
    verb->callback([=, &context] { writeBook(context, *wish); });
}

}  // namespace cli
