// One run of HALDERN.EXE on square grids of 220 kV lines: reading, rules of one relay, branch coefficients of all
// relays.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "bench/LargeStudy.h"
#include "bench/RealTimeFile.h"
#include "engines/network/SectionGraph.h"
#include "engines/rules/SettingRun.h"
#include "exchange/ControlFile.h"
#include "exchange/FileNames.h"
#include "exchange/MainBranchFile.h"
#include "exchange/ModeFile.h"
#include "exchange/NetworkFiles.h"
#include "exchange/RealTimeNameFile.h"
#include "exchange/RelayFile.h"
#include "exchange/ResultFiles.h"
#include "exchange/RuleFaultFile.h"
#include "exchange/RuleFile.h"
#include "exchange/TextFile.h"
#include "exchange/VirtualRelayFile.h"

namespace {

namespace file = exchange::file;

class Grid {
  public:
    explicit Grid(int side) {
        for (int bus = 0; bus < side * side; ++bus) addBus(bus);
        for (int row = 0; row < side; ++row)
            for (int column = 0; column < side; ++column) {
                if (column + 1 < side) addLine(row * side + column, row * side + column + 1);
                if (row + 1 < side) addLine(row * side + column, (row + 1) * side + column);
            }
    }
    const exchange::NetworkData& data() const { return data_; }

    std::string relays() const {
        std::string text;
        int rno = 0;
        for (const exchange::NetLine& line : data_.lines)
            for (const int end : {1, 2}) text += exchange::format(relay(++rno, line, end));
        return text;
    }
    /// Every line from both ends, a fault at the far end, the next line out as the only outage.
    std::string mainBranches() const {
        std::string text;
        int number = 0;
        for (const exchange::NetLine& line : data_.lines)
            for (const int end : {1, 2}) text += exchange::format(mainBranch(++number, line, end));
        return text;
    }
    std::string rules() const {
        exchange::RelayRules group{1, 1, {}};
        exchange::RuleSection current{3101, 1, {1, 2}, false, {}};
        const exchange::NetLine& own = data_.lines.front();
        for (const int kind : {2, 4})
            current.faults.push_back({1, {kind / 2, own.idNo, own.iNo, own.jNo, 100, kind, "0", "0"}});
        for (int i = 1; i <= 5; ++i) addOutage(20 + i, data_.lines[static_cast<std::size_t>(i)], current.faults);
        group.sections = {current, {1201, 1, {}, true, {}}};
        return exchange::format(group);
    }

  private:
    void addBus(int bus) {
        exchange::NetBus b;
        b.no = bus + 2;
        b.baseKv = 220;
        data_.buses.push_back(b);
        if (bus % 4 != 0) return;
        exchange::NetGenerator g;
        g.name = std::to_string(bus), g.no = b.no, g.x1 = 0.1, g.x0 = 0.05, g.grounded = true;
        data_.generators.push_back(g);
    }
    void addLine(int i, int j) {
        const int id = static_cast<int>(data_.lines.size()) + 1;
        const double x = 0.02 + 0.001 * (id % 7);
        data_.lines.push_back({id, i + 2, j + 2, x / 8, x, x / 3, 3 * x, 40, 1200, 700});
    }
    static exchange::RelayBlock relay(int rno, const exchange::NetLine& line, int side) {
        exchange::RelayBlock block;
        block.rno = rno, block.label = "L  N  T", block.iNo = line.iNo, block.jNo = line.jNo, block.idNo = line.idNo;
        block.side = side;
        block.parts.assign(3, {"12.5", "0.3", "0.67", "40"});
        return block;
    }
    exchange::MainBranch mainBranch(int number, const exchange::NetLine& line, int side) const {
        const exchange::NetLine& out = data_.lines[static_cast<std::size_t>(line.idNo) % data_.lines.size()];
        exchange::MainBranch main{number, line.iNo, line.jNo, line.idNo, side, {1, 2}, {}};
        main.faults.push_back({1, line.idNo, line.iNo, line.jNo, side == 1 ? 100 : 0, 1, "0", "0"});
        std::vector<exchange::RuleFault> rows;
        addOutage(21, out, rows);
        for (const exchange::RuleFault& row : rows) main.faults.push_back(row.row);
        return main;
    }
    static void addOutage(int number, const exchange::NetLine& line, std::vector<exchange::RuleFault>& rows) {
        for (const int place : {1, 99}) {
            rows.push_back({1, {number, line.idNo, line.iNo, line.jNo, place, 5, "99999.9999", "99999.9999"}});
            rows.push_back({1, {number, line.idNo, line.iNo, line.jNo, place, 1, "0", "0"}});
        }
    }

