#pragma once

#include <QDialog>

#include "programs/frame/EditSession.h"
#include "programs/workflow/RuleSelection.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QTabWidget;
class RecordTable;

/// Which setting rules of a relay of a case are in use, with which parameters.
/// \param location  label of the relay's place
class WinDlgSelectRule : public QDialog {
    Q_OBJECT
  public:
    WinDlgSelectRule(int caseNo, int rNo, int rTypeNo, const QString& rTypeCode, const QString& location,
                     QWidget* parent = nullptr);

  public slots:
    void languageChange();
    void SelectPara(int row);
    void Button_Cancel_Clicked();
    void Button_Back_Clicked();
    void CheckBox_Valid_Clicked();
    void reject() override;

  private:
    struct Page {
        QCheckBox* checkBox_tbRule1_Valid;
        RecordTable* table_tdRule1_Rule;
        QLabel* inUse;
    };
    void layOut();
    void connectAll();
    void addPage(const PartChoice& part);
    void fillRow(RecordTable& table, int row, const RuleChoice& rule);
    void fitRows();
    void showState(int page);
    [[nodiscard]] QVector<PartChoice> formParts() const;

    QLabel* textLabel_Rly;
    QTabWidget* tabWidget_Rule;
    QCheckBox* check_InAllRly;
    QPushButton* pushButton_Back;
    QPushButton* pushButton_Cancel;
    QVector<Page> pages_;

    int caseNo_, rNo_;
    QVector<PartChoice> parts_;  ///< one for each page
    EditSession session_;
};
