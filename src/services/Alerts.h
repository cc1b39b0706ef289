// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace stowpocket {

/// A message for the user, with one button.
struct InformationalAlert {
    std::string messageText;
    std::string informativeText;
    std::string buttonTitle;
    friend bool operator==(const InformationalAlert&, const InformationalAlert&) = default;
};

/// Main thread.
class Alerts {
public:
    virtual ~Alerts() = default;
    /// Shows the alert in front, modal to the whole program. May return before it is answered.
    virtual void runModal(const InformationalAlert& alert) = 0;
};

}  // namespace stowpocket
