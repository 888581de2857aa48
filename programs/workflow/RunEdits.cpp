#include "programs/workflow/RunSession.h"

#include <cmath>
#include <tuple>

#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/sql/Placeholders.h"
#include "platform/sql/Sql.h"
#include "programs/engine/CAutoCalFlow.h"
#include "programs/engine/CHandCalFlow.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/SettingConversion.h"
#include "programs/frame/StageColumns.h"
#include "programs/frame/TableNames.h"

// What follows when a value or a rule's parameters are changed in a run: the rules concerned are calculated again, one
// engine run after the other.

namespace {

struct Ratios {
    double ctPri = 1, ctSec = 1, ptPri = 1, ptSec = 1;
};

Ratios ratiosOf(int rNo) {
    sql::Query query;
    query.exec("SELECT CTPri,CTSec,PTPri,PTSec FROM RLY_RUD WHERE RNo=?", {rNo});
    return query.next() ? Ratios{query.real(0), query.real(1), query.real(2), query.real(3)} : Ratios();
}

/// \return nothing for a text that no setting can have
std::optional<double> settingOf(const QString& text) {
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    return ok && std::isfinite(value) && value >= 0 ? std::optional(value) : std::nullopt;
}

}  // namespace

bool RunSession::ApplySettingEdit(int rNo, int pNo, const QVector<TypedSetting>& values, const QString& changed) {
    if (state_ == State::Busy && !recalcPending_) {
        ReportError(Text::tr("正在计算，不能修改定值"), 1);
        return false;
    }
    if (!storeEdit(rNo, pNo, values)) return false;
    changed_ = true;
    if (recalcPending_) editsInStep_.append({rNo, pNo, values});
    const RelayTypeInfo type = readRelayTypes().value(case_.RTypeNo);
    if (const SettingKind* setting = type.setting(changed)) RecalcDependents(rNo, pNo, setting->DzNo);
    return true;
}

bool RunSession::ApplySettingEdit(int rNo, int pNo, const QString& cdz, const QString& value) {
    return ApplySettingEdit(rNo, pNo, {{cdz, value}}, cdz);
}

bool RunSession::storeEdit(int rNo, int pNo, const QVector<TypedSetting>& values) {
    const RelayTypeInfo type = readRelayTypes().value(case_.RTypeNo);
    const Ratios ratios = ratiosOf(rNo);
    QVariantList names, primary, secondary;
    for (const TypedSetting& typed : values) {
        const std::optional<double> value = settingOf(typed.text);
        if (!value) {
            ReportError(Text::tr("定值的数据类型错误，或者小于零"), 0);
            return false;
        }
        const SettingKind* setting = type.setting(typed.Cdz);
        if (!setting) return false;
        names << typed.Cdz;
        primary << typed.Cdz << *value;
        secondary << typed.Cdz
                  << *value * conversionFactor(setting->VType, ratios.ctPri, ratios.ctSec, ratios.ptPri, ratios.ptSec);
    }
    if (names.isEmpty() || pNo < 1 || pNo > kStages) return false;
    const QString column = "NDz" + QString::number(pNo);
    const QString byName = "=CASE Cdz" + QString(" WHEN ? THEN ?").repeated(names.size()) + " END";
    if (!sql::Query().exec("UPDATE RLY_RLYOBJ_TEM SET " + column + "1" + byName + "," + column + "2" + byName +
                               " WHERE RNo=? AND Cdz IN (" + sql::placeholders(names.size()) + ")",
                           primary + secondary + QVariantList{rNo} + names))
        return false;
    auto_->relayFault().workingSettingsChanged(rNo);
    return true;
}

void RunSession::RecalcDependents(int rNo, int pNo, int dzNo) {
    const bool onRow = manualRunning_ && hand_->rowCursor.isValid();
    const int passedRNo = onRow ? hand_->rowCursor.row().rno : -1;
    const int passedId = onRow ? hand_->rowCursor.row().id : -1;
    for (const auto& rule : CoordinationSearch::dependents(case_.Case_No, rNo, pNo, dzNo, passedRNo, passedId))
        recalculations_.enqueue(rule);
    if (recalcPending_) return;
    abortFlag_ = false;
    lossesBefore_ = sql::losses();
    recalculateNext();
}

