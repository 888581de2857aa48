#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QPair>
#include <QStringList>
#include <QVariant>
#include <QVector>

class QSqlDatabase;
class QSqlIndex;
class QWidget;

namespace sql_dlg {

class CSqlWidget;

enum ENUM_FIELD_TYPE { FIELD_STRING, FIELD_INT, FIELD_DOUBLE };

/// What stands in the key fields of text of a record that is new.
inline const QString newValue = QStringLiteral("*NEW_VALUE*");

/// The records of one table, one of them current and shown in the bound widgets. Statements that fail are told in the
/// dock and change nothing here.
class CDataForm : public QObject {
    Q_OBJECT
  public:
    CDataForm(const QString& table, QWidget* parent, QSqlDatabase* database, const char* name = nullptr);

    /// \param key  the field is part of what tells a record from the others
    void AddSqlWidget(CSqlWidget* widget, const QString& field, ENUM_FIELD_TYPE type, bool key);
    /// Reads the records. \param filter  condition in SQL; empty: all. \param sort  order of the records
    bool Select(const QString& filter, const QSqlIndex& sort);

    /// Make another record the current one and show it; what stands in the widgets is not kept. False when there is
    /// none; at an end the current record stays.
    bool First();
    bool Last();
    bool Next();
    bool Prev();
    bool Go(int row);
    bool Seek(const QList<QPair<QString, QVariant>>& key);

    /// Writes what stands in the widgets into the current record. True without a statement when nothing changed.
    bool Update();
    /// A new record behind the others, current from now on: stored at once, with "*NEW_VALUE*" in its key texts.
    bool Insert();
    /// Deletes the current record; the next one, or the last, is current then.
    bool Delete();
    /// Forgets the records, as if there were none.
    void Clear();
    /// Shows the current record again; disables and empties the widgets when there is none.
    void Show();

    [[nodiscard]] int Count() const { return static_cast<int>(records_.size()); }
    [[nodiscard]] int At() const { return at_; }  ///< -1 without a record
    [[nodiscard]] bool HasRecord() const { return at_ >= 0; }
    /// A record's bound fields as stored, in the order of binding.
    [[nodiscard]] const QStringList& Record(int row) const { return records_[row]; }
    [[nodiscard]] QStringList FieldNames() const;
    [[nodiscard]] const QString& Table() const { return table_; }
    [[nodiscard]] const QString& Connection() const { return connection_; }

    [[nodiscard]] QStringList Values() const;  ///< of the widgets
    void SetValues(const QStringList& values, bool withKeys);
    /// Why what stands in the widgets cannot be stored, and in which widget; an empty text when it can.
    [[nodiscard]] QString WhyNotStorable(CSqlWidget** where) const;
    /// Why the key in the widgets cannot be this record's.
    [[nodiscard]] QString WhyNoKey() const;

  private:
    struct Field {
        CSqlWidget* widget;
        QString name;
        ENUM_FIELD_TYPE type;
        bool key;
    };
    [[nodiscard]] QVariant stored(const Field& field, const QString& text) const;
    [[nodiscard]] QString condition(QVariantList& values) const;
    [[nodiscard]] bool sameKey(const QStringList& a, const QStringList& b) const;
    void readLengths();

    QString table_, connection_;
    QVector<Field> fields_;
    QHash<QString, int> lengths_;  ///< characters that a text field holds
    QVector<QStringList> records_;
    int at_ = -1;
};

}  // namespace sql_dlg
