// Every window in both languages and both themes: pictures of them, what is left untranslated, what is cut off.
#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTreeView>
#include <set>

#include "programs/frame/EditSession.h"
#include "programs/frame/UserStore.h"
#include "programs/frame/ui/CMorvaneObject.h"
#include "programs/reports/CBookWriter.h"
#include "shell/viewer/BookWindow.h"
#include "tests/gui/shell/Pictures.h"
#include "tests/gui/shell/Workbench.h"

namespace {

struct Look {
    const char* language;
    shell::Theme theme;
    const char* name;
};
constexpr Look kLooks[] = {{"zh", shell::Theme::Light, "zh light"},
                           {"zh", shell::Theme::Dark, "zh dark"},
                           {"en", shell::Theme::Light, "en light"},
                           {"en", shell::Theme::Dark, "en dark"}};

bool isChinese(const QString& text) {
    static const QRegularExpression han("\\p{Han}");
    return text.contains(han);
}

/// What a user reads on a widget that is no data.
QStringList textsOf(const QWidget& widget) {
    QStringList texts{widget.windowTitle(), widget.toolTip()};
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) texts << label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) texts << button->text();
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) texts << edit->placeholderText();
    if (const auto* header = qobject_cast<const QHeaderView*>(&widget); header && header->model())
        for (int i = 0; i < header->count(); ++i)
            texts << header->model()->headerData(i, header->orientation()).toString();
    for (const QAction* action : widget.actions())
        texts << action->text() << (action->isVisible() ? action->toolTip() : QString());
    return texts;
}

/// Names that users or the rules gave, which no translation changes.
bool showsData(const QWidget& widget) {
    static const QStringList names{"label_Project",     "label_Network",  "comboBox_Case",
                                   "mainWindow",        "menu_recent",    "messageBox_Leftover",
                                   "comboBox_Language", "textLabel_Rly",  "textLabel_gBPos_TypeCode",
                                   "textLabel_Rule",    "lineEdit_KlmSys"};
    return names.contains(widget.objectName());
}

QStringList untranslated(const QWidget& window) {
    QStringList found;
    QList<const QWidget*> widgets{&window};
    for (const QWidget* child : window.findChildren<QWidget*>()) widgets.append(child);
    for (const QWidget* widget : std::as_const(widgets))
        if (!showsData(*widget))
            for (const QString& text : textsOf(*widget))
                if (isChinese(text)) found << window.objectName() + "/" + widget->objectName() + ": " + text;
    return found;
}

/// All that the report of an import says.
QStringList rowsOf(const QAbstractItemModel& model, const QModelIndex& above = {}) {
    QStringList texts;
    for (int row = 0; row < model.rowCount(above); ++row) {
        for (int column = 0; column < model.columnCount(above); ++column)
            texts << model.index(row, column, above).data().toString();
        texts += rowsOf(model, model.index(row, 0, above));
    }
    return texts;
}

QStringList cutOff(const QWidget& window) {
    QStringList found;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const bool text = (label && !label->wordWrap() && !label->text().isEmpty() &&
                           label->sizePolicy().horizontalPolicy() != QSizePolicy::Ignored) ||
                          (button && !button->text().isEmpty());
        if (!text || !widget->isVisible()) continue;
        QSize wanted(widget->sizeHint().width(), widget->minimumSizeHint().height());
        if (button && button->text() == "...") wanted = widget->fontMetrics().size(0, "...");  // as small as its cell
        if (widget->width() < wanted.width() || widget->height() < wanted.height())
            found << window.objectName() + "/" + widget->objectName() + ": " + (label ? label->text() : button->text());
    }
    return found;
}

}  // namespace

class Windows : public Workbench {
  protected:
    void look(const QWidget& shown, const QString& name) {
        const QString caption = name + ", " + look_->name;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        pictures_.add(caption, shown);
        const bool english = QString(look_->language) == "en";
        EXPECT_EQ(english ? untranslated(shown).join('\n').toStdString() : "", "") << caption.toStdString();
        EXPECT_EQ(cutOff(shown).join('\n').toStdString(), "") << caption.toStdString();
    }

    /// An action's windows, each looked at once and closed.
    void lookAtAction(const QString& name) {
        QAction* action = window->findChild<QAction*>(name);
        ASSERT_TRUE(action) << name.toStdString();
        QWidget* seen = nullptr;
        withModals([&] { action->trigger(); },
                   [&](QWidget& dialog) {
                       if (seen != &dialog) look(dialog, name);
                       seen = &dialog;
                       reject(dialog);
                   });
        EXPECT_TRUE(seen || !action->text().endsWith("…")) << name.toStdString();
    }

