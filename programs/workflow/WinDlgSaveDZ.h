#pragma once

#include <QDialog>

class QButtonGroup;
class QLabel;
class QPushButton;
class QRadioButton;
class SettingTable;
class SettingTableBar;

/// Makes the settings of the case the settings of record, with or without a change of the backup settings. Closes by
/// reject(), saved or not; the diagram's labels are due afterwards.
class WinDlgSaveDZ : public QDialog {
    Q_OBJECT
  public:
    explicit WinDlgSaveDZ(int rTypeNo, QWidget* parent = nullptr);

  public slots:
    void languageChange();
    void RadioButton_YiEr_Clicked(int id);
    void Button_SaveChangeHB_Clicked();
    void Button_SaveNotChangeHB_Clicked();
    void Button_Cancel_Clicked();
    void reject() override;

  private:
    void layOut();
    void connectAll();
    void setUpTables();
    void DspTables();
    void leave(bool saved);

    QRadioButton* radioButton_Yici;
    QRadioButton* radioButton_Erci;
    QButtonGroup* buttonGroup_Dz;
    QLabel* textLabel_Newdz;
    QLabel* textLabel_OldDz;
    SettingTable* table_Newdz;
    SettingTable* table_OldDz;
    SettingTableBar* bar_;
    QPushButton* pushButton_SaveChangeHB;
    QPushButton* pushButton_SaveNotChangeHB;
    QPushButton* pushButton_Cancel;

    const int rTypeNo_;
};