    exchange::NetworkData data_;
};

std::string ruleFile() {
    const exchange::RuleBlock current{
        3101, 1, 1, 1, 1, 1, {{1, 1, 0, 1, 0, 1, 9, 1}}, {{1, 1, 8, 1}}, {{1.3}}, {{1, 101, 1000, 1, 3, 201}}};
    const exchange::RuleBlock distance{1201,
                                       1,
                                       3,
                                       2,
                                       3,
                                       1,
                                       {{31, 2, 3, 1, 1, 3, 9, 2}},
                                       {{1, 0, 101, 1}, {2, 31, 401, 1}, {3, 31, 453, 1}},
                                       {{0.85, 0.8}},
                                       {{101, 1, 1, 1, 3, 301}, {102, 309, 1, 1, 3, 302}, {301, 302, 1, 1, 1, 201}}};
    return exchange::format(current) + exchange::format(distance);
}

class Directory {
  public:
    explicit Directory(const std::string& purpose = "run")
        : path_(std::filesystem::temp_directory_path() / ("morvane_bench_" + std::to_string(getpid()) + purpose)) {
        std::filesystem::create_directories(path_);
    }
    ~Directory() { std::filesystem::remove_all(path_); }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;
    void fill(const Grid& grid) const {
        exchange::writeNetwork(path_, grid.data());
        const std::pair<const char*, std::string> files[] = {
            {file::kControl, exchange::format(exchange::Control{1, 0, 0, 0})},
            {file::kRelays, grid.relays()},
            {file::kMainBranches, grid.mainBranches()},
            {file::kModes,
             exchange::format(exchange::ModeElement{2, 7, grid.data().lines[6].iNo, grid.data().lines[6].jNo, 1,
                                                    "9999999.999999", "9999999.999999"})},
            {file::kVirtualRelays, exchange::format(exchange::VirtualRelays{})},
            {file::kRuleFaults, grid.rules()},
            {file::kRules, ruleFile()}};
        for (const auto& [name, bytes] : files) exchange::replace(path_ / name, bytes);
    }
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

void wholeRun(benchmark::State& state) {
    const Grid grid(static_cast<int>(state.range(0)));
    const Directory directory;
    directory.fill(grid);
    for (auto _ : state) {
        std::ostringstream notes;
        engines::runSettings(directory.path(), notes);
    }
    state.counters["buses"] = static_cast<double>(grid.data().buses.size());
    state.counters["relays"] = 2.0 * static_cast<double>(grid.data().lines.size());
}
BENCHMARK(wholeRun)->Arg(4)->Arg(8)->Arg(11)->Arg(17)->Unit(benchmark::kMillisecond);

/// The same with every coefficient handed back from an earlier run.
void runAfterAnother(benchmark::State& state) {
    const Grid grid(static_cast<int>(state.range(0)));
    const Directory directory;
    directory.fill(grid);
    std::ostringstream notes;
    engines::runSettings(directory.path(), notes);
    exchange::replace(directory.path() / file::kEarlierCoefficients,
                      exchange::readAll(directory.path() / file::kCoefficients));
    for (auto _ : state) engines::runSettings(directory.path(), notes);
}
BENCHMARK(runAfterAnother)->Arg(4)->Arg(11)->Unit(benchmark::kMillisecond);

/// The public network; nothing without the folder that MORVANE_SHARED_NETWORKS names.
const std::optional<bench::LargeStudy>& publicNetwork() {
    static const auto study = []() -> std::optional<bench::LargeStudy> {
        const char* folder = std::getenv("MORVANE_SHARED_NETWORKS");
        std::ifstream in(std::filesystem::path(folder ? folder : "") / "matpower/case9241pegase.m");
        if (!in) return std::nullopt;
        return bench::LargeStudy({std::istreambuf_iterator<char>(in), {}});
    }();
    return study;
}

/// The input of a run on it; empty without the folder that MORVANE_SHARED_NETWORKS names.
const std::filesystem::path& publicStudy() {
    static const Directory directory;
    static const std::filesystem::path none;
    if (!publicNetwork()) return none;
    static const bool written = (publicNetwork()->writeTo(directory.path()), true);
    return written ? directory.path() : none;
}

bool ready(benchmark::State& state) {
    if (!publicStudy().empty()) return true;
    state.SkipWithError("the public networks are not here");
    return false;
}

/// The executable beside this one, started in a directory and waited for.
int start(const char* program, const std::filesystem::path& directory) {
    static const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const std::string path = folder / program;
    const pid_t child = vfork();
    if (child == 0) {
        const int silent = open("/dev/null", O_WRONLY);
        if (dup2(silent, STDERR_FILENO) >= 0 && chdir(directory.c_str()) == 0) execl(path.c_str(), program, nullptr);
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

void largeProgram(benchmark::State& state, const char* program) {
    if (!ready(state)) return;
    for (auto _ : state)
        if (start(program, publicStudy()) != 0) state.SkipWithError("the program has failed");
}
/// Relays at both ends of 4500 lines.
void largeOrder(benchmark::State& state) {
    if (!ready(state)) return;
    const Directory directory("order");
    publicNetwork()->writeTo(directory.path());
    exchange::replace(directory.path() / file::kRelays, publicNetwork()->relaysAtBothEnds(9000));
    for (auto _ : state)
        if (start(file::kOrderProgram, directory.path()) != 0) state.SkipWithError("the program has failed");
    const auto order =
        exchange::parseTurnOrder(exchange::readAll(directory.path() / file::kTurnOrder), file::kTurnOrder);
    state.counters["breaks"] = order.breakRelays;
}
void largeConversion(benchmark::State& state) {
    if (!ready(state)) return;
    const Directory directory("convert");
    bench::writeRealTimeTables(directory.path() / "tables.db", publicNetwork()->network());
    exchange::replace(directory.path() / file::kRealTimeName, exchange::format(exchange::RealTimeName{"net", "."}));
    for (auto _ : state)
        if (start(file::kConverterProgram, directory.path()) != 0) state.SkipWithError("the program has failed");
}
/// Start and end of a process: nothing is to be read.
void emptyProgram(benchmark::State& state) {
    const auto nowhere = std::filesystem::temp_directory_path();
    for (auto _ : state) start(file::kEngineProgram, nowhere);
}
void largeRead(benchmark::State& state) {
    if (!ready(state)) return;
    for (auto _ : state) benchmark::DoNotOptimize(exchange::readNetwork(publicStudy()));
}
void largeBuild(benchmark::State& state) {
    if (!ready(state)) return;
    const auto data = exchange::readNetwork(publicStudy());
    for (auto _ : state) benchmark::DoNotOptimize(engines::buildNetwork(data));
}
void largeGraph(benchmark::State& state) {
    if (!ready(state)) return;
    const auto data = exchange::readNetwork(publicStudy());
    for (auto _ : state) benchmark::DoNotOptimize(engines::sectionGraph(data, {}));
}
void largeStudy(benchmark::State& state) {
    if (!ready(state)) return;
    for (auto _ : state) benchmark::DoNotOptimize(engines::readStudy(publicStudy()));
}
/// Order and factors of all operating modes, both sequences.
void largeModes(benchmark::State& state) {
    if (!ready(state)) return;
    for (auto _ : state) {
        state.PauseTiming();
        auto study = engines::readStudy(publicStudy());
        state.ResumeTiming();
        std::vector<engines::ModeNetwork> kept;
        for (int mode = 1; mode <= bench::kModes; ++mode) kept.emplace_back(study.network, study.modes[mode]);
    }
}
/// All of the above and the rules.
void largeEvaluate(benchmark::State& state) {
    if (!ready(state)) return;
    for (auto _ : state) {
        state.PauseTiming();
        const auto study = engines::readStudy(publicStudy());
        state.ResumeTiming();
        engines::ModeStudies calculation(study.network, study.modes);
        const auto results = engines::evaluateRules(study, calculation);
        state.PauseTiming();
        std::size_t with = 0;
        for (const auto& setting : results.settings) with += setting.ruleNo != 0;
        state.counters["results"] = static_cast<double>(with);
        state.counters["coefficients"] = static_cast<double>(results.coefficients.size());
        state.ResumeTiming();
    }
}
void largeWrite(benchmark::State& state) {
    if (!ready(state)) return;
    const auto data = exchange::readNetwork(publicStudy());
    const Directory target("write");
    for (auto _ : state) exchange::writeNetwork(target.path(), data);
}
BENCHMARK_CAPTURE(largeProgram, haldern, file::kEngineProgram)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(largeOrder)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(largeConversion)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(emptyProgram)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(largeRead)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(largeBuild)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(largeGraph)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(largeStudy)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(largeModes)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(largeEvaluate)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(largeWrite)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
