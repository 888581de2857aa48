#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <QFile>

#include "bench/RelayedProject.h"

namespace bench {

inline double processorSeconds(int who) {
    rusage usage{};
    getrusage(who, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           1e-6 * static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
}

inline double serverSeconds() {
    QFile id(serverFolder + "/server.pid");
    if (!id.open(QIODevice::ReadOnly)) return 0;
    QFile stat("/proc/" + QString::fromLatin1(id.readAll().trimmed()) + "/stat");
    if (!stat.open(QIODevice::ReadOnly)) return 0;
    const QList<QByteArray> fields = stat.readAll().split(' ');
    return (fields.value(13).toDouble() + fields.value(14).toDouble()) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

/// Processor time so far, in seconds, of the program, of the programs that it started and that have ended, and of the
/// database server; and the statements that this has had.
struct Usage {
    double module = processorSeconds(RUSAGE_SELF);
    double engine = processorSeconds(RUSAGE_CHILDREN);
    double server = serverSeconds();
    double statements = statementsOfServer();
};

}  // namespace bench
