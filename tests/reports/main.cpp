#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/server/Server.h"
#include "tests/platform/PrivateServer.h"

/// The server is held for the whole run, so that the programs that are called find it running.
int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    const PrivateServer folders;
    QString error;
    const auto hold = server::Hold::acquire(&error);
    if (!hold) ADD_FAILURE() << error.toStdString();
    return hold ? RUN_ALL_TESTS() : 1;
}
