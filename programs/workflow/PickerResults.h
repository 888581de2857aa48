#pragma once

#include <QList>
#include <QString>
#include <QVector>
#include <array>

#include "programs/frame/StageColumns.h"

// What the dialogs of the workflow hand to whoever opened them; read after exec().

/// A relay that was picked.
struct SelectedRly {
    QString ID_Name, I_Name, J_Name;
    int Side = 1;
    int RNo = 0;
    int RTypeNo = 0;
    SelectedRly* next = nullptr;
    SelectedRly* previous = nullptr;
};
/// Head of the relays picked last; the list is freed and filled anew at each OK.
extern SelectedRly* SelectedRlyList;
/// 0 after Cancel.
extern int SelectRlyAccepted;
/// Frees the list and fills it with these relays, in their order.
void replaceSelectedRlys(const QVector<SelectedRly>& relays);

/// An operating mode that was picked.
struct SelectedSys {
    int SysNo = 0;
    SelectedSys* previous = nullptr;
    SelectedSys* next = nullptr;
};
/// The newest node, that is the tail, of the modes picked last.
extern SelectedSys* SelectedSysList;
/// Frees the list and fills it with these modes, in their order.
void replaceSelectedSys(const QList<int>& modes);

/// Parameter group: the one in use when the dialog opens, the chosen one after OK.
extern int ChosenParNo;

/// The parts that the case shown in the case editor sets.
extern std::array<int, kStages> PartFlg;
