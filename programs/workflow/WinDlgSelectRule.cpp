#include "programs/workflow/WinDlgSelectRule.h"

WinDlgSelectRule::WinDlgSelectRule(int, int, int, const QString&, const QString&, QWidget* parent) : QDialog(parent) {
    setObjectName("WinDlgSelectRule");
}
