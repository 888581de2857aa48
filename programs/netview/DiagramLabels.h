#pragma once

class dbDatabase;

/// What labels tell beside the display table.
struct LabelOptions {
    bool relayTypes = false;     ///< settings stand below the name of their relay type
    bool inNetworkOnly = false;  ///< branches and elements outside the branch table get no label
    bool anew = false;           ///< labels that are there get the text of now; otherwise they keep theirs
};

/// Turns the relays of the project into labels of the diagram, as the display table asks: none, the relay types of each
/// location, or their settings, one line per part. \param realTime  the labels are committed to it
/// \return false when the host is not to be told: the display table asks for something else, and the labels are off; or
/// it cannot be read, and they are as before
bool refreshLabels(dbDatabase& realTime, const LabelOptions& options);
