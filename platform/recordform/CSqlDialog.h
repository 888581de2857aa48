#pragma once

#include <QDialog>
#include <memory>

#include "platform/sql/CopySession.h"

class QPushButton;
class QSqlDatabase;
class QVBoxLayout;

namespace sql_dlg {

class CDataForm;
class CSqlDialogBtns;

/// A dialog over the records of one table, which Cancel, Esc and the frame's close take back as they were on opening.
/// A derived dialog makes its widgets in body(), its CSqlDialogBtns and its CDataForm, and calls InitDlg().
class CSqlDialog : public QDialog {
    Q_OBJECT
  public:
    CSqlDialog(QSqlDatabase* database, QWidget* parent = nullptr, const char* name = nullptr, bool modal = true,
               uint flags = 0);
    ~CSqlDialog() override;

    [[nodiscard]] QVBoxLayout* body() const { return body_; }
    [[nodiscard]] QSqlDatabase* database() const { return database_; }

    QPushButton* pushButton_OK;
    QPushButton* pushButton_Cancel;

  protected:
    /// Called ahead of a step; false keeps the record. Called behind it, with the new record in the widgets.
    virtual bool BeforePrev() { return true; }
    virtual void AfterPrev() {}
    virtual bool BeforeNext() { return true; }
    virtual void AfterNext() {}
    virtual bool BeforeFirst() { return true; }
    virtual void AfterFirst() {}
    virtual bool BeforeLast() { return true; }
    virtual void AfterLast() {}
    virtual bool BeforeDelete() { return true; }
    virtual void AfterDelete() {}
    virtual bool BeforeInsert() { return true; }
    virtual void AfterInsert() {}
    /// Enables the buttons that have something to do.
    virtual void SetCtrlBtns();
    virtual void CopyRecord() {}     ///< behind the copy of the fields
    virtual void PasteRecord() {}    ///< behind the paste of the fields that are no key
    virtual void RecoverRecord() {}  ///< behind the recovery of the fields
    /// Keeps the fields of the record that became current, for "取消本次修改".
    virtual void StoreRecover();
    /// Whether the fields can be stored, and whether their key is the record's alone; tell why not.
    virtual bool CheckDataValid();
    virtual bool CheckPrimaryKey();

  public slots:
    /// A derived dialog ends its own with these: keep the record in hand and close, or take the table back and close.
    virtual void ToolButton_OK_clicked();
    virtual void ToolButton_Cancel_clicked();
    void reject() override;

  protected:
    /// Copies the table and shows the current record; bound widgets are disabled when there is none.
    virtual void InitDlg();
    virtual bool ProvideTmpTable();  ///< makes the copy that Cancel needs
    virtual bool SaveTmpTable();     ///< keeps the table as it is
    virtual bool DropTmpTable();     ///< takes the table back
    /// Checks and writes the record in hand, if any. False keeps the user on it.
    bool SaveCurrent();

  private:
    friend class CSqlDialogBtns;
    [[nodiscard]] CDataForm* form() const;
    bool refuse(const QString& why, QWidget* where);

    QSqlDatabase* database_;
    QVBoxLayout* whole_;
    QVBoxLayout* body_;
    CSqlDialogBtns* buttons_ = nullptr;
    std::unique_ptr<sql::CopySession> table_;
    QStringList recover_;
};

}  // namespace sql_dlg
