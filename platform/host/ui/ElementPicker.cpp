#include "platform/host/ui/ElementPicker.h"

#include <QAbstractTableModel>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

#include "platform/host/ui/Icons.h"
#include "platform/host/ui/TableHabits.h"

namespace {

struct Column {
    const char* title;
    QString host::PickRow::*member;
    int width;
};
constexpr Column kName = {QT_TRANSLATE_NOOP("ElementPicker", "名称"), &host::PickRow::name, 190};
constexpr Column kLevel = {QT_TRANSLATE_NOOP("ElementPicker", "电压等级(kV)"), &host::PickRow::level, 105};
constexpr Column kStation = {QT_TRANSLATE_NOOP("ElementPicker", "厂站"), &host::PickRow::station, 190};

QVector<Column> columnsOf(ElementPicker::Columns kind) {
    if (kind == ElementPicker::Buses) return {kName, kLevel, kStation};
    if (kind == ElementPicker::OneEnded)
        return {kName, {QT_TRANSLATE_NOOP("ElementPicker", "节点"), &host::PickRow::i, 170}, kLevel, kStation};
    return {kName,
            {QT_TRANSLATE_NOOP("ElementPicker", "I侧节点"), &host::PickRow::i, 150},
            {QT_TRANSLATE_NOOP("ElementPicker", "J侧节点"), &host::PickRow::j, 150},
            kLevel,
            kStation};
}

/// Keeps rows that have every word somewhere.
class WordFilter : public QSortFilterProxyModel {
  public:
    using QSortFilterProxyModel::QSortFilterProxyModel;
    void setWords(const QStringList& words) {
        words_ = words;
        invalidateFilter();
    }
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

  private:
    QStringList words_;
};

}  // namespace

class PickModel : public QAbstractTableModel {
  public:
    PickModel(ElementPicker::Columns kind, QObject* parent) : QAbstractTableModel(parent), columns(columnsOf(kind)) {}

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows.size());
    }
    int columnCount(const QModelIndex&) const override { return static_cast<int>(columns.size()); }
    QVariant data(const QModelIndex& index, int role) const override {
        const Column& column = columns[index.column()];
        if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return rows[index.row()].*column.member;
        if (role == Qt::TextAlignmentRole && column.member == kLevel.member)
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        return {};
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return QCoreApplication::translate("ElementPicker", columns[section].title);
    }
    void replace(QVector<host::PickRow> with) {
        beginResetModel();
        rows = std::move(with);
        endResetModel();
    }

    const QVector<Column> columns;
    QVector<host::PickRow> rows;
};

namespace {

bool WordFilter::filterAcceptsRow(int row, const QModelIndex&) const {
    const host::PickRow& one = static_cast<PickModel*>(sourceModel())->rows[row];
    return std::all_of(words_.begin(), words_.end(), [&](const QString& word) {
        for (const QString* text : {&one.name, &one.i, &one.j, &one.level, &one.station})
            if (text->contains(word, Qt::CaseInsensitive)) return true;
        return false;
    });
}

}  // namespace

ElementPicker::ElementPicker(Columns columns, QWidget* parent, const char* name, bool modal, uint flags)
    : QDialog(parent, Qt::WindowFlags(int(flags))),
      lineEdit_Filter(new QLineEdit(this)),
      tableView_Element(new QTableView(this)),
      pushButton_Ensure(new QPushButton(tr("确定"), this)),
      pushButton_Cancel(new QPushButton(tr("取消"), this)),
      model_(new PickModel(columns, this)),
      shown_(new WordFilter(this)),
      count_(new QLabel(this)) {
    setObjectName(name ? name : "ElementPicker");
    setModal(modal);
    shown_->setSourceModel(model_);
    layOut();
    connect(lineEdit_Filter, &QLineEdit::textChanged, this, &ElementPicker::filter);
    connect(tableView_Element, &QTableView::doubleClicked, this, &ElementPicker::take);
    connect(tableView_Element->selectionModel(), &QItemSelectionModel::currentChanged, this, &ElementPicker::showState);
    connect(pushButton_Ensure, &QPushButton::clicked, this, &ElementPicker::take);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &ElementPicker::reject);
}

ElementPicker::~ElementPicker() = default;

void ElementPicker::layOut() {
    lineEdit_Filter->setObjectName("lineEdit_Filter");
    lineEdit_Filter->setPlaceholderText(tr("名称、节点、电压等级或厂站"));
    lineEdit_Filter->setClearButtonEnabled(true);
    lineEdit_Filter->addAction(host::icon("search"), QLineEdit::LeadingPosition);
    lineEdit_Filter->installEventFilter(this);
    tableView_Element->setObjectName("tableView_Element");
    tableView_Element->setModel(shown_);
    tableView_Element->setSelectionBehavior(QAbstractItemView::SelectRows);
    tableView_Element->setSelectionMode(QAbstractItemView::SingleSelection);
    tableView_Element->setTabKeyNavigation(false);
    tableView_Element->verticalHeader()->hide();
    tableView_Element->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    tableView_Element->horizontalHeader()->setStretchLastSection(true);
    for (int column = 0; column < model_->columns.size(); ++column)
        tableView_Element->setColumnWidth(column, model_->columns[column].width);
    new host::TableHabits(tableView_Element);
    pushButton_Ensure->setObjectName("pushButton_Ensure");
    pushButton_Cancel->setObjectName("pushButton_Cancel");
    pushButton_Ensure->setDefault(true);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(lineEdit_Filter);
    rows->addWidget(tableView_Element, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(count_);
    buttons->addStretch();
    buttons->addWidget(pushButton_Ensure);
    buttons->addWidget(pushButton_Cancel);
    rows->addLayout(buttons);
    resize(820, 560);
}

void ElementPicker::setRows(QVector<host::PickRow> rows) {
    model_->replace(std::move(rows));
    filter(lineEdit_Filter->text());
}

void ElementPicker::filter(const QString& text) {
    static_cast<WordFilter*>(shown_)->setWords(text.split(' ', Qt::SkipEmptyParts));
    tableView_Element->selectRow(0);
    tableView_Element->scrollToTop();
    showState();
}

void ElementPicker::showState() {
    count_->setText(tr("共 %1 个，显示 %2 个").arg(model_->rows.size()).arg(shown_->rowCount()));
    pushButton_Ensure->setEnabled(tableView_Element->currentIndex().isValid());
}

void ElementPicker::preselect(const QString& name, const QString& i, const QString& j) {
    if (name.isEmpty()) return;
    for (int row = 0; row < model_->rows.size(); ++row) {
        const host::PickRow& one = model_->rows[row];
        if (one.name != name || (!i.isEmpty() && one.i != i) || (!j.isEmpty() && one.j != j)) continue;
        const QModelIndex index = shown_->mapFromSource(model_->index(row, 0));
        tableView_Element->selectRow(index.row());
        tableView_Element->scrollTo(index, QAbstractItemView::PositionAtCenter);
        return;
    }
}

int ElementPicker::exec() {
    taken_.reset();
    lineEdit_Filter->setFocus();
    return QDialog::exec();
}

void ElementPicker::take() {
    const QModelIndex current = tableView_Element->currentIndex();
    if (!current.isValid()) return;
    taken_ = model_->rows[shown_->mapToSource(current).row()];
    accept();
}

// The list follows the arrow keys although the line has the focus.
bool ElementPicker::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lineEdit_Filter && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown)
            return QCoreApplication::sendEvent(tableView_Element, event);
    }
    return QDialog::eventFilter(watched, event);
}
