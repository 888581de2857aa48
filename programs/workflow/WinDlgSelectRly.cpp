#include "programs/workflow/WinDlgSelectRly.h"

WinDlgSelectRly::WinDlgSelectRly(const QString&, int, int, int, QWidget* parent) : QDialog(parent) {
    setObjectName("WinDlgSelectRly");
}
