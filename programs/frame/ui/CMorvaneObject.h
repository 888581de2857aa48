#pragma once

#include <QComboBox>
#include <QHash>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <memory>
#include <optional>

#include "platform/host/ui/CCalcObject.h"
#include "platform/host/ui/CComboBoxCaseNo.h"
#include "programs/frame/Export.h"

class NetworkSource;
class QDialog;
class dbDatabase;

/// The module as the host sees it. Everything else lives in the databases; this keeps the case in hand.
class MORVANE_EXPORT CMorvaneObject : public CCalcObject {
    Q_OBJECT
  public:
    static int iRlyDspFlg;  ///< 1 after settings were saved: the labels are redrawn when the case editor closes
    static int iRlyDspAss;  ///< a click on a label tells the coordination
    static int iRlyDspLoc;  ///< labels tell the relay type

    /// Connects the rule database that belongs to the default connection and makes tables that are missing.
    CMorvaneObject(CComboBoxCaseNo* caseCombo, QComboBox* modeCombo, dbDatabase* fdb, QAction* moduleAction);
    /// Without the host's toolbar; connects no database.
    explicit CMorvaneObject(dbDatabase* fdb);
    ~CMorvaneObject() override;

    int GetCase_NoByCase_Name(const QString& name) override;
    QString GetCase_Name(int no) override;
    int GetCase_No() const override;
    /// Selects what the case combo shows, whatever the number.
    void SetCase_No(int no) override;
    void InitDynMenuStatus() override;
    /// Runs an action. \param handled  set by some actions, else left as it was \return false for an action that the
    /// module does not have, or that could not run
    bool ProcessDynMenuInterface(const QString& name, bool& handled) override;
    bool PrepareRTLabelsData(int, bool) override;
    bool InitCalcModule(QSqlDatabase* database, const QString& dataDir, const QString& homeDir,
                        CDatabase* hostDatabase) override;
    bool CloseCalcModule() override;
    /// Also makes those of the module's actions invisible that it cannot run.
    void SetDynMenuActions(QMap<QString, QAction*>* map) override;
    /// \return null for a name that the map does not have
    QAction* GetDynMenuAction(const QString& name) const override;

    [[nodiscard]] bool IsHaveResult() const { return true; }
    void SetHaveResult(bool) {}
    /// Fills the case combo from the cases of the project; the name it shows stays when there still is such a case.
    void InitComboBox_Case();
    /// Asks the host to redraw the colours of the network of a load-flow case (mlf not 0) or of a scheme.
    void RefreshNetWork(int mlf);
    /// Turns the relays of the project into labels of the diagram. \return true
    bool RefreshSLG();
    /// RefreshSLG() with the texts of now also for labels that were there: after what they tell has changed.
    bool RedrawLabels();
    /// Selects a case; another network source is brought into the real-time database.
    void Refreshfdb(const QString& caseName);
    /// The case editor was left with this case: it becomes the case in hand, and the host hears of the list of cases.
    /// \param no  -1 when there is none
    void takeCase(int no, const QString& name);
    /// Name of a location on tool tips and in lists.
    static QString RlyDsp(const QString& id, const QString& iName, const QString& jName, int rType, int side);

    /// The mode combo stands on its first item: relays may be edited.
    [[nodiscard]] bool isEditing() const;
    [[nodiscard]] dbDatabase* realTime() const { return fdb_; }
    /// What the branch table and the real-time database hold; null without a real-time database.
    [[nodiscard]] NetworkSource* network() const { return network_.get(); }

  public slots:
    void SubStation(int mode);
    void RlyPopupMenuSetDsp();

  private:
    struct MenuRow;
    /// What the network of a case comes from.
    struct Source {
        int Mlf = -1;         ///< 1 a load-flow case, 0 a scheme, -1 none
        int Case_lf = -1;     ///< number of the load-flow case
        QString Scheme{" "};  ///< a blank: none

        [[nodiscard]] bool differsFrom(const Source& other) const;
    };
    struct SelectedCase {
        int Case_No = -1;
        Source source;
    };

    static const MenuRow* rowOf(const QString& name);
    static std::optional<SelectedCase> caseOf(const QString& column, const QVariant& value);
    bool redrawAfter(QDialog&& dialog);
    bool writeLabels(bool anew);
    bool run(QDialog&& dialog, bool& handled);
    [[nodiscard]] std::optional<QString> realTimeName() const;
    bool editCases(bool& handled);
    [[nodiscard]] Source loaded() const;
    void followCase();
    bool bringIn(const Source& source);
    void keepNumber(int no);
    void keepCase(const SelectedCase& chosen);
    void forgetCase();

    QPointer<CComboBoxCaseNo> caseCombo_;
    QPointer<QComboBox> modeCombo_;
    QPointer<QAction> moduleAction_;
    dbDatabase* fdb_ = nullptr;
    std::unique_ptr<NetworkSource> network_;
    QHash<QString, QPointer<QAction>> menu_;
    QString dataDir_, homeDir_;
    int currentCase_ = -1;
    Source source_;
};
