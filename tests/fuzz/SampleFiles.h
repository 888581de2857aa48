#pragma once

#include <map>
#include <string>

namespace fuzz {

/// The network files of four buses with every kind of element, coupled lines and a three-winding transformer.
std::map<std::string, std::string> sampleNetwork();
/// The same with the input of a setting calculation for two relays.
std::map<std::string, std::string> sampleStudy();

}  // namespace fuzz
