#include <gtest/gtest.h>

#include <QCoreApplication>

#include "tests/platform/PrivateServer.h"

int main(int argc, char** argv) {
    const PrivateServer folders;
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
