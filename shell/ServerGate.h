#pragma once

#include <QObject>
#include <QString>
#include <QThread>
#include <memory>

#include "platform/server/Server.h"

namespace shell {

/// The database server of the session. It is started aside, since that may take some seconds the first time, and held
/// until the program ends.
class ServerGate : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;
    ~ServerGate() override;

    /// Starts the server or reaches the one of the settings; ready() or failed() follows.
    void open();
    [[nodiscard]] bool isOpen() const { return hold_ != nullptr; }
    /// Where the databases are, in a few words.
    [[nodiscard]] QString text() const;

  signals:
    void ready();
    void failed(const QString& reason);  ///< one sentence

  private:
    std::unique_ptr<server::Hold> hold_;
    std::unique_ptr<QThread> thread_;
};

}  // namespace shell
