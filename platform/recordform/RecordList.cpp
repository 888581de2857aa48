#include "platform/recordform/RecordList.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "platform/host/ui/TableHabits.h"
#include "platform/recordform/CDataForm.h"

namespace sql_dlg {

RecordList::RecordList(const CDataForm* form, QWidget* parent) : QDialog(parent) {
    setObjectName("RecordList");
    setWindowTitle(tr("浏览所有记录"));
    table_Record = new QTableWidget(form->Count(), static_cast<int>(form->FieldNames().size()), this);
    table_Record->setObjectName("table_Record");
    table_Record->setHorizontalHeaderLabels(form->FieldNames());
    for (int row = 0; row < form->Count(); ++row)
        for (int column = 0; column < table_Record->columnCount(); ++column)
            table_Record->setItem(row, column, new QTableWidgetItem(form->Record(row)[column]));
    table_Record->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_Record->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_Record->setSelectionMode(QAbstractItemView::SingleSelection);
    table_Record->horizontalHeader()->setStretchLastSection(true);
    table_Record->selectRow(form->At());
    new host::TableHabits(table_Record);
    auto* ends = new QDialogButtonBox(this);
    QPushButton* take = ends->addButton(tr("确定"), QDialogButtonBox::AcceptRole);
    ends->addButton(tr("取消"), QDialogButtonBox::RejectRole);
    take->setDefault(true);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(table_Record);
    rows->addWidget(ends);
    connect(ends, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(ends, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(table_Record, &QTableWidget::cellDoubleClicked, this, &QDialog::accept);
    resize(640, 420);
}

int RecordList::choose() { return exec() == Accepted ? table_Record->currentRow() : -1; }

QByteArray csvOf(const CDataForm& form) {
    const auto line = [](const QStringList& cells) {
        QStringList quoted;
        for (const QString& cell : cells) quoted << '"' + QString(cell).replace('"', "\"\"") + '"';
        return quoted.join(',').toUtf8() + "\r\n";
    };
    QByteArray text = "\xEF\xBB\xBF" + line(form.FieldNames());
    for (int row = 0; row < form.Count(); ++row) text += line(form.Record(row));
    return text;
}

}  // namespace sql_dlg
