#pragma once

#include <QString>
#include <QVector>

struct NamedType {
    int RTypeNo = 0;
    QString RTypeCode;
};

struct NamedSetting {
    int DzNo = 0;
    QString name;
};

/// The names under which the settings of the relay types are shown, in the rule database.
namespace SettingNames {

/// All relay types by number.
QVector<NamedType> types();
/// Settings of a type in their order.
QVector<NamedSetting> of(int rTypeNo);

/// Why names cannot be stored, one sentence about the first of them; empty when all can.
QString whyNot(const QVector<NamedSetting>& settings);
/// Renames settings of a type, all or none. \pre whyNot() is empty
bool store(int rTypeNo, const QVector<NamedSetting>& settings);

}  // namespace SettingNames
