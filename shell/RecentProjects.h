#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QString>
#include <QVector>

class QSettings;

namespace shell {

/// What the start page tells of a project without opening it.
struct NetworkSummary {
    Q_DECLARE_TR_FUNCTIONS(shell::NetworkSummary)
  public:
    int buses = 0, lines = 0, transformers = 0, generators = 0, relays = 0, cases = 0;
    double highestKv = 0;

    /// Counted in the databases of the open project.
    static NetworkSummary ofOpenProject();
    /// One line; that there is no network when there is none.
    [[nodiscard]] QString text() const;
};

struct RecentProject {
    QString name;
    QDateTime opened;
    NetworkSummary summary;
};

/// The projects opened last, the newest first, kept in the settings.
class RecentProjects {
  public:
    explicit RecentProjects(QSettings& store) : store_(store) {}
    [[nodiscard]] QVector<RecentProject> list() const;
    void put(const QString& name, const NetworkSummary& summary);
    void remove(const QString& name);

  private:
    void write(const QVector<RecentProject>& projects);

    QSettings& store_;
};

}  // namespace shell
