#include "platform/host/diagram/Blocks.h"

#include <QList>
#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

#include "platform/host/diagram/YardTree.h"

namespace diagram {

namespace {

constexpr std::size_t largestBlock = 24;  ///< nodes that transformers gather; a station may have more
constexpr double margin = 24;

/// Sets of nodes that grow together.
class Sets {
  public:
    explicit Sets(std::size_t count) : parent_(count), size_(count, 1) { std::iota(parent_.begin(), parent_.end(), 0); }
    int root(int n) {
        while (parent_[n] != n) n = parent_[n] = parent_[parent_[n]];
        return n;
    }
    void join(int a, int b, std::size_t limit = std::numeric_limits<std::size_t>::max()) {
        if (a < 0 || b < 0) return;
        a = root(a), b = root(b);
        if (a == b || size_[a] + size_[b] > limit) return;
        if (size_[a] < size_[b]) std::swap(a, b);
        parent_[b] = a, size_[a] += size_[b];
    }

  private:
    std::vector<int> parent_;
    std::vector<std::size_t> size_;
};

class Arranger {
  public:
    Arranger(const host::NetworkModel& model, const NetworkIndex& index)
        : model_(model), index_(index), sets_(model.nodes.size()) {}

    Blocks run() {
        const std::size_t count = model_.nodes.size();
        out_.plan.at.resize(count), out_.plan.spans.resize(count), out_.plan.station.assign(count, -1);
        countLoad();
        joinStations();
        joinTransformers();
        collect();
        for (Block& block : out_.blocks) arrange(block);
        collectEdges();
        takeSeeds();
        return std::move(out_);
    }

  private:
    void countLoad() {
        load_.direct.assign(model_.nodes.size(), 0);
        load_.lines = load_.windings = load_.direct;
        const auto count = [this](const std::string& name, std::vector<int>* special) {
            int n = index_.node(name);
            if (n < 0) return;
            if (index_.bar(n) >= 0) n = index_.bar(n);
            ++load_.direct[n];
            if (special) ++(*special)[n];
        };
        for (const auto& l : model_.lines) count(l.i, &load_.lines), count(l.j, &load_.lines);
        load_.transformers.resize(model_.nodes.size());
        const auto note = [&](const std::string& name, int transformer) {
            count(name, &load_.windings);
            int n = index_.node(name);
            if (n < 0) return;
            load_.transformers[index_.bar(n) >= 0 ? index_.bar(n) : n].push_back(transformer);
        };
        for (std::size_t t = 0; t < model_.transformers2.size(); ++t)
            for (const auto* w : {&model_.transformers2[t].i, &model_.transformers2[t].j})
                note(w->node, static_cast<int>(t));
        for (std::size_t t = 0; t < model_.transformers3.size(); ++t)
            for (const auto& w : model_.transformers3[t].winding) note(w.node, -1 - static_cast<int>(t));
        for (const auto& g : model_.generators) count(g.node, nullptr);
        for (const auto& s : model_.shunts) count(s.node, nullptr);
        for (const auto& l : model_.loads) count(l.node, nullptr);
        for (const auto& s : model_.switches)
            if (joinsBars(s)) count(s.i, nullptr), count(s.j, nullptr);
    }

    bool joinsBars(const host::Switch& s) const {
        const int i = index_.node(s.i), j = index_.node(s.j);
        return i >= 0 && j >= 0 && index_.bar(i) >= 0 && index_.bar(j) >= 0;
    }

    void joinStations() {
        std::map<std::string_view, int> first;
        for (std::size_t n = 0; n < model_.nodes.size(); ++n) {
            const int own = static_cast<int>(n);
            if (index_.bar(own) >= 0) sets_.join(own, index_.bar(own));
            if (model_.nodes[n].station.empty()) continue;
            sets_.join(first.emplace(model_.nodes[n].station, own).first->second, own);
        }
        for (const auto& s : model_.switches) sets_.join(index_.node(s.i), index_.node(s.j));
    }

