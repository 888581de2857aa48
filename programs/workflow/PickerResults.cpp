#include "programs/workflow/PickerResults.h"

SelectedRly* SelectedRlyList = nullptr;
int SelectRlyAccepted = 0;
SelectedSys* SelectedSysList = nullptr;
int ChosenParNo = 0;
std::array<int, kStages> PartFlg{};
