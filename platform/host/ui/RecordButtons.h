#pragma once

#include <QToolButton>
#include <vector>

class QBoxLayout;

namespace host {

struct ToolButtonForm {
    const char* icon;
    const char* toolTip;  ///< to be translated in the context "RecordButtons"
    const char* slot;     ///< of the window that has the button, without its bracket pair
    const char* keys;     ///< shortcut; nullptr: the tool tip tells it
};

/// A 24 x 24 tool button, named like its slot.
QToolButton* makeToolButton(const ToolButtonForm& form, QWidget* parent);
/// Connects clicked() to the receiver's slot of this name; a button whose receiver has no such slot is hidden.
bool connectByName(QAbstractButton* button, QObject* receiver, const char* slot);

/// The twelve buttons of a record dialog in one row. Paste is disabled until something was copied.
struct RecordButtons {
    QToolButton* PrevRec = nullptr;
    QToolButton* NextRec = nullptr;
    QToolButton* FirstRec = nullptr;
    QToolButton* LastRec = nullptr;
    QToolButton* InsertRec = nullptr;
    QToolButton* DeleteRec = nullptr;
    QToolButton* CopyRec = nullptr;
    QToolButton* PasteRec = nullptr;
    QToolButton* SearchRec = nullptr;
    QToolButton* RecoverAll = nullptr;
    QToolButton* Browse = nullptr;
    QToolButton* Export = nullptr;

    /// Puts the buttons into a row and connects them to the receiver's slots, "ToolButton_PrevRec_clicked" and so on.
    void build(QBoxLayout* row, QWidget* parent, QObject* receiver);
    [[nodiscard]] std::vector<QToolButton*> all() const;
};

}  // namespace host
