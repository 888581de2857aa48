#pragma once

#include <QString>

/// The calculation tables of a case, made from the base network and the changes of a scheme. An unknown or empty scheme
/// changes nothing. The tables must exist; the statements take part in the caller's transaction.
namespace host {

/// L1_<n> .. L7_<n>: nodes, lines and shunts, transformers, generators, loads, switches.
bool fillCalculationTables(const QString& connection, int n, const QString& scheme);

/// S2_0 .. S5_0: zero-sequence data of lines and shunts, transformers, mutual impedances, generators. Neutral
/// impedances are in the impedance of the zero-sequence path, three times, per unit on 100 MVA and the node's base kV.
/// ZCtype is 1 shunt to ground at I, 2 shunt to ground at J, 3 through, 0 none.
bool fillSequenceTables(const QString& connection, const QString& scheme);

}  // namespace host
