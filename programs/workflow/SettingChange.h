#pragma once

#include <QString>
#include <optional>

/// What a new value of a setting changes against the stored one.
struct SettingChange {
    double difference = 0;        ///< new minus old
    std::optional<double> share;  ///< of the old value; none when that is 0

    /// "+12.3 (+4.5%)", with as many digits as are of use; a word for a setting that had none.
    [[nodiscard]] QString text() const;
    /// Whether the value moved by more than a share of the old one. A new setting did not move.
    [[nodiscard]] bool exceeds(double limit) const;
};

/// Value of a setting as typed; not a number when it is none.
double settingNumber(const QString& text);
/// Nothing when the values are equal in the digits that are stored, or one of them is no number.
std::optional<SettingChange> settingChange(double newValue, double oldValue);
