// SPDX-License-Identifier: MIT
#pragma once

#include "services/MainBundle.h"

#include <optional>
#include <string>

namespace stowpocket {

/// The login item as freedesktop autostart has it: a desktop entry in the user's autostart folder. It counts as
/// enabled only while the entry has the command that this class writes for this very executable.
class XdgLoginItem : public LoginItem {
public:
    /// `configHome` is the user's configuration folder, empty without a home folder. `executable` is the absolute
    /// path of the file to start.
    XdgLoginItem(const std::optional<std::string>& configHome, std::string executable);

    /// `requiresApproval` means that the user has turned the entry off in the desktop's own settings.
    [[nodiscard]] Status status() const override;
    [[nodiscard]] bool registerItem() override;
    [[nodiscard]] bool unregisterItem() override;

private:
    /// Empty without a home folder.
    const std::string folder_;
    const std::string path_;
    const std::string executable_;
};

}  // namespace stowpocket
