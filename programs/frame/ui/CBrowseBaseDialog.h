#pragma once

#include <QWidget>

class QToolButton;
class QVBoxLayout;

/// The frame of the data browser: five tool buttons above, the browser's own widgets in body(). Each button calls the
/// parent's slot of its name; without such a slot it is hidden.
class CBrowseBaseDialog : public QWidget {
    Q_OBJECT
  public:
    explicit CBrowseBaseDialog(QWidget* parent, const char* name = nullptr, uint flags = 0);

    [[nodiscard]] QVBoxLayout* body() const { return body_; }

    QToolButton* SearchRec = nullptr;
    QToolButton* SortRec = nullptr;
    QToolButton* WinConfig = nullptr;
    QToolButton* FilterRec = nullptr;
    QToolButton* DisplayConf = nullptr;

  private:
    QVBoxLayout* body_ = nullptr;
};
