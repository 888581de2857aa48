#pragma once

#include <QByteArray>
#include <QString>

#include "platform/rtdb/dbDatabase.h"

class QSqlDatabase;

/// Transfer of a case into the real-time tables: base tables -> calculation tables -> real-time database (the one that
/// was opened last). Scheme names are GBK bytes; a null database pointer means the default connection.
/// All imports return 1, or 0 on failure, with the reason in the dock; none commits the real-time database.

/// Positive-sequence data of a scheme: base tables and the scheme's changes -> L1_0 .. L7_0.
class CLFCalDataTransfer {
  public:
    CLFCalDataTransfer(const char* scheme, QSqlDatabase* database);
    int ImportLDataFromBaseDB();

  private:
    QString scheme_, connection_;
};

/// Zero-sequence data of a scheme: base tables and the scheme's changes -> S2_0 .. S5_0.
class CSTCalDataTransfer {
  public:
    CSTCalDataTransfer(const char* scheme, QSqlDatabase* database);
    int ImportSDataFromBaseDB();

  private:
    QString scheme_, connection_;
};

/// L1_<n> .. L7_<n> -> real-time tables, which they replace.
class CLFCalDataToRTDB {
  public:
    CLFCalDataToRTDB(int caseNo, QSqlDatabase* database);
    /// Takes the network of the case before out of the real-time tables (all), or only its load-flow results.
    void InValidateLFCalDataInRTDB(bool all);
    int ImportLDataToRTDB();

  private:
    int caseNo_;
    QString connection_;
};

/// S2_<n> .. S5_<n> -> the elements that stand in the real-time tables, and mutual impedances.
class CSTCalDataToRTDB {
  public:
    CSTCalDataToRTDB(int caseNo, QSqlDatabase* database);
    int ImportSDataToRTDB();

  private:
    int caseNo_;
    QString connection_;
};

/// Load-flow results of a case -> node voltages and injections of the real-time tables. Nodes without a result of their
/// own take that of a node which closed switches join to them; star points get the voltage at which their windings'
/// currents add up to zero.
class CLFResultDataTransfer {
  public:
    CLFResultDataTransfer(int caseNo, QSqlDatabase* database, dbDatabase* realTime, bool, int module);
    int ImportLFResultDataToRTDB();

  private:
    int caseNo_;
    QString connection_;
    dbDatabase* realTime_;
};

/// Bus number of a node of the real-time database that was opened last. \param nodeName  GBK
/// \return 0 for an unknown name or without a real-time database
int GetNodeBsNo_FromRTDB(const char* nodeName);
