#pragma once

#include "engines/faults/PortEquations.h"

namespace engines {

/// What a solution is made of.
struct Solution::State {
    const Network* network;
    std::shared_ptr<const Places> places;
    std::shared_ptr<const SequencePorts> positive, zero;
    SequenceFields fields;
    int fault = -1;
    bool dead = false;

    template <class Of>
    Sequences each(Of of) const {
        if (dead) return {};
        return {of(fields[0]), of(fields[1]), of(fields[2])};
    }
};

}  // namespace engines
