#pragma once

#include "programs/frame/EditSession.h"
#include "programs/workflow/CaseStore.h"
#include "programs/workflow/NetworkSource.h"

/// Editing the cases of a project: what is written stands in the database at once, and everything, calculations
/// included, can be taken back to where it was at open(). The network of the case in hand stands in the branch table
/// and the real-time database. A refused operation has said why in the dock and changed nothing.
class CaseEditing {
  public:
    explicit CaseEditing(NetworkSource& network);

    /// \param caseNo  the case to begin with; if there is none of that number, the one with the lowest
    bool open(int caseNo);
    [[nodiscard]] bool isOpen() const { return session_.isOpen(); }
    [[nodiscard]] CaseStore& cases() { return cases_; }
    [[nodiscard]] NetworkSource& network() { return network_; }
    /// Whether the database differs from what it was at open().
    [[nodiscard]] bool hasChanged() const;

    // The form of the case in hand is saved first.
    bool moveTo(int position, const CaseForm& form);
    /// A new case of the first relay type, on the network that is loaded.
    bool insert(const CaseForm& form);
    bool copy(const CaseForm& form);

    bool remove();
    [[nodiscard]] bool canPaste() const { return copied_ >= 0; }
    /// Puts what copy() saw last into the case in hand.
    bool paste();
    /// Gives a case that is not stored yet another relay type; its relays leave the form.
    void setType(CaseForm& form, int rTypeNo);

    /// The names among which the network of the case in hand is chosen next; the case stands on the first until then.
    QStringList standOnLoadFlow();
    QStringList standOnScheme();
    /// The case in hand stands on this network from now on, which is brought in.
    bool chooseNetwork(bool onLoadFlow, const QString& name);
    /// Brings the network of the case in hand in, and tells when that fails.
    void switchNetwork();

    /// Makes sure that no other program calculates in the project, and takes the tables of a run back that was left
    /// without its end.
    static bool claimRuns();

    /// Ends the editing: everything stays, or goes back.
    bool keep();
    bool cancel();

  private:
    NetworkSource& network_;
    CaseStore cases_;
    EditSession session_;
    int copied_ = -1;  ///< number of the case that was copied
};
