#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>

#include "cli/FaultsVerb.h"
#include "cli/TextTable.h"
#include "platform/import/CsvTable.h"
#include "platform/sql/Sql.h"

namespace cli {

namespace {

using engines::Complex;
using engines::FaultReport;
using engines::Sequences;
using nlohmann::ordered_json;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// Ten digits hold more than any input has; what rounding left of a zero is one.
double cleaned(double value, double size) { return std::abs(value) < 1e-12 * size ? 0 : value; }

double degrees(Complex value) { return std::abs(value) < 1e-12 ? 0 : std::arg(value) * 180 / std::numbers::pi; }

void append(std::string& line, double value) {
    line += ',';
    if (!std::isfinite(value)) return;
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 10);
    line.append(digits, end.ptr);
}

void append(std::string& line, Complex value) {
    append(line, cleaned(std::abs(value), 1));
    append(line, std::isfinite(std::abs(value)) ? degrees(value) : value.real());
}

std::string nameOf(const std::vector<QString>& names, int i) { return i < 0 ? "" : names[at(i)].toStdString(); }
std::string sideOf(engines::BranchEnd end) { return end.end == engines::End::I ? "I" : "J"; }

QString kindText(const QString& code) {
    static const QHash<QString, QString> texts = {
        {"3ph", "三相短路"},  {"1ph", "A相接地"},    {"2ph", "BC相短路"},   {"2phg", "BC相接地"},
        {"open1", "A相断线"}, {"open2", "BC相断线"}, {"open3", "三相断线"}, {"simultaneous", "同时故障"}};
    return texts.value(code, code);
}

/// One flat table; the column "record" tells what a row is about, "unit" what its numbers are.
class CsvOutput {
  public:
    CsvOutput(const FaultsNetwork& network) : network_(network) {
        text_ =
            "fault,place,kind,record,name,end,unit,a,a_deg,b,b_deg,c,c_deg,positive,positive_deg,negative,negative_deg,"
            "zero,zero_deg,mva\n";
    }

    void add(int number, const FaultsCase& asked, const FaultReport& report) {
        head_.clear();
        import::appendCsv(head_, {std::to_string(number), asked.place.toStdString(), asked.kind.toStdString()});
        head_.pop_back();
        row("fault", nameOf(network_.busNames, report.bus.value), "", "kA", report.ka, &report.mva);
        row("voltage", nameOf(network_.busNames, report.bus.value), "", "kV", report.kv);
        for (const auto& branch : report.branches)
            row("branch", nameOf(network_.branchNames, branch.end.branch.value), sideOf(branch.end), "kA", branch.ka);
        for (const auto& source : report.sources)
            row("source", nameOf(network_.sourceNames, source.source), "", "kA", source.ka);
        for (const auto& bus : report.voltages) row("bus", nameOf(network_.busNames, bus.bus.value), "", "kV", bus.kv);
        for (const auto& relay : report.impedances) {
            const std::string name = nameOf(network_.branchNames, relay.end.branch.value);
            loops("ground_loop", name, sideOf(relay.end), relay.ground);
            loops("phase_loop", name, sideOf(relay.end), relay.phase);
        }
    }
    void print() const { cli::print(QString::fromStdString(text_)); }

  private:
    void begin(const char* record, const std::string& name, const std::string& end, const char* unit) {
        text_ += head_ + ',' + record + ',';
        import::appendCsv(text_, {name, end, unit});
        text_.pop_back();
    }
    void row(const char* record, const std::string& name, const std::string& end, const char* unit, const Sequences& s,
             const double* mva = nullptr) {
        begin(record, name, end, unit);
        for (const Complex& phase : engines::phases(s)) append(text_, phase);
        for (const Complex& sequence : {s.positive, s.negative, s.zero}) append(text_, sequence);
        if (mva)
            append(text_, *mva);
        else
            text_ += ',';
        text_ += '\n';
    }
    void loops(const char* record, const std::string& name, const std::string& end, const std::array<Complex, 3>& z) {
        begin(record, name, end, "ohm");
        for (const Complex& loop : z) append(text_, loop);
        text_ += ",,,,,,,\n";
    }

