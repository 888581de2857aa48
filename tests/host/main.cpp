#include <gtest/gtest.h>

#include <QCoreApplication>
#include <iostream>

#include "platform/server/Server.h"
#include "tests/platform/PrivateServer.h"

int main(int argc, char** argv) {
    const PrivateServer folders;
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    QString error;
    const auto hold = server::Hold::acquire(&error);
    if (!hold) std::cerr << error.toStdString() << '\n';
    return hold ? RUN_ALL_TESTS() : 1;
}
