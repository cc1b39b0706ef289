// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// What is selected in the desktop's file manager. Main thread.
class FileManagerSelection {
public:
    using Completion = std::function<void(const std::vector<FileURL>&)>;

    virtual ~FileManagerSelection() = default;
    /// Whether the program in front can be asked at all. Some desktops keep programs of another kind apart.
    [[nodiscard]] virtual bool isKnown() const { return true; }
    /// Runs `completion` once, on the main thread, during the call or later, with the selected files in the order of
    /// the selection. It gets no files if nothing is selected, no file manager is in front, or the file manager does
    /// not respond.
    virtual void read(Completion completion) = 0;
};

/// What a script returned: a list, one value, or neither.
class EventDescriptor {
public:
    virtual ~EventDescriptor() = default;
    [[nodiscard]] virtual int numberOfItems() const = 0;
    /// The item at the index, counted from 1; null when there is none.
    [[nodiscard]] virtual std::unique_ptr<EventDescriptor> descriptorAtIndex(int index) const = 0;
    [[nodiscard]] virtual std::optional<std::string> stringValue() const = 0;
};

class Script {
public:
    virtual ~Script() = default;
    /// Runs the script to its end. Null when any error information came back.
    [[nodiscard]] virtual std::unique_ptr<EventDescriptor> execute() = 0;
};

/// Runs scripts that talk to other applications. Main thread, which waits for them.
class ScriptService {
public:
    virtual ~ScriptService() = default;
    /// Null when no script can be made of the text.
    [[nodiscard]] virtual std::unique_ptr<Script> makeScript(const std::string& source) = 0;
};

}  // namespace stowpocket
