#pragma once

#include <QDialog>

#include "programs/workflow/SensitivityParameters.h"

class PaintTable;
class QGroupBox;
class QLabel;
class QPushButton;
class RecordTable;

/// The sensitivity parameters that a run computed, place by place beside those of before, to be confirmed.
/// \param caseNo  number under which the run's results stand
class WinDlgEnsureKlmP : public QDialog {
    Q_OBJECT
  public:
    WinDlgEnsureKlmP(int rTypeNo, const QString& typeText, int caseNo, const QString& workDir,
                     QWidget* parent = nullptr);

  public slots:
    void languageChange();
    void Button_OK_Clicked();
    void Button_Cancel_Clicked();
    void TablePos_Clicked();
    void Button_CalResult_Clicked();
    void reject() override;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void layOut();
    void connectAll();
    void open();
    void DspPara(int row);
    /// \return whether the values of the place shown are stored; else its first refused one stands in the editor
    bool SavePara(int row);
    void markUnusable();
    void markParameters();
    void showPlace(int row);
    /// Parameters of the place shown that have no value.
    [[nodiscard]] QStringList lacking() const;
    void editValue(int row);
    void complain(const QString& text);

    QGroupBox* groupBox_Position;
    QLabel* textLabel_gBPos_Type;
    QLabel* textLabel_gBPos_TypeCode;
    PaintTable* table_gBPos_Pos;
    QGroupBox* groupBox_KlmP;
    RecordTable* table_gBKlmp_Para;
    QLabel* textLabel_Complaint;
    QPushButton* pushButton_CalResult;
    QPushButton* pushButton_Ensure;
    QPushButton* pushButton_Cancel;

    int rTypeNo_, caseNo_;
    QString typeText_, workDir_;
    SensitivityParameters parameters_;
    int shown_ = -1;  ///< place whose parameters stand in the table
};
