#pragma once

#include "programs/workflow/ui/ChoiceDialog.h"

/// Picks operating modes. The result is SelectedSysList.
class WinDlgselectSYS : public ChoiceDialog {
    Q_OBJECT
  public:
    explicit WinDlgselectSYS(QWidget* parent = nullptr);

  public slots:
    void languageChange();
    void PushButton_Back_Clicked();
    void PushButton_Cancel_Clicked();
    void listBox_AllSys_DoubleClicked(int index);
    void listBox_SysSelected_DoubleClicked(int index);
    void PushButton_Add_Clicked();
    void PushButton_Delete_Clicked();
    void PushButton_DelAll_Clicked();

  private:
    void connectAll();

    QGroupBox* groupBox_All;
    QGroupBox* groupBox_Selected;
    QList<int> numbers_;  ///< of the modes offered
};