bool RunSession::changeParameters(int rNo, int pNo, int ruleNo, int parNo) {
    if (state_ == State::Busy) return false;
    if (!RowCursor::ofRule(case_.Case_No, rNo, pNo, ruleNo).isValid()) {
        ReportError(Text::tr("本次计算中没有这条整定原则"), 1);
        return false;
    }
    abortFlag_ = false;
    lossesBefore_ = sql::losses();
    step_.begin({rNo, pNo, ruleNo});
    if (!sql::Query().exec("UPDATE RLY_CASEINF SET ParNo=? WHERE Case_No=? AND RNo=? AND PNo=? AND RuleNo=?",
                           {parNo, case_.Case_No, rNo, pNo, ruleNo}) ||
        !hand_->relayInput().WriteRuleFile(case_.RTypeNo, 1)) {
        step_.takeBack();
        return false;
    }
    changed_ = true;
    recalculations_.enqueue({rNo, pNo, ruleNo});
    return recalculateNext();
}

QString RunSession::announced(const CoordinationSearch::Dependent& rule) const {
    sql::Query relay;
    relay.exec("SELECT RType,ID_Name,I_Name,J_Name,Side,RTypeCode FROM RLY_RUD WHERE RNo=?", {rule.RNo});
    if (!relay.next()) return {};
    const QString note =
        sql::scalar(tables::ruleConnection, "SELECT Note FROM RULEINF WHERE RuleNo=?", {rule.RuleNo}).toString();
    return locationLabel(relay.number(0), relay.text(1), relay.text(2), relay.text(3), relay.number(4)) + " " +
           relay.text(5) + " " + QString::number(rule.PNo) + Text::tr(" 段 整定规则:") + note;
}

void RunSession::forgetNotes(const CoordinationSearch::Dependent& rule) {
    const auto isOf = [&](const RuleWithoutResult& note) {
        return note.RNo == rule.RNo && note.PNo == rule.PNo && note.RuleNo == rule.RuleNo;
    };
    withoutResult_.removeIf(isOf);
    if (toStore_) toStore_->removeIf(isOf);
}

bool RunSession::recalculateNext() {
    while (!recalculations_.isEmpty()) {
        const auto rule = recalculations_.dequeue();
        const RowCursor cursor = RowCursor::ofRule(case_.Case_No, rule.RNo, rule.PNo, rule.RuleNo);
        if (!cursor.isValid()) continue;
        WinDockFeedback::ShowMessage((Text::tr("重新计算 ") + announced(rule)).toUtf8().constData(), "", "", "",
                                     WinDockFeedback::Information);
        recalcPending_ = true;
        state_ = State::Busy;
        if (!step_.isOpen()) step_.begin({rule.RNo, rule.PNo, rule.RuleNo});
        notesBefore_ = {withoutResult_, toStore_};
        forgetNotes(rule);
        emit stepStarted(rule.RNo, rule.PNo, rule.RuleNo);
        hand_->RecalculateRule(&cursor);
        return true;
    }
    return false;
}

void RunSession::tellNotRecalculated(const CoordinationSearch::Dependent& rule) const {
    ReportError(Text::tr("重新计算没有完成，仍是原来的结果: ") + announced(rule), 1);
}

void RunSession::recalculationEnded(bool goOn) {
    recalcPending_ = false;
    const QVector<Edit> edits = std::exchange(editsInStep_, {});
    if (!step_.wasKept()) {
        std::tie(withoutResult_, toStore_) = notesBefore_;
        for (const Edit& edit : edits) storeEdit(edit.RNo, edit.PNo, edit.values);
        const RuleInHand& work = step_.inHand();
        tellNotRecalculated({work.RNo, work.PNo, work.RuleNo});
    }
    while (!goOn && !recalculations_.isEmpty()) tellNotRecalculated(recalculations_.dequeue());
    if (abortFlag_ && manualRunning_) return end(false);
    if (recalculateNext()) return;
    state_ = manualRunning_ ? State::Waiting : State::Idle;
    emit recalculated();
}
