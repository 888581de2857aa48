#include "engines/network/RealTimeReader.h"

#include <sqlite3.h>

#include <memory>
#include <string>
#include <unordered_set>

#include "exchange/RealTimeTables.h"
#include "exchange/TextFile.h"

namespace engines {

namespace {

using exchange::FormatError;
using exchange::NetworkData;

constexpr int kBusyMilliseconds = 5000;

/// The file, opened for reading only.
class Tables {
  public:
    explicit Tables(const std::filesystem::path& file) : name_(file.filename().string()) {
        sqlite3* opened = nullptr;
        const int result = sqlite3_open_v2(file.string().c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
        database_.reset(opened);
        if (result != SQLITE_OK) fail("cannot be read");
        sqlite3_busy_timeout(opened, kBusyMilliseconds);
    }

    [[nodiscard]] sqlite3* handle() const { return database_.get(); }
    [[noreturn]] void fail(const std::string& what) const { throw FormatError(name_, 0, what); }

  private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
    };
    std::string name_;
    std::unique_ptr<sqlite3, Close> database_;
};

/// The rows of a query; columns are taken one after the other.
class Rows {
  public:
    Rows(const Tables& tables, const char* query) : tables_(tables) {
        sqlite3_stmt* prepared = nullptr;
        if (sqlite3_prepare_v2(tables.handle(), query, -1, &prepared, nullptr) != SQLITE_OK)
            tables.fail(sqlite3_errmsg(tables.handle()));
        statement_.reset(prepared);
    }

    bool next() {
        column_ = 0;
        const int result = sqlite3_step(statement_.get());
        if (result != SQLITE_ROW && result != SQLITE_DONE) tables_.fail(sqlite3_errmsg(tables_.handle()));
        return result == SQLITE_ROW;
    }

    int whole() { return sqlite3_column_int(statement_.get(), column_++); }
    bool flag() { return whole() != 0; }
    double real() { return sqlite3_column_double(statement_.get(), column_++); }

    std::string text() {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_.get(), column_));
        const int size = sqlite3_column_bytes(statement_.get(), column_++);
        return bytes ? std::string(bytes, static_cast<std::size_t>(size)) : std::string();
    }

    /// A value without which the element `id` cannot be computed; 0 where it is not needed.
    double needed(const std::string& id, bool isNeeded = true) {
        if (isNeeded && sqlite3_column_type(statement_.get(), column_) == SQLITE_NULL)
            tables_.fail(id + ": " + sqlite3_column_name(statement_.get(), column_) + " is missing");
        return real();
    }

  private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    const Tables& tables_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
    int column_ = 0;
};

bool readMeta(const Tables& tables) {
    std::string version, loadFlow;
    for (Rows rows(tables, "SELECT name,value FROM meta"); rows.next();) {
        const auto name = rows.text();
        if (name == "version") version = rows.text();
        if (name == "load_flow") loadFlow = rows.text();
    }
    if (version != std::to_string(exchange::rtdb::kVersion))
        tables.fail("has layout version '" + version + "', " + std::to_string(exchange::rtdb::kVersion) +
                    " is expected");
    return loadFlow == "1";
}

std::vector<exchange::NetBus> readBuses(const Tables& tables) {
    std::vector<exchange::NetBus> buses;
    for (Rows rows(tables, "SELECT ibs,base_kv,v_mag,v_angle,v_min_kv,id FROM nd WHERE ibs>=2 ORDER BY ibs,id");
         rows.next();) {
        exchange::NetBus bus;
        bus.no = rows.whole();
        bus.baseKv = rows.real();
        bus.vMag = rows.real();
        bus.vAngle = rows.real();
        bus.vMinKv = rows.real();
        bus.name = rows.text();
        if (buses.empty() || buses.back().no != bus.no) {
            buses.push_back(bus);
        } else if (buses.back().vMinKv <= 0) {
            buses.back().vMinKv = bus.vMinKv;
        }
    }
    return buses;
}

std::vector<exchange::NetLine> readLines(const Tables& tables) {
    std::vector<exchange::NetLine> lines;
    for (Rows rows(tables,
                   "SELECT id,id_no,ibs,zbs,r1,x1,r0,x0,length_km,rated_a,max_load_a FROM ln WHERE valid=1"
                   " AND i_break!=0 AND j_break!=0 AND ibs>=2 AND zbs>=2 AND ibs!=zbs ORDER BY oid");
         rows.next();) {
        const auto id = rows.text();
        auto& line = lines.emplace_back();
        line.idNo = rows.whole();
        line.iNo = rows.whole();
        line.jNo = rows.whole();
        for (double* value : {&line.r1, &line.x1, &line.r0, &line.x0}) *value = rows.needed(id);
        for (double* value : {&line.lengthKm, &line.ratedA, &line.maxLoadA}) *value = rows.real();
    }
    return lines;
}

