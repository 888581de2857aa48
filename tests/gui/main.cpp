#include <gtest/gtest.h>

#include <QApplication>

#include "platform/server/Server.h"
#include "tests/platform/PrivateServer.h"

/// Windows without a screen, on a server and in folders of their own.
int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const PrivateServer folders;
    QApplication application(argc, argv);
    QString error;
    const auto hold = server::Hold::acquire(&error);
    if (!hold) ADD_FAILURE() << error.toStdString();
    return hold ? RUN_ALL_TESTS() : 1;
}
