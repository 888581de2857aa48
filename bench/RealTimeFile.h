#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <initializer_list>
#include <stdexcept>
#include <string>

#include "exchange/NetworkFiles.h"
#include "exchange/RealTimeTables.h"

namespace bench {

/// Rows of one table, put in through one prepared statement.
class TableFiller {
  public:
    TableFiller(sqlite3* database, const std::string& table, const std::string& columns, int count) {
        std::string marks = "?";
        for (int i = 1; i < count; ++i) marks += ",?";
        const std::string text = "INSERT INTO " + table + "(" + columns + ") VALUES(" + marks + ")";
        if (sqlite3_prepare_v2(database, text.c_str(), -1, &statement_, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(database));
    }
    ~TableFiller() { sqlite3_finalize(statement_); }
    TableFiller(const TableFiller&) = delete;
    TableFiller& operator=(const TableFiller&) = delete;
    void row(const std::string& id, std::initializer_list<double> values) {
        sqlite3_bind_blob(statement_, 1, id.data(), static_cast<int>(id.size()), SQLITE_TRANSIENT);
        int column = 1;
        for (const double value : values) sqlite3_bind_double(statement_, ++column, value);
        sqlite3_step(statement_);
        sqlite3_reset(statement_);
    }

  private:
    sqlite3_stmt* statement_ = nullptr;
};

/// The real-time tables of a network, as far as VASKEL.EXE reads them.
inline void writeRealTimeTables(const std::filesystem::path& file, const exchange::NetworkData& network) {
    sqlite3* database = nullptr;
    if (sqlite3_open(file.c_str(), &database) != SQLITE_OK) throw std::runtime_error(file.string());
    for (const char* text : exchange::rtdb::kCreate) sqlite3_exec(database, text, nullptr, nullptr, nullptr);
    sqlite3_exec(database, "BEGIN; INSERT INTO meta VALUES('version','1'),('load_flow','0')", nullptr, nullptr,
                 nullptr);
    TableFiller nodes(database, "nd", "id,ibs,base_kv", 3);
    for (const auto& b : network.buses) nodes.row("bus " + std::to_string(b.no), {1.0 + b.no, b.baseKv});
    TableFiller lines(database, "ln", "id,id_no,ibs,zbs,r1,x1,r0,x0", 8);
    for (const auto& l : network.lines)
        lines.row("line " + std::to_string(l.idNo), {double(l.idNo), 1.0 + l.iNo, 1.0 + l.jNo, l.r1, l.x1, l.r0, l.x0});
    TableFiller transformers(database, "xf", "id,id_no,ibs,zbs,zc_type,r1,x1,r0,x0", 9);
    for (const auto& t : network.transformers)
        transformers.row("transformer " + std::to_string(t.idNo),
                         {double(t.idNo), 1.0 + t.iNo, 1.0 + t.jNo, double(t.zcType), t.r1, t.x1, t.r0, t.x0});
    TableFiller units(database, "un", "id,ibs,grounded,r1,x1,r0,x0", 7);
    for (const auto& g : network.generators)
        units.row("unit " + g.name, {1.0 + g.no, double(g.grounded), g.r1, g.x1, g.r0, g.x0});
    sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close_v2(database);
}

}  // namespace bench