std::vector<exchange::NetTransformer> readTransformers(const Tables& tables) {
    std::vector<exchange::NetTransformer> transformers;
    for (Rows rows(tables,
                   "SELECT id,id_no,ibs,zbs,kind,zc_type,r1,x1,r0,x0,rated_mva,rated_kv_i,rated_kv_j,max_load_a"
                   " FROM xf WHERE valid=1 AND ibs>=2 AND zbs>=2 AND ibs!=zbs ORDER BY oid");
         rows.next();) {
        const auto id = rows.text();
        auto& transformer = transformers.emplace_back();
        transformer.idNo = rows.whole();
        transformer.iNo = rows.whole();
        transformer.jNo = rows.whole();
        if (const int kind = rows.whole(); kind >= 31 && kind <= 33) transformer.kind = kind;
        transformer.zcType = rows.whole();
        const bool zeroPath = transformer.zcType >= 1 && transformer.zcType <= 3;
        for (double* value : {&transformer.r1, &transformer.x1}) *value = rows.needed(id);
        for (double* value : {&transformer.r0, &transformer.x0}) *value = rows.needed(id, zeroPath);
        for (double* value :
             {&transformer.ratedMva, &transformer.ratedKvI, &transformer.ratedKvJ, &transformer.maxLoadA})
            *value = rows.real();
    }
    return transformers;
}

std::vector<exchange::NetGenerator> readGenerators(const Tables& tables) {
    std::vector<exchange::NetGenerator> generators;
    for (Rows rows(tables,
                   "SELECT id,ibs,grounded,r1,x1,r0,x0,rated_mva,rated_kv,p_mw,q_mvar FROM un WHERE valid=1"
                   " AND ibs>=2 ORDER BY oid");
         rows.next();) {
        auto& generator = generators.emplace_back();
        generator.name = rows.text();
        generator.no = rows.whole();
        generator.grounded = rows.flag();
        for (double* value : {&generator.r1, &generator.x1}) *value = rows.needed(generator.name);
        for (double* value : {&generator.r0, &generator.x0}) *value = rows.needed(generator.name, generator.grounded);
        for (double* value : {&generator.ratedMva, &generator.ratedKv, &generator.pMw, &generator.qMvar})
            *value = rows.real();
    }
    return generators;
}

std::vector<exchange::NetShunt> readShunts(const Tables& tables) {
    std::vector<exchange::NetShunt> shunts;
    for (Rows rows(tables,
                   "SELECT id,id_no,ibs,grounded,x1,r0,x0,rated_mvar,rated_kv FROM cp WHERE valid=1 AND ibs>=2"
                   " ORDER BY oid");
         rows.next();) {
        const auto id = rows.text();
        auto& shunt = shunts.emplace_back();
        shunt.idNo = rows.whole();
        shunt.no = rows.whole();
        shunt.grounded = rows.flag();
        shunt.x1 = rows.needed(id);
        for (double* value : {&shunt.r0, &shunt.x0}) *value = rows.needed(id, shunt.grounded && shunt.x1 > 0);
        for (double* value : {&shunt.ratedMvar, &shunt.ratedKv}) *value = rows.real();
    }
    return shunts;
}

std::vector<exchange::NetMutual> readMutuals(const Tables& tables, const std::vector<exchange::NetLine>& lines) {
    std::unordered_set<int> present;
    for (const auto& line : lines) present.insert(line.idNo);
    std::vector<exchange::NetMutual> mutuals;
    for (Rows rows(tables,
                   "SELECT first_no,second_no,sense,r0,x0,first_from,first_to,second_from,second_to FROM mu"
                   " ORDER BY oid");
         rows.next();) {
        exchange::NetMutual mutual;
        mutual.firstId = rows.whole();
        mutual.secondId = rows.whole();
        mutual.sense = rows.whole();
        if (!present.contains(mutual.firstId) || !present.contains(mutual.secondId)) continue;
        for (double* value :
             {&mutual.r0, &mutual.x0, &mutual.firstFrom, &mutual.firstTo, &mutual.secondFrom, &mutual.secondTo})
            *value = rows.real();
        mutuals.push_back(mutual);
    }
    return mutuals;
}

}  // namespace

NetworkData readRealTimeTables(const std::filesystem::path& file) {
    const Tables tables(file);
    NetworkData network;
    network.loadFlow = readMeta(tables);
    network.buses = readBuses(tables);
    network.lines = readLines(tables);
    network.transformers = readTransformers(tables);
    network.generators = readGenerators(tables);
    network.shunts = readShunts(tables);
    network.mutuals = readMutuals(tables, network.lines);
    return network;
}

}  // namespace engines
