#pragma once

#include <QHash>
#include <QVector>
#include <optional>

#include "exchange/RuleFile.h"
#include "programs/frame/Location.h"
#include "programs/reports/BookRequest.h"

// What a calculation book tells, free of any layout.

/// A branch of the network of the run; the names are empty where that network does not have it.
struct BookElement {
    QString ID_Name, I_Name, J_Name;
    int Flg = 0;  ///< kind: 1 line, 2 two-winding, 3 three-winding transformer, 4 capacitor, 5 reactor, 6 generator
};

struct BookFault {
    int FType = 0;
    BookElement element;
    int K_Loc = 0;  ///< percent from the element's I node
    QString R, X;   ///< as stored
};

/// The candidate that a fault mode or a branch coefficient chose.
struct BookDecision {
    int SysNo = 0;  ///< operating mode; 0 the network as it stands
    QString mode;   ///< its name; "0" when it has none
    QVector<BookFault> faults;
    std::optional<BookElement> outage;
};

struct BookVariable {
    int ModeNo = 0;
    int VType = 0;
    QString Cin;
    int VarNo = 0;
    QString unit{};           ///< of shown(); empty for a pure number
    std::optional<double> V;  ///< as the engine gave it, fault quantities in thousands; nothing when it gave none
    QVector<BookDecision> faults;
    QVector<BookElement> elements;
    QVector<Location> relays;  ///< the coordinated ones

    [[nodiscard]] bool ofFault() const { return ModeNo >= 1 && ModeNo <= 20; }
    [[nodiscard]] bool ofElement() const { return (ModeNo >= 21 && ModeNo <= 30) || (ModeNo >= 41 && ModeNo <= 45); }
    [[nodiscard]] bool ofRelay() const { return ModeNo >= 31 && ModeNo <= 40; }
    [[nodiscard]] bool isCoefficient() const { return VType >= 451 && VType <= 456; }
    [[nodiscard]] bool isAssist() const { return VType >= 453 && VType <= 456; }
    /// The value in A, V, ohm or as it stands.
    [[nodiscard]] std::optional<double> shown() const;
};

/// A branch coefficient of a relay for a main branch. 0: the sequence has none.
struct BookCoefficient {
    struct Sequence {
        double Fz = 0;
        BookDecision decided;
    };
    Sequence positive, zero;
};

struct BookParameter {
    QString C;
    double K = 0;
};

struct BookResult {
    QString Cdz, DspCdz;
    double Rdz = 0;
    QString unit{};
};

struct BookRule {
    int RuleNo = 0;
    QString Note, Formula;
    int ParNo = 0;
    QVector<BookParameter> parameters;  ///< of the group in use, by `KNo`
    QVector<BookVariable> variables;    ///< by `VarNo`
    QVector<BookResult> results;
    QStringList outputs;                      ///< `Cdz` by `DzNo`
    std::vector<exchange::RuleLine> lines{};  ///< how the engine forms the outputs

    [[nodiscard]] bool hasCoefficients() const;
    /// The engine had no result: all its outputs stand as 0.
    [[nodiscard]] bool withoutResult() const;
};

struct BookSensitivity {
    QString Note, Cdz;  ///< the parameter in use
    double parameter = 0;
    double Klm = 0;  ///< -1.0 none because the parameter is 0, -2.0 because the setting is
};

struct BookSetting {
    QString Cdz, DspCdz;
    QString unit;
    double primary = 0, secondary = 0;
    QVector<BookSensitivity> sensitivities;
};

/// A part of a relay with its rules, in order of calculation.
struct BookPart {
    int RNo = 0, PNo = 0;
    QString label;  ///< place of the relay, ended by a blank
    QVector<BookRule> rules;
    QVector<BookSetting> settings;  ///< none in the sensitivity book
};

struct BookContent {
    BookRequest request;
    int RType = 0;  ///< code of the element on which the relays stand
    QVector<BookPart> parts;
    QHash<int, QVector<BookCoefficient>> coefficients;  ///< by relay
};

/// Reads what a book tells, in a number of statements that does not depend on the number of relays.
/// \return nothing when the tables cannot be read; the dock then has the reason
std::optional<BookContent> readBookContent(const BookRequest& request);
