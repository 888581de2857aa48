#pragma once

#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

/// The one way to a database: texts as given, values bound, failures told in the dock.
namespace sql {

/// Runs one statement on a named connection and steps through its rows.
class Query {
  public:
    /// \param connection  name of a registered connection; empty is the default connection
    explicit Query(const QString& connection = {});

    /// Runs a text; each "?" takes the next value, escaped by the driver. The statement goes to the server as one text.
    /// \return false on failure; the dock then has the server's message and the statement (see quietly()). A number
    /// that is not finite is a failure. When the server is gone that is told once, and the next statement tries to
    /// reach it anew.
    bool exec(const QString& text, const QVariantList& values = {});
    /// From now on failures are only returned, not told; the loss of the server is always told.
    Query& quietly();

    bool next();
    [[nodiscard]] int size() const;
    /// Column of the current row as text; BINARY columns, which the driver gives as bytes, come as text too.
    [[nodiscard]] QString text(int column) const;
    [[nodiscard]] int number(int column) const;
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] bool isNull(int column) const;
    /// The text form of a column as the driver gives it, doubles in their shortest form ("0.8", "9999999.999999").
    [[nodiscard]] QString raw(int column) const;
    [[nodiscard]] QString errorText() const;
    /// The underlying query, for callers that seek or keep a cursor.
    QSqlQuery& cursor() { return query_; }

  private:
    bool fail(const QString& reason, const QString& statement);

    QSqlQuery query_;
    QString connection_;
    QString error_;
    bool quiet_ = false;
};

/// How often this program has lost a connection. Work of many statements that sees it change has missed some of them.
int losses();

/// First column of the first row, or the fallback.
QVariant scalar(const QString& connection, const QString& text, const QVariantList& values = {},
                const QVariant& fallback = {});

/// A transaction that rolls back unless commit() succeeded. One inside another joins it: what the inner one does not
/// commit, the outer one cannot. CREATE, DROP, TRUNCATE and ALTER commit by themselves and have no place inside.
class Transaction {
  public:
    explicit Transaction(const QString& connection = {});
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    bool commit();

  private:
    QString connection_;
    bool open_ = false;
};

/// A table as one list of its columns, which feeds creation, inserts and checks.
struct Column {
    QString name;
    QString type;            ///< e.g. "int(8) unsigned", "char(20) BINARY", "double(13,6)"
    QString defaultValue{};  ///< SQL text; empty: 0 for numbers, '' for text
    bool nullable = false;
    bool autoIncrement = false;
    [[nodiscard]] QString definition() const;  ///< name, type and default, as CREATE and ALTER TABLE take them
};
struct Layout {
    QString name;
    QVector<Column> columns{};
    QStringList keys{};                         ///< "PRIMARY KEY(RNo)", "INDEX(ID_Name,I_Name)"
    [[nodiscard]] QString columnsText() const;  ///< the bracketed text behind CREATE TABLE <name>
    [[nodiscard]] QStringList columnNames() const;
};

/// Inserts many rows by as few statements as the server's packet size allows. All rows have the same columns.
bool insertRows(const QString& connection, const QString& table, const QStringList& columns,
                const QVector<QVariantList>& rows);

/// Why a text cannot be stored in a char(n) column of a gbk database: too long, a character outside GBK, trailing
/// blanks, a control character. \return an empty string when it can.
QString whyNotStorable(const QString& text, int maxLength);

/// Text to GBK bytes and back, in one place for files and the real-time tables.
QByteArray toGbk(const QString& text);
QString fromGbk(const QByteArray& bytes);
bool fitsGbk(const QString& text);
/// The longest beginning of a text that takes at most so many bytes in GBK.
QString cutToGbk(const QString& text, int bytes);

/// What stands in the brackets of an IN; no row has the -1 that stands there alone.
QString numberList(const QVector<int>& numbers);

/// An identifier (database, table) in backticks.
QString quotedName(const QString& name);

}  // namespace sql
