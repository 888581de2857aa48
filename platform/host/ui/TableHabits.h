#pragma once

#include <QObject>
#include <initializer_list>

class QSettings;
class QTableView;

namespace host {

/// Where tables remember what the user chose.
QSettings tableSettings();
/// Cells with tabs between them, those that hold a tab or a line end in quotes.
QString tabbedLine(const QStringList& cells);

/// What every table does: Ctrl+C copies the selected cells as tab-separated text, and the widths of the columns are
/// remembered between sessions under the class of the window and the object name of the table.
class TableHabits : public QObject {
    Q_OBJECT
  public:
    /// Lives as long as the table.
    explicit TableHabits(QTableView* table);

    /// The selected cells as they are shown, hidden columns and rows left out: tabs between cells, a line for each row.
    [[nodiscard]] QString selectedText() const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] QString key() const;
    void restoreWidths();
    void saveWidths() const;

    QTableView* table_;
    bool changed_ = false;  ///< the user moved a column's edge
};

/// The order in which Tab goes through widgets.
void setTabChain(std::initializer_list<QWidget*> widgets);

}  // namespace host
