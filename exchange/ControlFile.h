#pragma once

#include <string>
#include <string_view>

namespace exchange {

/// The one-line control record, RELAY.R0.
struct Control {
    int elementClass = 2;  ///< 1 for relays on lines and two-winding transformers, else 2
    int mlf = 0;           ///< 1 when the case stands on a load-flow case: pre-fault state from the load flow
    int nPara = 0;
    int lgup = 0;
};

std::string format(const Control& control);
/// \throws FormatError
Control parseControl(std::string_view text, const std::string& file);

}  // namespace exchange
