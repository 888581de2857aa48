#include "platform/rtdb/dbQuery.h"

#include <cctype>
#include <cstring>

namespace {

bool isWord(char c) { return std::isalpha(static_cast<unsigned char>(c)) || c == '_'; }
bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)); }

/// Length of the token at the start of a text; 0 when no token of a condition starts so. A number ends where a letter
/// follows, so that "recid=5and ..." reads as it is meant.
std::size_t tokenLength(const char* text) {
    std::size_t n = 0;
    if (isWord(*text)) {
        while (isWord(text[n]) || isDigit(text[n])) ++n;
    } else if (isDigit(*text) || (*text == '-' && isDigit(text[1]))) {
        n = 1;
        while (isDigit(text[n])) ++n;
    } else if (std::strchr("=<>!", *text)) {
        while (text[n] && std::strchr("=<>!", text[n])) ++n;
    } else if (std::strchr("(),", *text)) {
        n = 1;
    }
    return n;
}

}  // namespace

dbQuery& dbQuery::operator<<(const char* text) {
    while (*text) {
        if (std::isspace(static_cast<unsigned char>(*text))) {
            ++text;
            continue;
        }
        const std::size_t length = tokenLength(text);
        if (!length) {
            valid_ = false;
            return *this;
        }
        text_ += QByteArray(text, static_cast<int>(length)) + " ";
        text += length;
    }
    return *this;
}

dbQuery& dbQuery::operator<<(const QString& value) {
    text_ += "? ";
    values_.append(value);
    return *this;
}

dbQuery& dbQuery::operator<<(int value) {
    text_ += "? ";
    values_.append(value);
    return *this;
}

QByteArray dbQuery::clause() const {
    if (text_.isEmpty() || text_.startsWith("order ")) return text_;
    return "WHERE " + text_;
}