    void joinTransformers() {
        const auto join = [this](const std::string& i, const std::string& j) {
            const int a = index_.node(i), b = index_.node(j);
            if (a >= 0 && b >= 0 && model_.nodes[a].baseKv != model_.nodes[b].baseKv) sets_.join(a, b, largestBlock);
        };
        for (const auto& t : model_.transformers2) join(t.i.node, t.j.node);
        for (const auto& t : model_.transformers3)
            join(t.winding[0].node, t.winding[1].node), join(t.winding[0].node, t.winding[2].node);
    }

    void collect() {
        blockOf_.assign(model_.nodes.size(), -1);
        std::map<int, int> blockOfRoot;
        std::map<std::string_view, int> frames;
        for (std::size_t n = 0; n < model_.nodes.size(); ++n) {
            const auto [at, fresh] =
                blockOfRoot.emplace(sets_.root(static_cast<int>(n)), static_cast<int>(out_.blocks.size()));
            if (fresh) out_.blocks.emplace_back();
            blockOf_[n] = at->second;
            out_.blocks[at->second].nodes.push_back(static_cast<int>(n));
            const std::string& station = model_.nodes[n].station;
            if (station.empty()) continue;
            const auto [frame, first] = frames.emplace(station, static_cast<int>(out_.plan.names.size()));
            if (first) out_.plan.names.push_back(QString::fromStdString(station));
            out_.plan.station[n] = frame->second;
        }
    }

    void arrange(Block& block) {
        YardTree tree(model_, index_, load_, block.nodes, out_.plan);
        const QSizeF size = tree.arrange();
        for (int n : block.nodes) out_.plan.at[n] -= QPointF(0, size.height() / 2);
        block.width = size.width() + 2 * margin, block.height = size.height() + 2 * margin;
        block.oneVoltage = tree.depth() == 1;
    }

    void collectEdges() {
        std::map<std::pair<int, int>, int> counts;
        const auto add = [&](const std::string& i, const std::string& j) {
            const int a = index_.node(i), b = index_.node(j);
            if (a < 0 || b < 0 || blockOf_[a] == blockOf_[b]) return;
            ++counts[std::minmax(blockOf_[a], blockOf_[b])];
        };
        for (const auto& l : model_.lines) add(l.i, l.j);
        for (const auto& t : model_.transformers2) add(t.i.node, t.j.node);
        for (const auto& t : model_.transformers3)
            add(t.winding[0].node, t.winding[1].node), add(t.winding[0].node, t.winding[2].node);
        for (const auto& [ends, count] : counts) out_.edges.push_back({ends.first, ends.second, count});
    }

    void takeSeeds() {
        std::map<std::string_view, QPointF> places;
        bool geographic = true;
        for (const auto& s : model_.stations) {
            if (!s.hasPosition || !std::isfinite(s.x) || !std::isfinite(s.y)) continue;
            places[s.name] = {s.x, s.y};
            geographic = geographic && std::abs(s.x) <= 180 && std::abs(s.y) <= 90;
        }
        for (Block& block : out_.blocks)
            for (int n : block.nodes)
                if (const auto at = places.find(model_.nodes[n].station); at != places.end() && !block.hasSeed) {
                    block.hasSeed = true;
                    // Degrees of latitude grow northwards, the diagram's y downwards.
                    block.seed = geographic ? QPointF(at->second.x(), -at->second.y()) : at->second;
                }
        scaleSeeds();
    }

    /// Seeds serve when all blocks have one and they differ.
    void scaleSeeds() {
        QRectF box;
        double area = 0;
        bool all = !out_.blocks.empty();
        for (const Block& block : out_.blocks) {
            all = all && block.hasSeed;
            box |= QRectF(block.seed.x(), block.seed.y(), 1e-9, 1e-9);
            area += block.width * block.height;
        }
        if (out_.blocks.size() > 0) box = seedBox();
        const double extent = std::max(box.width(), box.height());
        all = all && extent > 0;
        const double scale = all ? 2 * std::sqrt(area) / extent : 0;
        for (Block& block : out_.blocks) block.hasSeed = all, block.seed *= scale;
    }

