#include "platform/import/Names.h"

#include <QString>
#include <algorithm>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"

namespace import {

namespace {

/// Length of the UTF-8 sequence at the start of a text, 0 when it is none (surrogates and overlong forms are none).
std::size_t sequenceLength(std::string_view t) {
    const auto byte = [&](std::size_t i) { return i < t.size() ? static_cast<unsigned char>(t[i]) : 0U; };
    const auto tail = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return tail(1) ? 2 : 0;
    if (lead >= 0xE0 && lead < 0xF0) {
        const bool low = lead == 0xE0 && byte(1) < 0xA0;
        const bool surrogate = lead == 0xED && byte(1) >= 0xA0;
        return tail(1) && tail(2) && !low && !surrogate ? 3 : 0;
    }
    if (lead >= 0xF0 && lead < 0xF5) {
        const bool outside = (lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) >= 0x90);
        return tail(1) && tail(2) && tail(3) && !outside ? 4 : 0;
    }
    return 0;
}

bool isControl(std::string_view sequence) {
    return sequence.size() == 1 && (static_cast<unsigned char>(sequence[0]) < 0x20 || sequence[0] == 0x7F);
}

bool inGbk(std::string_view sequence) {
    if (sequence.size() == 1) return true;
    return sql::fitsGbk(QString::fromUtf8(sequence.data(), static_cast<qsizetype>(sequence.size())));
}

std::string_view firstCharacters(std::string_view text, int count) {
    std::size_t at = 0;
    for (; count > 0 && at < text.size(); --count) at += std::max<std::size_t>(1, sequenceLength(text.substr(at)));
    return text.substr(0, at);
}

std::string trimmedEnd(std::string text) {
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

std::string storable(std::string_view name) {
    std::string out;
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t length = sequenceLength(name.substr(at));
        const std::string_view sequence = name.substr(at, std::max<std::size_t>(1, length));
        if (length == 0)
            out += '?';
        else if (isControl(sequence))
            out += ' ';
        else if (!inGbk(sequence))
            out += '?';
        else
            out += sequence;
        at += sequence.size();
    }
    out = trimmedEnd(out);
    return out.empty() ? "-" : out;
}

}  // namespace

std::size_t invalidUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = sequenceLength(text.substr(at));
        if (length == 0) return at;
        at += length;
    }
    return std::string_view::npos;
}

int characters(std::string_view text) {
    int count = 0;
    for (char c : text) count += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    return count;
}

std::string whyNoName(std::string_view name, int maxLength) {
    if (name.empty()) return Text::say("名称为空");
    if (name.back() == ' ') return Text::say("名称末尾有空格");
    if (characters(name) > maxLength) return Text::say("名称超过 ") + std::to_string(maxLength) + Text::say(" 个字符");
    for (std::size_t at = 0; at < name.size();) {
        const std::string_view sequence = name.substr(at, std::max<std::size_t>(1, sequenceLength(name.substr(at))));
        if (isControl(sequence)) return Text::say("名称中有控制字符");
        if (!inGbk(sequence)) return Text::say("名称中有 GBK 以外的字符“") + std::string(sequence) + "”";
        at += sequence.size();
    }
    return {};
}

std::string NameGiver::give(const std::string& name, const char* kind, int maxLength) {
    const std::string given = unique(storable(name), maxLength);
    taken_.insert(given);
    if (given == name) return given;
    const std::string change = Text::say("名称“") + name + Text::say("”改为“") + given + "”";
    if (!options_.shortenNames)
        throw ImportError("", 0, Text::say(kind) + Text::say("：") + change + Text::say("才能存入，未允许修改名称"));
    report_.add(Finding::Kind::Changed, Text::say(kind), change);
    return given;
}

std::string NameGiver::unique(const std::string& name, int maxLength) {
    if (characters(name) <= maxLength && !taken_.contains(name)) return name;
    for (int& number = next_[std::string(firstCharacters(name, maxLength - 4))];;) {
        std::string tail(1, '~');
        tail += std::to_string(++number);
        const std::string head(firstCharacters(name, maxLength - static_cast<int>(tail.size())));
        if (!taken_.contains(head + tail)) return head + tail;
    }
}

}  // namespace import
