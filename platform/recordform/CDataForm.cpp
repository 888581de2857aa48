#include "platform/recordform/CDataForm.h"

#include <QSqlDatabase>
#include <QSqlField>
#include <QSqlIndex>
#include <QWidget>
#include <algorithm>

#include "platform/recordform/CSqlWidget.h"
#include "platform/sql/Sql.h"

namespace sql_dlg {

CDataForm::CDataForm(const QString& table, QWidget* parent, QSqlDatabase* database, const char* name)
    : QObject(parent), table_(table), connection_(database ? database->connectionName() : QString()) {
    setObjectName(name);
}

void CDataForm::AddSqlWidget(CSqlWidget* widget, const QString& field, ENUM_FIELD_TYPE type, bool key) {
    fields_ << Field{widget, field, type, key};
    widget->SetValider();
}

QStringList CDataForm::FieldNames() const {
    QStringList names;
    for (const Field& field : fields_) names << field.name;
    return names;
}

void CDataForm::readLengths() {
    sql::Query query(connection_);
    query.exec(
        "SELECT COLUMN_NAME,CHARACTER_MAXIMUM_LENGTH FROM information_schema.COLUMNS WHERE TABLE_SCHEMA=DATABASE() AND"
        " TABLE_NAME=? AND CHARACTER_MAXIMUM_LENGTH IS NOT NULL",
        {table_});
    while (query.next()) lengths_[query.text(0)] = query.number(1);
    for (const Field& field : std::as_const(fields_))
        if (lengths_.contains(field.name)) field.widget->SetMaxLength(lengths_[field.name]);
}

bool CDataForm::Select(const QString& filter, const QSqlIndex& sort) {
    QStringList order, names;
    for (int i = 0; i < sort.count(); ++i)
        order << sql::quotedName(sort.fieldName(i)) + (sort.isDescending(i) ? " DESC" : "");
    for (const Field& field : std::as_const(fields_)) names << sql::quotedName(field.name);
    sql::Query query(connection_);
    if (!query.exec("SELECT " + names.join(',') + " FROM " + sql::quotedName(table_) +
                    (filter.isEmpty() ? QString() : " WHERE " + filter) +
                    (order.isEmpty() ? QString() : " ORDER BY " + order.join(','))))
        return false;
    Clear();
    while (query.next()) {
        QStringList record;
        for (int column = 0; column < fields_.size(); ++column) record << query.raw(column);
        records_ << record;
    }
    readLengths();
    return true;
}

void CDataForm::Clear() {
    records_.clear();
    at_ = -1;
}

bool CDataForm::Go(int row) {
    if (row < 0 || row >= Count()) return false;
    at_ = row;
    Show();
    return true;
}

bool CDataForm::First() { return Go(0); }
bool CDataForm::Last() { return Go(Count() - 1); }
bool CDataForm::Next() { return HasRecord() && Go(at_ + 1); }
bool CDataForm::Prev() { return HasRecord() && Go(at_ - 1); }

bool CDataForm::Seek(const QList<QPair<QString, QVariant>>& key) {
    const QStringList names = FieldNames();
    for (int row = 0; row < Count(); ++row)
        if (std::all_of(key.begin(), key.end(), [&](const auto& part) {
                const auto column = names.indexOf(part.first);
                return column >= 0 && records_[row][column] == part.second.toString();
            }))
            return Go(row);
    return false;
}

void CDataForm::Show() {
    for (int i = 0; i < fields_.size(); ++i) {
        fields_[i].widget->Widget()->setEnabled(HasRecord());
        if (HasRecord())
            fields_[i].widget->SetValue(records_[at_][i]);
        else
            fields_[i].widget->ClearText();
    }
}

QStringList CDataForm::Values() const {
    QStringList values;
    for (const Field& field : fields_) values << field.widget->GetValue();
    return values;
}

void CDataForm::SetValues(const QStringList& values, bool withKeys) {
    for (int i = 0; i < fields_.size() && i < values.size(); ++i)
        if (withKeys || !fields_[i].key) fields_[i].widget->SetValue(values[i]);
}

QVariant CDataForm::stored(const Field& field, const QString& text) const {
    if (field.type == FIELD_INT) return text.toLongLong();
    if (field.type == FIELD_DOUBLE) return text.toDouble();
    return text;
}

// The current record by its stored key, or by all fields where none is a key.
QString CDataForm::condition(QVariantList& values) const {
    const bool keyed = std::any_of(fields_.begin(), fields_.end(), [](const Field& field) { return field.key; });
    QStringList parts;
    for (int i = 0; i < fields_.size(); ++i) {
        if (keyed && !fields_[i].key) continue;
        parts << sql::quotedName(fields_[i].name) + "=?";
        values << stored(fields_[i], records_[at_][i]);
    }
    return parts.join(" AND ");
}

bool CDataForm::Update() {
    const QStringList values = Values();
    if (!HasRecord() || values == records_[at_]) return true;
    QStringList parts;
    QVariantList bound;
    for (int i = 0; i < fields_.size(); ++i) {
        parts << sql::quotedName(fields_[i].name) + "=?";
        bound << stored(fields_[i], values[i]);
    }
    const QString where = condition(bound);
    if (!sql::Query(connection_)
             .exec("UPDATE " + sql::quotedName(table_) + " SET " + parts.join(',') + " WHERE " + where, bound))
        return false;
    records_[at_] = values;
    return true;
}

bool CDataForm::Insert() {
    QVariantList row;
    QStringList record;
    for (const Field& field : std::as_const(fields_)) {
        const QString text = field.type == FIELD_STRING ? (field.key ? newValue : QString()) : QStringLiteral("0");
        row << stored(field, text);
        record << text;
    }
    if (!sql::insertRows(connection_, table_, FieldNames(), {row})) return false;
    records_ << record;
    return Last();
}

bool CDataForm::Delete() {
    if (!HasRecord()) return false;
    QVariantList bound;
    const QString where = condition(bound);
    if (!sql::Query(connection_).exec("DELETE FROM " + sql::quotedName(table_) + " WHERE " + where, bound))
        return false;
    records_.remove(at_);
    at_ = std::min(at_, Count() - 1);
    Show();
    return true;
}

QString CDataForm::WhyNotStorable(CSqlWidget** where) const {
    for (const Field& field : fields_) {
        const QString text = field.widget->GetValue();
        bool good = true;
        if (field.type != FIELD_STRING && !text.isEmpty()) text.toDouble(&good);
        const QString why = field.type != FIELD_STRING ? (good ? QString() : tr("应为数字"))
                                                       : sql::whyNotStorable(text, lengths_.value(field.name, 0xffff));
        if (why.isEmpty()) continue;
        *where = field.widget;
        return field.name + "：" + why;
    }
    return {};
}

bool CDataForm::sameKey(const QStringList& a, const QStringList& b) const {
    for (int i = 0; i < fields_.size(); ++i)
        if (fields_[i].key && a[i] != b[i]) return false;
    return true;
}

QString CDataForm::WhyNoKey() const {
    const QStringList values = Values();
    bool keyed = false;
    for (int i = 0; i < fields_.size(); ++i) {
        if (!fields_[i].key) continue;
        keyed = true;
        if (fields_[i].type != FIELD_STRING) continue;
        if (values[i].trimmed().isEmpty()) return tr("%1不能为空").arg(fields_[i].name);
        if (values[i] == newValue) return tr("%1不能为*NEW_VALUE*").arg(fields_[i].name);
    }
    for (int row = 0; row < Count() && keyed; ++row)
        if (row != at_ && sameKey(records_[row], values)) return tr("记录已经存在");
    return {};
}

}  // namespace sql_dlg
