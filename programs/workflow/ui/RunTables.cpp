#include "programs/workflow/ui/RunTables.h"

#include <QHeaderView>
#include <algorithm>

#include "programs/frame/ui/CEditButton.h"
#include "programs/frame/ui/PaintTable.h"

namespace run_tables {

namespace {

constexpr int kResultWidths[] = {100, 75, 30, 325, 85, 0, 0, 55, 0};
constexpr int kSensitivityWidths[] = {100, 75, 30, 100, 220, 100, 220, 100, 0, 0};

template <size_t N>
void setUp(RecordTable& table, const QStringList& heads, const int (&widths)[N]) {
    table.setColumnCount(int(N));
    table.setHorizontalHeaderLabels(heads);
    table.setReadOnly(true);
    table.verticalHeader()->hide();
    table.horizontalHeader()->setHighlightSections(false);
    for (int column = 0; column < int(N); ++column) {
        table.setColumnHidden(column, widths[column] == 0);
        const int head = table.horizontalHeader()->sectionSizeHint(column);
        if (widths[column] > 0) table.setColumnWidth(column, std::max(widths[column], head));
    }
}

// The user's widths stay, unless a text would be cut.
void widen(RecordTable& table) {
    for (int column = 0; column < table.columnCount(); ++column) {
        if (table.isColumnHidden(column)) continue;
        int wanted = table.fontMetrics().height();
        for (int row = 0; row < table.rowCount(); ++row)
            wanted = std::max(wanted, table.fontMetrics().horizontalAdvance(table.text(row, column)) + 16);
        if (table.columnWidth(column) < wanted) table.setColumnWidth(column, wanted);
    }
}

void addButton(RecordTable& table, int row, const std::function<void(int)>& pressed) {
    auto* button = new CTableButton(&table, TableEditorItem::Always);
    QObject::connect(button, &CTableButton::ButtonClickSingal, &table, pressed);
    table.setItem(row, RButton, button);
    button->setToolTip(table.horizontalHeaderItem(RButton)->text());
}

}  // namespace

void setUpResults(RecordTable& table, const QStringList& heads) {
    setUp(table, heads, kResultWidths);
    for (const int column : {RPart, RValue}) table.setNumberColumn(column);
}

void setUpSensitivities(PaintTable& table, const QStringList& heads) {
    setUp(table, heads, kSensitivityWidths);
    for (const int column : {SPart, SValue, SFault1, SFault2}) table.setNumberColumn(column);
}

void showResults(RecordTable& table, const QString& label, const QVector<IntermediateResults::Result>& results,
                 const QHash<int, QString>& reasons, const std::function<void(int)>& pressed) {
    table.setRowCount(0);
    table.setRowCount(int(results.size()));
    for (int row = 0; row < table.rowCount(); ++row) {
        const IntermediateResults::Result& result = results[row];
        const QString reason = result.RDz.toDouble() == 0 ? reasons.value(result.RuleNo) : QString();
        const QString cells[] = {label,
                                 result.DspCdz,
                                 QString::number(result.PNo),
                                 result.Note,
                                 reason.isEmpty() ? result.RDz : reason,
                                 QString::number(result.RNo),
                                 result.Cdz,
                                 {},
                                 QString::number(result.RuleNo)};
        for (int column = 0; column < ResultColumns; ++column)
            if (column != RButton) table.setText(row, column, cells[column]);
        table.item(row, RNote)->setToolTip(result.Note);
        addButton(table, row, pressed);
    }
    widen(table);
}

void showSensitivities(PaintTable& table, const Head& head, const SensitivityChecks::Checks& checks) {
    table.setRowCount(0);
    table.setRowCount(int(checks.rows.size()));
    for (int row = 0; row < table.rowCount(); ++row) {
        const SensitivityChecks::Row& check = checks.rows[row];
        const QString cells[] = {head.label,
                                 head.setting,
                                 QString::number(head.part),
                                 check.shown(),
                                 check.Note1,
                                 check.Rfault1,
                                 check.Note2,
                                 check.Rfault2,
                                 QString::number(check.ID),
                                 QString::number(check.Flg)};
        for (int column = 0; column < Sensitivities; ++column) table.setText(row, column, cells[column]);
        if (check.isOpen()) table.item(row, SValue)->setToolTip(checks.reason);
        table.setRowHidden(row, checks.sensitivity < 0);
    }
    table.paintRows[0] = table.rowCount() > 0 ? 0 : -1;
    table.paintRows[1] = -1;
    table.paintColumn =
        !checks.rows.isEmpty() && SensitivityChecks::parameterInUse(checks.rows[0].Flg) == 1 ? SFault1 : SFault2;
    widen(table);
    table.viewport()->update();
}

}  // namespace run_tables
