#pragma once

#include <gmock/gmock.h>

#include <QSqlRecord>

#include "platform/host/BaseTables.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/frame/RuleLibrary.h"
#include "programs/model/RelayStore.h"
#include "tests/frame/ServerFixture.h"

/// A project with the delivered rules and a small network at 110 kV:
///   A ==(L1, L2)== B --L3-- T1 --L4-- T2 --L5-- C, T1 --L6-- D; T1 and T2 are T nodes; generator G and two-winding
///   transformer at A, three-winding transformer at C. L2's name holds a quote, a backslash and a percent sign.
class WorkflowFixture : public ServerFixture {
  protected:
    void SetUp() override {
        ServerFixture::SetUp();
        QString error;
        ASSERT_TRUE(RuleLibrary::load(MORVANE_SOURCE_DIR "/data/rules", tables::ruleConnection, &error))
            << error.toStdString();
        ASSERT_TRUE(host::createBaseTables());
        ASSERT_TRUE(host::storeNetwork(network()));
        BranchTable::invalidate();
        errors.clear();
    }

    static inline const QString oddName = QStringLiteral("L'2\\ %d");

    static host::NetworkModel network() {
        host::NetworkModel model;
        for (const char* name : {"A", "B", "C", "D", "T1", "T2"}) model.nodes.push_back(node(name, 110));
        model.nodes[4].nodeType = model.nodes[5].nodeType = 1;
        for (const char* name : {"A10", "C35", "C10", "*C"}) model.nodes.push_back(node(name, 10));
        model.lines = {line("L1", "A", "B"),  line(oddName.toStdString(), "A", "B"),
                       line("L3", "B", "T1"), line("L4", "T1", "T2"),
                       line("L5", "T2", "C"), line("L6", "D", "T1")};
        host::Transformer2 two;
        two.name = "TA";
        two.i.node = "A";
        two.j.node = "A10";
        two.x1 = two.x0 = 0.1;
        model.transformers2 = {two};
        host::Transformer3 three;
        three.name = "TC";
        three.star = "*C";
        const char* ends[] = {"C", "C35", "C10"};
        for (int k = 0; k < 3; ++k) {
            three.winding[k].node = ends[k];
            three.x1[k] = three.x0[k] = 0.1;
        }
        model.transformers3 = {three};
        host::Generator generator;
        generator.name = "G";
        generator.node = "A10";
        generator.x1 = 0.2;
        model.generators = {generator};
        model.schemes.push_back({"基础方案", {}});
        return model;
    }

    static host::Node node(const std::string& name, double kv) {
        host::Node made;
        made.name = name;
        made.baseKv = kv;
        return made;
    }
    static host::Line line(const std::string& name, const std::string& i, const std::string& j) {
        host::Line made;
        made.name = name;
        made.i = i;
        made.j = j;
        made.x1 = 0.05;
        made.x0 = 0.15;
        return made;
    }

    static Location at(const QString& line, int side) {
        for (const Location& place : RelayStore::placesOf(line, side, 6)) return place;
        return {};
    }
    static RelayRequest request(const QString& line, int side, int type, double ct = 1, double pt = 1) {
        return {at(line, side), type, ct, pt, {}};
    }

    static int count(const QString& table, const QString& condition = "1=1", const QVariantList& values = {}) {
        return sql::scalar({}, "SELECT COUNT(*) FROM " + table + " WHERE " + condition, values, -1).toInt();
    }
    static double real(const QString& text, const QVariantList& values = {}) {
        return sql::scalar({}, text, values, -1.0).toDouble();
    }
    static bool exec(const QString& text, const QVariantList& values = {}) { return sql::Query().exec(text, values); }
    /// Rows as texts, cells joined by commas.
    static QStringList rows(const QString& text) {
        QStringList found;
        sql::Query query;
        query.exec(text);
        while (query.next()) {
            QStringList cells;
            for (int column = 0; column < query.cursor().record().count(); ++column) cells << query.raw(column);
            found << cells.join(',');
        }
        return found;
    }
};

inline void PrintTo(const QString& text, std::ostream* out) { *out << text.toStdString(); }
