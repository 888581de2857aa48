#include "exchange/NetworkFiles.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <future>

#include "exchange/FileNames.h"
#include "exchange/TextFile.h"

namespace exchange {

namespace {

constexpr int kFormatVersion = 1;

// What a row of each file holds, in order: the same list writes and reads it. Files that go on with the elements of an
// earlier file begin with `key`, which must agree with it.

template <class F, class Row>
void busRow(F& f, Row& b) {
    f(b.no), f(b.baseKv), f(b.vMinKv);
}
template <class F, class Row>
void busVoltage(F& f, Row& b) {
    f.key(b.no), f(b.vMag), f(b.vAngle);
}
template <class F, class Row>
void busName(F& f, Row& b) {
    f.key(b.no), f.rest(b.name);
}

template <class F, class Row>
void lineRow(F& f, Row& l) {
    f(l.idNo), f(l.iNo), f(l.jNo), f(l.r1), f(l.x1), f(l.lengthKm), f(l.ratedA);
}
template <class F, class Row>
void lineZero(F& f, Row& l) {
    f.key(l.idNo), f(l.r0), f(l.x0);
}
template <class F, class Row>
void lineLoad(F& f, Row& l) {
    f.key(l.idNo), f(l.maxLoadA);
}

template <class F, class Row>
void transformerRow(F& f, Row& t) {
    f(t.idNo), f(t.iNo), f(t.jNo), f(t.kind), f(t.r1), f(t.x1), f(t.ratedMva), f(t.ratedKvI), f(t.ratedKvJ);
}
template <class F, class Row>
void transformerZero(F& f, Row& t) {
    f.key(t.idNo), f(t.r0), f(t.x0), f(t.zcType);
}
template <class F, class Row>
void transformerLoad(F& f, Row& t) {
    f.key(t.idNo), f(t.maxLoadA);
}

template <class F, class Row>
void shuntRow(F& f, Row& s) {
    f(s.idNo), f(s.no), f(s.x1), f(s.ratedMvar), f(s.ratedKv);
}
template <class F, class Row>
void shuntZero(F& f, Row& s) {
    f.key(s.idNo), f(s.r0), f(s.x0), f(s.grounded);
}

template <class F, class Row>
void generatorRow(F& f, Row& g) {
    f(g.no), f(g.r1), f(g.x1), f(g.ratedMva), f(g.ratedKv);
}
template <class F, class Row>
void generatorZero(F& f, Row& g) {
    f.key(g.no), f(g.r0), f(g.x0), f(g.grounded);
}
template <class F, class Row>
void generatorPower(F& f, Row& g) {
    f.key(g.no), f(g.pMw), f(g.qMvar);
}
template <class F, class Row>
void generatorName(F& f, Row& g) {
    f.key(g.no), f.rest(g.name);
}

template <class F, class Row>
void mutualRow(F& f, Row& m) {
    f(m.firstId), f(m.secondId), f(m.r0), f(m.x0), f(m.sense);
}
template <class F, class Row>
void mutualStretch(F& f, Row& m) {
    f.key(m.firstId), f(m.firstFrom), f(m.firstTo), f(m.secondFrom), f(m.secondTo);
}

/// Puts the fields of a row behind one another.
class RowWriter {
  public:
    RowWriter(std::string& out, std::string file) : out_(out), file_(std::move(file)) {}
    void operator()(int value) { put(value); }
    void operator()(bool value) { out_ += value ? "1," : "0,"; }
    void operator()(double value) {
        if (!std::isfinite(value)) throw FormatError(file_, line_, "a value is not a number");
        put(value);
    }
    void key(int value) { put(value); }
    void rest(const std::string& text) {
        if (text.find_first_of("\r\n") != std::string::npos) throw FormatError(file_, line_, "a name has a line end");
        out_ += text;
    }
    void endRow() {
        out_ += "\r\n";
        ++line_;
    }

  private:
    std::string& out_;
    std::string file_;
    int line_ = 2;

