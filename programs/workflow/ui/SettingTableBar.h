#pragma once

#include <QWidget>

class SettingTable;

/// What stands above a table of settings: station, only changed values, share of a warning, export of what is shown.
class SettingTableBar : public QWidget {
    Q_OBJECT
  public:
    SettingTableBar(SettingTable* table, QWidget* parent);
};
