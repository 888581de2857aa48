#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QSpinBox;
class QToolButton;
class SettingTable;

/// What stands above a table of settings: station, only changed values, share of a warning, export of what is shown.
/// Share and folder are remembered.
class SettingTableBar : public QWidget {
    Q_OBJECT
  public:
    SettingTableBar(SettingTable* table, QWidget* parent);

  private:
    void layOut();
    void languageChange();
    void connectAll();
    /// Takes the stations of the rows over; the chosen one stays if it still has any.
    void showStations();
    void showCount();
    void setShare(int percent);
    void exportTo(const QString& suffix);
    void copyShown() const;

    SettingTable* table_;
    QComboBox* comboBox_Station;
    QCheckBox* checkBox_OnlyChanged;
    QLabel* textLabel_Warning;
    QSpinBox* spinBox_Warning;
    QLabel* textLabel_Shown;
    QToolButton* toolButton_Export;
};
