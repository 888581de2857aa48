#include "programs/workflow/WinDlgSaveDZ.h"

WinDlgSaveDZ::WinDlgSaveDZ(int, QWidget* parent) : QDialog(parent) { setObjectName("WinDlgSaveDZ"); }
