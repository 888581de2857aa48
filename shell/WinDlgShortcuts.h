#pragma once

#include <QDialog>
#include <QPair>
#include <QVector>

namespace shell {

/// The keys of the shell, as a table.
class WinDlgShortcuts : public QDialog {
    Q_OBJECT
  public:
    /// \param rows  caption and key
    explicit WinDlgShortcuts(const QVector<QPair<QString, QString>>& rows, QWidget* parent = nullptr);
};

}  // namespace shell
