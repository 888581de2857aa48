#include <cmath>

#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/sql/Sql.h"
#include "programs/engine/CAutoCalFlow.h"
#include "programs/engine/CHandCalFlow.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/SettingConversion.h"
#include "programs/frame/TableNames.h"
#include "programs/workflow/RunSession.h"

// What follows when a value or a rule's parameters are changed in a run: the rules concerned are calculated again, one
// engine run after the other.

namespace {

double factorOf(int rNo, int vType) {
    sql::Query query;
    query.exec("SELECT CTPri,CTSec,PTPri,PTSec FROM RLY_RUD WHERE RNo=?", {rNo});
    if (!query.next()) return 1;
    return conversionFactor(vType, query.real(0), query.real(1), query.real(2), query.real(3));
}

}  // namespace

bool RunSession::ApplySettingEdit(int rNo, int pNo, const QString& cdz, const QString& value) {
    bool ok = false;
    const double primary = value.toDouble(&ok);
    if (!ok || !std::isfinite(primary) || primary < 0) {
        ReportError(Text::tr("定值的数据类型错误，或者小于零"), 0);
        return false;
    }
    const RelayTypeInfo type = readRelayTypes().value(case_.RTypeNo);
    const SettingKind* setting = type.setting(cdz);
    if (!setting || pNo < 1 || pNo > kStages) return false;
    const double secondary = primary * factorOf(rNo, setting->VType);
    const QString part = QString::number(pNo);
    sql::Query query;
    if (!query.exec("UPDATE RLY_RLYOBJ_TEM SET NDz" + part + "1=?,NDz" + part + "2=? WHERE RNo=? AND Cdz=?",
                    {primary, secondary, rNo, cdz}))
        return false;
    auto_->relayFault().workingSettingsChanged(rNo);
    RecalcDependents(rNo, pNo, setting->DzNo);
    return true;
}

void RunSession::RecalcDependents(int rNo, int pNo, int dzNo) {
    const bool onRow = manualRunning_ && hand_->rowCursor.isValid();
    const int passedRNo = onRow ? hand_->rowCursor.row().rno : -1;
    const int passedId = onRow ? hand_->rowCursor.row().id : -1;
    for (const auto& rule : CoordinationSearch::dependents(case_.Case_No, rNo, pNo, dzNo, passedRNo, passedId))
        recalculations_.enqueue(rule);
    if (!recalcPending_) recalculateNext();
}

bool RunSession::changeParameters(int rNo, int pNo, int ruleNo, int parNo) {
    if (state_ == State::Busy) return false;
    sql::Query query;
    if (!query.exec("UPDATE RLY_CASEINF SET ParNo=? WHERE Case_No=? AND RNo=? AND PNo=? AND RuleNo=?",
                    {parNo, case_.Case_No, rNo, pNo, ruleNo}))
        return false;
    hand_->reloadRules();
    if (!hand_->relayInput().WriteRuleFile(case_.RTypeNo, 1)) return false;
    recalculations_.enqueue({rNo, pNo, ruleNo});
    return recalcPending_ || recalculateNext();
}

void RunSession::announce(const CoordinationSearch::Dependent& rule) const {
    sql::Query relay;
    relay.exec("SELECT RType,ID_Name,I_Name,J_Name,Side,RTypeCode FROM RLY_RUD WHERE RNo=?", {rule.RNo});
    if (!relay.next()) return;
    const QString note =
        sql::scalar(tables::ruleConnection, "SELECT Note FROM RULEINF WHERE RuleNo=?", {rule.RuleNo}).toString();
    const QString text = Text::tr("重新计算 ") +
                         locationLabel(relay.number(0), relay.text(1), relay.text(2), relay.text(3), relay.number(4)) +
                         " " + relay.text(5) + " " + QString::number(rule.PNo) + Text::tr(" 段 整定规则:") + note;
    WinDockFeedback::ShowMessage(text.toUtf8().constData(), "", "", "", WinDockFeedback::Information);
}

bool RunSession::recalculateNext() {
    while (!recalculations_.isEmpty()) {
        const auto rule = recalculations_.dequeue();
        const RowCursor cursor = RowCursor::ofRule(case_.Case_No, rule.RNo, rule.PNo, rule.RuleNo);
        if (!cursor.isValid()) continue;
        sql::Query().exec("DELETE FROM RLY_CRUDRM WHERE RNo=? AND PNo=? AND RuleNo=? AND Case_No=?",
                          {rule.RNo, rule.PNo, rule.RuleNo, case_.Case_No});
        announce(rule);
        recalcPending_ = true;
        state_ = State::Busy;
        emit stepStarted(rule.RNo, rule.PNo, rule.RuleNo);
        hand_->RecalculateRule(&cursor);
        return true;
    }
    return false;
}
