// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"

namespace stowpocket {

/// Tells when file systems come and go. Main thread.
class Volumes {
public:
    virtual ~Volumes() = default;
    [[nodiscard]] virtual Signal<>& didMount() = 0;
    [[nodiscard]] virtual Signal<>& didUnmount() = 0;
};

}  // namespace stowpocket
