#pragma once

#include <QAction>
#include <QMap>
#include <QObject>
#include <QString>

class CDatabase;
class CHandleGraph;
class QSqlDatabase;

/// A calculation module as the host sees it. Call order: constructor, SetDynMenuActions, InitCalcModule,
/// InitDynMenuStatus, then anything, CloseCalcModule, destructor.
class CCalcObject : public QObject {
    Q_OBJECT
  public:
    CHandleGraph* handler = nullptr;
    CDatabase* hostDatabase = nullptr;           ///< of the host; not used by the modules here
    int caseNo = -1;                             ///< -1 none
    QMap<QString, QAction*>* actions = nullptr;  ///< not owned

    virtual int GetCase_NoByCase_Name(const QString& name) = 0;
    virtual QString GetCase_Name(int no) = 0;
    virtual int GetCase_No() const = 0;
    virtual void SetCase_No(int no) = 0;
    virtual void InitDynMenuStatus() = 0;
    virtual bool ProcessDynMenuInterface(const QString& name, bool& handled) = 0;
    virtual bool PrepareRTAdditionalGraphData() { return true; }
    virtual bool PrepareRTLabelsData(int, bool) = 0;
    virtual bool PrepareEleRTLabelsData(const QString&, int, int) { return true; }
    /// Directories end in a separator (dataDir) and in none (homeDir).
    virtual bool InitCalcModule(QSqlDatabase* database, const QString& dataDir, const QString& homeDir,
                                CDatabase* hostDatabase) = 0;
    virtual bool CloseCalcModule() = 0;
    virtual void SetDynMenuActions(QMap<QString, QAction*>* map) = 0;
    virtual QAction* GetDynMenuAction(const QString& name) const = 0;

    void SetSubModuleOrderNum(int number) { subModule_ = number; }
    [[nodiscard]] int GetSubModuleOrderNum() const { return subModule_; }
    void SetEleLabelsConfNum(int number) { labelsConfiguration_ = number; }
    [[nodiscard]] int GetEleLabelsConfNum() const { return labelsConfiguration_; }
    /// Posts an event to the host's main window, which owns `data`. \param data  a new int
    void PostCustomEvent2MainWidget(int event, void* data);

  private:
    int subModule_ = 0;
    int labelsConfiguration_ = 0;
};