    /// The shortest text that reads back as the same number, and a comma.
    template <class Number>
    void put(Number value) {
        char text[40];
        const auto end = std::to_chars(std::begin(text), std::end(text), value).ptr;
        *end = ',';
        out_.append(text, end + 1);
    }
};

/// Takes the fields of a row one after the other, straight from the text; what is not read at once goes through
/// Fields, which tells what is wrong.
class RowReader {
  public:
    explicit RowReader(const Lines& lines) : lines_(lines), at_(lines.line().data()), end_(at_ + lines.line().size()) {}
    void operator()(int& value) {
        if (!taken(value)) value = slowly().whole(next_);
        ++next_;
    }
    void operator()(double& value) {
        if (!taken(value) || !std::isfinite(value)) value = slowly().real(next_);
        ++next_;
    }
    void operator()(bool& value) {
        int number = 0;
        (*this)(number);
        value = number != 0;
    }
    void key(int& value) {
        int found = 0;
        (*this)(found);
        if (found != value) lines_.fields().fail("element " + std::to_string(value) + " is expected");
    }
    /// Everything behind the fields taken so far, commas and blanks included.
    void rest(std::string& text) { text.assign(at_, end_); }

  private:
    const Lines& lines_;
    const char* at_;
    const char* end_;
    std::size_t next_ = 0;

    void skipBlanks() {
        while (at_ != end_ && (*at_ == ' ' || *at_ == '\t')) ++at_;
    }
    template <class T>
    bool taken(T& value) {
        skipBlanks();
        const auto [stop, error] = std::from_chars(at_, end_, value);
        if (error != std::errc()) return false;
        at_ = stop;
        skipBlanks();
        if (at_ != end_ && *at_ != ',') return false;
        if (at_ != end_) ++at_;
        return true;
    }
    /// The whole line, with the next field to be taken from it.
    Fields slowly() {
        at_ = lines_.line().data();
        for (std::size_t i = 0; i <= next_; ++i) {
            at_ = std::find(at_, end_, ',');
            if (at_ != end_) ++at_;
        }
        return lines_.fields();
    }
};

void writeHead(std::string& out, std::size_t count) {
    out += std::to_string(kFormatVersion) + "," + std::to_string(count) + ",\r\n";
}

int parseHead(const Lines& lines) {
    const Fields head = lines.fields();
    if (head.whole(0) != kFormatVersion) head.fail("the format version is " + std::to_string(kFormatVersion));
    if (head.whole(1) < 0) head.fail("the count is below 0");
    return head.whole(1);
}

/// Writes one file: a head, then each list with its row layout.
class SetWriter {
  public:
    explicit SetWriter(const std::filesystem::path& directory) : directory_(directory) {}
    template <class Row>
    void table(const char* file, const std::vector<Row>& rows, void (*layout)(RowWriter&, const Row&)) {
        std::string out;
        append(out, file, rows, layout);
        replace(directory_ / file, out);
    }
    template <class First, class Second>
    void tables(const char* file, const std::vector<First>& first, void (*firstLayout)(RowWriter&, const First&),
                const std::vector<Second>& second, void (*secondLayout)(RowWriter&, const Second&)) {
        std::string out;
        append(out, file, first, firstLayout);
        append(out, file, second, secondLayout);
        replace(directory_ / file, out);
    }

  private:
    std::filesystem::path directory_;

    template <class Row>
    static void append(std::string& out, const char* file, const std::vector<Row>& rows,
                       void (*layout)(RowWriter&, const Row&)) {
        constexpr std::size_t kUsualRow = 80;
        out.reserve(out.size() + rows.size() * kUsualRow);
        writeHead(out, rows.size());
        RowWriter writer(out, file);
        for (const Row& row : rows) {
            layout(writer, row);
            writer.endRow();
        }
    }
};

/// Reads one file; `fresh` tables grow by the count of the head, the others must have that many rows already.
class SetReader {
  public:
    explicit SetReader(const std::filesystem::path& directory) : directory_(directory) {}
    template <class Row>
    void fresh(const char* file, std::vector<Row>& rows, void (*layout)(RowReader&, Row&)) {
        const std::string bytes = readAll(directory_ / file);
        Lines lines(bytes, file);
        const int count = head(lines);
        constexpr std::size_t kShortestRow = 8;
        rows.reserve(std::min(static_cast<std::size_t>(count), bytes.size() / kShortestRow));
        for (int i = 0; i < count; ++i) {
            rows.emplace_back();
            row(lines, rows.back(), layout);
        }
    }
    template <class Row>
    void more(const char* file, std::vector<Row>& rows, void (*layout)(RowReader&, Row&)) {
        const std::string bytes = readAll(directory_ / file);
        Lines lines(bytes, file);
        goOn(lines, rows, layout);
    }
    template <class First, class Second>
    void more(const char* file, std::vector<First>& first, void (*firstLayout)(RowReader&, First&),
              std::vector<Second>& second, void (*secondLayout)(RowReader&, Second&)) {
        const std::string bytes = readAll(directory_ / file);
        Lines lines(bytes, file);
        goOn(lines, first, firstLayout);
        goOn(lines, second, secondLayout);
    }

