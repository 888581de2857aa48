// The table of settings with 2,000 relays, beside a plain table widget with an item for each cell.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTableWidget>

#include "programs/workflow/ui/SettingTable.h"

namespace {

constexpr int kRelays = 2000, kSettings = 4, kParts = 5, kStations = 20;

QVector<CaseSettingRow> makeRows() {
    QVector<CaseSettingRow> rows;
    for (int at = 0; at < kRelays * kSettings; ++at) {
        CaseSettingRow row;
        row.RNo = 1 + at / kSettings;
        row.Cdz = QString("Dz%1").arg(at % kSettings);
        row.DspCdz = QString("定值%1").arg(at % kSettings);
        row.label = QString("线路%1线 %2侧 ").arg(row.RNo).arg(row.RNo % 50);
        row.station = QString("厂站%1").arg(row.RNo % kStations);
        row.VType = 1 + at % 4;
        for (int part = 0; part < kParts; ++part) {
            const double before = 100 + (at * 7919 + part * 104729) % 100000 / 100.0;
            row.oldValue[size_t(part)] = QString::number(before);
            row.newValue[size_t(part)] = QString::number(at % 3 ? before * 1.25 : before, 'f', 4);
        }
        rows.append(row);
    }
    return rows;
}

const QVector<CaseSettingRow>& rows() {
    static const QVector<CaseSettingRow> made = makeRows();
    return made;
}

void show(QTableView& table) {
    table.resize(1600, 1000);
    table.show();
    QApplication::processEvents();
}

void paint(QTableView& table) { benchmark::DoNotOptimize(table.viewport()->grab()); }

/// The table of settings.
struct Settings {
    SettingTable table{nullptr, "table"};
    Settings() { table.setColumns({.parts = kParts, .editable = true}); }
    void fill() {
        table.setRows({});
        table.setRows(rows());
    }
    void filter(const QString& station) { table.setStation(station); }
    void sort(Qt::SortOrder order) { table.sortByColumn(SettingModel::FirstValue, order); }
    void edit(const QString& text) { table.setValue(10, 1, text); }
};

/// One item for each cell.
struct Items {
    QTableWidget table;
    QVector<QString> stations;
    Items() { table.setColumnCount(3 * kParts + 5); }
    void put(int row, int column, const QVariant& value) {
        auto* item = new QTableWidgetItem;
        item->setData(Qt::DisplayRole, value);
        table.setItem(row, column, item);
    }
    void fill() {
        table.setRowCount(0);
        table.setRowCount(int(rows().size()));
        stations.clear();
        for (int row = 0; row < table.rowCount(); ++row) {
            const CaseSettingRow& setting = rows()[row];
            put(row, 0, row % kSettings ? QString() : setting.label);
            put(row, 1, setting.DspCdz);
            for (int part = 0; part < kParts; ++part) {
                const double now = setting.newValue[size_t(part)].toDouble();
                const double before = setting.oldValue[size_t(part)].toDouble();
                put(row, 2 + part, now);
                put(row, 2 + kParts + part, before);
                put(row, 5 + 2 * kParts + part, QString("%1 (%2%)").arg(now - before).arg((now / before - 1) * 100));
            }
            put(row, 2 + 2 * kParts, setting.RNo);
            put(row, 3 + 2 * kParts, setting.Cdz);
            put(row, 4 + 2 * kParts, setting.VType);
            stations << setting.station;
        }
    }
    void filter(const QString& station) {
        for (int row = 0; row < table.rowCount(); ++row)
            table.setRowHidden(row, !station.isEmpty() && stations[row] != station);
    }
    void sort(Qt::SortOrder order) { table.sortItems(2, order); }
    void edit(const QString& text) { table.item(10, 2)->setText(text); }
};

template <class Kind>
void fill(benchmark::State& state) {
    Kind kind;
    show(kind.table);
    for (auto _ : state) {
        kind.fill();
        paint(kind.table);
    }
}

/// All rows again, of which one relay has new values.
void refresh(benchmark::State& state) {
    Settings kind;
    kind.fill();
    show(kind.table);
    QVector<CaseSettingRow> changed = rows();
    for (auto _ : state) {
        changed[10].newValue[0] += "1";
        kind.table.setRows(changed);
        paint(kind.table);
    }
}

template <class Kind>
void filter(benchmark::State& state) {
    Kind kind;
    kind.fill();
    show(kind.table);
    int turn = 0;
    for (auto _ : state) {
        kind.filter(++turn % 2 ? "厂站7" : "");
        paint(kind.table);
    }
}

template <class Kind>
void sort(benchmark::State& state) {
    Kind kind;
    kind.fill();
    show(kind.table);
    int turn = 0;
    for (auto _ : state) {
        kind.sort(++turn % 2 ? Qt::AscendingOrder : Qt::DescendingOrder);
        paint(kind.table);
    }
}

template <class Kind>
void edit(benchmark::State& state) {
    Kind kind;
    kind.fill();
    show(kind.table);
    int turn = 0;
    for (auto _ : state) {
        kind.edit(QString::number(++turn));
        QApplication::processEvents();
    }
}

template <class Kind>
void screenful(benchmark::State& state) {
    Kind kind;
    kind.fill();
    show(kind.table);
    for (auto _ : state) paint(kind.table);
}

}  // namespace

BENCHMARK(fill<Settings>)->Unit(benchmark::kMillisecond);
BENCHMARK(fill<Items>)->Unit(benchmark::kMillisecond);
BENCHMARK(refresh)->Unit(benchmark::kMillisecond);
BENCHMARK(filter<Settings>)->Unit(benchmark::kMillisecond);
BENCHMARK(filter<Items>)->Unit(benchmark::kMillisecond);
BENCHMARK(sort<Settings>)->Unit(benchmark::kMillisecond);
BENCHMARK(sort<Items>)->Unit(benchmark::kMillisecond);
BENCHMARK(edit<Settings>)->Unit(benchmark::kMicrosecond);
BENCHMARK(edit<Items>)->Unit(benchmark::kMicrosecond);
BENCHMARK(screenful<Settings>)->Unit(benchmark::kMillisecond);
BENCHMARK(screenful<Items>)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
