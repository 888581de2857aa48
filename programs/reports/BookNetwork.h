#pragma once

#include <QHash>

#include "programs/reports/BookContent.h"

/// The names behind the numbers of a run: branches of its network, operating modes, relays. Read at one go.
class BookNetwork {
  public:
    /// \return false when a table cannot be read
    bool read();
    [[nodiscard]] BookElement element(int idNo, int iNo, int jNo) const { return elements_.value({idNo, iNo, jNo}); }
    /// Name of an operating mode; "0" for one that has none.
    [[nodiscard]] QString mode(int sysNo) const { return modes_.value(sysNo, "0"); }
    /// Null when no such relay is installed.
    [[nodiscard]] const Location* relay(int rNo) const;

  private:
    struct Numbers {
        int idNo, iNo, jNo;
        bool operator==(const Numbers&) const = default;
        friend size_t qHash(const Numbers& key, size_t seed) { return qHashMulti(seed, key.idNo, key.iNo, key.jNo); }
    };
    QHash<Numbers, BookElement> elements_;
    QHash<int, QString> modes_;
    QHash<int, Location> relays_;
};
