#pragma once

#include <QEvent>

class QWidget;

/// Events between a module and the host's main window.
namespace host {

inline constexpr int subModuleEvent = 53212;     ///< data: a new int with the working mode, owned by the receiver
inline constexpr int updateLabelsEvent = 53214;  ///< CUpdateLabelsCustomEvent

/// The window that takes the events of the modules; null in a program without one.
QWidget* mainWidget();
void setMainWidget(QWidget* widget);

/// An event that hands data over. The receiver owns `data`.
class DataCustomEvent : public QEvent {
  public:
    DataCustomEvent(int type, void* data) : QEvent(static_cast<Type>(type)), data_(data) {}
    [[nodiscard]] void* data() const { return data_; }

  private:
    void* data_;
};

}  // namespace host

/// Asks the host to redraw labels or colours. Flags: 0x02 and 4 the labels, 0x18 the network of a load-flow case, 0x28
/// that of a scheme.
class CUpdateLabelsCustomEvent : public QEvent {
  public:
    CUpdateLabelsCustomEvent(int type, int flags) : QEvent(static_cast<Type>(type)), flags_(flags) {}
    [[nodiscard]] int flags() const { return flags_; }

  private:
    int flags_;
};
