#include <gtest/gtest.h>

#include <QCoreApplication>

#include "tests/frame/KilledSession.h"
#include "tests/frame/ServerFixture.h"

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (KilledSession::isAsked()) return KilledSession::waitToBeKilled();
    testing::InitGoogleTest(&argc, argv);
    const TestServer server;
    return server.runs() ? RUN_ALL_TESTS() : 1;
}
