#pragma once

#include <QFile>
#include <QHash>
#include <algorithm>
#include <cmath>
#include <complex>
#include <vector>

/// A second opinion on the fault currents of a network in plain CSV: its own reading of the tables (simple cells
/// only), nodes joined by closed switches, admittance matrices of both sequences inverted densely. Shares no code with
/// the program.
class DenseNetwork {
  public:
    using Complex = std::complex<double>;
    explicit DenseNetwork(const QString& folder) : folder_(folder) {
        for (const Row& node : table("nodes")) kv_[node["name"]] = node["base_kv"].toDouble();
        for (const Row& sw : table("switches"))
            if (sw["closed"] == "1") joined_[root(sw["node_i"])] = root(sw["node_j"]);
        for (int sequence = 0; sequence < 2; ++sequence) build(sequence);
    }
    /// Largest 3I0 in A at a line's I (or J) end for a fault at its other end: one phase or two phases to ground.
    [[nodiscard]] double largest3I0(const QString& line, bool atI) const {
        const int far = indices_[root(ends_[line].at(atI ? 1 : 0))];
        const auto f = size_t(far);
        const Complex z1 = z_[1][f][f], z0 = z_[0][f][f];
        const double fault = std::max(std::abs(1.0 / (2.0 * z1 + z0)), std::abs(1.0 / (z1 + 2.0 * z0)));
        Complex current;
        for (const Coupled& other : coupled_)
            if (other.line == line) current += other.y * (z_[0][size_t(other.i)][f] - z_[0][size_t(other.j)][f]);
        return 3 * fault * std::abs(current) * 100e3 / (std::sqrt(3.0) * kv_[ends_[line][0]]);
    }

  private:
    using Row = QHash<QString, QString>;
    using Matrix = std::vector<std::vector<Complex>>;
    /// Part of a line's zero-sequence current that a voltage between two nodes drives: its own and a coupled line's.
    struct Coupled {
        QString line;
        int i, j;
        Complex y;
    };

    [[nodiscard]] QList<Row> table(const QString& name) const {
        QFile file(folder_ + "/" + name + ".csv");
        if (!file.open(QIODevice::ReadOnly)) return {};
        const auto cells = [&] { return QString::fromUtf8(file.readLine()).remove('\n').remove('\r').split(','); };
        const QStringList columns = cells();
        QList<Row> rows;
        while (!file.atEnd()) {
            const QStringList row = cells();
            rows.append(Row());
            for (qsizetype k = 0; k < row.size(); ++k) rows.back()[columns[k]] = row[k];
        }
        return rows;
    }
    [[nodiscard]] QString root(QString node) const {
        while (joined_.contains(node) && joined_[node] != node) node = joined_[node];
        return node;
    }
    int at(const QString& node) {
        const QString name = root(node);
        if (!indices_.contains(name)) indices_[name] = int(indices_.size());
        return indices_[name];
    }
    [[nodiscard]] double base(const QString& node) const { return kv_[node] * kv_[node] / 100; }
    static Complex ohm(const Row& row, const QString& r, const QString& x) {
        return {row[r].toDouble(), row[x].toDouble()};
    }

