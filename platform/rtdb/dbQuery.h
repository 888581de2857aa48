#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantList>

/// A condition on a real-time table, built from pieces: dbQuery() << "ibs=" << bus << "or zbs=" << bus.
/// Literal pieces hold field names, whole numbers, comparisons, "and", "or", "order by"; names are pieces of their own
/// and are bound as values, whatever characters they hold.
class dbQuery {
  public:
    dbQuery() = default;
    /// A condition without names, e.g. " order by id " or "module_num=14".
    dbQuery(const char* text) { *this << text; }

    dbQuery& operator<<(const char* text);
    dbQuery& operator<<(const QString& value);
    dbQuery& operator<<(int value);

    /// False once a literal piece held anything but the above; such a query selects nothing.
    [[nodiscard]] bool valid() const { return valid_; }
    /// The text behind "SELECT ... FROM <table>", with "?" for each value.
    [[nodiscard]] QByteArray clause() const;
    [[nodiscard]] const QVariantList& values() const { return values_; }

  private:
    QByteArray text_;
    QVariantList values_;
    bool valid_ = true;
};
