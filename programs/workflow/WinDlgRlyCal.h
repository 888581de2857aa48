#pragma once

#include <QAbstractItemView>
#include <QDialog>
#include <QSet>

#include "programs/frame/RelayTypes.h"
#include "programs/workflow/RunSession.h"
#include "programs/workflow/SensitivityChecks.h"

struct BookRequest;
class PaintTable;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSplitter;
class QTabWidget;
class QToolButton;
class RecordTable;
class RunProgress;
class SettingPictures;
class SettingTable;

/// The window in which a case is calculated.
class WinDlgRlyCal : public QDialog {
    Q_OBJECT
  public:
    /// \param programDir, homeDir  where the programs of the calculation are; home of the program
    /// \param runMode  1 manual, 2 automatic
    WinDlgRlyCal(const QString& rtdbName, const QString& rtdbPath, const QString& workDir, int caseNo, int rTypeNo,
                 const QString& typeText, const QString& programDir, const QString& homeDir, int runMode,
                 QWidget* parent = nullptr);
    ~WinDlgRlyCal() override;

  public slots:
    void languageChange();
    void HandCalSlot();
    void AutoCalSlot();
    void KlmFSlot();
    void Table_RlyObj_Clicked();
    void Table_RDzTm_DoubleClicked();
    void Table_Klm_Clicked();
    void Table_RlyObj_ValueChanged(int row, int column);
    /// \param how  1 the user typed, 2 a value taken over from table_RDzTm, 3 display only
    void Table_RlyObj_ValueChanged(int row, int column, int how);
    void PushButton_KlmSys_Clicked();
    void PushButton_Next_Clicked();
    void PushButton_Cancel_Clicked();
    void PushButton_Ensure_Clicked();
    void PushButton_CalKlm_Clicked();
    void PushButton_BuildCalBook_Clicked();
    void ChangPara(int row);
    void reject() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    enum How { Typed = 1, TakenOver, Display };
    /// A part of a relay that is looked at, and the setting in it.
    struct Shown {
        int row = -1, column = -1;
        SensitivityChecks::Setting setting;
        QString label, name;
    };

    void setUpTables();
    void layOut();
    QWidget* resultSide();
    QWidget* pictureSide();
    QWidget* modeRow();
    QWidget* buttons();
    void setUpBookMenu();
    void connectAll();
    void connectSession();
    void open();

    void start(RunSession::Run run);
    void abort();
    void onStep(int rNo, int pNo, int ruleNo);
    void onMessage(const QString& line);
    void onRecalculated();
    void onFinished(bool complete);
    void onBeat();
    void showState();
    [[nodiscard]] bool acceptsWork();
    [[nodiscard]] bool agrees(const QString& question);
    void giveUp();

    void DspTable_RlyObj();
    void DspKlmSys();
    void DspRDzTm(int rNo, int pNo, const QString& label);
    bool applyEdit(const Shown& shown);
    void takeBackRefused(const Shown& taken);
    void showPart(const Shown& shown, bool tells);
    void showSensitivity(bool tells);
    void chooseParameter(int row);
    void refreshView();
    void showWithoutResult();
    void showPictures();
    void goTo(int rNo, int pNo);
    void scrollTo(int rNo, int pNo);
    [[nodiscard]] QString caseName() const;
    void exportBook(const QString& kind, const QString& ending, bool (*write)(const BookRequest&, const QString&));
    [[nodiscard]] Shown shownAt(int row, int column) const;

    RelayTypeInfo type_;
    CaseNode case_;
    CalculationPlaces places_;
    QString typeText_;
    RunSession session_;
    RulesWithoutResult::Wording wording_;
    RunSession::Run runMode_;
    RunSession::Run run_ = RunSession::Automatic;

    bool opened_ = false;     ///< Cancel can take the working tables back
    bool valueValid_ = true;  ///< the last edit of a setting was taken
    bool finishing_ = false;  ///< the next press of Next ends the manual run
    bool aborting_ = false;   ///< the user ended the run
    bool closing_ = false;    ///< the window goes when the run has ended
    Shown shown_;
    Shown refused_;  ///< cell whose text was not taken
    int stepRNo_ = -1, stepPNo_ = -1;
    QSet<int> calculated_;  ///< relays with new values that the table does not show yet

    QAbstractItemView::EditTriggers editTriggers_;  ///< of the table when it may be edited

    SettingTable* table_RlyObj;
    RecordTable* table_RDzTm;
    PaintTable* table_Klm;
    SettingPictures* pictures_;
    QListWidget* list_WithoutResult;
    QTabWidget* tabWidget_Right;
    RunProgress* progress_;
    QLabel *label_RlyObj, *label_RDzTm, *label_Klm, *label_KlmReason, *label_KlmSys;
    QLineEdit* lineEdit_KlmSys;
    QPushButton *pushButton_KlmSys, *pushButton_CalKlm, *pushButton_OtherPara, *pushButton_BuildCalBook;
    QPushButton *pushButton_Next, *pushButton_Ensure, *pushButton_Cancel;
    QToolButton* toolButton_Book;
};
