#pragma once

#include <QList>
#include <QVector>

#include "programs/workflow/CaseNode.h"

/// A setting rule of a case: on how many of its relays it is in force.
struct CaseRule {
    int part = 0, rule = 0;
    QString note;
    int relays = 0, inForce = 0;
};

/// The cases of the project: the chain of cases in memory, their checks and their storage. What goes wrong is told in
/// the dock; a save that is refused changes nothing.
class CaseStore {
  public:
    /// 1 read all cases, the one with the lowest number becomes current; 2 take the current one out; 3 read the current
    /// one again. \return false for another mode
    bool UpdateCaseChain(int mode);
    [[nodiscard]] const QVector<CaseNode>& chain() const { return chain_; }
    /// Null without a case.
    [[nodiscard]] CaseNode* current();
    /// Place of the current case in the chain; -1 without one.
    [[nodiscard]] int position() const { return position_; }
    /// Whether the current case has been saved.
    [[nodiscard]] bool isStored();
    bool select(int caseNo);
    bool select(const QString& caseName);

    /// A new case behind the last one, current afterwards, not stored before the first save. Its network source is
    /// given.
    CaseNode& insert(int rTypeNo, int mlf, int lfCase, const QString& scheme);
    /// Name of a new case: "作业" and a number.
    [[nodiscard]] static QString defaultName();
    /// Deletes the current case with all that belongs to it.
    bool remove();
    /// The current case takes over the contents of another one, its relay type, name and note included, and forgets
    /// relay changes that were not saved. \return false with a message when that case is gone
    bool pasteFrom(int caseNo);

    /// The form of the current case as stored, its settings as RLY_RLYOBJ_TEM holds them.
    CaseForm form(bool primary = true);
    /// Adds relays of the current case's type that the form has not yet, and their rows of RLY_CASEINF, one per part
    /// and rule of the type.
    bool addRelays(CaseForm& form, const QVector<int>& relays);
    /// Takes a relay out of the form; the database follows with the next save.
    void removeRelay(CaseForm& form, int relay);
    void removeAllRelays(CaseForm& form);
    /// Takes back the relay changes since the last save.
    bool recoverAll();

    /// The setting rules of the current case by part and number.
    [[nodiscard]] QVector<CaseRule> rules();
    /// Puts rules of the current case in force for all its relays, or leaves them out. \return false with a message and
    /// nothing changed when the case does not have one of them, or one is named twice over
    bool setRules(const QVector<int>& on, const QVector<int>& off);

    /// Whether the form names a scheme or load-flow case that the project has.
    [[nodiscard]] static bool hasSource(const CaseForm& form);
    /// Number of the load-flow case that the form stands on; -1 on a scheme or without one.
    [[nodiscard]] static int loadFlowNumber(const CaseForm& form);
    /// Checks the form and stores it: mode 1 the case with its settings and modes, any other mode the working table.
    /// The settings of relays that do not exist any more are left out, see missingRelay().
    bool SaveRecord(int mode, const CaseForm& form);
    /// Fills RLY_RLYOBJ_TEM for the current case with old and new values.
    bool LoadCaseRelays();
    [[nodiscard]] bool missingRelay() const { return missingRelay_; }
    /// Takes relays that no longer exist out of the current case.
    bool dropMissingRelays();

    /// Operating modes of the sensitivity parameters of the current case.
    bool setSensitivityModes(const QList<int>& modes);
    /// Outage elements of relays of the current case, in place of those they had: the elements are given by name.
    bool setOutages(const QVector<int>& relays, const QStringList& elements);

  private:
    bool check(const CaseForm& form);
    bool checkName(const CaseForm& form);
    bool checkValues(const CaseForm& form);
    bool SaveRecord_Case(const CaseForm& form, CaseNode& saved);
    bool SaveRecord_Sysmode(const CaseForm& form);
    /// Relays with their rules and outage elements, out of the database.
    bool takeOut(const QList<int>& relays);

    QVector<CaseNode> chain_;
    int position_ = -1;
    bool missingRelay_ = false;
    QList<int> deletedRelays_, addedRelays_;
};
