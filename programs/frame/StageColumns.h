#pragma once

#include <QStringList>

/// Number of parts that a table of settings has columns for.
inline constexpr int kStages = 5;

/// The ten setting columns of a kind: part 1 to 5 primary, then part 1 to 5 secondary ("NDz11" .. "NDz51", "NDz12" ..).
/// \param prefix  "NDz", "ODz", "Rdz", "NRdz", "BRdz"
inline QStringList stageColumns(const QString& prefix) {
    QStringList columns;
    for (const char* measure : {"1", "2"})
        for (int part = 1; part <= kStages; ++part) columns.append(prefix + QString::number(part) + measure);
    return columns;
}
