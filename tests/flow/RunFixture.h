#pragma once

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <functional>

#include "tests/flow/DemoStudy.h"

/// Zero-sequence relays 1 to 4 on 青龙, 龙平, 龙石, 平石 of the demonstration, of which 1 coordinates with 2 and 3, and
/// 2 with 4; a case with their parts 1 and 2, started. The engine is the real one, behind a script that a test may
/// spoil from a certain engine run on.
class RunFixture : public DemoStudy {
  protected:
    void SetUp() override {
        DemoStudy::SetUp();
        for (const char* name : {"VASKEL.EXE", "QORDEN.EXE"})
            ASSERT_TRUE(QFile::link(QString(MORVANE_BIN_DIR "/") + name, places.programDir + name));
        mend();
        installAt({"青龙", "龙平", "龙石", "平石"}, 3);
        makeCase(3, {1, 2, 3, 4}, QVector<int>{1, 2});
        ASSERT_TRUE(cases.setSensitivityModes({ModeStore::numberOf("最小方式")}));
        ASSERT_EQ(start(), "ready") << said();
        said();
    }
    void mend() const { program("HALDERN.EXE", "exec " MORVANE_BIN_DIR "/HALDERN.EXE"); }
    /// The engine does something else from its `run`th run on, counted from now.
    void spoil(const QByteArray& script, int run = 1, const QByteArray& until = "") const {
        QFile::remove(places.workDir + "runs");
        program("HALDERN.EXE", "echo >> runs; n=$(wc -l < runs)\nif [ $n -ge " + QByteArray::number(run) + " ]" +
                                   until + "; then\n" + script + "\nfi\nexec " MORVANE_BIN_DIR "/HALDERN.EXE");
    }
    void spoilOnly(const QByteArray& script, int run) const {
        spoil(script, run, " && [ $n -le " + QByteArray::number(run) + " ]");
    }
    std::string said() {
        const std::string all = errors.join('|').toStdString();
        errors.clear();
        return all;
    }
    std::unique_ptr<RunSession> session() {
        auto made = std::make_unique<RunSession>(*cases.current(), places);
        EXPECT_TRUE(made->open());
        return made;
    }
    static bool waitFor(const std::function<bool()>& holds, int ms = 20000) {
        QElapsedTimer clock;
        for (clock.start(); !holds();) {
            if (clock.elapsed() > ms) return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
        return true;
    }
    static bool becomes(const RunSession& run, RunSession::State state) {
        return waitFor([&] { return run.state() == state; });
    }
    /// The rows of all tables that a run writes, without the counters that only tell the order of their making.
    static std::string tables(const QString& condition = "1=1") {
        QStringList all;
        for (const auto& table : RunShadows::tables()) {
            const QString of = table.base == "RLY_RLYOBJ_TEM" ? QString("1=1") : condition;
            all << table.base << rowsOf(table.base, of);
        }
        return all.join('\n').toStdString();
    }
    static QStringList rowsOf(const QString& table, const QString& condition = "1=1") {
        const QString columns =
            sql::scalar({},
                        "SELECT GROUP_CONCAT(CONCAT('`',COLUMN_NAME,'`')) FROM information_schema.COLUMNS WHERE"
                        " TABLE_SCHEMA=DATABASE() AND TABLE_NAME=? AND COLUMN_NAME!='ID'",
                        {table})
                .toString();
        QStringList rows;
        sql::Query query;
        EXPECT_TRUE(query.exec("SELECT CONCAT_WS(','," + columns + ") FROM " + table + " WHERE " + condition));
        while (query.next()) rows << query.text(0);
        rows.sort();
        return rows;
    }
    static QString value(const QString& text, const QVariantList& values = {}) {
        return sql::scalar({}, text, values, "-").toString();
    }
    static double setting(int rno, int part, const char* cdz = "Idz") {
        return sql::scalar({}, "SELECT NDz" + QString::number(part) + "1 FROM RLY_RLYOBJ_TEM WHERE RNo=? AND Cdz=?",
                           {rno, cdz})
            .toDouble();
    }
    static double result(int rno, int rule, const char* cdz = "Idz") {
        return sql::scalar({}, "SELECT Rdz FROM RLY_RDZTEM WHERE RNo=? AND RuleNo=? AND Cdz=? AND Case_No=1",
                           {rno, rule, cdz})
            .toDouble();
    }
};
