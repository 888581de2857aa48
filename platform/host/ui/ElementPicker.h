#pragma once

#include <QDialog>
#include <optional>

#include "platform/host/PickRows.h"

class PickModel;
class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

/// A searchable list of elements, one to be taken: typing keeps the rows with all the words in name, node, level or
/// station, the arrow keys move in the list while typing, double click or Enter takes, Esc leaves.
class ElementPicker : public QDialog {
    Q_OBJECT
  public:
    enum Columns { Branches, Buses, OneEnded };
    ElementPicker(Columns columns, QWidget* parent, const char* name, bool modal, uint flags);
    ~ElementPicker() override;

    void setRows(QVector<host::PickRow> rows);
    /// Makes the first row of this name, and of these nodes where they are given, the current one.
    void preselect(const QString& name, const QString& i = {}, const QString& j = {});
    /// The row taken by the last run; none after Esc.
    [[nodiscard]] const std::optional<host::PickRow>& taken() const { return taken_; }

    int exec() override;

    QLineEdit* lineEdit_Filter;
    QTableView* tableView_Element;
    QPushButton* pushButton_Ensure;
    QPushButton* pushButton_Cancel;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void layOut();
    void filter(const QString& text);
    void take();
    void showState();

    PickModel* model_;
    QSortFilterProxyModel* shown_;
    QLabel* count_;
    std::optional<host::PickRow> taken_;
};
