#pragma once

#include <QSortFilterProxyModel>

#include "programs/workflow/ui/SettingModel.h"

/// Which rows of a table of settings show, and in which order.
struct SettingOrder {
    QString station;  ///< empty: all
    bool onlyChanged = false;
    bool sorted = false;  ///< else the order of calculation
    SettingModel::Content key;
    Qt::SortOrder direction = Qt::AscendingOrder;
    bool operator==(const SettingOrder&) const = default;
};

/// The rows of a SettingModel by station, by change, and sorted by a column. Rows that are equal in it stay in the
/// order of calculation. A change of a value moves no row, and what the user types hides none.
class SettingFilter : public QSortFilterProxyModel {
    Q_OBJECT
  public:
    SettingFilter(SettingModel* settings, QObject* parent);

    [[nodiscard]] const SettingOrder& order() const { return order_; }
    void setOrder(const SettingOrder& order);
    /// A column below 0 gives the order of calculation.
    void sort(int column, Qt::SortOrder direction) override;
    /// The place of a relay shows where the row above is of another.
    [[nodiscard]] bool showsLabel(int row) const;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  signals:
    void orderChanged(const SettingOrder& order);

  protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

  private:
    [[nodiscard]] QVector<double> keys() const;
    void apply();

    SettingModel* settings_;
    SettingOrder order_;
    mutable QVector<double> keys_;  ///< of the rows by the column that sorts; empty until they are needed
    bool typing_ = false;
};
