#pragma once

#include <QString>
#include <QVector>

class dbDatabase;

/// The network on which the branch table and the real-time database stand now.
class NetworkSource {
  public:
    /// \param fdb  the project's real-time database, not owned
    explicit NetworkSource(dbDatabase& fdb) : fdb_(fdb) {}

    /// What the tables are known to hold: Mlf 1 a load-flow case, 0 a scheme, -1 unknown.
    void setLoaded(int mlf, int lfCase, const QString& scheme);
    [[nodiscard]] int mlf() const { return mlf_; }
    [[nodiscard]] int lfCase() const { return lfCase_; }
    [[nodiscard]] const QString& scheme() const { return scheme_; }
    /// Brings the network of a load-flow case or scheme into the branch table and the real-time database, unless it
    /// stands there already. \return true when it was built anew
    bool SwitchNetwork(int mlf, int lfCase, const QString& scheme);
    /// Whether every step of the last switch succeeded; if not, the tables hold neither network.
    [[nodiscard]] bool isWhole() const { return whole_; }
    /// Those of the relays whose place is not in the network that stands there.
    [[nodiscard]] static QVector<int> relaysOutside(const QVector<int>& relays);
    /// Brings the headers of the stability case and of the load-flow case (0 when negative) into the real-time
    /// database. \return false with a message when one is missing
    bool LoadCaseHeaders(int lfCase);

  private:
    [[nodiscard]] bool differs(int mlf, int lfCase, const QString& scheme) const;
    bool loadStabilityHeader();
    bool loadLoadFlowHeader(int lfCase);

    dbDatabase& fdb_;
    int mlf_ = -1;
    int lfCase_ = 0;
    QString scheme_;
    bool whole_ = true;
};
