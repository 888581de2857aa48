#pragma once

#include <QWidget>
#include <set>

#include "platform/host/diagram/Palette.h"

namespace diagram {

/// The colours of the voltage levels that a diagram shows.
class Legend : public QWidget {
  public:
    explicit Legend(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }
    void show(const std::set<double>& levels, const Palette& palette);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::set<double> levels_;
    Palette palette_;
};

}  // namespace diagram
