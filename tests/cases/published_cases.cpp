#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "exchange/TextFile.h"
#include "tests/cases/FaultTable.h"
#include "tests/cases/SummaryGrid.h"
#include "tests/flow/CommandLine.h"

/// Every *.json of this folder is a case: a network, calls of the fault study on it, and published results that the
/// answers are held against. docs/fault-study.md tells the form.
namespace {

using cases::FaultTable;
using nlohmann::json;
namespace fs = std::filesystem;

const fs::path kFolder = MORVANE_SOURCE_DIR "/tests/cases";

fs::path sharedNetworks() {
    const char* folder = std::getenv("MORVANE_SHARED_NETWORKS");
    return folder ? folder : MORVANE_SHARED_NETWORKS;
}

QString text(const std::string& value) { return QString::fromStdString(value); }

/// Replaces {column} by the cell of a reference row.
std::string filled(std::string form, const cases::Row& row) {
    for (const auto& [column, cell] : row)
        for (std::size_t at; (at = form.find("{" + column + "}")) != std::string::npos;)
            form.replace(at, column.size() + 2, cell);
    return form;
}

class PublishedCase : public testing::TestWithParam<std::string> {
  protected:
    static constexpr const char* kProject = "已发表结果";

    void SetUp() override { case_ = json::parse(exchange::readAll(kFolder / (GetParam() + ".json"))); }
    void TearDown() override { call({"project", "delete", kProject}); }

    /// The folder of shared networks is needed and absent.
    [[nodiscard]] bool lacksNetwork() const {
        const std::string all = case_.dump();
        return all.find("\"shared\"") != std::string::npos && !fs::exists(sharedNetworks());
    }

    void importNetwork(const json& network) {
        const fs::path made = fs::path(folder_.path().toStdString()) / "network";
        fs::remove_all(made);
        fs::path input;
        if (network.contains("folder")) {
            input = fs::path(MORVANE_SOURCE_DIR) / network["folder"].get<std::string>();
        } else if (network.value("form", "") == "summary grid") {
            cases::writeSummaryGrid(sharedNetworks() / network["shared"][0].get<std::string>(), network["maximum"],
                                    made);
            input = made;
        } else {
            fs::create_directories(made);
            for (const std::string part : network["shared"])
                fs::copy(sharedNetworks() / part, made / fs::path(part).filename(), fs::copy_options::recursive);
            input = network["shared"].size() == 1 ? made / fs::directory_iterator(made)->path().filename() : made;
        }
        callAll({{"project", "new", kProject, "--replace"}, {"import", kProject, text(input.string())}});
    }

    FaultTable study(const json& words) {
        QStringList call{"faults", kProject, "--out", "csv"};
        for (const std::string word : words) call << text(word);
        const Answer answer = ::call(call);
        EXPECT_EQ(answer.code, 0) << answer.err;
        return FaultTable(answer.out);
    }

    /// \param near  what the row or the study says of tolerances: "tolerance" relative, "absolute" in the unit
    void compare(const FaultTable& table, const json& near, const std::string& place, const std::string& kind,
                 const std::string& about, const std::string& quantity, double expected) {
        const std::string what = place + " " + kind + " " + about + " " + quantity;
        double value = 0;
        ASSERT_NO_THROW(value = table.value(place, kind, about, quantity)) << what;
        const double allowed = near.value("tolerance", 0.0) * std::abs(expected) + near.value("absolute", 0.0);
        EXPECT_NEAR(value, expected, allowed) << what;
        ++compared_;
    }

    /// Results that stand in the case itself: place, kind, what it is about, then quantities.
    void compareRows(const FaultTable& table, const json& study) {
        const json rows = study.value("expected", json::array());
        for (const json& row : rows) {
            json near = study;
            near.update(row);
            for (const auto& [key, value] : row.items())
                if (value.is_number() && key != "tolerance" && key != "absolute")
                    compare(table, near, row.at("place"), row.at("kind"), row.value("of", "fault"), key, value);
        }
    }

    /// Correction factors, as "SYMBOL ELEMENT".
    void compareFactors(const json& study) {
        if (!study.contains("factors")) return;
        QStringList words{"--json", "faults", kProject};
        for (const std::string word : study["call"]) words << text(word);
        std::map<std::string, double> told;
        const json answer = call(words).json();
        for (const json& factor : answer["factors"])
            told[factor["symbol"].get<std::string>() + " " + factor["element"].get<std::string>()] = factor["value"];
        EXPECT_EQ(told.size(), study["factors"].size());
        for (const auto& [name, value] : study["factors"].items()) {
            ASSERT_TRUE(told.contains(name)) << name;
            EXPECT_NEAR(told[name], value.get<double>(), 6e-7) << name;
            ++compared_;
        }
    }

    /// Results that stand in a shared table: which of its rows, and which of its columns are which quantities.
    void compareReference(const FaultTable& table, const json& study) {
        if (!study.contains("reference")) return;
        const json& reference = study["reference"];
        const std::string file = reference["shared"];
        const double scale = reference.value("scale", 1.0);
        for (const cases::Row& row : cases::rowsOf(exchange::readAll(sharedNetworks() / file), file)) {
            if (!isMeant(reference, row)) continue;
            const std::string kind = reference["kinds"][row.at(reference["kind"])];
            for (const json& column : reference["columns"]) {
                const std::string& cell = row.at(column["column"]);
                if (cell.empty()) continue;
                json near = study;
                near.update(column);
                compare(table, near, filled(reference["place"], row), kind, filled(column.value("of", "fault"), row),
                        column["quantity"], scale * std::stod(cell));
            }
        }
    }

    static bool isMeant(const json& reference, const cases::Row& row) {
        const json where = reference.value("where", json::object());
        for (const auto& [column, value] : where.items())
            if (row.at(column) != value.get<std::string>()) return false;
        return reference["kinds"].contains(row.at(reference["kind"]));
    }

    json case_;
    QTemporaryDir folder_;
    int compared_ = 0;
};

TEST_P(PublishedCase, IsMet) {
    if (lacksNetwork()) GTEST_SKIP() << "no public networks at " << sharedNetworks();
    json imported;
    for (const json& study : case_["studies"]) {
        const json& network = study.contains("network") ? study["network"] : case_["network"];
        if (network != imported) importNetwork(imported = network);
        const FaultTable table = this->study(study["call"]);
        compareRows(table, study);
        compareReference(table, study);
        compareFactors(study);
    }
    EXPECT_EQ(compared_, case_["results"]) << "numbers that were compared";
}

std::vector<std::string> caseNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kFolder))
        if (entry.path().extension() == ".json") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

INSTANTIATE_TEST_SUITE_P(Cases, PublishedCase, testing::ValuesIn(caseNames()),
                         [](const auto& published) { return published.param; });

}  // namespace
