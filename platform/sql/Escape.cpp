#include "platform/sql/Escape.h"

#include <QLocale>
#include <QSqlField>
#include <QStringDecoder>
#include <cmath>

#include "platform/host/Text.h"

namespace sql {

namespace {

QString quotedText(const QSqlDriver& driver, const QString& text) {
    QSqlField field{QString(), QMetaType(QMetaType::QString)};
    field.setValue(text);
    return driver.formatValue(field).replace(QChar(0), QLatin1String("\\0"));
}

QString quotedBytes(const QSqlDriver& driver, const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    return decoder.hasError() ? "X'" + QString::fromLatin1(bytes.toHex()) + '\'' : quotedText(driver, text);
}

std::optional<QString> number(double value) {
    if (!std::isfinite(value)) return std::nullopt;
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

// The end of the quoted stretch that begins at `start`; a backslash takes the next character along.
qsizetype endOfQuoted(const QString& text, qsizetype start) {
    qsizetype at = start + 1;
    while (at < text.size() && text[at] != text[start]) at += text[at] == '\\' && text[start] != '`' ? 2 : 1;
    return std::min(at + 1, text.size());
}

bool isQuote(QChar character) { return character == '\'' || character == '"' || character == '`'; }

}  // namespace

std::optional<QString> literal(const QSqlDriver& driver, const QVariant& value) {
    if (value.isNull()) return QStringLiteral("NULL");
    switch (value.typeId()) {
        case QMetaType::Double:
        case QMetaType::Float:
            return number(value.toDouble());
        case QMetaType::Bool:
            return QString::number(value.toInt());
        case QMetaType::QByteArray:
            return quotedBytes(driver, value.toByteArray());
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
            return value.toString();
        default:
            return quotedText(driver, value.toString());
    }
}

std::optional<QString> withValues(const QSqlDriver& driver, const QString& text, const QVariantList& values,
                                  QString* error) {
    QString result;
    qsizetype used = 0;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype end = isQuote(text[at]) ? endOfQuoted(text, at) : at + 1;
        if (text[at] != '?') {
            result += QStringView(text).mid(at, end - at);
        } else if (const auto value = used < values.size() ? literal(driver, values[used]) : QString("?")) {
            result += *value;
            ++used;
        } else {
            *error = Text::tr("第%1个值不是有限的数").arg(used + 1);
            return std::nullopt;
        }
        at = end;
    }
    if (used == values.size()) return result;
    *error = Text::tr("语句有%1处待填，给出了%2个值").arg(used).arg(values.size());
    return std::nullopt;
}

}  // namespace sql
