#pragma once

#include <QWidget>

#include "platform/host/ui/RecordButtons.h"

class QPushButton;
class QVBoxLayout;

/// The frame of a record dialog: the twelve record buttons above, "确定" and "取消" below, the dialog's own widgets in
/// body() between them. Fills its parent. Each button calls the parent's slot of its name (ToolButton_PrevRec_clicked()
/// ... Button_OK_clicked(), Button_Cancel_clicked()); without such a slot it is hidden.
class CBaseDialog : public QWidget, public host::RecordButtons {
    Q_OBJECT
  public:
    explicit CBaseDialog(QWidget* parent, const char* name = nullptr, uint flags = 0);

    [[nodiscard]] QVBoxLayout* body() const { return body_; }

    QPushButton* Button_OK = nullptr;
    QPushButton* Button_Cancel = nullptr;

  private:
    QPushButton* addButton(const QString& text, const char* slot);

    QVBoxLayout* body_ = nullptr;
};
