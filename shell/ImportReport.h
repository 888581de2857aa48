#pragma once

#include <QSortFilterProxyModel>
#include <QWidget>

#include "platform/import/Import.h"

class QLabel;
class QLineEdit;
class QStandardItemModel;
class QTreeView;

namespace shell {

/// The kinds of findings in the order in which a reader wants them: doubts first, what simply came in last.
QVector<import::Finding::Kind> kindsByWeight();
QString kindName(import::Finding::Kind kind);

/// The report of an import as a text that people read, or as a page of their own.
QString reportAsText(const import::Report& report, const QString& title);
QString reportAsHtml(const import::Report& report, const QString& title);

/// The report of an import, grouped by kind with counts, to be filtered and saved.
class ImportReportPage : public QWidget {
    Q_OBJECT
  public:
    explicit ImportReportPage(QWidget* parent = nullptr);
    void show(const import::Report& report, const QString& title);
    /// \return false with a message in the dock when the file cannot be written; the suffix html means a page
    bool saveAs(const QString& file) const;

  public slots:
    void save();

  private:
    void fill();

    import::Report report_;
    QString title_;
    QLabel* summary_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QTreeView* view_ = nullptr;
    QStandardItemModel* model_ = nullptr;
    QSortFilterProxyModel* shown_ = nullptr;
};

}  // namespace shell
