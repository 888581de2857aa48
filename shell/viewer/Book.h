#pragma once

#include <QString>

namespace shell {

/// A calculation book as its file holds it.
struct Book {
    QString text;      ///< lines ended by "\n"
    int invalid = 0;   ///< characters that stand for bytes which are none in GBK, U+FFFD each
    QString whyNot{};  ///< why the file could not be read; empty when it could
};
/// Reads a text file in GBK.
Book readBook(const QString& file);

}  // namespace shell
