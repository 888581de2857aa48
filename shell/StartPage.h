#pragma once

#include <QWidget>

#include "shell/RecentProjects.h"

class QLabel;
class QListWidget;
class QListWidgetItem;
class QToolButton;

namespace shell {

class Menus;

/// What the main window shows without a project: the projects opened last, and the ways to get one.
class StartPage : public QWidget {
    Q_OBJECT
  public:
    StartPage(RecentProjects& recent, const Menus& menus, QWidget* parent = nullptr);

    /// Reads the list anew; projects that are gone are marked. \param existing  names of the projects that are there
    void refresh(const QStringList& existing);
    /// A sentence that stands above the list until it is taken away with an empty one.
    void showNotice(const QString& text);

  signals:
    void openRequested(const QString& name);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QWidget* makeWays(const Menus& menus);
    QWidget* makeList();
    void addProject(const RecentProject& project);
    void open(const QListWidgetItem* item);
    void removeCurrent();
    void showMenu(const QPoint& at);
    void languageChange();

    RecentProjects& recent_;
    QStringList existing_;
    QLabel *title_ = nullptr, *purpose_ = nullptr, *heading_ = nullptr, *notice_ = nullptr, *empty_ = nullptr;
    QListWidget* list_ = nullptr;
    QToolButton* remove_ = nullptr;
};

}  // namespace shell
