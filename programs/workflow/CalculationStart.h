#pragma once

#include <QObject>
#include <memory>

#include "programs/workflow/CaseStore.h"
#include "programs/workflow/NetworkSource.h"

class CHandCalFlow;

/// Where the files and programs of a calculation are; directories end in a slash.
struct CalculationPlaces {
    QString rtdbName;    ///< name of the real-time directory
    QString rtdbPath;    ///< the same, seen from the working directory
    QString workDir;     ///< working directory of the programs
    QString programDir;  ///< directory of the programs
};

/// The start of a calculation: from the saved case to the order in which its relays are calculated. Driven by the ends
/// of the programs; nothing waits.
class CalculationStart : public QObject {
    Q_OBJECT

  public:
    /// The case is the current one of the store, saved before.
    CalculationStart(CaseStore& cases, NetworkSource& network, CalculationPlaces places, int calMode);
    ~CalculationStart() override;

    /// \return false when a step fails at once; failed() is not raised then
    bool start();
    /// Ends the program that runs; failed() follows.
    void abort();

  signals:
    void progress(int percent, const QString& what);
    void converted();  ///< the network has been converted, the order of the relays comes next
    void ready();      ///< the run window may open
    void failed();     ///< the dock has the reason

  private slots:
    void VASKELSlot();
    void QORDENSlot();

  private:
    bool leaveOutParts();
    std::unique_ptr<CHandCalFlow> makeFlow() const;

    CaseStore& cases_;
    NetworkSource& network_;
    CalculationPlaces places_;
    CaseNode case_;
    int calMode_;
    bool aborted_ = false;
    std::unique_ptr<CHandCalFlow> conversion_, order_;
};
