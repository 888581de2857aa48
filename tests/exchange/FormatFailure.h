#pragma once

#include <string>

#include "exchange/TextFile.h"

namespace exchange {

/// The message of the FormatError that an action throws; "no error" when it throws none.
template <class Action>
std::string failureOf(Action action) {
    try {
        static_cast<void>(action());
    } catch (const FormatError& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace exchange
