// How long the turn order takes, and how many break relays it needs, on meshed grids of growing size.

#include <benchmark/benchmark.h>

#include <map>
#include <random>

#include "engines/order/TurnOrder.h"

namespace {

/// Relays at both ends of every branch of a grid with three branches for two buses, as transmission networks have.
engines::Digraph meshedGrid(int branches) {
    std::mt19937 random(3);
    const int buses = branches * 2 / 3;
    std::vector<std::pair<int, int>> ends;
    for (int bus = 1; bus < buses; ++bus) ends.emplace_back(bus, bus - 1 - static_cast<int>(random() % 40) % bus);
    while (static_cast<int>(ends.size()) < branches) {
        const int bus = static_cast<int>(random() % static_cast<unsigned>(buses - 90));
        ends.emplace_back(bus, bus + 1 + static_cast<int>(random() % 90));
    }
    std::map<int, std::vector<int>> lookingFrom;
    for (int b = 0; b < branches; ++b) {
        lookingFrom[ends[static_cast<std::size_t>(b)].first].push_back(2 * b);
        lookingFrom[ends[static_cast<std::size_t>(b)].second].push_back(2 * b + 1);
    }
    engines::Digraph graph(ends.size() * 2);
    for (std::size_t relay = 0; relay < graph.size(); ++relay) {
        const auto& branch = ends[relay / 2];
        for (const int other : lookingFrom[relay % 2 == 0 ? branch.second : branch.first])
            if (other / 2 != static_cast<int>(relay / 2)) graph[relay].push_back(other);
    }
    return graph;
}

void turnOrder(benchmark::State& state) {
    const auto graph = meshedGrid(static_cast<int>(state.range(0)) / 2);
    std::vector<int> numbers(graph.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = static_cast<int>(i) + 1;
    for (auto _ : state) state.counters["breaks"] = engines::turnOrder(numbers, graph).breakRelays;
}
BENCHMARK(turnOrder)->Arg(300)->Arg(1000)->Arg(3000)->Arg(9000)->Arg(30000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
