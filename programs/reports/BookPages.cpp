#include "programs/reports/BookPages.h"

#include "platform/host/Text.h"
#include "programs/frame/Messages.h"

std::optional<BookPages> readBookPages(const BookRequest& request) {
    auto content = readBookContent(request);
    if (!content || content->parts.isEmpty()) {
        ReportError(content ? Text::tr("没有计算结果，不能生成计算书") : Text::tr("生成计算书失败"), 0);
        return std::nullopt;
    }
    BookPages pages{*content, {}, {}};
    if (request.sensitivity) return pages;
    QVector<RuleWithoutResult> withoutResult;
    if (!request.workDir.isEmpty()) withoutResult = RulesWithoutResult::load(request.workDir, request.caseNo);
    for (const RuleWithoutResult& rule : withoutResult)
        pages.reasons.insert({{rule.RNo, rule.PNo}, rule.RuleNo}, RulesWithoutResult::reasonText(rule.reason));
    for (const ResultRow& row : resultTable(request.caseNo, request.rTypeNo, withoutResult))
        pages.table.insert({{row.RNo, row.PNo}, row.Cdz}, row);
    return pages;
}
