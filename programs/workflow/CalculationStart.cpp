#include "programs/workflow/CalculationStart.h"

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/CHandCalFlow.h"
#include "programs/frame/Messages.h"
#include "programs/workflow/CoordinationSearch.h"

CalculationStart::CalculationStart(CaseStore& cases, NetworkSource& network, CalculationPlaces places, int calMode)
    : cases_(cases), network_(network), places_(std::move(places)), case_(*cases.current()), calMode_(calMode) {}

CalculationStart::~CalculationStart() = default;

std::unique_ptr<CHandCalFlow> CalculationStart::makeFlow() const {
    return std::make_unique<CHandCalFlow>(case_.RTypeNo, case_.RTypeCode, places_.workDir, case_.Case_No,
                                          places_.programDir);
}

bool CalculationStart::leaveOutParts() {
    sql::Query query;
    for (int part = 1; part <= kStages; ++part)
        if (case_.PartFlg[size_t(part - 1)] == 0 &&
            !query.exec("UPDATE RLY_CASEINF SET PValid=0 WHERE Case_No=? AND PNo=?", {case_.Case_No, part}))
            return false;
    return true;
}

bool CalculationStart::start() {
    network_.SwitchNetwork(case_.Mlf, case_.Case_lf, case_.Scheme);
    if (!network_.isWhole()) {
        ReportError(Text::tr("切换网络失败，实时库中的网络不完整，不能计算"), 0);
        return false;
    }
    if (!network_.LoadCaseHeaders(case_.Case_lf)) return false;
    emit progress(0, Text::tr("初始化计算数据..."));
    if (!cases_.LoadCaseRelays()) return false;
    emit progress(20, Text::tr("初始化计算数据..."));
    if (!leaveOutParts()) return false;
    CoordinationSearch::SearchRlyCop(case_.Case_No);
    emit progress(40, Text::tr("初始化计算数据..."));
    conversion_ = makeFlow();
    connect(&conversion_->netData().process(), &EngineProcess::processExited, this, &CalculationStart::VASKELSlot,
            Qt::QueuedConnection);
    conversion_->netData().RunConversion(places_.programDir, places_.workDir, places_.rtdbName, places_.rtdbPath);
    if (aborted_) abort();
    return conversion_->netData().process().outcome() != EngineProcess::Outcome::None;
}

void CalculationStart::abort() {
    aborted_ = true;
    if (conversion_) conversion_->netData().process().abort();
    if (order_) order_->caseCal().turnOrderProcess().abort();
}

void CalculationStart::VASKELSlot() {
    if (aborted_ || conversion_->netData().process().outcome() != EngineProcess::Outcome::Done) return emit failed();
    emit converted();
    const int first = sql::scalar({}, "SELECT RNo FROM RLY_RLYOBJ_TEM LIMIT 1", {}, -1).toInt();
    order_ = makeFlow();
    connect(&order_->caseCal().turnOrderProcess(), &EngineProcess::processExited, this, &CalculationStart::QORDENSlot,
            Qt::QueuedConnection);
    CRelayInputCal& input = order_->relayInput();
    if (!order_->relayFault().WriteRelayFile(case_.RTypeNo, first)) return emit failed();
    order_->relayFault().setFirstWrite(1);
    if (!input.WriteControlFile(calMode_ == 1 ? 1 : 3) || !input.WriteVirtualRelayFile()) return emit failed();
    emit progress(70, Text::tr("确定计算顺序..."));
    order_->caseCal().RunTurnOrder(places_.programDir, places_.workDir);
}

void CalculationStart::QORDENSlot() {
    if (aborted_ || order_->caseCal().turnOrderProcess().outcome() != EngineProcess::Outcome::Done)
        return emit failed();
    makeFlow()->relayFault().ReadTurnOrder();
    emit progress(100, Text::tr("初始化计算数据..."));
    emit ready();
}
