#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cstdio>
#include <cstring>

#include "platform/server/Server.h"

// As "--client" the program is one more client of the server: it says so and stays until its input ends.
static int beClient() {
    QString error;
    const auto hold = server::Hold::acquire(&error);
    std::puts(hold ? "joined" : qPrintable(error));
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return hold ? 0 : 1;
}

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], "--client") == 0) return beClient();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
