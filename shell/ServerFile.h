#pragma once

#include <QString>

#include "platform/server/Server.h"

namespace shell {

/// Writes the file that server::readSettings() reads; without a host and a socket it names the embedded server.
/// \return false with one sentence in `error` when the file cannot be written, or would be read back otherwise
bool writeServerSettings(const server::Settings& settings, QString* error);

}  // namespace shell
