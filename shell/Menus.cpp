#include "shell/Menus.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QShortcut>

#include "shell/Appearance.h"

namespace shell {

namespace {

enum Need { Nothing, OpenProject, EditingMode, CalculatingMode, AnyMode };

struct MenuRow {
    const char* menu;
    const char* caption;
};
struct ActionRow {
    const char* menu;
    const char* name;  ///< empty: a line between groups
    const char* caption;
    const char* icon;
    const char* keys;
    Need need;
};

constexpr MenuRow kMenus[] = {
    {"file", QT_TRANSLATE_NOOP("shell::Menus", "文件(&F)")},
    {"view", QT_TRANSLATE_NOOP("shell::Menus", "视图(&V)")},
    {"relays", QT_TRANSLATE_NOOP("shell::Menus", "保护(&R)")},
    {"calculate", QT_TRANSLATE_NOOP("shell::Menus", "计算(&C)")},
    {"tools", QT_TRANSLATE_NOOP("shell::Menus", "工具(&T)")},
    {"help", QT_TRANSLATE_NOOP("shell::Menus", "帮助(&H)")},
};

constexpr ActionRow kActions[] = {
    {"file", "new", QT_TRANSLATE_NOOP("shell::Menus", "新建工程(&N)…"), "new", "Ctrl+N", Nothing},
    {"file", "open", QT_TRANSLATE_NOOP("shell::Menus", "打开工程(&O)…"), "open", "Ctrl+O", Nothing},
    {"file", "recent", QT_TRANSLATE_NOOP("shell::Menus", "最近的工程(&R)"), "", "", Nothing},
    {"file", "demo", QT_TRANSLATE_NOOP("shell::Menus", "示例工程(&D)"), "demo", "", Nothing},
    {"file", "", "", "", "", Nothing},
    {"file", "import", QT_TRANSLATE_NOOP("shell::Menus", "导入网络(&I)…"), "import", "Ctrl+I", OpenProject},
    {"file", "save_as", QT_TRANSLATE_NOOP("shell::Menus", "另存为(&A)…"), "save-as", "Ctrl+Shift+S", OpenProject},
    {"file", "close", QT_TRANSLATE_NOOP("shell::Menus", "关闭工程(&C)"), "close", "Ctrl+W", OpenProject},
    {"file", "", "", "", "", Nothing},
    {"file", "export", QT_TRANSLATE_NOOP("shell::Menus", "导出图(&E)…"), "export", "Ctrl+E", OpenProject},
    {"file", "print", QT_TRANSLATE_NOOP("shell::Menus", "打印图(&P)…"), "print", "Ctrl+P", OpenProject},
    {"file", "", "", "", "", Nothing},
    {"file", "quit", QT_TRANSLATE_NOOP("shell::Menus", "退出(&Q)"), "quit", "Ctrl+Q", Nothing},
    {"view", "find", QT_TRANSLATE_NOOP("shell::Menus", "查找元件(&F)…"), "find", "Ctrl+F", OpenProject},
    {"view", "", "", "", "", Nothing},
    {"view", "fit", QT_TRANSLATE_NOOP("shell::Menus", "全图(&A)"), "fit", "Ctrl+0", OpenProject},
    {"view", "zoom_in", QT_TRANSLATE_NOOP("shell::Menus", "放大(&I)"), "zoom-in", "Ctrl++", OpenProject},
    {"view", "zoom_out", QT_TRANSLATE_NOOP("shell::Menus", "缩小(&O)"), "zoom-out", "Ctrl+-", OpenProject},
    {"view", "", "", "", "", Nothing},
    {"view", "messages", QT_TRANSLATE_NOOP("shell::Menus", "消息窗口(&M)"), "messages", "F8", Nothing},
    {"view", "toolbar", QT_TRANSLATE_NOOP("shell::Menus", "工具栏(&T)"), "", "", Nothing},
    {"relays", "RlyEditSetRlyAction", QT_TRANSLATE_NOOP("shell::Menus", "保护设置(&S)…"), "", "", EditingMode},
    {"relays", "RlyEditSetAllRlyAction", QT_TRANSLATE_NOOP("shell::Menus", "批量装设保护(&B)…"), "", "", EditingMode},
    {"relays", "RlyEditSetDumRlyAction", QT_TRANSLATE_NOOP("shell::Menus", "自动装设虚拟保护(&V)"), "", "",
     EditingMode},
    {"relays", "RlySetCopRlyAction", QT_TRANSLATE_NOOP("shell::Menus", "保护配合关系(&C)…"), "", "", AnyMode},
    {"relays", "", "", "", "", Nothing},
    {"relays", "RlyEditEditSysAction", QT_TRANSLATE_NOOP("shell::Menus", "运行方式(&M)…"), "", "", EditingMode},
    {"relays", "RlyEditEditFzxsAction", QT_TRANSLATE_NOOP("shell::Menus", "分支系数故障(&F)…"), "", "", EditingMode},
    {"relays", "", "", "", "", Nothing},
    {"relays", "RlyDspSetAction", QT_TRANSLATE_NOOP("shell::Menus", "显示设置(&D)…"), "", "F6", AnyMode},
    {"relays", "RlyEditSelectRTypeAction", QT_TRANSLATE_NOOP("shell::Menus", "显示的保护类型(&T)…"), "", "",
     EditingMode},
    {"relays", "RlyEditSetDzNameAction", QT_TRANSLATE_NOOP("shell::Menus", "定值显示名称(&N)…"), "", "", EditingMode},
    {"relays", "", "", "", "", Nothing},
    {"relays", "RlySetUserAction", QT_TRANSLATE_NOOP("shell::Menus", "用户管理(&U)…"), "", "", AnyMode},
    {"calculate", "RlyCalCalAction", QT_TRANSLATE_NOOP("shell::Menus", "整定计算(&C)…"), "", "F9", CalculatingMode},
    {"calculate", "RlyCalBuildDzdAction", QT_TRANSLATE_NOOP("shell::Menus", "定值单(&S)…"), "", "", CalculatingMode},
    {"tools", "settings", QT_TRANSLATE_NOOP("shell::Menus", "设置(&S)…"), "settings", "Ctrl+,", Nothing},
    {"help", "shortcuts", QT_TRANSLATE_NOOP("shell::Menus", "快捷键(&K)"), "", "F1", Nothing},
    {"help", "about", QT_TRANSLATE_NOOP("shell::Menus", "关于(&A)"), "info", "", Nothing},
};

QString caption(const char* text) { return QCoreApplication::translate("shell::Menus", text); }

bool isOfModule(const ActionRow& row) { return row.need >= EditingMode; }

/// Why an action that needs something is off.
QString needText(Need need) {
    switch (need) {
        case OpenProject:
        case AnyMode:
            return caption(QT_TRANSLATE_NOOP("shell::Menus", "先打开一个工程"));
        case EditingMode:
            return caption(QT_TRANSLATE_NOOP("shell::Menus", "在工具栏中选“保护编辑”方式后可用"));
        case CalculatingMode:
            return caption(QT_TRANSLATE_NOOP("shell::Menus", "在工具栏中选“保护整定”方式后可用"));
        default:
            return {};
    }
}

QString withoutMnemonic(QString text) {
    static const QRegularExpression mark("\\(&.\\)|…");
    return text.remove(mark).remove('&');
}

}  // namespace

Menus::Menus(QMenuBar* bar) : QObject(bar) {
    for (const MenuRow& row : kMenus) {
        QMenu* menu = menus_[row.menu] = bar->addMenu(QString());
        menu->setObjectName(QString("menu_") + row.menu);
        menu->setToolTipsVisible(true);
    }
    for (int row = 0; row < int(std::size(kActions)); ++row) addRow(row);
    for (const char* name : {"messages", "toolbar"}) (*this)[name]->setCheckable(true);
    recent_ = new QMenu(bar);
    recent_->setObjectName("menu_recent");
    (*this)["recent"]->setMenu(recent_);
    languageChange();
}

void Menus::addRow(int number) {
    const ActionRow& row = kActions[number];
    QMenu* menu = menus_[row.menu];
    if (!*row.name) {
        menu->addSeparator();
        return;
    }
    auto* action = menu->addAction(QString());
    action->setObjectName(row.name);
    actions_.insert(row.name, action);
    action->setMenuRole(QAction::NoRole);
    if (*row.icon) action->setIcon(icon(row.icon));
    if (*row.keys) action->setShortcut(QKeySequence(row.keys));
    action->setEnabled(row.need == Nothing);
    if (!isOfModule(row)) return;
    module_.insert(row.name, action);
    action->setVisible(false);
    connect(action, &QAction::changed, this, &Menus::tidy, Qt::QueuedConnection);
    connect(action, &QAction::triggered, this, [this, row] { emit moduleAction(row.name); });
    if (*row.keys) sayOnKeys(action);
}

// Of an action that is off the keys do nothing, and a user wonders.
void Menus::sayOnKeys(QAction* action) {
    auto* keys = whileOff_[action] = new QShortcut(action->shortcut(), static_cast<QMenuBar*>(parent()));
    connect(keys, &QShortcut::activated, this,
            [this, action] { emit refused(withoutMnemonic(action->text()) + ": " + action->statusTip()); });
}

QAction* Menus::operator[](const char* name) const { return actions_.value(name); }

void Menus::setProjectOpen(bool open) {
    projectOpen_ = open;
    for (const ActionRow& row : kActions) {
        if (row.need == OpenProject) actions_[row.name]->setEnabled(open);
        if (!isOfModule(row) || open) continue;
        actions_[row.name]->setEnabled(false);
        actions_[row.name]->setVisible(false);
    }
    tidy();
}

void Menus::tidy() {
    for (const ActionRow& row : kActions) {
        QAction* action = *row.name ? actions_[row.name] : nullptr;
        if (!action) continue;
        QString tip = withoutMnemonic(action->text());
        if (!action->shortcut().isEmpty()) tip += " (" + action->shortcut().toString(QKeySequence::NativeText) + ")";
        const QString why =
            action->isEnabled() ? QString() : needText(projectOpen_ ? row.need : std::min(row.need, OpenProject));
        if (!why.isEmpty()) tip += "\n" + why;
        if (action->toolTip() != tip) action->setToolTip(tip);
        if (action->statusTip() != why) action->setStatusTip(why);
        if (QShortcut* keys = whileOff_.value(action)) keys->setEnabled(action->isVisible() && !why.isEmpty());
    }
    for (QMenu* menu : std::as_const(menus_)) {
        bool any = false;
        for (const QAction* action : menu->actions()) any = any || (action->isVisible() && !action->isSeparator());
        menu->menuAction()->setVisible(any);
    }
}

void Menus::languageChange() {
    for (const MenuRow& row : kMenus) menus_[row.menu]->setTitle(caption(row.caption));
    for (const ActionRow& row : kActions)
        if (*row.name) actions_[row.name]->setText(caption(row.caption));
    tidy();
}

QVector<QPair<QString, QString>> Menus::shortcuts() const {
    QVector<QPair<QString, QString>> rows;
    for (const ActionRow& row : kActions) {
        const QAction* action = *row.name ? actions_[row.name] : nullptr;
        if (action && !action->shortcut().isEmpty() && (action->isVisible() || !isOfModule(row)))
            rows.append({withoutMnemonic(action->text()), action->shortcut().toString(QKeySequence::NativeText)});
    }
    return rows;
}

}  // namespace shell
