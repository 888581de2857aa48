#pragma once

#include <QHash>
#include <QMap>
#include <QObject>

class QAction;
class QMenu;
class QMenuBar;
class QShortcut;
class QWidget;

namespace shell {

/// The menus of the main window with all their actions, the module's among them, made from one table.
class Menus : public QObject {
    Q_OBJECT
  public:
    explicit Menus(QMenuBar* bar);

    /// One of the shell's own actions by its name in the table.
    [[nodiscard]] QAction* operator[](const char* name) const;
    /// The actions of the module by their names, as the module takes them.
    [[nodiscard]] QMap<QString, QAction*>* module() { return &module_; }
    [[nodiscard]] QMenu* recent() const { return recent_; }

    /// Those that need an open project.
    void setProjectOpen(bool open);
    /// Menus without a visible action go; actions that are off say why.
    void tidy();
    void languageChange();
    /// Every action with a key, as caption and key, for the list of shortcuts.
    [[nodiscard]] QVector<QPair<QString, QString>> shortcuts() const;

  signals:
    /// An action of the module was chosen.
    void moduleAction(const QString& name);
    /// The keys of an action of the module that is off were pressed.
    void refused(const QString& reason);

  private:
    void addRow(int row);
    void sayOnKeys(QAction* action);

    QHash<QString, QMenu*> menus_;
    QHash<QString, QAction*> actions_;
    QMap<QString, QAction*> module_;
    QHash<const QAction*, QShortcut*> whileOff_;
    QMenu* recent_ = nullptr;
    bool projectOpen_ = false;
};

}  // namespace shell
