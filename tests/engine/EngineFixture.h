#pragma once

#include <QFile>
#include <QSqlRecord>
#include <QTemporaryDir>

#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/RowCursor.h"
#include "tests/frame/ServerFixture.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QByteArray& bytes, std::ostream* out) { *out << sql::fromGbk(bytes).toStdString(); }

/// A project with a small network in the branch table and a working directory.
///
///   A(2) --L1-- B(3) --L2-- C(4)        L3 is parallel to L1, T1 a transformer B-D(5), W1 a winding with star S(6) and
///    \---L3----/  \--T1-- D(5)          node C, G1 a generator at A, R1 a reactor at C.
class EngineFixture : public ServerFixture {
  protected:
    void SetUp() override {
        ServerFixture::SetUp();
        branch("L1", 1, "A", 2, "B", 3, 1);
        branch("L2", 2, "B", 3, "C", 4, 1);
        branch("L3", 3, "A", 2, "B", 3, 1);
        branch("T1", 4, "B", 3, "D", 5, 2);
        branch("W1", 5, "S", 6, "C", 4, 3);
        branch("R1", 6, "C", 4, "C", 4, 5);
        branch("G1", 0, "A", 2, "A", 2, 6);
    }

    void branch(const QString& id, int idNo, const QString& i, int iNo, const QString& j, int jNo, int flg) {
        run("INSERT INTO RLY_RRBRANCH_TEM (ID_Name,ID_No,I_Name,J_Name,I_No,J_No,Flg) VALUES (?,?,?,?,?,?,?)",
            {id, idNo, i, j, iNo, jNo, flg});
        BranchTable::invalidate();
    }
    void virtualRelay(const QString& id, const QString& i, const QString& j, int side) {
        run("INSERT INTO RLY_DUMRLY (Valid,RTypeNo,ID_Name,I_Name,J_Name,Side) VALUES (1,0,?,?,?,?)", {id, i, j, side});
        BranchTable::invalidate();
    }
    void relay(int rno, int type, int rType, const QString& id, const QString& i, const QString& j, int side) {
        run("INSERT INTO RLY_RUD (Valid,RNo,RTypeCode,RTypeNo,RType,ID_Name,I_Name,J_Name,Side,CTPri,CTSec,PTPri,PTSec)"
            " VALUES (1,?,'距离保护',?,?,?,?,?,?,1,120,2200,1)",
            {rno, type, rType, id, i, j, side});
    }
    /// A working setting of a relay of the case, part values 1.5, 2.5 .. for `first` 1.5.
    void working(int rno, int dzNo, const QString& cdz, double first, const QString& id, const QString& i,
                 const QString& j, int side) {
        run("INSERT INTO RLY_RLYOBJ_TEM (TurnNo,RNo,ID_Name,I_Name,J_Name,Side,NPart,DzNo,Cdz,NDz11,NDz21,NDz31,NDz41,"
            "NDz51) VALUES (1,?,?,?,?,?,2,?,?,?,?,?,?,?)",
            {rno, id, i, j, side, dzNo, cdz, first, first + 1, first + 2, first + 3, first + 4});
    }
    void settingRow(int caseNo, int rno, int pno, int ruleNo, const QString& cdz, int prType, const QString& id,
                    const QString& i, const QString& j, int side) {
        run("INSERT INTO RLY_RDZTEM (Case_No,RNo,ID_Name,I_Name,J_Name,Side,PNo,Cdz,RuleNo,PRTypeNo) VALUES "
            "(?,?,?,?,?,?,?,?,?,?)",
            {caseNo, rno, id, i, j, side, pno, cdz, ruleNo, prType});
    }

    void run(const QString& text, const QVariantList& values = {}) { ASSERT_TRUE(sql::Query().exec(text, values)); }
    void rule(const QString& text, const QVariantList& values = {}) {
        ASSERT_TRUE(sql::Query(tables::ruleConnection).exec(text, values));
    }
    void ruleHead(int ruleNo, int sFlg, int prType) {
        rule("INSERT INTO RULEINF (RuleNo,Note,SFlg,PRTypeNo) VALUES (?,?,?,?)",
             {ruleNo, "原则" + QString::number(ruleNo), sFlg, prType});
    }
    void relayType(int type, int rType, int nPart, const QString& cdz, int dzNo, int vType) {
        rule(
            "INSERT INTO RTYPE (RTypeNo,RTypeCode,RType,NPart,DzNo,Cdz,VType,DspCdz) VALUES (?,'距离保护',?,?,?,?,?,?)",
            {type, rType, nPart, dzNo, cdz, vType, cdz});
    }
    /// A template fault of a rule's mode 1.
    void templateFault(int patNo, int lType, int kLoc, int fType) {
        rule("INSERT INTO RPRM (PatNo,MType,LType,K_Loc,FType,R,x) VALUES (?,1,?,?,?,0,0.25)",
             {patNo, lType, kLoc, fType});
    }

    /// Rows of a query, columns joined by blanks.
    static QStringList rows(const QString& text) {
        QStringList all;
        sql::Query q;
        if (!q.exec(text)) return {"failed"};
        while (q.next()) {
            QStringList columns;
            for (int k = 0; k < q.cursor().record().count(); ++k) columns << q.raw(k);
            all << columns.join(' ');
        }
        return all;
    }

    [[nodiscard]] QString workDir() const { return folder_.path() + "/"; }
    [[nodiscard]] QByteArray file(const QString& name) const {
        QFile f(workDir() + name);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("absent");
    }
    void put(const QString& name, const QByteArray& text) const {
        QFile f(workDir() + name);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(text);
    }

  private:
    QTemporaryDir folder_;
};
