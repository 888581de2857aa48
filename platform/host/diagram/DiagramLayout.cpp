#include "platform/host/diagram/DiagramLayout.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace {

constexpr const char* fileName = "diagram.layout";

QByteArray headOf(const QByteArray& input) {
    return "diagram layout 1 " + QCryptographicHash::hash(input, QCryptographicHash::Sha1).toHex() + '\n';
}

}  // namespace

DiagramLayout::DiagramLayout(QObject* parent) : QObject(parent) {}

DiagramLayout::~DiagramLayout() { stop(); }

bool DiagramLayout::isRunning() const { return process_ != nullptr; }

std::optional<std::vector<QPointF>> DiagramLayout::kept(const diagram::Blocks& blocks) const {
    if (directory_.isEmpty()) return std::nullopt;
    QFile file(QDir(directory_).filePath(fileName));
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    if (file.readLine() != headOf(diagram::layoutInput(blocks))) return std::nullopt;
    return diagram::layoutPlaces(file.readAll(), blocks.blocks.size());
}

void DiagramLayout::start(const diagram::Blocks& blocks) {
    stop();
    input_ = diagram::layoutInput(blocks);
    count_ = blocks.blocks.size();
    rows_ = diagram::rowsOf(blocks);
    process_ = new QProcess(this);
    process_->setStandardErrorFile(QProcess::nullDevice());
    connect(process_, &QProcess::finished, this,
            [this](int code, QProcess::ExitStatus status) { take(status == QProcess::NormalExit && code == 0); });
    connect(process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) take(false);
    });
    process_->start(QDir(QCoreApplication::applicationDirPath()).filePath("morvane-diagram-layout"), {});
    process_->write(input_);
    process_->closeWriteChannel();
}

void DiagramLayout::stop() {
    if (!process_) return;
    process_->disconnect(this);
    process_->kill();
    process_->waitForFinished(2000);
    process_->deleteLater();
    process_ = nullptr;
}

void DiagramLayout::take(bool complete) {
    if (!process_) return;
    const QByteArray output = process_->readAllStandardOutput();
    process_->disconnect(this);
    process_->deleteLater();
    process_ = nullptr;
    const auto places = complete ? diagram::layoutPlaces(output, count_) : std::nullopt;
    if (places) keep(output);
    emit finished(places ? *places : rows_, places ? QString() : tr("单线图的自动布局没有完成，厂站按行排列。"));
}

void DiagramLayout::keep(const QByteArray& output) const {
    if (directory_.isEmpty()) return;
    QSaveFile file(QDir(directory_).filePath(fileName));
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(headOf(input_) + output);
    file.commit();
}
