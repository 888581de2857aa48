#pragma once

#include <QHashFunctions>
#include <QString>

/// Where a relay stands: an element and one of its ends. A branch has its two nodes, a generator, capacitor or reactor
/// its node twice, a bus its name three times. Side 1 is the I end, 2 the J end; 1 at elements with one end.
struct Location {
    QString ID_Name, I_Name, J_Name;
    int Side = 1;

    [[nodiscard]] const QString& node() const { return Side == 1 ? I_Name : J_Name; }
    bool operator==(const Location&) const = default;
};

inline size_t qHash(const Location& at, size_t seed = 0) {
    return qHashMulti(seed, at.ID_Name, at.I_Name, at.J_Name, at.Side);
}
