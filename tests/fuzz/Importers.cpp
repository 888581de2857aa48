#include <cmath>
#include <string>

#include "exchange/TextFile.h"
#include "platform/import/Import.h"
#include "tests/fuzz/Bundle.h"
#include "tests/fuzz/Targets.h"

namespace fuzz {

namespace {

using import::Options;
using import::Report;

using Import = host::NetworkModel (*)(const std::filesystem::path&, const Options&, Report&);

void mustBeNumbers(const host::NetworkModel& model) {
    const auto must = [](const std::string& name, std::initializer_list<double> values) {
        for (const double value : values)
            if (std::isinf(value)) throw Broken("a value of " + name + " is infinite");
    };
    for (const auto& l : model.lines) must(l.name, {l.r1, l.x1, l.r0, l.x0, l.lengthKm, l.ratedA});
    for (const auto& t : model.transformers2) must(t.name, {t.r1, t.x1, t.r0, t.x0, t.i.ratedKv, t.j.ratedKv});
    for (const auto& t : model.transformers3)
        for (int w = 0; w < 3; ++w) must(t.name, {t.r1[w], t.x1[w], t.r0[w], t.x0[w]});
    for (const auto& g : model.generators) must(g.name, {g.r1, g.x1, g.r0, g.x0, g.pMw, g.qMvar});
    for (const auto& s : model.shunts) must(s.name, {s.x1, s.r0, s.x0});
}

std::size_t elements(const host::NetworkModel& m) {
    return m.nodes.size() + m.lines.size() + m.transformers2.size() + m.transformers3.size() + m.generators.size() +
           m.shunts.size() + m.loads.size() + m.switches.size() + m.mutuals.size();
}

/// An imported network is written as plain tables and read again.
void wayBack(const host::NetworkModel& model) {
    static Workplace written({});
    for (const auto& entry : std::filesystem::directory_iterator(written.directory())) std::filesystem::remove(entry);
    import::writeCsv(model, written.directory());
    Report report;
    try {
        const auto again = import::readCsv(written.directory(), {}, report);
        if (elements(again) != elements(model)) throw Broken("elements are lost on the way back");
    } catch (const import::ImportError& error) {
        throw Broken(std::string("what was written is refused: ") + error.what());
    }
}

void taken(Import read, const std::filesystem::path& input) {
    Report report;
    try {
        const auto model = read(input, {}, report);
        mustBeNumbers(model);
        wayBack(model);
    } catch (const import::ImportError&) {
    }
}

}  // namespace

void matpowerCase(std::string_view bytes) {
    static Workplace place({});
    taken(import::readMatpower, place.put("case.m", bytes));
}

void cgmesModel(std::string_view bytes) {
    static Workplace place({});
    const bool archive = bytes.starts_with("PK");
    taken(import::readCgmes, place.put(archive ? "model.zip" : "model.xml", bytes));
}

void csvTables(std::string_view bytes) {
    static Workplace place({});
    place.lay(bytes);
    taken(import::readCsv, place.directory());
}

}  // namespace fuzz
