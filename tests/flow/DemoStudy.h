#pragma once

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <optional>

#include "platform/host/BaseTables.h"
#include "platform/import/Import.h"
#include "platform/rtdb/dbDatabase.h"
#include "platform/sql/Sql.h"
#include "programs/frame/ProjectStore.h"
#include "programs/frame/RuleLibrary.h"
#include "programs/model/RelayStore.h"
#include "programs/netview/VirtualRelays.h"
#include "programs/study/ModeStore.h"
#include "programs/workflow/RunSession.h"
#include "tests/frame/ServerFixture.h"

/// A project on the demonstration network with its modes and virtual relays. Working directory and programs lie in a
/// folder of the test, which puts the programs there.
class DemoStudy : public ServerFixture {
  protected:
    void SetUp() override {
        ServerFixture::SetUp();
        QString error;
        ASSERT_TRUE(RuleLibrary::load(MORVANE_SOURCE_DIR "/data/rules", tables::ruleConnection, &error))
            << error.toStdString();
        ASSERT_TRUE(host::createBaseTables());
        import::Report report;
        const host::NetworkModel model = import::read(MORVANE_SOURCE_DIR "/data/networks/demo", {}, report);
        ASSERT_TRUE(host::storeNetwork(model) && ModeStore::saveImported(model.modes));
        ASSERT_TRUE(SearchDumRelay());
        const Project project{"P", folder.path() + "/", "RTDB"};
        for (const QString& name : {QString("Temp"), QString("bin"), project.realTimeName})
            ASSERT_TRUE(QDir(folder.path()).mkpath(name));
        ASSERT_TRUE(realTime.open(project.realTimeFile()));
        places = {project.realTimeName, project.realTimePath(), project.workDirectory(), folder.path() + "/bin/"};
        errors.clear();
    }

    /// A program of these shell lines.
    void program(const QString& name, const QByteArray& script) const {
        QFile::remove(places.programDir + name);
        QFile file(places.programDir + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script + "\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    static void exec(const QString& text, const QVariantList& values = {}) {
        ASSERT_TRUE(sql::Query().exec(text, values)) << text.toStdString();
    }
    static Location place(const char* line, int side) { return RelayStore::placesOf(line, side, 6).value(0); }

    /// Relays at one end of each of the lines.
    static void installAt(const QStringList& lines, int type) {
        QVector<RelayRequest> requests;
        for (const QString& line : lines) requests.append({place(line.toUtf8(), 1), type, 240, 2200, {}});
        ASSERT_EQ(RelayStore::install(requests), lines.size());
    }
    /// The case 1 of these relays with one part, or with some.
    void makeCase(int type, const QVector<int>& relays, int part) { makeCase(type, relays, QVector<int>{part}); }
    void makeCase(int type, const QVector<int>& relays, const QVector<int>& parts) {
        CaseForm form;
        form.name = "演示";
        form.source = "基础方案";
        form.bigSys = {ModeStore::numberOf("最大方式")};
        form.smallSys = {ModeStore::numberOf("最小方式")};
        form.PartFlg = {};
        for (const int part : parts) form.PartFlg[size_t(part - 1)] = 1;
        cases.insert(type, 0, -1, form.source);
        ASSERT_TRUE(cases.addRelays(form, relays) && cases.SaveRecord(1, form));
    }

    /// How a start or a run ended: "ready" or "complete", "failed" or "broken", "waiting" for the
    /// user, "refused" at once, "never".
    /// \param abortAt  progress at which the start is aborted, when its program runs
    QString start(int abortAt = 101) {
        CalculationStart made(cases, network, places, 2);
        QEventLoop loop;
        QString ended = "never";
        const auto leave = [&](const char* how) {
            ended = how;
            loop.quit();
        };
        QObject::connect(&made, &CalculationStart::ready, &loop, [&] { leave("ready"); });
        QObject::connect(&made, &CalculationStart::failed, &loop, [&] { leave("failed"); });
        QObject::connect(&made, &CalculationStart::progress, &loop, [&](int percent) {
            if (percent >= abortAt) QTimer::singleShot(100, &made, &CalculationStart::abort);
        });
        return wait(loop, made.start()) ? ended : QString("refused");
    }
    static QString run(RunSession& session, RunSession::Run kind, int abortAfter = -1) {
        QEventLoop loop;
        QString ended = "never";
        const auto link = QObject::connect(&session, &RunSession::finished, &loop, [&](bool complete) {
            ended = complete ? "complete" : "broken";
            loop.quit();
        });
        const auto shown = QObject::connect(&session, &RunSession::partShown, &loop, [&] {
            ended = "waiting";
            loop.quit();
        });
        if (abortAfter >= 0) QTimer::singleShot(abortAfter, &session, &RunSession::abort);
        const bool started = wait(loop, session.start(kind));
        QObject::disconnect(link);
        QObject::disconnect(shown);
        return started ? ended : QString("refused");
    }

    QTemporaryDir folder;
    dbDatabase realTime;
    NetworkSource network{realTime};
    CalculationPlaces places;
    CaseStore cases;

  private:
    static bool wait(QEventLoop& loop, bool started) {
        if (!started) return false;
        QTimer::singleShot(20000, &loop, &QEventLoop::quit);
        loop.exec();
        return true;
    }
};
