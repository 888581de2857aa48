#pragma once

#include <QWidget>
#include <map>
#include <set>

#include "platform/host/diagram/Palette.h"

namespace diagram {

/// The colours of the voltage levels that a diagram shows.
class Legend : public QWidget {
  public:
    explicit Legend(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }
    /// \param baseKv  the base voltages of the network; those of one colour share a row
    void show(const std::set<double>& baseKv, const Palette& palette);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::map<double, QString> levels_;  ///< text by usual level
    Palette palette_;
};

}  // namespace diagram
