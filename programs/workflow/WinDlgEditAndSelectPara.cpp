#include "programs/workflow/WinDlgEditAndSelectPara.h"

WinDlgEditAndSelectPara::WinDlgEditAndSelectPara(int, int, int, int, QWidget* parent) : QDialog(parent) {
    setObjectName("WinDlgEditAndSelectPara");
}
