#include "programs/frame/EditSession.h"

#include <QCoreApplication>
#include <algorithm>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/CRDatabase.h"
#include "programs/frame/Messages.h"
#include "programs/frame/TableNames.h"

namespace {

QVector<sql::TableCopy> copiesOf(const QVector<EditSession::Table>& tables, const QString& suffix) {
    QVector<sql::TableCopy> copies;
    for (const EditSession::Table& table : tables) {
        const tables::Definition* definition = tables::ofCode(table.code);
        const QString ending = table.suffix.isEmpty() ? suffix : table.suffix;
        copies << sql::TableCopy{definition ? tables::connectionOf(definition->group) : QString(), table.base,
                                 table.base + ending};
    }
    return copies;
}

// Working tables that are no copies themselves, though their names end like those of copies, have no code for one.
bool makeShadow(const sql::TableCopy& shadow) {
    const tables::Definition* definition = tables::ofName(shadow.base);
    if (!definition) return false;
    if (tables::isCopyCode(definition->code + tables::copyOffset))
        return CRDatabase::BuildTable(shadow.copy, definition->code + tables::copyOffset, 0);
    return sql::makeCopy(shadow);
}

struct Caption {
    const char* owner;
    const char* text;
};
constexpr Caption kCaptions[] = {
    {"WinDlgSetRly", QT_TRANSLATE_NOOP("EditSession", "保护装设")},
    {"WinDlgSetAllRly", QT_TRANSLATE_NOOP("EditSession", "批量装设保护")},
    {"WinDlgRlyDataBrowse", QT_TRANSLATE_NOOP("EditSession", "数据浏览")},
    {"WinDlgActElement", QT_TRANSLATE_NOOP("EditSession", "动作元件设置")},
    {"WinDlgSetDev", QT_TRANSLATE_NOOP("EditSession", "保护装置设置")},
    {"WinDLgDefineDev", QT_TRANSLATE_NOOP("EditSession", "保护设备类型定义")},
    {"WinDlgSetRlyCop", QT_TRANSLATE_NOOP("EditSession", "设置被配合保护")},
    {"WinDlgSetDsp", QT_TRANSLATE_NOOP("EditSession", "保护显示配置")},
    {"WinDlgDefineDspDz", QT_TRANSLATE_NOOP("EditSession", "定值名定义")},
    {"WinDlgEditAndSelectPara", QT_TRANSLATE_NOOP("EditSession", "参数组选择")},
    {"WinDlgSelectRule", QT_TRANSLATE_NOOP("EditSession", "整定原则设定")},
    {"WinDlgSetRlyFault", QT_TRANSLATE_NOOP("EditSession", "保护整定故障设定")},
    {"WinDlgSetKlmPFault", QT_TRANSLATE_NOOP("EditSession", "灵敏度参量故障设定")},
    {"WinDlgSetKfFault", QT_TRANSLATE_NOOP("EditSession", "分支系数故障设置")},
    {"WinDlgSetSysmode", QT_TRANSLATE_NOOP("EditSession", "运行方式定义")},
    {"WinDlgKfCalInf", QT_TRANSLATE_NOOP("EditSession", "分支系数计算信息")},
    {"WinDlgSetCheck", QT_TRANSLATE_NOOP("EditSession", "轮检元件设置")},
    {"WinDlgEnsureKlmP", QT_TRANSLATE_NOOP("EditSession", "灵敏度参量确认")},
    {"WinDlgRlyCalMain", QT_TRANSLATE_NOOP("EditSession", "整定计算主界面")},
    {"WinDlgRlyCal", QT_TRANSLATE_NOOP("EditSession", "计算窗口")},
};

QString captionOf(const QString& owner) {
    for (const Caption& caption : kCaptions)
        if (owner == caption.owner) return QCoreApplication::translate("EditSession", caption.text);
    return owner;
}

// The marks of programs that have ended. Those whose copies are not all there are removed: no edit had begun, or its
// end had.
QVector<sql::CopyMark> abandoned() {
    QVector<sql::CopyMark> marks;
    for (const QString& connection : {tables::relayConnection, tables::ruleConnection})
        for (const sql::CopyMark& mark : sql::CopyMark::on(connection)) {
            if (mark.isHeld()) continue;
            if (sql::allExist(mark.copies))
                marks << mark;
            else
                sql::dropCopies(mark.copies);
        }
    std::stable_sort(marks.begin(), marks.end(),
                     [](const sql::CopyMark& a, const sql::CopyMark& b) { return a.opened < b.opened; });
    return marks;
}

QVector<sql::TableCopy> allCopies(const QVector<sql::CopyMark>& marks) {
    QVector<sql::TableCopy> copies;
    for (const sql::CopyMark& mark : marks) copies += mark.copies;
    return copies;
}

}  // namespace

EditSession::EditSession(const QString& owner, const QVector<Table>& tables, const QString& suffix)
    : copies_(owner, suffix, copiesOf(tables, suffix)) {}

bool EditSession::open(const QString& consequence) {
    QString failed;
    if (copies_.open(makeShadow, &failed)) return true;
    ReportError(Text::tr("建立") + failed + Text::tr("表失败") +
                    (consequence.isEmpty() ? QString() : Text::tr("，") + consequence),
                0);
    return false;
}

bool EditSession::commit() { return copies_.commit(); }

bool EditSession::restore() {
    if (!copies_.isOpen()) return false;
    if (copies_.restore()) return true;
    ReportError(Text::tr("不能恢复打开窗口前的数据，数据库中的数据未改变"), 0);
    return false;
}

QVector<EditSession::Leftover> EditSession::leftovers() {
    QVector<Leftover> found;
    for (const sql::CopyMark& mark : abandoned()) {
        auto same = std::find_if(found.begin(), found.end(), [&](const Leftover& one) {
            return one.owner == mark.owner && one.suffix == mark.suffix;
        });
        if (same == found.end()) same = found.insert(found.end(), {mark.owner, mark.opened, {}, mark.suffix, {}});
        for (const sql::TableCopy& copy : mark.copies) same->tables << copy.base;
        same->marks << mark;
    }
    return found;
}

// What was opened later on the same tables stood inside: it goes back first, as when the windows are cancelled one
// after the other.
bool EditSession::goBack(const Leftover& leftover) {
    const QVector<sql::TableCopy> outer = allCopies(leftover.marks);
    const QVector<sql::CopyMark> marks = abandoned();
    for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark) {
        if (mark->opened < leftover.opened || !mark->sharesBasesWith(outer) || mark->sharesCopiesWith(outer)) continue;
        if (!sql::restoreCopies(mark->copies)) return false;
        sql::dropCopies(mark->copies);
    }
    return sql::restoreCopies(outer) && sql::dropCopies(outer);
}

bool EditSession::keep(const Leftover& leftover) { return sql::dropCopies(allCopies(leftover.marks)); }

QString EditSession::describe(const Leftover& leftover) {
    return QCoreApplication::translate("EditSession", "“%1”于 %2 打开，既未确认也未取消（表：%3）")
        .arg(captionOf(leftover.owner), leftover.opened.toLocalTime().toString("yyyy-MM-dd HH:mm"),
             leftover.tables.join("、"));
}
