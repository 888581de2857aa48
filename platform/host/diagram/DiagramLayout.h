#pragma once

#include <QObject>
#include <QProcess>

#include "platform/host/diagram/Blocks.h"

/// Finds places for blocks by the layout program, in the background; keeps them in a file for the next time.
class DiagramLayout : public QObject {
    Q_OBJECT
  public:
    explicit DiagramLayout(QObject* parent = nullptr);
    ~DiagramLayout() override;

    /// Where the places are kept; empty: nowhere.
    void setDirectory(const QString& directory) { directory_ = directory; }

    /// Places that are kept for exactly these blocks.
    [[nodiscard]] std::optional<std::vector<QPointF>> kept(const diagram::Blocks& blocks) const;
    /// Starts the layout, giving up one under way. Answers by finished().
    void start(const diagram::Blocks& blocks);
    void stop();
    [[nodiscard]] bool isRunning() const;

  signals:
    /// \param sentence  empty, or why the places are only rows
    void finished(const std::vector<QPointF>& middles, const QString& sentence);

  private:
    void take(bool complete);
    void keep(const QByteArray& output) const;

    QString directory_;
    QProcess* process_ = nullptr;
    QByteArray input_;
    std::size_t count_ = 0;
    std::vector<QPointF> rows_;
};
