#pragma once

#include <QDialog>
#include <array>
#include <memory>
#include <optional>

#include "programs/workflow/CalculationStart.h"
#include "programs/workflow/CaseEditing.h"

class CBaseDialog;
class CMorvaneObject;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLayout;
class QLineEdit;
class QProgressDialog;
class QPushButton;
class QRadioButton;
class QTextEdit;
class SettingTable;
class SettingTableBar;

/// Defines cases, walks through them like records, and starts their calculation.
class WinDlgRlyCalMain : public QDialog {
    Q_OBJECT
  public:
    /// \param rtdbName, rtdbPath  name of the real-time directory, and the same seen from the working directory
    /// \param workDir, programDir, homeDir  of the calculation, each ending in a slash
    /// \param caseNo  the case to begin with; 0 or less: the one with the lowest number
    /// \param owner   told of the case that OK leaves; it knows which network is loaded. May be null
    WinDlgRlyCalMain(const QString& rtdbName, const QString& rtdbPath, const QString& workDir, int caseNo,
                     const QString& programDir, const QString& homeDir, dbDatabase* fdb, CMorvaneObject* owner,
                     QWidget* parent = nullptr);
    ~WinDlgRlyCalMain() override;

  public slots:
    void languageChange();
    void PushButton_Add_Clicked();
    void PushButton_Delete_Clicked();
    void RadioButton_YiEr_Clicked(int id);
    void Button_OK_clicked();
    void Button_Cancel_clicked();
    void ComboBox_RType_Changed(int index);
    void VASKELSlot();
    void QORDENSlot();
    void Paint_table_ObjRly(int row, int column);
    void CheckBox_CaseInfFlow_Checked();
    void PushButton_BigSys_Clicked();
    void PushButton_SmallSys_Clicked();
    void PushButton_Rule_Clicked();
    void PushButton_Check_Clicked() {}
    void PushButton_Kf_Clicked() {}
    void PushButton_SaveDz_Clicked();
    void PushButton_HandCal_Clicked();
    void PushButton_AutoCal_Clicked();
    void PushButton_SaveRlyCop_Clicked() {}
    void ComboBox_FlowNM_Changed(int index);

    void ToolButton_PrevRec_clicked();
    void ToolButton_NextRec_clicked();
    void ToolButton_InsertRec_clicked();
    void ToolButton_DeleteRec_clicked();
    void ToolButton_FirstRec_clicked();
    void ToolButton_LastRec_clicked();
    void ToolButton_CopyRec_clicked();
    void ToolButton_PasteRec_clicked();
    void ToolButton_SearchRec_clicked();
    void ToolButton_RecoverAll_clicked();
    void ToolButton_Browse_clicked() {}
    void ToolButton_Export_clicked() {}

    void CheckBox_Part1_Checked() { takePart(1); }
    void CheckBox_Part2_Checked() { takePart(2); }
    void CheckBox_Part3_Checked() { takePart(3); }
    void CheckBox_Part4_Checked() { takePart(4); }
    void CheckBox_Part5_Checked() { takePart(5); }

    /// By the frame or Esc: asks first when something would be lost.
    void reject() override;

  private:
    void makeParts();
    void connectAll();
    void layOut();
    QLayout* layOutCase();
    QLayout* layOutRelays();
    QLayout* layOutModes();
    QLayout* layOutFoot();
    [[nodiscard]] QList<QWidget*> dataWidgets() const;

    void DspRecord();
    void DspCaseInf(const CaseForm& form);
    void DspTable_ObjRly(const CaseForm& form);
    void DspSysmode(const CaseForm& form);
    void markFirst();
    void showNoCase();
    void showParts();
    void showSources(const QString& label, const QStringList& names, const QString& shown);
    void updateButtons();
    void moveTo(int position);

    [[nodiscard]] CaseForm formOf() const;
    bool SaveRecord(int mode);
    void chooseModes(QList<int>& modes, QLineEdit* line);
    void takePart(int part);
    void start(int calMode);
    void endStart();
    bool mayLeave();
    void cancel();

    CBaseDialog* frame_;
    QLineEdit* lineEdit_CaseInf_Name;
    QCheckBox* checkBox_CaseInf_Flow;
    QLabel* textLabel_CaseInf_FlowNM;
    QComboBox* comboBox_CaseInf_FlowNM;
    QTextEdit* textEdit_CaseInf_Note;
    QComboBox* comboBox_RType;
    SettingTable* table_ObjRly;
    SettingTableBar* bar_;
    QButtonGroup* buttonGroup_Dz;
    QRadioButton* radioButton_Yici;
    QRadioButton* radioButton_Erci;
    QLineEdit* lineEdit_BigSys;
    QLineEdit* lineEdit_SmallSys;
    std::array<QCheckBox*, kStages> partBoxes_{};
    QHash<QString, QPushButton*> buttons_;  ///< by object name
    QVector<QLabel*> labels_;

    CMorvaneObject* owner_;
    std::optional<NetworkSource> ownNetwork_;  ///< without an owner
    CaseEditing editing_;
    CalculationPlaces places_;
    QString homeDir_;
    int yiErFlag = 1;     ///< 1 primary, 2 secondary values are shown
    int calMode = 1;      ///< 1 manual, 2 automatic
    int paintedRNo = -1;  ///< relay marked in the table
    QList<int> bigSys, smallSys;
    CaseForm shown_;  ///< as last shown, before edits
    std::unique_ptr<CalculationStart> start_;
    std::unique_ptr<QProgressDialog> box_;
};