    /// A new project through its dialog, to the report of the import, with what is to be seen before and then.
    void import(const QString& source, const std::function<void(QWidget&)>& before,
                const std::function<void(QWidget&)>& then) {
        QAction* action = window->findChild<QAction*>("new");
        const QString name = QString("East");
        bool started = false;
        withModals([&] { action->trigger(); },
                   [&](QWidget& dialog) {
                       if (dialog.objectName() != "WinDlgProject") return reject(dialog);
                       auto* ensure = dialog.findChild<QAbstractButton*>("pushButton_Ensure");
                       if (!started) {
                           dialog.findChild<QLineEdit*>("lineEdit_Name")->setText("a/b");
                           before(dialog);
                           dialog.findChild<QLineEdit*>("lineEdit_Name")->setText(name);
                           dialog.findChild<QLineEdit*>("lineEdit_Source")->setText(source);
                           ensure->click();
                           started = true;
                       } else if (dialog.findChild<QWidget*>("importReport")->isVisible()) {
                           then(dialog);
                           ensure->click();
                       }
                   });
        EXPECT_EQ(window->session().project().name, name);
        window->closeProject();
        EXPECT_TRUE(window->session().store().remove(name));
    }

    void lookAtImport() {
        const QString source = QString(MORVANE_SOURCE_DIR) + "/data/networks/iec60909-4";
        const auto begin = [this](QWidget& dialog) { look(dialog, "new"); };
        const auto end = [this](QWidget& dialog) { look(dialog, "report"); };
        import(source, begin, end);
    }

    void lookAtBook(const QString& name) {
        const QTemporaryDir folder;
        const int number = window->session().module().GetCase_No();
        ASSERT_TRUE(CBookWriter(number, 1, "RLY", name).WriteSettingBook(folder.path() + "/"));
        shell::BookWindow viewer;
        viewer.show();
        viewer.open(folder.filePath("CalRef.ROT"));
        QCoreApplication::processEvents();
        look(viewer, "book");
    }
    /// One of the windows that share 1280x800 pixels among tables and pictures.
    void lookAtLarge(QWidget& dialog, const QString& name) {
        dialog.resize(1280, 800);
        EXPECT_EQ(dialog.size(), QSize(1280, 800));
        look(dialog, name);
    }
    [[nodiscard]] std::function<void(QWidget&)> lookAnd(const char* name, const char* button = nullptr) {
        return [=, this](QWidget& dialog) {
            look(dialog, name);
            button ? pressLater(dialog, button) : reject(dialog);
        };
    }
    static std::function<void(QWidget&)> pressing(const char* button) {
        return [button](QWidget& dialog) { pressLater(dialog, button); };
    }
    static void chooseParameters(QWidget& rules) {
        for (auto* button : rules.findChildren<QAbstractButton*>("pushButton"))
            if (button->isVisible() && button->isEnabled())
                return QTimer::singleShot(0, button, &QAbstractButton::click);
        FAIL() << "no rule has parameters";
    }

    /// The windows of a case, from the editor on, through a calculation that is taken back.
    void lookAtCase() {
        selectCase(0);
        const QString name = part<QComboBox>("comboBox_Case")->currentText();
        const auto run = [this](QWidget& dialog) {
            lookAtLarge(dialog, "run");
            pressLater(dialog, "pushButton_KlmSys");
        };
        const auto rules = [this](QWidget& dialog) {
            look(dialog, "rules");
            chooseParameters(dialog);
        };
        const auto editor = [&](QWidget& dialog) {
            lookAtLarge(dialog, "case");
            lookAtBook(name);
            pressLater(dialog, "pushButton_SaveDz");
        };
        const auto idle = [](QWidget& dialog) { return isEnabled(dialog, "pushButton_Ensure"); };
        visit([this] { moduleAction("RlyCalCalAction").trigger(); },
              {{"WinDlgRlyCalMain", pressing("pushButton_AddRly")},
               {"WinDlgSelectRly", lookAnd("relays")},
               {"WinDlgRlyCalMain", pressing("ToolButton_SearchRec")},
               {"WinDLgSearch", lookAnd("search")},
               {"WinDlgRlyCalMain", pressing("pushButton_Rule")},
               {"WinDlgSelectRule", rules},
               {"WinDlgEditAndSelectPara", lookAnd("parameters")},
               {"WinDlgSelectRule", reject},
               {"WinDlgRlyCalMain", pressing("pushButton_AutoCal")},
               {"WinDlgRlyCal", pressing("pushButton_Next")},
               {"WinDlgRlyCal", run, idle},
               {"WinDlgselectSYS", lookAnd("modes")},
               {"WinDlgRlyCal", pressing("pushButton_CalKlm")},
               {"WinDlgEnsureKlmP", lookAnd("sensitivity")},
               {"WinDlgRlyCal", pressing("pushButton_Ensure"), idle},
               {"WinDlgRlyCalMain", editor},
               {"WinDlgSaveDZ", lookAnd("save")},
               {"WinDlgRlyCalMain", pressing("Button_Cancel")}});
    }

