#pragma once

#include <QString>
#include <memory>

#include "programs/engine/EngineProcess.h"

class dbDatabase;

/// Brings the network of a case into the branch table and the real-time database, and has it converted into the files
/// that the other programs read.
class CNetDataCal {
  public:
    CNetDataCal();

    /// Transfers the network of a load-flow case or of a scheme into the real-time tables.
    bool ConvertCaseData(int lfCase, QString scheme, int onLoadFlow, dbDatabase* fdb);
    /// Fills RLY_RRBRANCH_TEM from the calculation tables of the load-flow case (0, the scheme's, when negative).
    bool BuildBranchTable(int lfCase);
    /// Gives the nodes of RLY_RRBRANCH_TEM their bus numbers.
    bool NumberBranchNodes();
    /// Writes RTDB.INC and starts VASKEL.EXE.
    bool RunConversion(const QString& exeDir, const QString& workDir, const QString& rtdbName, const QString& rtdbPath);

    [[nodiscard]] EngineProcess& process() { return *process_; }

  private:
    std::unique_ptr<EngineProcess> process_;
};
