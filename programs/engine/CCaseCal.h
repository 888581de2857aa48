#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "programs/engine/EngineProcess.h"

class dbDatabase;

/// Starts the two calculating programs and runs the topology pass.
class CCaseCal : public QObject {
    Q_OBJECT

  public:
    CCaseCal();
    ~CCaseCal() override;

    /// Starts QORDEN.EXE, which leaves the turn order. One of an earlier run is removed.
    bool RunTurnOrder(const QString& exeDir, const QString& workDir);
    /// Starts HALDERN.EXE, which leaves the results. Earlier ones are removed, the branch coefficients excepted.
    bool RunEngine(const QString& exeDir, const QString& workDir);
    /// Numbers the buses of the real-time database anew. \pre setDatabase()
    void AnalyzeTopology();

    void setDatabase(dbDatabase* fdb) { fdb_ = fdb; }  ///< not owned
    [[nodiscard]] EngineProcess& turnOrderProcess() { return *turnOrder_; }
    [[nodiscard]] EngineProcess& engineProcess() { return *engine_; }

  private:
    struct Model;
    std::unique_ptr<EngineProcess> turnOrder_;
    std::unique_ptr<EngineProcess> engine_;
    dbDatabase* fdb_ = nullptr;
    std::unique_ptr<Model> model_;
};
