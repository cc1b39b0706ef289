// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Values.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace stowpocket {

/// Runs other programs. Any thread but the main one: the call waits for the end of the program.
class ChildProcess {
public:
    virtual ~ChildProcess() = default;
    /// Returns the standard output of the program, whatever its exit status; its standard error is discarded. None if
    /// the program could not be started, or was ended because it ran too long or wrote too much.
    [[nodiscard]] virtual std::optional<Bytes> run(const std::string& executable,
                                                   const std::vector<std::string>& arguments) = 0;
};

/// Reads property lists that others wrote. Any thread.
class PropertyListParser {
public:
    virtual ~PropertyListParser() = default;
    /// None when `bytes` are no property list.
    [[nodiscard]] virtual std::optional<PropertyValue> parse(const Bytes& bytes) = 0;
};

/// Hands files to other programs of the desktop. Main thread. Every call returns at once: a program that does not
/// answer holds up nothing.
class FileOpener {
public:
    using Completion = std::function<void(bool areAllOpened)>;

    virtual ~FileOpener() = default;
    /// Opens each file with the desktop's application for its type. `completion` runs on the main thread, during the
    /// call or later, with false if a file has no application. It is not called after this object is destroyed.
    virtual void open(std::span<const FileURL> files, Completion completion) = 0;
    /// Shows the files in the file manager, selected in their folders. If no file manager can do that, the folders
    /// are opened.
    virtual void showInFolder(std::span<const FileURL> files) = 0;
    /// Shows the content of a file in the desktop's previewer, or closes the preview if it is shown. Does nothing on
    /// desktops without a previewer.
    virtual void preview(const FileURL& file) = 0;
};

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
