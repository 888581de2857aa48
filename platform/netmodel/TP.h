#pragma once

#include "platform/netmodel/NORVDB.h"
#include "platform/rtdb/dbDatabase.h"

namespace norvdb {

/// The topology pass: nodes joined by closed switches become one bus. Buses are numbered from 2 in the order of their
/// first node; a bus without a valid branch end and without a source has number 0.
class TP {
  public:
    explicit TP(NORVDB& network) : network_(network) {}

    /// Reads the real-time tables. \throws std::runtime_error when they cannot be read
    void tpReadFastdb(dbDatabase* database);
    /// Finds the buses. \return 0 when there is no node
    int tpAllnew();
    /// Writes bus and node numbers into all tables, without a commit.
    /// \throws std::runtime_error when they cannot be written
    void tpWriteFastdb(dbDatabase* database);

  private:
    NORVDB& network_;
};

}  // namespace norvdb
