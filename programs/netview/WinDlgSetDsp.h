#pragma once

#include <QDialog>

#include "programs/frame/EditSession.h"
#include "programs/netview/DisplayConfiguration.h"

class QCheckBox;
class QPushButton;
class QRadioButton;
class QTableWidget;

/// Sets what the labels of the diagram show.
class WinDlgSetDsp : public QDialog {
    Q_OBJECT
  public:
    explicit WinDlgSetDsp(QWidget* parent = nullptr);
    bool eventFilter(QObject* watched, QEvent* event) override;

  public slots:
    void RadioButtonNoDsp_chlicked();
    void RadioButtonRlySet_chlicked();
    void RadioButtonRlyDz_chlicked();
    void TableRType_clicked(int row, int column);
    void TableRlyDz_clicked(int row, int column);
    void PushButton_Ensure_Clicked();
    void PushButton_Cancel_Clicked();
    void reject() override;

  private:
    void layOut();
    void languageChange();
    void connectAll();
    void open();
    void showType(int row);
    [[nodiscard]] DisplayConfiguration::Options chosen() const;

    QRadioButton* radioButton_RlySet;
    QRadioButton* radioButton_RlyDz;
    QRadioButton* radioButton_NoDsp;
    QCheckBox* checkBox_DspAss;
    QCheckBox* checkBox_DspLoc;
    QTableWidget* table_RlyType;
    QTableWidget* table_RlyDz;
    QPushButton* pushButton_Ensure;
    QPushButton* pushButton_Cancel;

    int iCurRType = 0;  ///< type whose settings stand in table_RlyDz
    EditSession session_;
};
