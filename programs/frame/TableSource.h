#pragma once

#include <vector>

namespace tables {

/// A table as it is written down: columns as "name type" with ", " between them, each NOT NULL with default 0 or ''
/// unless its type ends in NULL, DEFAULT or AUTO_INCREMENT.
struct TableSource {
    int code;
    const char* name;
    const char* columns;
    const char* keys;
    const char* copyKeys = nullptr;  ///< where a copy has other keys
};

const std::vector<TableSource>& ruleSources();
const std::vector<TableSource>& relaySources();
const std::vector<TableSource>& caseSources();
const std::vector<TableSource>& workingSources();

}  // namespace tables
