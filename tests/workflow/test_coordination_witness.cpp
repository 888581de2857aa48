#include <array>
#include <random>
#include <set>

#include "programs/workflow/CoordinationSearch.h"
#include "tests/workflow/WorkflowFixture.h"

namespace {

/// The relation of a case asked for statement by statement, with the walk as a recursion over the tables.
class Witness {
  public:
    QStringList search() {
        sql::Query rows;
        rows.exec(
            "SELECT RNo,RuleNo,PNo FROM RLY_CASEINF WHERE Case_No=1 AND PValid=1 AND RValid=1"
            " ORDER BY RNo,RuleNo,PNo");
        while (whole && rows.next()) add(rows.number(0), rows.number(1), rows.number(2));
        return relations;
    }
    bool whole = true;
    QStringList relations;  ///< each once, in the order of their finding

  private:
    struct Step {
        int node, idNo;
    };
    using Steps = std::vector<Step>;  // the newest last

    void add(int relay, int rule, int part) {
        const int element = sql::scalar({}, "SELECT RType FROM RLY_RUD WHERE RNo=?", {relay}, -1).toInt();
        if (element != 6 && element != 10) return;
        const int type = sql::scalar(tables::ruleConnection,
                                     "SELECT VType FROM VARIN WHERE RuleNo=? AND VType>400 AND VType<=420"
                                     " ORDER BY VarNo LIMIT 1",
                                     {rule}, 0)
                             .toInt();
        if (type == 0) return;
        const int other =
            sql::scalar(tables::ruleConnection, "SELECT PRTypeNo FROM RULEINF WHERE RuleNo=?", {rule}, -1).toInt();
        sql::Query branch;
        branch.exec(
            "SELECT b.ID_No,b.I_No,b.J_No,u.Side FROM RLY_RUD u JOIN RLY_RRBRANCH_TEM b ON b.I_Name=u.I_Name"
            " AND b.J_Name=u.J_Name AND b.ID_Name=u.ID_Name WHERE u.RNo=?",
            {relay});
        whole = branch.size() == 1 && branch.next();
        if (!whole) return;
        Steps steps;
        walk(branch.number(branch.number(3) == 1 ? 1 : 2), branch.number(0), steps);
        for (auto step = steps.rbegin(); step != steps.rend(); ++step) take(relay, part, *step, other, partOf(type));
    }

    static int partOf(int type) { return type <= 404 ? 1 : type <= 408 ? 2 : type <= 412 ? 3 : type <= 416 ? 4 : 5; }

    static void walk(int node, int idNo, Steps& steps) {
        sql::Query row;
        row.exec(
            "SELECT I_No,J_No,I_Name,J_Name,Flg FROM RLY_RRBRANCH_TEM WHERE ID_No=? AND (I_No=? OR J_No=?)"
            " ORDER BY ID LIMIT 1",
            {idNo, node, node});
        if (!row.next()) return;
        const bool fromI = row.number(0) == node;
        const int far = row.number(fromI ? 1 : 0);
        const QString name = row.text(fromI ? 3 : 2);
        for (const Step& step : steps)
            if (step.node == far) return;
        steps.push_back({far, idNo});
        const int passes = sql::scalar({},
                                       "SELECT COUNT(*) FROM RLY_DUMRLY WHERE Valid=1 AND ((I_Name=? AND Side=1) OR"
                                       " (J_Name=? AND Side=2))",
                                       {name, name})
                               .toInt();
        if (passes == 0 && (row.number(4) != 3 || fromI)) return;
        sql::Query on;
        on.exec("SELECT ID_No FROM RLY_RRBRANCH_TEM WHERE (I_No=? OR J_No=?) AND ID_No!=? ORDER BY ID",
                {far, far, idNo});
        while (on.next()) walk(far, on.number(0), steps);
    }

