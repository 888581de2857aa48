#include "programs/workflow/ui/SettingTableBar.h"

SettingTableBar::SettingTableBar(SettingTable*, QWidget* parent) : QWidget(parent) {}
