#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/host/ui/RecordButtons.h"

namespace sql_dlg {

class CDataForm;
class CSqlDialog;

/// The record buttons of a CSqlDialog, at its top: they drive the form and call the dialog's hooks. Leaving a record
/// writes it: check of the fields, hook, check of the key, write, step, hook behind. A failure of one keeps the record.
class CSqlDialogBtns : public QWidget, public host::RecordButtons {
    Q_OBJECT
  public:
    explicit CSqlDialogBtns(CSqlDialog* owner, const char* name = nullptr, uint flags = 0);

    void SetDataForm(CDataForm* form) { form_ = form; }
    [[nodiscard]] CDataForm* GetDataForm() const { return form_; }

  public slots:
    virtual void ToolButton_PrevRec_clicked();
    virtual void ToolButton_NextRec_clicked();
    virtual void ToolButton_InsertRec_clicked();
    virtual void ToolButton_DeleteRec_clicked();
    virtual void ToolButton_FirstRec_clicked();
    virtual void ToolButton_LastRec_clicked();
    virtual void ToolButton_CopyRec_clicked();
    virtual void ToolButton_PasteRec_clicked();
    virtual void ToolButton_SearchRec_clicked();
    virtual void ToolButton_RecoverAll_clicked();
    virtual void ToolButton_Browse_clicked();
    virtual void ToolButton_Export_clicked();

  private:
    using Before = bool (CSqlDialog::*)();
    using After = void (CSqlDialog::*)();
    bool leave(Before before);
    void arrive(After after);
    void move(Before before, bool (CDataForm::*step)(), After after);
    void goTo(int row);

    CSqlDialog* owner_;
    QPointer<CDataForm> form_;
    QStringList copied_;
};

}  // namespace sql_dlg