    void take(int relay, int part, const Step& step, int otherType, int otherPart) {
        sql::Query places;
        places.exec(
            "SELECT ID_Name,I_Name,J_Name,I_No FROM RLY_RRBRANCH_TEM WHERE (I_No=? OR J_No=?) AND ID_No!=?"
            " AND (Flg=1 OR Flg=2 OR Flg=3) ORDER BY ID",
            {step.node, step.node, step.idNo});
        while (places.next()) {
            const int other = sql::scalar({},
                                          "SELECT RNo FROM RLY_RUD WHERE ID_Name=? AND I_Name=? AND J_Name=? AND Side=?"
                                          " AND RTypeNo=? ORDER BY RNo LIMIT 1",
                                          {places.text(0), places.text(1), places.text(2),
                                           places.number(3) == step.node ? 1 : 2, otherType},
                                          -1)
                                  .toInt();
            const QString relation = QString("%1,%2,%3,%4").arg(relay).arg(part).arg(other).arg(otherPart);
            if (other >= 0 && !relations.contains(relation)) relations << relation;
        }
    }
};

/// A network of a few nodes with everything a walk may meet: parallel lines, transformers of both kinds, shunts and
/// generators, virtual relays in use and not, and a case of relays on it.
class RandomStudy {
  public:
    /// \param sound  every relay's branch is there once
    explicit RandomStudy(unsigned seed, bool sound = true) : random_(seed), sound_(sound) {}

    bool store() {
        for (const char* table : {"RLY_RRBRANCH_TEM", "RLY_DUMRLY", "RLY_RUD", "RLY_CASEINF", "RLY_CASERLYCOP"})
            sql::Query().exec(QString("DELETE FROM ") + table);
        makeBranches();
        const bool stored =
            sql::insertRows({}, "RLY_RRBRANCH_TEM", {"ID_Name", "ID_No", "I_Name", "J_Name", "I_No", "J_No", "Flg"},
                            branches_) &&
            storeVirtualRelays() && storeRelays() && storeRules();
        BranchTable::invalidate();
        return stored;
    }

  private:
    int upTo(int last) { return std::uniform_int_distribution<int>(1, last)(random_); }
    bool chance(int percent) { return upTo(100) <= percent; }
    static QString nodeName(int node) { return QString("N%1").arg(node); }

    void branch(const QString& name, int number, int i, int j, int kind) {
        branches_.append({name, number, nodeName(i), nodeName(j), i, j, kind});
    }
    void makeBranches() {
        const int nodes = 4 + upTo(5);
        int number = 0;
        for (int k = 0; k < nodes + 5; ++k) {
            const int i = upTo(nodes), j = upTo(nodes);
            if (i == j || chance(15)) {
                branch(QString("G%1").arg(k), chance(50) ? 0 : ++number, i, i, 3 + upTo(3));
            } else {
                branch(QString("B%1").arg(k), ++number, i, j, upTo(2));
                if (chance(20)) branch(QString("P%1").arg(k), ++number, chance(50) ? i : j, chance(50) ? i : j, 1);
            }
        }
        for (int k = 0, count = upTo(2); k < count; ++k)
            for (int winding = 0; winding < 3; ++winding)
                branch(QString("T%1").arg(k), ++number, nodes + 1 + k, 1 + (k + winding) % nodes, 3);
        if (!sound_) branches_.append(branches_[upTo(int(branches_.size())) - 1]);
    }
    const QVariantList& anyBranch() { return branches_[upTo(int(branches_.size())) - 1]; }

    bool storeVirtualRelays() {
        QVector<QVariantList> rows;
        std::set<QStringList> taken;
        for (int k = 0; k < 4; ++k) {
            const QVariantList& at = anyBranch();
            const int side = upTo(2);
            if (!taken.insert({at[0].toString(), at[2].toString(), at[3].toString(), QString::number(side)}).second)
                continue;
            rows.append({at[0], at[2], at[3], side, chance(70) ? 1 : 0});
        }
        return sql::insertRows({}, "RLY_DUMRLY", {"ID_Name", "I_Name", "J_Name", "Side", "Valid"}, rows);
    }

    bool storeRelays() {
        QVector<QVariantList> relays, rules;
        const QStringList columns = {"Case_No", "TurnNo", "RNo", "PNo", "PValid", "RuleNo", "RValid"};
        for (int rNo = 1; rNo <= 30; ++rNo) {
            const QVariantList& at = anyBranch();
            const int kind = at[6].toInt();
            const int element = chance(4) ? 0 : kind == 1 ? 6 : kind < 4 ? 10 : kind;
            const QVariant name = !sound_ && chance(3) ? QVariant("gone") : at[0];
            relays.append({rNo, upTo(2), element, name, at[2], at[3], upTo(2)});
            for (int rule = 901; rule <= 904; ++rule)
                rules.append({1, rNo, rNo, upTo(3), chance(85) ? 1 : 0, rule, chance(85) ? 1 : 0});
        }
        return sql::insertRows({}, "RLY_RUD", {"RNo", "RTypeNo", "RType", "ID_Name", "I_Name", "J_Name", "Side"},
                               relays) &&
               sql::insertRows({}, "RLY_CASEINF", columns, rules);
    }

