#include "programs/workflow/SettingChange.h"

#include <algorithm>
#include <cmath>

#include "platform/host/Text.h"

namespace {

constexpr int kStoredDigits = 6;        ///< decimals of a stored setting
constexpr double kHalfADigit = 0.5e-6;  ///< of the last one

/// With a sign and so many significant digits, no trailing zeros.
QString signedText(double value, int digits, int least) {
    const int magnitude = value == 0 ? 0 : int(std::floor(std::log10(std::abs(value))));
    const int decimals = std::clamp(digits - 1 - magnitude, least, kStoredDigits);
    QString text = QString::number(value, 'f', decimals);
    while (text.contains('.') && (text.endsWith('0') || text.endsWith('.'))) text.chop(1);
    return value > 0 ? '+' + text : text;
}

}  // namespace

QString SettingChange::text() const {
    if (!share) return Text::tr("新");
    return signedText(difference, 4, 0) + " (" + signedText(*share * 100, 2, 1) + "%)";
}

bool SettingChange::exceeds(double limit) const { return share && std::abs(*share) > limit + 1e-9; }

std::optional<SettingChange> settingChange(const QString& newValue, const QString& oldValue) {
    if (newValue == oldValue) return std::nullopt;
    bool isNumber = false, wasNumber = false;
    const double now = newValue.toDouble(&isNumber), before = oldValue.toDouble(&wasNumber);
    if (!isNumber || !wasNumber || !(std::abs(now - before) >= kHalfADigit)) return std::nullopt;
    const double difference = now - before;
    return SettingChange{difference, before == 0 ? std::nullopt : std::optional(difference / std::abs(before))};
}
