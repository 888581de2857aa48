#pragma once

#include <QString>
#include <QStringList>
#include <memory>

/// The database server of the product: its own MariaDB below the user's data folder, reached through a Unix socket, or
/// another one that the settings file names.
namespace server {

/// Version of the layout of databases and of the server's data directory; a newer one is refused.
inline constexpr int layoutVersion = 1;

struct Settings {
    bool embedded = true;
    QString host;
    int port = 3306;
    QString user;
    QString password;
    QString socket;   ///< Unix socket of the server in use, when it has one
    QString program;  ///< path of the server program, when it is not in a usual place
};

/// Reads the settings file, `<config folder>/morvane/server.ini` ([server] host, port, user, password, socket,
/// program). Without a host and a socket the embedded server is meant. Lines are `name = value`, the value as it
/// stands. \param error  set to one sentence when the file cannot be understood
Settings readSettings(QString* error);

/// Holds the server in use for the life of the object. The first holder of all programs starts the embedded server,
/// and it stops when the last one ends, however that one ends.
class Hold {
  public:
    ~Hold();
    /// Also makes the server the current one (setCurrent).
    /// \return null on failure, with one clear sentence in `error`
    static std::unique_ptr<Hold> acquire(QString* error);
    [[nodiscard]] const Settings& settings() const;

  private:
    Hold();
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

/// Where databases are: used by the one place that opens connections.
void setCurrent(const Settings& settings);
const Settings& current();

/// Opens a connection: maps the driver name "QMYSQL3", adds socket, character set and SQL mode, refuses a database of a
/// newer layout. The only place in the system that calls QSqlDatabase::addDatabase. Empty user, password and host take
/// those of the current settings. A connection of the same name is replaced.
/// \param connection  empty: the default connection
/// \return false with the reason in `error`; no connection is left registered then
bool openConnection(const QString& driver, const QString& database, const QString& connection, const QString& user,
                    const QString& password, const QString& host, QString* error);

/// Opens a registered connection again after it was lost, starting the embedded server anew when that one died.
bool reopenConnection(const QString& connection, QString* error);

/// Closes and removes a connection; nothing when there is none of this name.
void closeConnection(const QString& connection);

/// Whether connections of this driver name can be made.
bool hasDriver(const QString& driver);

/// What to write behind CREATE DATABASE <name>: character set and layout version.
QString databaseOptions();

/// Marks databases as complete, or as being filled: openConnection() refuses the latter, so that a killed program
/// leaves nothing that looks whole.
bool markDatabases(const QString& connection, const QStringList& names, bool complete);

}  // namespace server
