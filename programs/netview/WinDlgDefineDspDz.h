#pragma once

#include <QDialog>

#include "programs/frame/EditSession.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

/// Edits the names under which the settings of a relay type are shown.
class WinDlgDefineDspDz : public QDialog {
    Q_OBJECT
  public:
    explicit WinDlgDefineDspDz(QWidget* parent = nullptr);

  public slots:
    void ComboBox_RType_Changed(int index);
    void PushButton_Ensure_Clicked();
    void PushButton_Cancel_Clicked();
    void reject() override;

  private:
    void layOut();
    void languageChange();
    void fill();
    bool save();

    QLabel* textLabel_RType;
    QComboBox* comboBox_RType;
    QTableWidget* table_DspDz;
    QPushButton* pushButton_Enure;
    QPushButton* pushButton_Cancel;

    int iLastItem = -1;  ///< index of the type shown
    int iRTypeNo = 1;
    EditSession session_;
};
