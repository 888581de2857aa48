// Places the blocks of a diagram: reads `b WIDTH HEIGHT [X Y]` and `e FROM TO COUNT` lines, writes `X Y` of each
// block's middle. A program of its own, so that a long layout can be given up and a fault of it ends nothing else.

#include <graphviz/gvc.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <numeric>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

constexpr double pointsPerInch = 72;
constexpr std::size_t fewBlocks = 250;

struct Input {
    struct Block {
        double width = 0, height = 0, x = 0, y = 0;
        bool hasSeed = false;
    };
    struct Edge {
        std::size_t from = 0, to = 0;
        int count = 1;
    };
    std::vector<Block> blocks;
    std::vector<Edge> edges;
};

bool read(std::istream& in, Input& input) {
    for (std::string line; std::getline(in, line);) {
        std::istringstream cells(line);
        char kind = 0;
        cells >> kind;
        if (kind == 'b') {
            Input::Block b;
            if (!(cells >> b.width >> b.height)) return false;
            b.hasSeed = static_cast<bool>(cells >> b.x >> b.y);
            input.blocks.push_back(b);
        } else if (kind == 'e') {
            Input::Edge e;
            if (!(cells >> e.from >> e.to >> e.count)) return false;
            if (e.from >= input.blocks.size() || e.to >= input.blocks.size()) return false;
            input.edges.push_back(e);
        }
    }
    return !input.blocks.empty();
}

void set(void* object, const char* name, const std::string& value) {
    agsafeset(object, const_cast<char*>(name), const_cast<char*>(value.c_str()), const_cast<char*>(""));
}

std::string inches(double units) { return std::to_string(units / pointsPerInch); }

Agraph_t* graphOf(const Input& input, std::vector<Agnode_t*>& nodes) {
    Agraph_t* graph = agopen(const_cast<char*>("diagram"), Agstrictundirected, nullptr);
    // Of many blocks the last overlaps take longest; separate() is faster at those.
    set(graph, "overlap", input.blocks.size() <= fewBlocks ? "prism" : "prism30");
    set(graph, "sep", "+12,12");
    set(graph, "quadtree", "fast");
    set(graph, "start", "7");
    set(graph, "splines", "false");
    set(graph, "outputorder", "nodesfirst");
    for (const Input::Block& b : input.blocks) {
        Agnode_t* node = agnode(graph, nullptr, 1);
        set(node, "shape", "box"), set(node, "fixedsize", "true"), set(node, "label", "");
        set(node, "width", inches(b.width)), set(node, "height", inches(b.height));
        if (b.hasSeed) set(node, "pos", std::to_string(b.x) + "," + std::to_string(-b.y));
        nodes.push_back(node);
    }
    for (const Input::Edge& e : input.edges) {
        Agedge_t* edge = agedge(graph, nodes[e.from], nodes[e.to], nullptr, 1);
        const double near = std::hypot(input.blocks[e.from].width + input.blocks[e.to].width,
                                       input.blocks[e.from].height + input.blocks[e.to].height) /
                            2;
        set(edge, "len", inches(near + 60));
        set(edge, "weight", std::to_string(e.count));
    }
    return graph;
}

const char* engineFor(const Input& input) {
    if (input.blocks.front().hasSeed) return "nop1";
    return input.blocks.size() <= fewBlocks ? "neato" : "sfdp";
}

struct Place {
    double x = 0, y = 0;
};

/// Blocks that stand already, by squares of the plane.
class Standing {
  public:
    explicit Standing(const std::vector<Input::Block>& blocks) : blocks_(blocks), places_(blocks.size()) {}

    bool isFree(std::size_t block, Place at) const {
        bool free = true;
        eachSquare(block, at, [&](long long square) {
            const auto found = squares_.find(square);
            if (!free || found == squares_.end()) return;
            for (std::size_t other : found->second) free = free && !overlap(block, at, other);
        });
        return free;
    }

    void stand(std::size_t block, Place at) {
        places_[block] = at;
        eachSquare(block, at, [&](long long square) { squares_[square].push_back(block); });
    }

  private:
    bool overlap(std::size_t block, Place at, std::size_t other) const {
        const Input::Block &a = blocks_[block], &b = blocks_[other];
        return std::abs(at.x - places_[other].x) < (a.width + b.width) / 2 &&
               std::abs(at.y - places_[other].y) < (a.height + b.height) / 2;
    }

    template <class Do>
    void eachSquare(std::size_t block, Place at, Do&& doIt) const {
        const auto square = [](double v) { return static_cast<long long>(std::floor(v / 250)); };
        const Input::Block& b = blocks_[block];
        for (long long y = square(at.y - b.height / 2); y <= square(at.y + b.height / 2); ++y)
            for (long long x = square(at.x - b.width / 2); x <= square(at.x + b.width / 2); ++x) doIt(y * 10000000 + x);
    }

    const std::vector<Input::Block>& blocks_;
    std::vector<Place> places_;
    std::unordered_map<long long, std::vector<std::size_t>> squares_;
};

/// The nearest free place on growing circles.
Place freeNear(const Standing& standing, std::size_t block, Place wanted) {
    if (standing.isFree(block, wanted)) return wanted;
    for (int ring = 1;; ++ring)
        for (int k = 0; k < 8 * ring; ++k) {
            const double angle = 2 * 3.14159265358979 * k / (8 * ring);
            const Place at{wanted.x + 20 * ring * std::cos(angle), wanted.y + 20 * ring * std::sin(angle)};
            if (standing.isFree(block, at)) return at;
        }
}

/// Large blocks keep their places, small ones give way.
void separate(const std::vector<Input::Block>& blocks, std::vector<Place>& places) {
    std::vector<std::size_t> order(blocks.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return blocks[a].width * blocks[a].height > blocks[b].width * blocks[b].height;
    });
    Standing standing(blocks);
    for (std::size_t k : order) {
        places[k] = freeNear(standing, k, places[k]);
        standing.stand(k, places[k]);
    }
}

}  // namespace

int main() {
    Input input;
    if (!read(std::cin, input)) return 1;
    GVC_t* context = gvContext();
    std::vector<Agnode_t*> nodes;
    Agraph_t* graph = graphOf(input, nodes);
    if (gvLayout(context, graph, engineFor(input)) != 0) return 1;
    std::vector<Place> places;
    for (Agnode_t* node : nodes) places.push_back({ND_coord(node).x, -ND_coord(node).y});
    separate(input.blocks, places);
    for (const Place& place : places) std::printf("%.1f %.1f\n", place.x, place.y);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
