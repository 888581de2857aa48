#include "engines/order/TurnOrder.h"

#include <algorithm>
#include <numeric>
#include <queue>

#include "engines/order/FeedbackSet.h"

namespace engines {

namespace {

constexpr std::size_t kMoves = 4'000'000;       // of all searches together
constexpr std::size_t kMovesPerRelay = 10'000;  // more does not help a small loop

std::size_t at(int place) { return static_cast<std::size_t>(place); }

/// Places of the relays by ascending number.
std::vector<int> byNumber(const std::vector<int>& numbers) {
    std::vector<int> places(numbers.size());
    std::iota(places.begin(), places.end(), 0);
    std::stable_sort(places.begin(), places.end(), [&](int a, int b) { return numbers[at(a)] < numbers[at(b)]; });
    return places;
}

/// The same graph on the vertices by number, each edge once and in order, without edges from a vertex to itself.
Digraph renumbered(const Digraph& graph, const std::vector<int>& places) {
    std::vector<int> rank(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) rank[at(places[i])] = static_cast<int>(i);
    Digraph result(graph.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        auto& edges = result[i];
        for (const int to : graph[at(places[i])])
            if (rank[at(to)] != static_cast<int>(i)) edges.push_back(rank[at(to)]);
        std::sort(edges.begin(), edges.end());
        edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    }
    return result;
}

/// The edges within some vertices, which are numbered anew in their order. `local` is -1 everywhere before and after.
Digraph inducedBy(const Digraph& graph, const std::vector<int>& vertices, std::vector<int>& local) {
    for (std::size_t i = 0; i < vertices.size(); ++i) local[at(vertices[i])] = static_cast<int>(i);
    Digraph result(vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i)
        for (const int to : graph[at(vertices[i])])
            if (local[at(to)] >= 0) result[i].push_back(local[at(to)]);
    for (const int v : vertices) local[at(v)] = -1;
    return result;
}

std::vector<bool> breakVertices(const Digraph& graph) {
    std::vector<bool> breaks(graph.size());
    std::vector<int> local(graph.size(), -1);
    auto components = strongComponents(graph);
    std::erase_if(components, [](const auto& component) { return component.size() < 2; });
    std::size_t onLoops = 0;
    for (const auto& component : components) onLoops += component.size();
    for (const auto& component : components) {
        const auto moves = std::min(kMoves * component.size() / onLoops, kMovesPerRelay * component.size());
        for (const int v : feedbackSet(inducedBy(graph, component, local), moves)) breaks[at(component[at(v)])] = true;
    }
    return breaks;
}

/// Every vertex that is no break vertex after all that it points to, the smallest of those that can come next.
void appendOrdered(const Digraph& graph, const std::vector<bool>& breaks, std::vector<int>& order) {
    std::vector<int> waitingFor(graph.size());
    Digraph dependents(graph.size());
    std::priority_queue<int, std::vector<int>, std::greater<>> ready;
    for (std::size_t v = 0; v < graph.size(); ++v) {
        if (breaks[v]) continue;
        for (const int to : graph[v]) {
            if (breaks[at(to)]) continue;
            ++waitingFor[v];
            dependents[at(to)].push_back(static_cast<int>(v));
        }
        if (waitingFor[v] == 0) ready.push(static_cast<int>(v));
    }
    while (!ready.empty()) {
        const int v = ready.top();
        ready.pop();
        order.push_back(v);
        for (const int dependent : dependents[at(v)])
            if (--waitingFor[at(dependent)] == 0) ready.push(dependent);
    }
}

struct Ordered {
    std::size_t breaks = 0;
    std::vector<int> vertices;
};

/// The break vertices, among themselves in the same manner, then the others.
Ordered ordered(const Digraph& graph) {
    const auto breaks = breakVertices(graph);
    std::vector<int> chosen;
    for (std::size_t v = 0; v < graph.size(); ++v)
        if (breaks[v]) chosen.push_back(static_cast<int>(v));
    Ordered result{chosen.size(), {}};
    if (!chosen.empty()) {
        std::vector<int> local(graph.size(), -1);
        for (const int v : ordered(inducedBy(graph, chosen, local)).vertices) result.vertices.push_back(chosen[at(v)]);
    }
    appendOrdered(graph, breaks, result.vertices);
    return result;
}

}  // namespace

exchange::TurnOrder turnOrder(const std::vector<int>& numbers, const Digraph& dependencies) {
    const auto places = byNumber(numbers);
    const auto [breaks, vertices] = ordered(renumbered(dependencies, places));
    exchange::TurnOrder result{static_cast<int>(breaks), {}};
    for (const int v : vertices) result.order.push_back(numbers[at(places[at(v)])]);
    return result;
}

}  // namespace engines
