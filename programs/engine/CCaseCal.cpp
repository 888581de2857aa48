#include "programs/engine/CCaseCal.h"

#include <exception>

#include "exchange/FileNames.h"
#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/netmodel/TP.h"
#include "programs/engine/WorkFiles.h"

namespace {

void show(const QString& text, int level) {
    WinDockFeedback::ShowMessage(text.toUtf8().constData(), "", "", "", level);
}

}  // namespace

struct CCaseCal::Model {
    norvdb::NORVDB network;
};

CCaseCal::CCaseCal()
    : turnOrder_(std::make_unique<EngineProcess>(exchange::file::kOrderProgram, 1)),
      engine_(std::make_unique<EngineProcess>(exchange::file::kEngineProgram, 1)),
      model_(std::make_unique<Model>()) {}

CCaseCal::~CCaseCal() = default;

// Both take away what an earlier run left: a program that leaves nothing must not seem to repeat it.
bool CCaseCal::RunTurnOrder(const QString& exeDir, const QString& workDir) {
    if (!turnOrder_->isRunning()) work::remove(workDir, exchange::file::kTurnOrder);
    return turnOrder_->start(exeDir, workDir);
}

bool CCaseCal::RunEngine(const QString& exeDir, const QString& workDir) {
    for (const char* name :
         {exchange::file::kSettingResults, exchange::file::kFaultResults, exchange::file::kVariableResults})
        if (!engine_->isRunning()) work::remove(workDir, name);
    return engine_->start(exeDir, workDir);
}

void CCaseCal::AnalyzeTopology() {
    fdb_->commit();
    norvdb::TP pass(model_->network);
    show(Text::tr("开始进行拓扑分析.....\n"), WinDockFeedback::Information);
    try {
        pass.tpReadFastdb(fdb_);
    } catch (const std::exception&) {
        return show(Text::tr("拓扑读取实时库有异常发生。\n"), WinDockFeedback::Error);
    }
    try {
        if (pass.tpAllnew() == 0) return show(Text::tr("拓扑分析运行失败！\n"), WinDockFeedback::Error);
    } catch (const std::exception&) {
        return show(Text::tr("拓扑分析运行异常！\n"), WinDockFeedback::Error);
    }
    show(Text::tr("拓扑分析成功完成！\n"), WinDockFeedback::Information);
    try {
        pass.tpWriteFastdb(fdb_);
    } catch (const std::exception&) {
        show(Text::tr("拓扑数据写入实时库异常发生。\n"), WinDockFeedback::Error);
    }
}
