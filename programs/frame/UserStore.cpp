#include "programs/frame/UserStore.h"

#include "platform/sql/Sql.h"

namespace {

constexpr char kUser[] = "Administrator";
constexpr int kRight = 1;

/// What the table holds. A password is compared here, by each character: the server passes over blanks at its end.
struct User {
    bool known = false;  ///< the table could be read
    bool hasPassword = false;
    QString password;
    int right = kRight;
};

User readUser() {
    User user;
    sql::Query query;
    user.known = query.exec("SELECT User_PassWord,User_PurView FROM RLY_RLYUSER");
    user.hasPassword = user.known && query.next();
    if (!user.hasPassword) return user;
    user.password = query.text(0);
    user.right = query.number(1);
    return user;
}

// Quiet: the message of a failed statement shows its values.
bool store(const QString& password) {
    sql::Transaction transaction;
    sql::Query query;
    query.quietly();
    if (!query.exec("DELETE FROM RLY_RLYUSER")) return false;
    if (!password.isEmpty() &&
        !query.exec("INSERT INTO RLY_RLYUSER (User_Name,User_PurView,User_PassWord ) VALUES(?,?,?)",
                    {QString(kUser), kRight, password}))
        return false;
    return transaction.commit();
}

}  // namespace

std::optional<int> UserStore::logIn(const QString& password) {
    const User user = readUser();
    if (!user.known || password != user.password) return std::nullopt;
    return user.right;
}

UserStore::Change UserStore::change(const QString& oldPassword, const QString& newPassword,
                                    const QString& confirmation) {
    const User user = readUser();
    if (!user.known) return Change::Failed;
    if (user.hasPassword && oldPassword != user.password) return Change::WrongOld;
    if (!newPassword.isEmpty() && newPassword.size() != passwordLength) return Change::WrongLength;
    if (newPassword != confirmation) return Change::Differ;
    if (!sql::whyNotStorable(newPassword, passwordLength).isEmpty()) return Change::NotStorable;
    return store(newPassword) ? Change::Done : Change::Failed;
}
