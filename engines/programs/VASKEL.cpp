// The network converter: RTDB.INC tells where the real-time tables are; they become the network files.

#include <cstdio>
#include <exception>

#include "engines/network/RealTimeReader.h"
#include "exchange/FileNames.h"
#include "exchange/RealTimeNameFile.h"
#include "exchange/TextFile.h"

int main() {
    try {
        const auto name = exchange::parseRealTimeName(exchange::readAll(exchange::file::kRealTimeName),
                                                      exchange::file::kRealTimeName);
        exchange::writeNetwork(".", engines::readRealTimeTables(exchange::realTimeFile(name)));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