    void add(int i, int j, Complex y) {
        const int highest = std::max(i, j);
        while (int(y_.size()) <= highest) y_.emplace_back();
        for (auto& row : y_) row.resize(y_.size());
        for (const int k : {i, j})
            if (k >= 0) y_[size_t(k)][size_t(k)] += y;
        if (i < 0 || j < 0) return;
        y_[size_t(i)][size_t(j)] -= y;
        y_[size_t(j)][size_t(i)] -= y;
    }
    void build(int sequence) {
        y_.clear();
        addLines(sequence);
        for (const Row& t : table("transformers2")) addTwoWindings(t, sequence);
        for (const Row& t : table("transformers3")) addThreeWindings(t, sequence);
        for (const Row& g : table("generators")) addSource(g, sequence);
        for (const Row& s : table("shunts"))
            if (sequence == 0 && s["grounded"] == "1")
                add(at(s["node"]), -1, base(s["node"]) / ohm(s, "r0_ohm", "x0_ohm"));
        // What floats is held by next to nothing.
        for (const int k : indices_) add(k, -1, 1e-9);
        z_[sequence] = inverse(y_);
    }
    void addLines(int sequence) {
        QHash<QString, Complex> z;
        for (const Row& line : table("lines")) {
            const QString name = line["name"], number = QString::number(sequence);
            ends_[name] = {line["node_i"], line["node_j"]};
            z[name] = ohm(line, "r" + number + "_ohm", "x" + number + "_ohm") / base(line["node_i"]);
        }
        QHash<QString, QString> partner;
        QHash<QString, Complex> mutual;
        for (const Row& m : table("mutuals"))
            for (const auto& [a, b] : {std::pair{m["line_1"], m["line_2"]}, std::pair{m["line_2"], m["line_1"]}}) {
                partner[a] = b;
                mutual[a] = ohm(m, "r0_ohm", "x0_ohm") / base(ends_[a][0]);
            }
        for (auto line = z.begin(); line != z.end(); ++line) {
            const QString name = line.key(), other = partner.value(name);
            const int i = at(ends_[name][0]), j = at(ends_[name][1]);
            if (sequence == 1 || other.isEmpty()) {
                add(i, j, 1.0 / line.value());
                if (sequence == 0) coupled_.push_back({name, i, j, 1.0 / line.value()});
                continue;
            }
            // Both run between the same nodes, the same way.
            const Complex determinant = line.value() * z[other] - mutual[name] * mutual[name];
            add(i, j, (z[other] - mutual[name]) / determinant);
            coupled_.push_back({name, i, j, (z[other] - mutual[name]) / determinant});
        }
    }
    static Complex shortCircuit(const Row& t, const QString& uk, const QString& pk, double mva, double kvPerBase) {
        const double r = t[pk].toDouble() / 1000 / mva, u = t[uk].toDouble() / 100;
        return Complex(r, std::sqrt(u * u - r * r)) * (100 / mva * kvPerBase * kvPerBase);
    }
    void addTwoWindings(const Row& t, int sequence) {
        const QString zero = sequence == 0 ? "0" : "";
        const Complex z = shortCircuit(t, "uk" + zero + "_percent", "pk" + zero + "_kw", t["mva"].toDouble(),
                                       t["kv_i"].toDouble() / kv_[t["node_i"]]);
        if (sequence == 1) return add(at(t["node_i"]), at(t["node_j"]), 1.0 / z);
        if (t["grounding_i"] == "YN" && t["grounding_j"] == "D")
            add(at(t["node_i"]), -1, 1.0 / (z + 3.0 * ohm(t, "rn_i_ohm", "xn_i_ohm") / base(t["node_i"])));
    }
    void addThreeWindings(const Row& t, int sequence) {
        const auto pair = [&](const char* a, const char* b) {
            const QString of = (sequence == 0 ? "0_" : "") + QString(a) + b;
            const double mva = std::min(t[QString("mva_") + a].toDouble(), t[QString("mva_") + b].toDouble());
            return shortCircuit(t, "uk" + of + "_percent", "pk" + of + "_kw", mva,
                                t["kv_1"].toDouble() / kv_[t["node_1"]]);
        };
        const Complex z12 = pair("1", "2"), z13 = pair("1", "3"), z23 = pair("2", "3");
        const Complex star[] = {(z12 + z13 - z23) / 2.0, (z12 + z23 - z13) / 2.0, (z13 + z23 - z12) / 2.0};
        for (int k = 0; k < 3; ++k) {
            const QString n = QString::number(k + 1), node = t["node_" + n], grounding = t["grounding_" + n];
            const Complex neutral = 3.0 * ohm(t, "rn_" + n + "_ohm", "xn_" + n + "_ohm") / base(node);
            if (sequence == 1 || grounding == "YN")
                add(at(t["star_node"]), at(node), 1.0 / (star[k] + (sequence == 1 ? 0.0 : neutral)));
            else if (grounding == "D")
                add(at(t["star_node"]), -1, 1.0 / star[k]);
        }
    }
    void addSource(const Row& g, int sequence) {
        if (sequence == 0 && g["grounded"] != "1") return;
        const double kv = g["kv"].toDouble() / kv_[g["node"]], unit = kv * kv / g["mva"].toDouble();
        const Complex z = sequence == 1 ? ohm(g, "r_percent", "xd2_percent") : ohm(g, "r0_percent", "x0_percent");
        const Complex neutral = 3.0 * ohm(g, "rn_ohm", "xn_ohm") / base(g["node"]);
        add(at(g["node"]), -1, 1.0 / (z * unit + (sequence == 0 ? neutral : 0.0)));
    }
    static Matrix inverse(Matrix a) {
        const size_t n = a.size();
        Matrix b(n, std::vector<Complex>(n));
        for (size_t k = 0; k < n; ++k) b[k][k] = 1;
        for (size_t k = 0; k < n; ++k) {
            size_t pivot = k;
            for (size_t i = k; i < n; ++i)
                if (std::abs(a[i][k]) > std::abs(a[pivot][k])) pivot = i;
            std::swap(a[k], a[pivot]);
            std::swap(b[k], b[pivot]);
            for (size_t i = 0; i < n; ++i) {
                const Complex factor = (i == k ? a[k][k] - 1.0 : a[i][k]) / a[k][k];
                for (size_t j = 0; j < n; ++j) a[i][j] -= factor * a[k][j], b[i][j] -= factor * b[k][j];
            }
        }
        return b;
    }

    QString folder_;
    QHash<QString, double> kv_;
    QHash<QString, QString> joined_;
    QHash<QString, int> indices_;
    QHash<QString, QStringList> ends_;
    std::vector<Coupled> coupled_;
    Matrix y_;
    Matrix z_[2];
};
