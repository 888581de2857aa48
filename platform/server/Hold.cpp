#include <QUuid>

#include "platform/server/EmbeddedServer.h"
#include "platform/server/FileLock.h"
#include "platform/server/Server.h"

namespace server {

struct Hold::Impl {
    Settings settings;
    FileLock client;
};

Hold::Hold() : impl_(std::make_unique<Impl>()) {}
Hold::~Hold() = default;

const Settings& Hold::settings() const { return impl_->settings; }

namespace {

bool answersLogin(const Settings& settings, QString* error) {
    setCurrent(settings);
    const QString connection = QUuid::createUuid().toString();
    const bool opened = openConnection("QMYSQL3", {}, connection, {}, {}, {}, error);
    closeConnection(connection);
    return opened;
}

}  // namespace

std::unique_ptr<Hold> Hold::acquire(QString* error) {
    std::unique_ptr<Hold> hold(new Hold);
    error->clear();
    Settings& settings = hold->impl_->settings;
    settings = readSettings(error);
    if (!error->isEmpty()) return nullptr;
    if (settings.embedded) {
        const EmbeddedServer server(settings.program);
        hold->impl_->client = server.join(error);
        if (!hold->impl_->client.held()) return nullptr;
        settings.socket = server.socket();
    }
    if (!answersLogin(settings, error)) return nullptr;
    return hold;
}

}  // namespace server
