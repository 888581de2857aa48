#include <gtest/gtest.h>

#include <QCoreApplication>

#include "tests/frame/ServerFixture.h"

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    const TestServer server;
    return server.runs() ? RUN_ALL_TESTS() : 1;
}
