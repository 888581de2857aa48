// Places the blocks of a diagram: reads `b WIDTH HEIGHT [X Y]` and `e FROM TO COUNT` lines, writes `X Y` of each
// block's middle. A program of its own, so that a long layout can be given up and a fault of it ends nothing else.

#include <graphviz/gvc.h>

#include <cmath>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>
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
    set(graph, "overlap", "prism");
    set(graph, "sep", "+12,12");
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

}  // namespace

int main() {
    Input input;
    if (!read(std::cin, input)) return 1;
    GVC_t* context = gvContext();
    std::vector<Agnode_t*> nodes;
    Agraph_t* graph = graphOf(input, nodes);
    if (gvLayout(context, graph, engineFor(input)) != 0) return 1;
    for (Agnode_t* node : nodes) std::printf("%.1f %.1f\n", ND_coord(node).x, -ND_coord(node).y);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
