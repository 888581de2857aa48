#pragma once

#include <QHash>
#include <QString>
#include <QVector>
#include <complex>
#include <memory>
#include <optional>

#include "programs/engine/BranchTable.h"
#include "programs/frame/Location.h"

using Impedance = std::complex<double>;

/// A branch as a relay sees it; ohm primary at the relay's voltage.
struct PictureBranch {
    Location at;  ///< its end that is nearer to the relay
    int idNo = 0;
    bool transformer = false;
    Impedance start;             ///< from the relay to that end
    std::optional<Impedance> z;  ///< nothing where the network does not give it
};

/// The branches around a relay.
struct PictureLines {
    double kv = 0;               ///< base voltage at the relay
    QVector<PictureBranch> own;  ///< the protected branch, then what the walk passes behind it (T nodes, star points)
    QVector<PictureBranch> behind;  ///< at the far ends
    std::optional<double> end;      ///< nearest point, ohm, that an instantaneous stage must not reach: a far end, or
                                    ///< behind the transformer where there are transformers only
};

/// Impedances of the network that a case stands on, read once.
class PictureNetwork {
  public:
    explicit PictureNetwork(int caseNo);

    /// \param error  one sentence when the place has no branch in this network
    [[nodiscard]] std::optional<PictureLines> around(const Location& place, QString* error) const;
    [[nodiscard]] double baseKv(const QString& node) const { return kv_.value(node); }
    [[nodiscard]] QString branchName(int idNo) const { return names_.value(idNo); }

  private:
    [[nodiscard]] std::optional<Impedance> ohm(const BranchRow& row, double kv) const;
    [[nodiscard]] std::optional<Impedance> through(const BranchRow& row, double kv) const;
    [[nodiscard]] PictureBranch branch(const BranchRow& row, int node, Impedance start, double kv) const;
    void addBehind(int node, int cameBy, Impedance start, PictureLines& lines) const;

    std::shared_ptr<const BranchTable> table_ = BranchTable::current();
    QHash<int, Impedance> perUnit_;
    QHash<int, QString> names_;
    QHash<QString, double> kv_;
};