  private:
    std::filesystem::path directory_;

    static int head(Lines& lines) {
        if (!lines.next()) throw FormatError(lines.file(), lines.lineNo(), "the head line is missing");
        return parseHead(lines);
    }
    template <class Row>
    static void row(Lines& lines, Row& target, void (*layout)(RowReader&, Row&)) {
        if (!lines.next()) throw FormatError(lines.file(), lines.lineNo(), "rows are missing at the end");
        RowReader reader(lines);
        layout(reader, target);
    }
    template <class Row>
    static void goOn(Lines& lines, std::vector<Row>& rows, void (*layout)(RowReader&, Row&)) {
        if (head(lines) != static_cast<int>(rows.size()))
            throw FormatError(lines.file(), lines.lineNo(), std::to_string(rows.size()) + " rows are expected");
        for (auto& target : rows) row(lines, target, layout);
    }
};

struct Whole {
    int loadFlow = 0;
    int busCount = 0;
};
template <class F, class Row>
void wholeRow(F& f, Row& w) {
    f(w.loadFlow), f(w.busCount);
}

}  // namespace

void writeNetwork(const std::filesystem::path& directory, const NetworkData& n) {
    SetWriter files(directory);
    // A set that is not written to its end is none.
    std::error_code absent;
    std::filesystem::remove(directory / "LF.L0", absent);
    files.table("LF.L1", n.buses, busRow);
    files.table("LF.L2", n.lines, lineRow);
    files.table("LF.L3", n.transformers, transformerRow);
    files.table("LF.L4", n.shunts, shuntRow);
    files.table("LF.L5", n.generators, generatorPower);
    files.table("LF.L6", n.buses, busVoltage);
    files.tables("LF.L13", n.lines, lineLoad, n.transformers, transformerLoad);
    files.table("ST.S1", n.generators, generatorRow);
    files.table("ST.S2", n.generators, generatorZero);
    files.table("ST.S3", n.lines, lineZero);
    files.table("ST.S4", n.transformers, transformerZero);
    files.table("ST.S5", n.shunts, shuntZero);
    files.table("ST.S6", n.mutuals, mutualRow);
    files.table("ST.S7", n.mutuals, mutualStretch);
    files.tables(file::kNames, n.buses, busName, n.generators, generatorName);
    // The last one: a reader that finds it finds the others too.
    files.table("LF.L0", std::vector<Whole>{{n.loadFlow ? 1 : 0, static_cast<int>(n.buses.size())}}, wholeRow);
}

namespace {

/// Networks from here on are worth a second thread.
constexpr int kManyBuses = 500;

Whole readWhole(SetReader& files) {
    std::vector<Whole> whole;
    files.fresh("LF.L0", whole, wholeRow);
    if (whole.size() != 1) throw FormatError("LF.L0", 1, "one row is expected");
    return whole[0];
}

void readLines(SetReader files, NetworkData& n) {
    files.fresh("LF.L2", n.lines, lineRow);
    files.more("ST.S3", n.lines, lineZero);
}

void readOthers(SetReader files, NetworkData& n) {
    files.fresh("LF.L1", n.buses, busRow);
    files.fresh("LF.L3", n.transformers, transformerRow);
    files.fresh("LF.L4", n.shunts, shuntRow);
    files.fresh("ST.S1", n.generators, generatorRow);
    files.fresh("ST.S6", n.mutuals, mutualRow);
    files.more("LF.L5", n.generators, generatorPower);
    files.more("LF.L6", n.buses, busVoltage);
    files.more("ST.S2", n.generators, generatorZero);
    files.more("ST.S4", n.transformers, transformerZero);
    files.more("ST.S5", n.shunts, shuntZero);
    files.more("ST.S7", n.mutuals, mutualStretch);
    files.more(file::kNames, n.buses, busName, n.generators, generatorName);
}

}  // namespace

NetworkData readNetwork(const std::filesystem::path& directory) {
    SetReader files(directory);
    const Whole whole = readWhole(files);
    NetworkData n;
    n.loadFlow = whole.loadFlow != 0;
    const auto when = whole.busCount < kManyBuses ? std::launch::deferred : std::launch::async;
    auto lines = std::async(when, [&] { readLines(files, n); });
    readOthers(files, n);
    lines.get();
    files.more("LF.L13", n.lines, lineLoad, n.transformers, transformerLoad);
    return n;
}

}  // namespace exchange
