#include "engines/network/Memory.h"

#include <cstddef>
#include <cstdlib>

namespace engines {

// The allocator hands large blocks back to the system until it has seen one of that size freed; from then on it keeps
// such blocks, and twice as much at the end of its heap. Just below the size up to which it learns so.
void keepFreedMemory() {
    constexpr std::size_t kLargest = (std::size_t{32} << 20) - (std::size_t{64} << 10);
    void* volatile block = std::malloc(kLargest);
    std::free(block);
}

}  // namespace engines
