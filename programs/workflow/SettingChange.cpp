#include "programs/workflow/SettingChange.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

double settingNumber(const QString& text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber ? value : std::numeric_limits<double>::quiet_NaN();
}

std::optional<SettingChange> settingChange(double newValue, double oldValue) {
    const double difference = newValue - oldValue;
    if (!std::isfinite(difference) || std::abs(difference) < kHalfADigit) return std::nullopt;
    return SettingChange{difference, oldValue == 0 ? std::nullopt : std::optional(difference / std::abs(oldValue))};
}
