#include "shell/ServerGate.h"

namespace shell {

ServerGate::~ServerGate() {
    if (thread_) thread_->wait();
}

void ServerGate::open() {
    if (thread_) return;
    hold_.reset();
    auto reason = std::make_shared<QString>();
    thread_.reset(QThread::create([this, reason] { hold_ = server::Hold::acquire(reason.get()); }));
    connect(thread_.get(), &QThread::finished, this, [this, reason] {
        thread_->wait();
        thread_.reset();
        hold_ ? emit ready() : emit failed(*reason);
    });
    thread_->start();
}

QString ServerGate::text() const {
    if (!hold_) return thread_ ? tr("正在启动数据库服务器…") : tr("没有数据库服务器");
    const server::Settings& settings = hold_->settings();
    if (settings.embedded) return tr("内置数据库服务器");
    return tr("数据库服务器 %1").arg(settings.host.isEmpty() ? settings.socket : settings.host);
}

}  // namespace shell
