#include "programs/workflow/WinDlgRlyCal.h"

WinDlgRlyCal::WinDlgRlyCal(const QString&, const QString&, const QString&, int, int, const QString&, const QString&,
                           const QString&, int, QWidget* parent)
    : QDialog(parent) {
    setObjectName("WinDlgRlyCal");
}
