#pragma once

#include <QComboBox>

/// The host's list of cases in the toolbar. A module that changed the list or the selection tells the host so.
class CComboBoxCaseNo : public QComboBox {
    Q_OBJECT
  public:
    using QComboBox::QComboBox;
    void EmititemsChanged() { emit itemsChanged(); }
    void EmitcurrentTextChanged(const QString& text) { emit caseNameChanged(text); }

  signals:
    void itemsChanged();
    void caseNameChanged(const QString& text);
};
