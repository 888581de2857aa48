#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>

/// The shadow copies of the tables that a dialog may change: OK drops them, Cancel takes the tables back from them.
/// Nesting: the shadow of an inner session has a longer suffix and is taken from what the outer one has changed.
class EditSession {
  public:
    struct Table {
        QString base;
        int code = 0;      ///< of the base table
        QString suffix{};  ///< of this table's shadow; empty: that of the session
    };
    /// \param owner  name of the dialog's class; a leftover is told by it
    EditSession(QString owner, QVector<Table> tables, QString suffix);

    /// Makes every shadow anew; one that a crashed session left behind is replaced. All or nothing.
    /// \return false when a table cannot be copied; the dock then has "建立" + table + the reason
    bool open();
    /// OK.
    bool commit();
    /// Cancel: all tables back in one transaction per connection, only when every shadow is there; then the shadows go.
    bool restore();
    [[nodiscard]] bool isOpen() const { return open_; }

    /// What sessions left behind that ended without OK or Cancel; the outermost first.
    struct Leftover {
        QString owner;
        QDateTime opened;
        QStringList tables;  ///< base tables
        QString suffix;
    };
    static QVector<Leftover> leftovers();
    /// Takes the tables of a leftover back, or keeps the edits; its shadows go in both cases.
    static bool goBack(const Leftover& leftover);
    static bool keep(const Leftover& leftover);

  private:
    QString owner_;
    QVector<Table> tables_;
    QString suffix_;
    bool open_ = false;
};
