// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    stowpocket::checkInput({data, data + size});
    return 0;
}
