#pragma once

#include <QAbstractTableModel>
#include <QDateTime>
#include <QMutex>
#include <QSortFilterProxyModel>
#include <QTimer>
#include <QVector>
#include <array>

namespace shell {

/// Kinds of message in the order of their weight.
enum class Grade { Diagram, Information, Warning, Error };
inline constexpr int kGrades = 4;

/// The messages of the session, the newest last; the oldest go when there are too many.
class MessageModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column { TimeColumn, GradeColumn, TextColumn, ColumnCount };
    static constexpr int gradeRole = Qt::UserRole;
    static constexpr int kept = 20000;

    explicit MessageModel(QObject* parent = nullptr);

    /// Takes a message from any thread; messages that come together are shown together.
    /// \param level  of WinDockFeedback
    void post(const QString& text, int level);
    void clear();
    /// How many messages of a kind there are.
    [[nodiscard]] int count(Grade grade) const { return counts_[size_t(grade)]; }
    /// Name of a kind.
    [[nodiscard]] static QString nameOf(Grade grade);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  signals:
    void countsChanged();

  private:
    struct Message {
        QDateTime time;
        Grade grade;
        QString text;
    };
    void takeWaiting();
    void dropOldest(qsizetype incoming);

    QVector<Message> messages_;
    std::array<int, kGrades> counts_{};
    QMutex mutex_;
    QVector<Message> waiting_;  ///< guarded by mutex_
};

/// Shows the kinds that are switched on and the messages that contain a text.
class MessageFilter : public QSortFilterProxyModel {
    Q_OBJECT
  public:
    using QSortFilterProxyModel::QSortFilterProxyModel;
    void setShown(Grade grade, bool shown);
    void setText(const QString& text);

  protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

  private:
    std::array<bool, kGrades> shown_{true, true, true, true};
    QString text_;
};

}  // namespace shell
