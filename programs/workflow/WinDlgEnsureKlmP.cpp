#include "programs/workflow/WinDlgEnsureKlmP.h"

WinDlgEnsureKlmP::WinDlgEnsureKlmP(int, const QString&, int, const QString&, QWidget* parent) : QDialog(parent) {
    setObjectName("WinDlgEnsureKlmP");
}