    QRectF seedBox() const {
        double left = 0, right = 0, top = 0, bottom = 0;
        bool first = true;
        for (const Block& block : out_.blocks) {
            left = first ? block.seed.x() : std::min(left, block.seed.x());
            right = first ? block.seed.x() : std::max(right, block.seed.x());
            top = first ? block.seed.y() : std::min(top, block.seed.y());
            bottom = first ? block.seed.y() : std::max(bottom, block.seed.y());
            first = false;
        }
        return {QPointF(left, top), QPointF(right, bottom)};
    }

    const host::NetworkModel& model_;
    const NetworkIndex& index_;
    Sets sets_;
    Load load_;
    std::vector<int> blockOf_;
    Blocks out_;
};

}  // namespace

Blocks arrangeBlocks(const host::NetworkModel& model, const NetworkIndex& index) {
    return Arranger(model, index).run();
}

QByteArray layoutInput(const Blocks& blocks) {
    QByteArray text;
    for (const Block& b : blocks.blocks) {
        text += "b " + QByteArray::number(b.width, 'f', 1) + ' ' + QByteArray::number(b.height, 'f', 1);
        if (b.hasSeed)
            text += ' ' + QByteArray::number(b.seed.x(), 'f', 2) + ' ' + QByteArray::number(b.seed.y(), 'f', 2);
        text += '\n';
    }
    for (const Edge& e : blocks.edges)
        text += "e " + QByteArray::number(e.from) + ' ' + QByteArray::number(e.to) + ' ' + QByteArray::number(e.count) +
                '\n';
    return text;
}

std::optional<std::vector<QPointF>> layoutPlaces(const QByteArray& output, std::size_t count) {
    std::vector<QPointF> places;
    for (const QByteArray& line : output.split('\n')) {
        const QList<QByteArray> cells = line.split(' ');
        if (cells.size() != 2) continue;
        bool x = false, y = false;
        const QPointF at(cells[0].toDouble(&x), cells[1].toDouble(&y));
        if (x && y && std::isfinite(at.x()) && std::isfinite(at.y())) places.push_back(at);
    }
    if (places.size() != count) return std::nullopt;
    return places;
}

std::vector<QPointF> rowsOf(const Blocks& blocks) {
    double area = 0;
    for (const Block& b : blocks.blocks) area += b.width * b.height;
    const double width = std::sqrt(area) * 1.4;
    std::vector<QPointF> places;
    double x = 0, y = 0, lower = 0;
    for (const Block& b : blocks.blocks) {
        if (x > 0 && x + b.width > width) x = 0, y = lower;
        places.emplace_back(x + b.width / 2, y + b.height / 2);
        x += b.width, lower = std::max(lower, y + b.height);
    }
    return places;
}

Plan placeBlocks(const host::NetworkModel& model, const NetworkIndex& index, const Blocks& blocks,
                 const std::vector<QPointF>& middles) {
    Plan plan = blocks.plan;
    std::vector<double> lead(middles.size());
    std::vector<int> blockOf(plan.at.size(), -1);
    for (std::size_t b = 0; b < blocks.blocks.size(); ++b)
        for (int n : blocks.blocks[b].nodes) blockOf[n] = static_cast<int>(b);
    for (const host::Line& l : model.lines) {
        const int i = index.node(l.i), j = index.node(l.j);
        if (i < 0 || j < 0) continue;
        const double down = middles[blockOf[j]].y() - middles[blockOf[i]].y();
        lead[blockOf[i]] += down > 0 ? 1 : -1, lead[blockOf[j]] -= down > 0 ? 1 : -1;
    }
    for (std::size_t b = 0; b < blocks.blocks.size(); ++b)
        for (int n : blocks.blocks[b].nodes) {
            if (blocks.blocks[b].oneVoltage && lead[b] > 0) plan.at[n].ry() *= -1;
            plan.at[n] += middles[b];
            plan.spans[n].left += middles[b].x(), plan.spans[n].right += middles[b].x();
        }
    orderBays(model, index, plan);
    return plan;
}

}  // namespace diagram