    const FaultsNetwork& network_;
    std::string text_, head_;
};

ordered_json jsonOf(Complex value) {
    if (!std::isfinite(std::abs(value))) return nullptr;
    return ordered_json::array({cleaned(std::abs(value), 1), degrees(value)});
}

/// Phases and sequences, each as magnitude and degrees.
ordered_json jsonOf(const Sequences& s) {
    const auto phase = engines::phases(s);
    return {{"a", jsonOf(phase[0])},          {"b", jsonOf(phase[1])},          {"c", jsonOf(phase[2])},
            {"positive", jsonOf(s.positive)}, {"negative", jsonOf(s.negative)}, {"zero", jsonOf(s.zero)}};
}

ordered_json jsonOf(const FaultsNetwork& network, const FaultsCase& asked, const FaultReport& report) {
    ordered_json fault = {{"place", asked.place.toStdString()},
                          {"kind", asked.kind.toStdString()},
                          {"bus", nameOf(network.busNames, report.bus.value)},
                          {"dead", report.dead},
                          {"kA", jsonOf(report.ka)},
                          {"kV", jsonOf(report.kv)},
                          {"MVA", report.mva}};
    for (const auto& branch : report.branches)
        fault["branches"].push_back({{"name", nameOf(network.branchNames, branch.end.branch.value)},
                                     {"end", sideOf(branch.end)},
                                     {"kA", jsonOf(branch.ka)}});
    for (const auto& source : report.sources)
        fault["sources"].push_back({{"name", nameOf(network.sourceNames, source.source)}, {"kA", jsonOf(source.ka)}});
    for (const auto& bus : report.voltages)
        fault["voltages"].push_back({{"bus", nameOf(network.busNames, bus.bus.value)}, {"kV", jsonOf(bus.kv)}});
    for (const auto& relay : report.impedances)
        fault["impedances"].push_back(
            {{"name", nameOf(network.branchNames, relay.end.branch.value)},
             {"end", sideOf(relay.end)},
             {"ground_ohm", {jsonOf(relay.ground[0]), jsonOf(relay.ground[1]), jsonOf(relay.ground[2])}},
             {"phase_ohm", {jsonOf(relay.phase[0]), jsonOf(relay.phase[1]), jsonOf(relay.phase[2])}}});
    return fault;
}

std::string elementOf(const FaultsNetwork& network, const engines::AppliedFactor& factor) {
    if (factor.idNo == 0) return sql::fromGbk(QByteArray::fromStdString(factor.source)).toStdString();
    const auto found = network.network.branchById.find(factor.idNo);
    return found == network.network.branchById.end() ? "" : nameOf(network.branchNames, found->second);
}

void printJson(const FaultsWish& wish, const FaultsNetwork& network, const std::vector<FaultsCase>& cases,
               const std::vector<FaultReport>& reports) {
    ordered_json faults = ordered_json::array();
    for (std::size_t k = 0; k < cases.size(); ++k) faults.push_back(jsonOf(network, cases[k], reports[k]));
    ordered_json answer = {{"method", wish.method}, {"faults", faults}};
    for (const auto& factor : network.factors)
        answer["factors"].push_back(
            {{"symbol", factor.symbol}, {"element", elementOf(network, factor)}, {"value", factor.value}});
    print(QString::fromStdString(answer.dump(1)) + "\n");
}

QString shown(Complex value) {
    if (!std::isfinite(std::abs(value))) return "-";
    return number(cleaned(std::abs(value), 1)) + "∠" + QString::number(degrees(value), 'f', 1);
}

QStringList shownPhases(const Sequences& s) {
    QStringList cells;
    for (const Complex& phase : engines::phases(s)) cells << shown(phase);
    return cells << shown(s.positive) << shown(s.negative) << shown(3.0 * s.zero);
}

const QList<int> kRight = {2, 3, 4, 5, 6, 7, 8};

void printTotals(const std::vector<FaultsCase>& cases, const std::vector<FaultReport>& reports) {
    TextTable table({"位置", "类型", "Ia kA", "Ib kA", "Ic kA", "I1", "I2", "3I0", "S MVA"}, kRight);
    for (std::size_t k = 0; k < cases.size(); ++k) {
        const FaultReport& report = reports[k];
        table.add(QStringList{cases[k].place, kindText(cases[k].kind)} + shownPhases(report.ka)
                  << (report.dead ? QString("无电源") : number(report.mva)));
    }
    table.print();
}

/// The tables of one fault that hold something.
void printDetails(const FaultsNetwork& network, const FaultsCase& asked, const FaultReport& report) {
    const QString head = "\n" + asked.place + " " + kindText(asked.kind);
    TextTable currents({"元件", "端", "Ia kA", "Ib kA", "Ic kA", "I1", "I2", "3I0"}, kRight);
    for (const auto& b : report.branches)
        currents.add(QStringList{QString::fromStdString(nameOf(network.branchNames, b.end.branch.value)),
                                 QString::fromStdString(sideOf(b.end))} +
                     shownPhases(b.ka));
    for (const auto& s : report.sources)
        currents.add(QStringList{QString::fromStdString(nameOf(network.sourceNames, s.source)), ""} +
                     shownPhases(s.ka));
    if (!report.branches.empty() || !report.sources.empty()) print(head + "：电流\n"), currents.print();
    TextTable voltages({"母线", "", "Ua kV", "Ub kV", "Uc kV", "U1", "U2", "3U0"}, kRight);
    for (const auto& v : report.voltages)
        voltages.add(QStringList{QString::fromStdString(nameOf(network.busNames, v.bus.value)), ""} +
                     shownPhases(v.kv));
    if (!report.voltages.empty()) print(head + "：母线相电压\n"), voltages.print();
    TextTable loops({"支路", "端", "ZA", "ZB", "ZC", "ZAB", "ZBC", "ZCA"}, kRight);
    for (const auto& z : report.impedances) {
        QStringList cells{QString::fromStdString(nameOf(network.branchNames, z.end.branch.value)),
                          QString::fromStdString(sideOf(z.end))};
        for (const auto& loop : z.ground) cells << shown(loop);
        for (const auto& loop : z.phase) cells << shown(loop);
        loops.add(cells);
    }
    if (!report.impedances.empty()) print(head + "：测量阻抗，一次侧欧姆\n"), loops.print();
}

void printFactors(const FaultsNetwork& network) {
    TextTable table({"系数", "元件", "值"}, {2});
    for (const auto& factor : network.factors)
        table.add({QString::fromStdString(factor.symbol), QString::fromStdString(elementOf(network, factor)),
                   number(factor.value)});
    table.print();
    print("\n");
}

}  // namespace

void writeFaults(const FaultsWish& wish, const FaultsNetwork& network, const std::vector<FaultsCase>& cases,
                 const std::vector<FaultReport>& reports) {
    if (wish.out == "json") return printJson(wish, network, cases, reports);
    if (wish.out == "csv") {
        CsvOutput csv(network);
        for (std::size_t k = 0; k < cases.size(); ++k) csv.add(static_cast<int>(k) + 1, cases[k], reports[k]);
        return csv.print();
    }
    if (wish.factors && !network.factors.empty()) printFactors(network);
    printTotals(cases, reports);
    for (std::size_t k = 0; k < cases.size(); ++k) printDetails(network, cases[k], reports[k]);
}

}  // namespace cli
