#pragma once

#include "programs/workflow/PickerResults.h"
#include "programs/workflow/ui/ChoiceDialog.h"

class QButtonGroup;
class QComboBox;
class QGroupBox;
class QRadioButton;

/// Picks relays of one type: by hand, by voltage level, or all of the network. The result is SelectedRlyList.
class WinDlgSelectRly : public ChoiceDialog {
    Q_OBJECT
  public:
    WinDlgSelectRly(const QString& rTypeCode, int rTypeNo, int rType, int flag, QWidget* parent = nullptr);

  public slots:
    void languageChange();
    void PushButton_OK_Clicked();
    void PushButton_Cancel_Clicked();
    void listBox_AllRly_DoubleClicked(int index);
    void listBox_RlySelected_DoubleClicked(int index);
    void PushButton_Add_Clicked();
    void PushButton_Delete_Clicked();
    void PushButton_DelAll_Clicked();
    void PushButton_Position_Clicked();
    void LineEdit_Position_Changed(const QString& text);
    void RadioButton_Changed(int id);
    void reject() override;

  private:
    enum Way { Appoint, Level, Net };
    void layOut();
    void connectAll();
    void offerRelays();
    /// The name of an element that the user picks; empty when none was picked.
    QString pickElement();
    bool relaysOfWay(QVector<SelectedRly>* relays) const;

    QGroupBox* groupBox_Selection;
    QRadioButton* radioButton_gBSelection_Appoint;
    QRadioButton* radioButton_gBSelection_V;
    QRadioButton* radioButton_gBSelection_Net;
    QComboBox* comboBox_gBSelection_V;
    QGroupBox* groupBox_Rly1;
    QLabel* textLabel_gBRly1_Position;
    QLineEdit* lineEdit_gBRly1_Position;
    QPushButton* pushButton_gBRly1_Position;
    QGroupBox* groupBox_Rly2;
    QButtonGroup* ways_;

    QString typeName_;
    int rTypeNo_;
    int rType_;
    QVector<SelectedRly> offered_;
};
