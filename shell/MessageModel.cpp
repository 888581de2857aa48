#include "shell/MessageModel.h"

#include <QApplication>
#include <QPalette>
#include <algorithm>

#include "platform/host/WinDockFeedback.h"
#include "shell/Appearance.h"

namespace shell {

namespace {

Grade gradeOf(int level) {
    if (level >= WinDockFeedback::Error) return Grade::Error;
    if (level == WinDockFeedback::Warning) return Grade::Warning;
    return level == WinDockFeedback::Diagram ? Grade::Diagram : Grade::Information;
}

QVariant colourOf(Grade grade) {
    const bool dark = QApplication::palette().base().color().lightness() < 128;
    if (grade == Grade::Error) return QColor(dark ? 0xff8f85 : 0xb3261e);
    if (grade == Grade::Warning) return QColor(dark ? 0xf2c14e : 0x8a5300);
    if (grade == Grade::Diagram) return QColor(dark ? 0x8fc7ff : 0x1a5cae);
    return {};
}

QIcon iconOf(Grade grade) {
    static const QIcon icons[] = {icon("diagram"), icon("info"), icon("warning"), icon("error")};
    return icons[int(grade)];
}

}  // namespace

MessageModel::MessageModel(QObject* parent) : QAbstractTableModel(parent) {}

QString MessageModel::nameOf(Grade grade) {
    switch (grade) {
        case Grade::Diagram:
            return tr("图上");
        case Grade::Information:
            return tr("信息");
        case Grade::Warning:
            return tr("警告");
        default:
            return tr("错误");
    }
}

void MessageModel::post(const QString& text, int level) {
    const QMutexLocker locker(&mutex_);
    if (waiting_.isEmpty()) QMetaObject::invokeMethod(this, &MessageModel::takeWaiting, Qt::QueuedConnection);
    waiting_.append({QDateTime::currentDateTime(), gradeOf(level), text.trimmed()});
}

void MessageModel::dropOldest(qsizetype incoming) {
    const qsizetype excess = std::min(messages_.size(), messages_.size() + incoming - kept);
    if (excess <= 0) return;
    beginRemoveRows({}, 0, int(excess) - 1);
    for (qsizetype i = 0; i < excess; ++i) --counts_[size_t(messages_[i].grade)];
    messages_.remove(0, excess);
    endRemoveRows();
}

void MessageModel::takeWaiting() {
    QVector<Message> fresh;
    {
        const QMutexLocker locker(&mutex_);
        fresh.swap(waiting_);
    }
    if (fresh.isEmpty()) return;
    if (fresh.size() > kept) fresh.remove(0, fresh.size() - kept);
    dropOldest(fresh.size());
    beginInsertRows({}, int(messages_.size()), int(messages_.size() + fresh.size()) - 1);
    for (const Message& message : std::as_const(fresh)) ++counts_[size_t(message.grade)];
    messages_ += fresh;
    endInsertRows();
    emit countsChanged();
}

void MessageModel::clear() {
    beginResetModel();
    messages_.clear();
    counts_.fill(0);
    endResetModel();
    emit countsChanged();
}

int MessageModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(messages_.size()); }

int MessageModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant MessageModel::data(const QModelIndex& index, int role) const {
    const Message& message = messages_[index.row()];
    if (role == gradeRole) return int(message.grade);
    if (role == Qt::ForegroundRole && index.column() != TimeColumn) return colourOf(message.grade);
    if (role == Qt::DecorationRole && index.column() == GradeColumn) return iconOf(message.grade);
    if (role == Qt::ToolTipRole && index.column() == TextColumn) return message.text;
    if (role != Qt::DisplayRole) return {};
    switch (index.column()) {
        case TimeColumn:
            return message.time.toString("HH:mm:ss");
        case GradeColumn:
            return nameOf(message.grade);
        default:
            return message.text;
    }
}

QVariant MessageModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    const QString names[] = {tr("时间"), tr("级别"), tr("消息")};
    return names[section];
}

void MessageFilter::setShown(Grade grade, bool shown) {
    shown_[size_t(grade)] = shown;
    invalidateFilter();
}

void MessageFilter::setText(const QString& text) {
    text_ = text;
    invalidateFilter();
}

bool MessageFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
    const QModelIndex at = sourceModel()->index(row, MessageModel::TextColumn, parent);
    return shown_[size_t(at.data(MessageModel::gradeRole).toInt())] &&
           (text_.isEmpty() || at.data().toString().contains(text_, Qt::CaseInsensitive));
}

}  // namespace shell
