#pragma once

#include <QDialog>

/// Edits the parameter groups of a rule and picks one of them. The result is ChosenParNo.
class WinDlgEditAndSelectPara : public QDialog {
    Q_OBJECT
  public:
    WinDlgEditAndSelectPara(int caseNo, int rNo, int ruleNo, int parNo, QWidget* parent = nullptr);
};
