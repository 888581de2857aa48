#include "platform/sql/CopySession.h"

#include <QSqlDatabase>
#include <QUuid>
#include <algorithm>

#include "platform/sql/Sql.h"

namespace sql {

namespace {

const QString kSign = QStringLiteral("morvane-session");

QString lockName(const QString& id) { return "morvane edit " + id; }

QString textOf(const CopyMark& mark) {
    QStringList pairs;
    for (const TableCopy& copy : mark.copies) pairs << copy.base + ':' + copy.copy;
    return QStringList{kSign,          mark.id, mark.owner, mark.suffix, mark.opened.toString(Qt::ISODateWithMs),
                       pairs.join(',')}
        .join('|');
}

CopyMark markFrom(const QString& text, const QString& connection) {
    const QStringList parts = text.split('|');
    if (parts.size() != 6) return {};
    CopyMark mark{parts[1], parts[2], parts[3], QDateTime::fromString(parts[4], Qt::ISODateWithMs), {}};
    for (const QString& pair : parts[5].split(','))
        mark.copies << TableCopy{connection, pair.section(':', 0, 0), pair.section(':', 1)};
    return mark;
}

template <class Field>
bool share(const QVector<TableCopy>& some, const QVector<TableCopy>& others, Field field) {
    return std::any_of(some.begin(), some.end(), [&](const TableCopy& one) {
        return std::any_of(others.begin(), others.end(), [&](const TableCopy& other) {
            return one.*field == other.*field && one.connection == other.connection;
        });
    });
}

}  // namespace

QVector<CopyMark> CopyMark::on(const QString& connection) {
    QVector<CopyMark> marks;
    Query query(connection);
    if (!query.exec("SELECT TABLE_COMMENT FROM information_schema.TABLES WHERE TABLE_SCHEMA=DATABASE() AND TABLE_NAME"
                    " LIKE '%\\_TEM%' AND TABLE_COMMENT LIKE ?",
                    {kSign + "|%"}))
        return {};
    while (query.next())
        if (const CopyMark mark = markFrom(query.text(0), connection); !mark.copies.isEmpty()) marks << mark;
    std::stable_sort(marks.begin(), marks.end(),
                     [](const CopyMark& a, const CopyMark& b) { return a.opened < b.opened; });
    return marks;
}

bool CopyMark::isHeld() const {
    return !scalar(copies.first().connection, "SELECT IS_USED_LOCK(?)", {lockName(id)}).isNull();
}

bool CopyMark::sharesCopiesWith(const QVector<TableCopy>& others) const {
    return share(copies, others, &TableCopy::copy);
}

bool CopyMark::sharesBasesWith(const QVector<TableCopy>& others) const {
    return share(copies, others, &TableCopy::base);
}

CopySession::CopySession(QString owner, QString suffix, QVector<TableCopy> copies)
    : mark_{QUuid::createUuid().toString(QUuid::Id128), std::move(owner), std::move(suffix), {}, std::move(copies)} {}

CopySession::~CopySession() {
    if (open_) release();
}

void CopySession::release() const {
    const QString connection = mark_.copies.first().connection;
    if (connection.isEmpty() ? QSqlDatabase::contains() : QSqlDatabase::contains(connection))
        scalar(connection, "SELECT RELEASE_LOCK(?)", {lockName(mark_.id)});
}

bool CopySession::clearTheWay(QString* failed) const {
    QStringList connections;
    for (const TableCopy& copy : mark_.copies) connections << copy.connection;
    connections.removeDuplicates();
    for (const QString& connection : std::as_const(connections))
        for (const CopyMark& other : CopyMark::on(connection)) {
            if (!other.sharesCopiesWith(mark_.copies)) continue;
            *failed = other.copies.first().copy;
            if (other.isHeld() || !dropCopies(other.copies)) return false;
        }
    *failed = mark_.copies.first().copy;
    return dropCopies(mark_.copies);
}

bool CopySession::makeAll(const Maker& make, QString* failed) const {
    for (const TableCopy& copy : mark_.copies) {
        *failed = copy.copy;
        if (!make(copy)) return false;
    }
    const TableCopy& first = mark_.copies.first();
    *failed = first.copy;
    return scalar(first.connection, "SELECT GET_LOCK(?,0)", {lockName(mark_.id)}, 0).toInt() == 1 &&
           Query(first.connection).exec("ALTER TABLE " + quotedName(first.copy) + " COMMENT=?", {textOf(mark_)});
}

bool CopySession::open(const Maker& make, QString* failed) {
    if (open_ || mark_.copies.isEmpty() || !clearTheWay(failed)) return false;
    mark_.opened = QDateTime::currentDateTimeUtc();
    open_ = makeAll(make, failed);
    if (open_) return true;
    release();
    dropCopies(mark_.copies);
    return false;
}

bool CopySession::end() {
    open_ = !dropCopies(mark_.copies);
    if (!open_) release();
    return !open_;
}

bool CopySession::commit() { return open_ && end(); }

bool CopySession::restore() {
    if (!open_ || !restoreCopies(mark_.copies)) return false;
    end();  // copies that could not be dropped hold what the tables hold
    return true;
}

}  // namespace sql