    bool storeRules() {
        sql::Query rules(tables::ruleConnection);
        bool good = rules.exec("DELETE FROM VARIN WHERE RuleNo>900 AND RuleNo<910") &&
                    rules.exec("DELETE FROM RULEINF WHERE RuleNo>900 AND RuleNo<910");
        for (int rule = 901; good && rule <= 904; ++rule) {
            good = rules.exec("INSERT INTO RULEINF (RuleNo,PRTypeNo) VALUES (?,?)", {rule, upTo(2)});
            for (int variable = 1; variable <= 3; ++variable)
                good = good && rules.exec("INSERT INTO VARIN (RuleNo,VarNo,VType) VALUES (?,?,?)",
                                          {rule, variable, chance(40) ? 1 : 398 + upTo(24)});
        }
        return good;
    }

    std::mt19937 random_;
    bool sound_;
    QVector<QVariantList> branches_;
};

double statements() {
    sql::Query query;
    return query.exec("SHOW STATUS LIKE 'Questions'") && query.next() ? query.real(1) : 0;
}

}  // namespace

class CoordinationWitness : public WorkflowFixture {
  protected:
    static QStringList stored() { return rows("SELECT RNo,PartNo,CoRNo,CoPartNo FROM RLY_CASERLYCOP"); }
};

TEST_F(CoordinationWitness, AgreesOnNetworksOfEveryKind) {
    int broken = 0, found = 0;
    for (unsigned seed = 1; seed <= 24; ++seed) {
        SCOPED_TRACE(seed);
        ASSERT_TRUE(RandomStudy(seed, seed % 4 != 0).store());
        errors.clear();
        Witness witness;
        const QStringList expected = witness.search();
        EXPECT_EQ(CoordinationSearch::SearchRlyCop(1), witness.whole);
        EXPECT_EQ(stored(), expected);
        EXPECT_EQ(errors, witness.whole ? QStringList() : QStringList("支路数据抽取错误"));
        broken += witness.whole ? 0 : 1;
        found += int(expected.size());
    }
    EXPECT_GE(broken, 3);  // what the networks were made for did occur
    EXPECT_LE(broken, 6);
    EXPECT_GT(found, 500);
}

TEST_F(CoordinationWitness, FindsWhatChangedSinceAndTakesAsManyStatementsForFewAsForManyRelays) {
    ASSERT_TRUE(RandomStudy(3).store());
    ASSERT_TRUE(CoordinationSearch::SearchRlyCop(1));
    ASSERT_TRUE(exec("INSERT INTO RLY_CASERLYCOP VALUES (2,1,1,1,1)"));
    ASSERT_GT(count("RLY_CASERLYCOP", "Case_No=1"), 3);
    ASSERT_TRUE(exec("UPDATE RLY_CASERLYCOP SET CoRNo=CoRNo+50 WHERE Case_No=1 LIMIT 1"));
    double before = statements();
    ASSERT_TRUE(CoordinationSearch::SearchRlyCop(1));
    const double many = statements() - before;
    const QStringList expected = Witness().search();
    EXPECT_EQ(rows("SELECT RNo,PartNo,CoRNo,CoPartNo FROM RLY_CASERLYCOP WHERE Case_No=1 ORDER BY 1,2,3,4").size(),
              expected.size());
    EXPECT_EQ(count("RLY_CASERLYCOP", "CoRNo>50"), 0);
    EXPECT_EQ(count("RLY_CASERLYCOP", "Case_No=2"), 1);
    ASSERT_TRUE(exec("DELETE FROM RLY_CASEINF WHERE RNo>4"));
    before = statements();
    ASSERT_TRUE(CoordinationSearch::SearchRlyCop(1));
    EXPECT_EQ(statements() - before, many);
}
