#pragma once

#include "programs/frame/RelayTypes.h"

#include "programs/reports/BookRequest.h"
#include "programs/reports/CBookWriter.h"
#include "tests/flow/DemoStudy.h"

/// The demonstration study with books: runs of the real programs, and books compared with those that are kept.
class BookFixture : public DemoStudy {
  protected:
    void SetUp() override {
        DemoStudy::SetUp();
        places.programDir = MORVANE_BIN_DIR "/";
    }

    /// Relays 1 and 2, and one at every other end of a 220 kV line whose settings are given.
    void installRelays(int type) {
        installAt({"青白I", "白石"}, type);
        QVector<RelayRequest> requests;
        for (const Location& at : RelayStore::lineEnds(220)) requests.append({at, type, 240, 2200, {}});
        ASSERT_GT(RelayStore::install(requests), 10);
        exec("UPDATE RLY_RDZ SET NRdz11=1000+RNo,NRdz21=500+RNo,NRdz31=200+RNo WHERE RNo>2 AND Cdz='Idz'");
        exec("UPDATE RLY_RDZ SET NRdz11=10+RNo,NRdz21=20+RNo,NRdz31=40+RNo WHERE RNo>2 AND Cdz='Zdz'");
        exec("UPDATE RLY_RDZ SET NRdz11=0,NRdz21=0.5,NRdz31=1 WHERE RNo>2 AND Cdz='t'");
    }
    /// A case of relays 1 and 2, all parts, calculated whole: sensitivity parameters, then settings.
    void calculate(int type) {
        makeCase(type, {1, 2}, 1);
        ASSERT_TRUE(cases.LoadCaseRelays());
        CaseForm form = cases.form();
        form.PartFlg = {1, 1, 1, 1, 1};
        ASSERT_TRUE(cases.SaveRecord(1, form)) << errors.join('|').toStdString();
        ASSERT_TRUE(cases.setSensitivityModes({ModeStore::numberOf("最小方式")}));
        ASSERT_TRUE(cases.setOutages({1, 2}, {"龙石"}));
        ASSERT_EQ(start(), "ready") << errors.join('|').toStdString();
        RunSession session(*cases.current(), places);
        ASSERT_TRUE(session.open());
        ASSERT_EQ(run(session, RunSession::Sensitivity), "complete") << errors.join('|').toStdString();
        ASSERT_EQ(run(session, RunSession::Automatic), "complete") << errors.join('|').toStdString();
        ASSERT_EQ(session.failedSteps(), 0);
        ASSERT_TRUE(session.ensure());
    }

    static QDateTime noon() { return {QDate(2024, 3, 5), QTime(7, 8, 9, 120)}; }
    [[nodiscard]] CBookWriter writer(int caseNo, int type, const QString& name) const {
        return {caseNo, type, readRelayTypes().value(type).RTypeCode, name, &BookFixture::noon};
    }
    [[nodiscard]] QString file() const { return folder.path() + "/book.html"; }
    [[nodiscard]] BookRequest request(int caseNo, int type, bool sensitivity = false) const {
        return {caseNo,      type,          readRelayTypes().value(type).RTypeCode, "手工 <\"甲\" & '乙'>",
                sensitivity, places.workDir};
    }
    [[nodiscard]] QByteArray written() const {
        QFile file(places.workDir + "CalRef.ROT");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    /// What was written must be the kept book, byte for byte; the first line that differs is shown. With
    /// MORVANE_WRITE_GOLDEN=1 in the environment the kept books are written anew.
    void compare(const QString& name) const {
        const QString kept = MORVANE_SOURCE_DIR "/tests/reports/golden/" + name;
        if (qEnvironmentVariableIntValue("MORVANE_WRITE_GOLDEN") == 1) {
            QFile::remove(kept);
            ASSERT_TRUE(QFile::copy(places.workDir + "CalRef.ROT", kept));
        }
        QFile file(kept);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << kept.toStdString();
        const QList<QByteArray> is = written().split('\n'), should = file.readAll().split('\n');
        for (qsizetype k = 0; k < std::min(is.size(), should.size()); ++k)
            ASSERT_EQ(is[k], should[k]) << "line " << k + 1 << ": " << sql::fromGbk(is[k]).toStdString()
                                        << "instead of " << sql::fromGbk(should[k]).toStdString();
        EXPECT_EQ(is.size(), should.size());
    }
};
