// SPDX-License-Identifier: MIT
#pragma once

#include "services/FileManagerSelection.h"

namespace stowpocket {

class ScriptService;

/// The Finder's selection, asked for by a script. Every failure is an empty selection. Main thread, which waits for
/// the script.
class FinderSelection : public FileManagerSelection {
public:
    explicit FinderSelection(ScriptService& scripts) : scripts_(scripts) {}

    /// `completion` runs during the call.
    void read(Completion completion) override { completion(selectedFiles()); }
    [[nodiscard]] std::vector<FileURL> selectedFiles() const;

private:
    ScriptService& scripts_;
};

}  // namespace stowpocket
