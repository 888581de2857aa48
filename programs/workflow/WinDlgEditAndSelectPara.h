#pragma once

#include <QDialog>

#include "programs/frame/EditSession.h"
#include "programs/workflow/ParameterGroups.h"

class QLabel;
class QPushButton;
class RecordTable;

/// Edits the parameter groups of a rule and picks one of them. The result is ChosenParNo.
class WinDlgEditAndSelectPara : public QDialog {
    Q_OBJECT
  public:
    WinDlgEditAndSelectPara(int caseNo, int rNo, int ruleNo, int parNo, QWidget* parent = nullptr);

  public slots:
    void languageChange();
    void PushButton_Add_Clicked();
    void PushButton_Delete_Clicked();
    void Button_OK_Clicked();
    void Button_Cancel_Clicked();
    void CheckBox_Clicked(int row, int col);
    void reject() override;

  private:
    void layOut();
    void connectAll();
    void open();
    void addRow(const ParameterGroup& group);
    void showButtons();
    /// Whether the user gives up a group although others have chosen it or one behind it.
    bool agreesToDelete(int row);
    [[nodiscard]] ParameterGroups formGroups() const;

    RecordTable* table_Para;
    QPushButton* pushButton_Add;
    QPushButton* pushButton_Delete;
    QPushButton* pushButton_Ensure;
    QPushButton* pushButton_Cancel;
    QLabel* rule_;
    QLabel* scope_;

    int caseNo_, rNo_, ruleNo_, parNo_;
    ParameterGroups before_;  ///< as stored
    EditSession session_;
};
