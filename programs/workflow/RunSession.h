#pragma once

#include <QObject>
#include <QQueue>
#include <memory>

#include "programs/workflow/CalculationStart.h"
#include "programs/workflow/CoordinationSearch.h"
#include "programs/workflow/RulesWithoutResult.h"
#include "programs/workflow/RunShadows.h"
#include "programs/workflow/RunStep.h"

class CAutoCalFlow;
class CCaseCalFlow;
class CHandCalFlow;
class CKlmCalFlow;
class CStepCalFlow;
class EngineProcess;

/// What a run window does: the states of a manual, automatic or sensitivity run, driven by the ends of the engine. The
/// working tables go back to where they were at open() unless ensure() keeps them. An engine run that does not end
/// well, or is ended, leaves no trace in the tables; an automatic run goes on with the next, and the part has no
/// result.
class RunSession : public QObject {
    Q_OBJECT

  public:
    enum class State { Idle, Busy, Waiting };  ///< Waiting: a manual run shows a relay part and waits for next()
    enum Run { Manual = 1, Automatic = 2, Sensitivity = 3 };

    RunSession(const CaseNode& node, const CalculationPlaces& places);
    ~RunSession() override;

    /// A sensitivity run then ends with its results under case number 0 and nothing stored: the user confirms them.
    void setParametersToConfirm(bool confirm) { confirm_ = confirm; }

    /// Copies the working tables and removes result files of earlier runs.
    bool open();
    /// \return false when there is nothing to calculate; the session is idle then and the tables are as before
    bool start(Run run);
    /// The next relay part of a manual run; after the last one the run ends.
    bool next();
    /// Ends the run in hand, a hanging engine included; finished(false) follows when the engine has ended. What was
    /// calculated before the engine run in hand stays. Without a run it ends the recalculations: recalculated()
    /// follows.
    void abort();
    /// Keeps everything and forgets the copies, or takes the working tables back.
    bool ensure();
    bool cancel();

    /// A setting of a relay part as it was typed.
    struct TypedSetting {
        QString Cdz;
        QString text;
    };
    /// Stores the settings of a part of a relay: primary as given, secondary by its factor, and has the rules that
    /// depend on the one that was changed calculated again: the session is then Busy until recalculated().
    /// \param values   all settings that the part shows  \param changed  `Cdz` of the one that was typed
    /// \return false with a message for a value that is no number or below 0; nothing is stored then
    bool ApplySettingEdit(int rNo, int pNo, const QVector<TypedSetting>& values, const QString& changed);
    bool ApplySettingEdit(int rNo, int pNo, const QString& cdz, const QString& value);
    /// Chooses another parameter group of a rule and calculates the rule again; recalculated() follows. If that fails
    /// the rule has its group and results of before.
    bool changeParameters(int rNo, int pNo, int ruleNo, int parNo);

    [[nodiscard]] State state() const { return state_; }
    /// Whether next() of a manual run that waits calculates a further relay part; else it ends the run.
    [[nodiscard]] bool hasFurtherPart() const;
    /// What the engine is at, and for how long: meaningful while the session is Busy.
    [[nodiscard]] const RunStep& step() const { return step_; }
    [[nodiscard]] bool isRecalculating() const { return recalcPending_; }
    /// Whether there is anything that cancel() would take back.
    [[nodiscard]] bool hasChanged() const { return changed_; }
    /// Rules of the run in hand or just ended that had no result; each was told in the dock as information.
    [[nodiscard]] const QVector<RuleWithoutResult>& withoutResult() const { return withoutResult_; }
    [[nodiscard]] int failedSteps() const { return failedSteps_; }  ///< engine runs of the run that ended badly

  signals:
    void progress(int done, int total);
    void stepStarted(int rNo, int pNo, int ruleNo);  ///< what the engine is given next
    void message(const QString& line);               ///< what an engine says, as it comes
    void partShown(int rNo, int pNo);                ///< a manual run waits here
    void recalculated();                             ///< no recalculation is left
    void finished(bool complete);

  private slots:
    void HandCalSlot();
    void AutoCalSlot();
    void KlmFSlot();

  private:
    bool PrepareRun(Run run);
    bool takeLine(const QString& line);
    /// Whether statements of the run are missing because the server was gone for a while; says so.
    [[nodiscard]] bool lostStatements() const;
    /// Whether the engine ended well and has not been ended.
    [[nodiscard]] bool endedWell(CCaseCalFlow& flow) const;
    /// Keeps what the step wrote when it is good, else takes it back and says so. \return whether the run goes on
    bool settle(CCaseCalFlow& flow, bool good);
    void tellFailure(const QVector<int>& rules, bool started);
    void startStep(CStepCalFlow& flow);
    void end(bool complete);
    bool storeEdit(int rNo, int pNo, const QVector<TypedSetting>& values);
    void RecalcDependents(int rNo, int pNo, int dzNo);
    bool recalculateNext();
    void recalculationEnded(bool goOn);
    void tellNotRecalculated(const CoordinationSearch::Dependent& rule) const;
    void forgetNotes(const CoordinationSearch::Dependent& rule);
    [[nodiscard]] QString announced(const CoordinationSearch::Dependent& rule) const;
    [[nodiscard]] QList<EngineProcess*> processes() const;
    [[nodiscard]] bool engineRuns() const;

    CaseNode case_;
    CalculationPlaces places_;
    EditSession shadows_{RunShadows::owner, RunShadows::tables(), RunShadows::suffix};
    std::unique_ptr<CHandCalFlow> hand_;
    std::unique_ptr<CAutoCalFlow> auto_;
    std::unique_ptr<CKlmCalFlow> klm_;
    RunStep step_;
    QQueue<CoordinationSearch::Dependent> recalculations_;
    struct Edit {
        int RNo, PNo;
        QVector<TypedSetting> values;
    };
    /// What to go back to when a recalculation is taken back.
    std::pair<QVector<RuleWithoutResult>, std::optional<QVector<RuleWithoutResult>>> notesBefore_;
    QVector<Edit> editsInStep_;  ///< typed while a rule was recalculated: they stay even if that is taken back
    RulesWithoutResult::Wording wording_;
    QVector<RuleWithoutResult> withoutResult_;
    std::optional<QVector<RuleWithoutResult>> toStore_;  ///< of the last setting run that came to its end
    State state_ = State::Idle;
    Run run_ = Automatic;
    bool manualRunning_ = false;
    bool recalcPending_ = false;
    bool abortFlag_ = false;
    bool confirm_ = false;
    bool partFailed_ = false;  ///< an engine run of the relay part in hand did not end well
    bool changed_ = false;
    int failedSteps_ = 0;
    int lossesBefore_ = 0;
};
