#pragma once

#include "platform/host/NetworkModel.h"
#include "platform/import/CsvColumns.h"

/// Between the units of the plain network files (ohm, microsiemens, MVA, kV, percent, kW, Mvar) and per unit on 100
/// MVA. Each pair of functions is inverse; NaN (not given) stays NaN.
namespace import::csv {

constexpr double baseMva = 100;

/// Base impedance of a voltage level, ohm.
inline double baseOhm(double baseKv) { return baseKv * baseKv / baseMva; }

/// \param baseKv  base voltage of the I node
host::Line toModel(const LineRow& row, double baseKv);
LineRow toRow(const host::Line& line, double baseKv);

/// Impedances from the I side: uk in percent of kv_i^2 / mva, losses in kW at the rating; a negative uk_percent is a
/// negative reactance.
/// \pre  mva > 0, |losses| <= |uk|
host::Transformer2 toModel(const Transformer2Row& row, double baseKv);
Transformer2Row toRow(const host::Transformer2& transformer, double baseKv);

/// Pairwise values, each on the smaller rating of its two windings and the voltage of winding 1, become a star.
/// \param baseKv  base voltage of the node of winding 1
host::Transformer3 toModel(const Transformer3Row& row, double baseKv);
Transformer3Row toRow(const host::Transformer3& transformer, double baseKv);

host::Generator toModel(const GeneratorRow& row, double baseKv);
GeneratorRow toRow(const host::Generator& generator, double baseKv);

host::Shunt toModel(const ShuntRow& row, double baseKv);
ShuntRow toRow(const host::Shunt& shunt, double baseKv);

/// \param baseKv  base voltage of the I node of the first line
host::Mutual toModel(const MutualRow& row, double baseKv);
MutualRow toRow(const host::Mutual& mutual, double baseKv);

/// "D", "Y", "YN". \return false when the text is none of them
bool groundingOf(const std::string& text, host::Grounding& grounding);

/// Whether the losses leave room for a reactance: |pk_kw| / 1000 / mva <= |uk| / 100; true when not given.
bool lossesFit(double ukPercent, double pkKw, double mva);

}  // namespace import::csv
