// What the fuzzer calls: one program per target, chosen when it is compiled.

#include <cstddef>
#include <cstdint>

#include "tests/fuzz/Targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const fuzz::Target& target : fuzz::kTargets)
        if (target.name == std::string_view(MORVANE_FUZZ_TARGET)) target.run(bytes);
    return 0;
}
