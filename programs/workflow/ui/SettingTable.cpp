#include "programs/workflow/ui/SettingTable.h"

SettingTable::SettingTable(QWidget* parent, const char* name) : QTableView(parent), model_(new SettingModel(this)) {
    setObjectName(name);
    setModel(model_);
}

void SettingTable::setColumns(const SettingColumns& columns) { model_->setColumns(columns); }
int SettingTable::row() const { return currentIndex().row(); }
int SettingTable::column() const { return currentIndex().column(); }
int SettingTable::currentRelay() const { return row() < 0 ? -1 : rows()[row()].RNo; }
void SettingTable::setCurrentCell(int row, int column) { setCurrentIndex(model_->index(row, column)); }
void SettingTable::endEdit() {}
QString SettingTable::text(int row, int column) const { return model_->index(row, column).data().toString(); }
int SettingTable::find(int, const QString&) const { return -1; }
void SettingTable::setValue(int, int, const QString&) {}
void SettingTable::paintRelay(int, int, bool) {}
void SettingTable::clearPaint() {}
void SettingTable::setStation(const QString&) {}
QStringList SettingTable::stations() const { return {}; }
void SettingTable::setOnlyChanged(bool) {}
void SettingTable::setWarningShare(double) {}
