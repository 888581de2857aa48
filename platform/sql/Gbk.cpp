#include <QStringDecoder>
#include <QStringEncoder>
#include <algorithm>

#include "platform/sql/Sql.h"

#include "platform/host/Text.h"

namespace sql {

namespace {

bool isControl(QChar character) { return character.unicode() < 0x20 || character.unicode() == 0x7F; }

// The codec maps these to GBK codes that the server does not know.
bool isPrivateUse(QChar character) { return character.category() == QChar::Other_PrivateUse; }

}  // namespace

QByteArray toGbk(const QString& text) {
    QStringEncoder encoder("GBK");
    return encoder(text);
}

QString fromGbk(const QByteArray& bytes) {
    QStringDecoder decoder("GBK");
    return decoder(bytes);
}

bool fitsGbk(const QString& text) {
    const QByteArray bytes = toGbk(text);
    if (fromGbk(bytes) != text || std::any_of(text.begin(), text.end(), isPrivateUse)) return false;
    qsizetype wide = 0;
    for (const QChar character : text) wide += character.unicode() >= 0x80;
    return bytes.size() == text.size() + wide;  // every character in one or two bytes, as in the database
}

QString cutToGbk(const QString& text, int bytes) {
    qsizetype taken = 0, kept = 0;
    for (; kept < text.size(); ++kept) {
        taken += text[kept].unicode() < 0x80 ? 1 : 2;
        if (taken > bytes) break;
    }
    return text.left(kept);
}

QString whyNotStorable(const QString& text, int maxLength) {
    for (const QChar character : text)
        if (isControl(character)) return Text::tr("含有控制字符");
    if (text.endsWith(' ')) return Text::tr("末尾有空格");
    if (!fitsGbk(text)) return Text::tr("含有GBK字符集以外的字符");
    if (text.size() > maxLength) return Text::tr("超过%1个字符").arg(maxLength);
    return {};
}

}  // namespace sql
