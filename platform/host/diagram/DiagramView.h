#pragma once

#include <QGraphicsView>
#include <memory>

#include "platform/host/NetworkModel.h"

class CHandleGraph;
class dbDatabase;

/// The single-line diagram of a base network: drawn at its coordinates, or laid out when it has none.
class DiagramView : public QGraphicsView {
    Q_OBJECT
  public:
    explicit DiagramView(QWidget* parent = nullptr);
    ~DiagramView() override;

    void showNetwork(const host::NetworkModel& network);
    /// Draws the live labels of `addition_graph`.
    void refreshLabels(dbDatabase& realTime);
    /// Takes the gestures from now on; null: nobody. Not owned.
    void setHandler(CHandleGraph* handler);

    /// Names of elements, buses and stations that contain a text; selectElement() shows one.
    [[nodiscard]] QStringList find(const QString& text) const;
    bool selectElement(const QString& name);
    void fit();
    void zoomBy(double factor);

    /// By the suffix: svg, pdf, png. \return false with one sentence in `error`
    bool exportTo(const QString& file, QString* error) const;

  signals:
    void elementSelected(const QString& name);
    /// One line about the element under the mouse for the status bar; empty when there is none.
    void hovered(const QString& text);

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};
