#include "shell/viewer/Book.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include "platform/sql/Sql.h"

namespace shell {

namespace {

// A lone first byte at the end would be held back for the byte after it: a line end is put behind it and taken off.
QString decoded(QByteArray bytes) { return sql::fromGbk(bytes.append('\n')).chopped(1); }

// The codec maps bytes that are nobody's to characters of private use.
constexpr QChar kFirstPrivate(0xE000), kLastPrivate(0xF8FF);

int replaceInvalid(QString& text) {
    int invalid = 0;
    for (QChar& character : text) {
        if (character >= kFirstPrivate && character <= kLastPrivate) character = QChar::ReplacementCharacter;
        invalid += character == QChar::ReplacementCharacter;
    }
    return invalid;
}

}  // namespace

Book readBook(const QString& file) {
    Book book;
    QFile source(file);
    if (!source.exists())
        book.whyNot = QCoreApplication::translate("shell::BookWindow", "文件不存在");
    else if (QFileInfo(file).isDir())
        book.whyNot = QCoreApplication::translate("shell::BookWindow", "这是一个文件夹");
    else if (!source.open(QIODevice::ReadOnly))
        book.whyNot = source.errorString();
    if (!book.whyNot.isEmpty()) return book;
    book.text = decoded(source.readAll());
    book.text.replace("\r\n", "\n").replace('\r', '\n');
    book.invalid = replaceInvalid(book.text);
    return book;
}

}  // namespace shell
