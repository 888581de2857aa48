#pragma once

#include <QComboBox>
#include <QString>

#include "platform/host/ui/CCalcObject.h"
#include "platform/host/ui/CComboBoxCaseNo.h"
#include "programs/frame/Export.h"

class dbDatabase;

/// The module as the host sees it. Everything else lives in the databases; this keeps the case in hand.
class MORVANE_EXPORT CMorvaneObject : public CCalcObject {
    Q_OBJECT
  public:
    static int iRlyDspFlg;  ///< 1 after settings were saved: the labels are redrawn when the case editor closes
    static int iRlyDspAss;  ///< a click on a label tells the coordination
    static int iRlyDspLoc;  ///< labels tell the relay type

    CMorvaneObject(CComboBoxCaseNo* caseCombo, QComboBox* modeCombo, dbDatabase* fdb, QAction* moduleAction);
    /// Without the host's toolbar; connects no database.
    explicit CMorvaneObject(dbDatabase* fdb);
    ~CMorvaneObject() override;

    int GetCase_NoByCase_Name(const QString& name) override;
    QString GetCase_Name(int no) override;
    int GetCase_No() const override;
    void SetCase_No(int no) override;
    void InitDynMenuStatus() override;
    bool ProcessDynMenuInterface(const QString& name, bool& handled) override;
    bool PrepareRTLabelsData(int, bool) override;
    bool InitCalcModule(QSqlDatabase* database, const QString& dataDir, const QString& homeDir,
                        CDatabase* hostDatabase) override;
    bool CloseCalcModule() override;
    void SetDynMenuActions(QMap<QString, QAction*>* map) override;
    QAction* GetDynMenuAction(const QString& name) const override;

    [[nodiscard]] bool IsHaveResult() const { return true; }
    void SetHaveResult(bool) {}
    /// Fills the case combo from the cases of the project.
    void InitComboBox_Case();
    /// Asks the host to redraw the colours of the network of a load-flow case (mlf not 0) or of a scheme.
    void RefreshNetWork(int mlf);
    /// Turns the relays of the project into labels of the diagram. \return true
    bool RefreshSLG();
    /// Selects a case; another network source is brought into the real-time database.
    void Refreshfdb(const QString& caseName);
    /// Name of a location on tool tips and in lists.
    static QString RlyDsp(const QString& id, const QString& iName, const QString& jName, int rType, int side);

    /// The mode combo stands on its first item: relays may be edited.
    [[nodiscard]] bool isEditing() const;
    [[nodiscard]] dbDatabase* realTime() const { return fdb_; }

  public slots:
    void SubStation(int mode);
    void RlyPopupMenuSetDsp();

  private:
    dbDatabase* fdb_ = nullptr;
};
