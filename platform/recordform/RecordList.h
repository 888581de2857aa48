#pragma once

#include <QDialog>

class QTableWidget;

namespace sql_dlg {

class CDataForm;

/// All records of a form in a table that cannot be changed; typing goes to the row that begins so.
class RecordList : public QDialog {
    Q_OBJECT
  public:
    RecordList(const CDataForm* form, QWidget* parent);
    /// Runs modally. \return the row chosen; -1 for none
    int choose();

  private:
    QTableWidget* table_Record;
};

/// The records with a line of field names, in UTF-8 with a mark, for spreadsheets.
QByteArray csvOf(const CDataForm& form);

}  // namespace sql_dlg
