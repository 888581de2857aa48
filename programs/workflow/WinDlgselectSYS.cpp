#include "programs/workflow/WinDlgselectSYS.h"

WinDlgselectSYS::WinDlgselectSYS(QWidget* parent) : QDialog(parent) { setObjectName("WinDlgselectSYS"); }
