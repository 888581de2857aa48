#pragma once

#include <array>
#include <memory>

#include "engines/faults/SequencePorts.h"

/// The conditions of all ports in all three sequences as one small dense system.
namespace engines {

/// The same ports in the positive, negative and zero sequence.
using PortNetworks = std::array<std::shared_ptr<const SequencePorts>, 3>;
using SequenceFields = std::array<SequenceField, 3>;

/// Theory (12) to (18). Solves for the currents into the shunts and the voltages across the opens.
SequenceFields solvePorts(const Places& places, const PortNetworks& networks);

/// The same in one sequence network alone: one port carries a given injection, the others short their places.
SequenceField solveInjection(const std::shared_ptr<const SequencePorts>& network, int port);

}  // namespace engines
