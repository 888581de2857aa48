#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>

#include "platform/sql/CopySession.h"

/// The shadow copies of the tables that a dialog may change: OK drops them, Cancel takes the tables back from them.
/// Nesting: the shadow of an inner session has a longer suffix and is taken from what the outer one has changed.
/// Destroyed while open, it counts as left behind.
class EditSession {
  public:
    struct Table {
        QString base;
        int code = 0;      ///< of the base table
        QString suffix{};  ///< of this table's shadow; empty: that of the session
    };
    /// \param owner  name of the dialog's class; a leftover is told by it
    EditSession(const QString& owner, const QVector<Table>& tables, const QString& suffix);

    /// Makes every shadow anew; those that a crashed session left behind are replaced, those of an open one are not.
    /// All or nothing.
    /// \param consequence  what cannot be done now, for the message
    /// \return false when a table cannot be copied; the dock then has "建立" + shadow + "表失败" + consequence
    bool open(const QString& consequence = {});
    /// OK.
    bool commit();
    /// Cancel: all tables back in one transaction per connection, only when every shadow is there; then the shadows go.
    /// On failure, which is told in the dock, tables and shadows stay as they are.
    bool restore();
    [[nodiscard]] bool isOpen() const { return copies_.isOpen(); }

    /// What a dialog left behind that ended without OK or Cancel.
    struct Leftover {
        QString owner;
        QDateTime opened;
        QStringList tables;  ///< base tables
        QString suffix;
        QVector<sql::CopyMark> marks;
    };
    /// The outermost first. Shadows of an interrupted opening or ending, which nobody needs, are dropped on the way.
    /// Sessions that another program has open are none.
    static QVector<Leftover> leftovers();
    /// Takes the tables of a leftover back, and of those opened inside it, which are none any more; or keeps the edits.
    /// The shadows go.
    static bool goBack(const Leftover& leftover);
    static bool keep(const Leftover& leftover);
    /// A sentence for the user: which window, opened when, and which tables.
    static QString describe(const Leftover& leftover);

  private:
    sql::CopySession copies_;
};