    void lookAtLeftover() {
        {
            EditSession left("WinDlgDspRly", {{"RLY_RLYDSP", 158}}, "_TEM");
            ASSERT_TRUE(left.open());
        }
        window->closeProject();
        withModals([&] { window->openProject(project); },
                   [&](QWidget& box) {
                       look(box, "leftover");
                       box.findChildren<QAbstractButton*>().first()->click();
                   });
    }

    void lookAtLogIn() {
        ASSERT_EQ(UserStore::change({}, "secret", "secret"), UserStore::Change::Done);
        shell::Settings().setLoginAtOpening(true);
        window.reset();
        window = std::make_unique<shell::MainWindow>();
        window->resize(1280, 800);
        window->show();
        bool asked = false;
        withModals(
            [&] {
                window->openWhenReady(project);
                waitFor([&] { return asked; });
            },
            [&](QWidget& dialog) {
                look(dialog, "login");
                asked = true;
                reject(dialog);
            });
        EXPECT_FALSE(window->isProjectOpen());
        shell::Settings().setLoginAtOpening(false);
        window->openProject(project);
        ASSERT_EQ(UserStore::change("secret", {}, {}), UserStore::Change::Done);
    }

    void lookAtAll() {
        lookAtImport();
        look(*window, "start");
        openDemonstration();
        window->diagram().selectElement("石桥厂");
        look(*window, "diagram");
        window->findChild<QAction*>("find")->trigger();
        part<QLineEdit>("lineEdit_Find")->setText("石");
        look(*window, "find");
        for (const char* name : {"open", "import", "save_as", "settings", "shortcuts", "about"}) lookAtAction(name);
        for (const int mode : {0, 1}) {
            selectMode(mode);
            for (const auto& [name, action] : window->menus().module()->asKeyValueRange())
                if (action->isVisible() && action->isEnabled() && seen_.insert(look_->name + name).second)
                    lookAtAction(name);
        }
        lookAtCase();
        lookAtLeftover();
        lookAtLogIn();
    }

    shell::Settings settings_;
    const Look* look_ = nullptr;
    std::set<QString> seen_;  ///< actions in this look
    Pictures pictures_;
};

TEST_F(Windows, AreTranslatedAndShowTheirTextsWholeInBothLanguagesAndThemes) {
    openDemonstration();
    for (const Look& look : kLooks) {
        SCOPED_TRACE(look.name);
        look_ = &look;
        window.reset();
        shell::applyLanguage(*qApp, look.language);
        shell::applyTheme(*qApp, look.theme);
        window = std::make_unique<shell::MainWindow>();
        window->resize(1280, 800);
        window->show();
        ASSERT_TRUE(waitFor([&] { return !part<QLabel>("label_Server")->text().endsWith("…"); }));
        lookAtAll();
    }
    if (qEnvironmentVariableIsSet("MORVANE_SCREENSHOTS")) {
        EXPECT_TRUE(pictures_.save(qEnvironmentVariable("MORVANE_SCREENSHOTS")));
    }
    if (qEnvironmentVariableIsSet("MORVANE_SCREENSHOT_FOLDER"))
        pictures_.saveEach(qEnvironmentVariable("MORVANE_SCREENSHOT_FOLDER"));
}

TEST_F(Windows, ReportsOfImportsAreEnglishWhereTheNetworksNamesAre) {
    const QString networks = qEnvironmentVariable("MORVANE_SHARED_NETWORKS", MORVANE_SHARED_NETWORKS);
    if (!QFile::exists(networks)) GTEST_SKIP() << "the public networks are not there: " << networks.toStdString();
    window.reset();
    shell::applyLanguage(*qApp, "en");
    window = std::make_unique<shell::MainWindow>();
    window->show();
    ASSERT_TRUE(waitFor([&] { return !part<QLabel>("label_Server")->text().endsWith("…"); }));
    for (const char* source : {"/matpower/case39.m", "/matpower/case300.m", "/cgmes_microgrid/BaseCase_BC"}) {
        SCOPED_TRACE(source);
        QStringList told;
        const auto read = [&](QWidget& dialog) {
            told = rowsOf(*dialog.findChild<QTreeView*>("treeView_Report")->model());
            told += untranslated(dialog);
        };
        import(networks + source, [](QWidget&){}, read);
        EXPECT_GT(told.size(), 20);
        EXPECT_EQ(told.filter(QRegularExpression("\\p{Han}")).join('\n').toStdString(), "");
    }
}
