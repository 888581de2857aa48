#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "engines/faults/FaultStudy.h"
#include "exchange/NetworkFiles.h"

/// Small networks written down in a test.
namespace num {

using engines::BranchIndex;
using engines::BusIndex;
using engines::Complex;
using engines::Condition;
using engines::End;
using engines::FaultKind;
using engines::ModeNetwork;
using engines::Network;
using engines::Sequence;

/// Where the public networks lie; the environment may name another place than the one beside the checkout.
inline std::filesystem::path sharedNetworks() {
    const char* place = std::getenv("MORVANE_SHARED_NETWORKS");
    return place ? place : MORVANE_SHARED_NETWORKS;
}

inline constexpr double kOpen = 99999.9999;

struct Grid {
    exchange::NetworkData data;

    explicit Grid(int buses = 0, double baseKv = 100) {
        for (int no = 1; no <= buses; ++no) bus(no, baseKv);
    }
    Grid& bus(int no, double baseKv) {
        exchange::NetBus b;
        b.no = no;
        b.baseKv = baseKv;
        data.buses.push_back(b);
        return *this;
    }
    Grid& line(int id, int i, int j, Complex z1, Complex z0) {
        exchange::NetLine l;
        l.idNo = id, l.iNo = i, l.jNo = j;
        l.r1 = z1.real(), l.x1 = z1.imag(), l.r0 = z0.real(), l.x0 = z0.imag();
        data.lines.push_back(l);
        return *this;
    }
    Grid& transformer(int id, int i, int j, Complex z1, Complex z0, int zcType) {
        exchange::NetTransformer t;
        t.idNo = id, t.iNo = i, t.jNo = j, t.zcType = zcType;
        t.r1 = z1.real(), t.x1 = z1.imag(), t.r0 = z0.real(), t.x0 = z0.imag();
        data.transformers.push_back(t);
        return *this;
    }
    /// z0 of zero: not grounded.
    Grid& source(int no, Complex z1, Complex z0 = {}) {
        exchange::NetGenerator g;
        g.name = std::to_string(data.generators.size() + 1);
        g.no = no, g.grounded = z0 != Complex{};
        g.r1 = z1.real(), g.x1 = z1.imag(), g.r0 = z0.real(), g.x0 = z0.imag();
        data.generators.push_back(g);
        return *this;
    }
    Grid& mutual(int first, int second, Complex z0, int sense = 1) {
        exchange::NetMutual m;
        m.firstId = first, m.secondId = second, m.r0 = z0.real(), m.x0 = z0.imag(), m.sense = sense;
        data.mutuals.push_back(m);
        return *this;
    }
    [[nodiscard]] Network network() const { return engines::buildNetwork(data); }
};

inline Complex j(double x) { return {0, x}; }

inline BranchIndex branch(const Network& network, int id) { return {network.branchById.find(id)->second}; }
inline BusIndex bus(const Network& network, int no) { return network.bus({no}); }

inline Condition atBus(const Network& network, int no, FaultKind kind, Complex z = {}) {
    return {{}, bus(network, no), 0, kind, z, 1};
}
inline Condition along(const Network& network, int id, double percent, FaultKind kind, Complex z = {}, int group = 1) {
    return {branch(network, id), {}, percent, kind, z, group};
}
inline Condition open(const Network& network, int id, double percent, int group = 1,
                      FaultKind kind = FaultKind::OpenABC) {
    return along(network, id, percent, kind, {kOpen, kOpen}, group);
}
/// A line out of service, grounded at both ends behind its open breakers.
inline std::vector<Condition> outage(const Network& network, int id, bool grounded) {
    std::vector<Condition> rows{open(network, id, 1, 21), open(network, id, 99, 21)};
    if (grounded) {
        rows.push_back(along(network, id, 1, FaultKind::ThreePhaseGround, {}, 21));
        rows.push_back(along(network, id, 99, FaultKind::ThreePhaseGround, {}, 21));
    }
    return rows;
}

/// Conditions in a message.
inline std::string text(const Network& network, const std::vector<Condition>& rows) {
    std::ostringstream out;
    for (const Condition& c : rows) {
        out << (c.branch.value < 0 ? -1 : network.branches[static_cast<std::size_t>(c.branch.value)].idNo) << " bus "
            << c.bus.value << " at " << c.percent << " kind " << static_cast<int>(c.kind) << " z " << c.z << " group "
            << c.group << '\n';
    }
    return out.str();
}

}  // namespace num
