#pragma once

#include <QString>
#include <optional>

/// The module's one user and the password that opens it. No statement that holds a password is ever shown.
namespace UserStore {

inline constexpr int passwordLength = 6;

/// The right of the user whose password this is. With no password set an empty entry has the right 1.
/// \return nothing for a wrong password, and when the database cannot be asked
std::optional<int> logIn(const QString& password);

enum class Change { Done, WrongOld, WrongLength, Differ, NotStorable, Failed };
/// Sets the password, or clears it when both new texts are empty. The old one is looked at only when one is set.
Change change(const QString& oldPassword, const QString& newPassword, const QString& confirmation);

}  // namespace UserStore
