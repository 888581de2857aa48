#include "programs/workflow/PickerResults.h"

#include <utility>

SelectedRly* SelectedRlyList = nullptr;
int SelectRlyAccepted = 0;
SelectedSys* SelectedSysList = nullptr;
int ChosenParNo = 0;
std::array<int, kStages> PartFlg{};

void replaceSelectedRlys(const QVector<SelectedRly>& relays) {
    while (SelectedRlyList) delete std::exchange(SelectedRlyList, SelectedRlyList->next);
    for (qsizetype at = relays.size() - 1; at >= 0; --at) {
        auto* head = new SelectedRly(relays[at]);
        head->previous = nullptr;
        head->next = SelectedRlyList;
        if (SelectedRlyList) SelectedRlyList->previous = head;
        SelectedRlyList = head;
    }
}

void replaceSelectedSys(const QList<int>& modes) {
    while (SelectedSysList) delete std::exchange(SelectedSysList, SelectedSysList->previous);
    for (const int mode : modes) {
        auto* tail = new SelectedSys{mode, SelectedSysList, nullptr};
        if (SelectedSysList) SelectedSysList->next = tail;
        SelectedSysList = tail;
    }
}
