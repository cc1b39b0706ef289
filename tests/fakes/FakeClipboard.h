// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dragging.h"

namespace stowpocket {

/// A clipboard that remembers what it was given, and delivers what the test puts into it.
class FakeClipboard : public Clipboard {
public:
    void copyFiles(const std::vector<FileURL>& newFiles) override { files = newFiles; }
    void copyText(const std::string& newText) override { text = newText; }
    void read(Completion completion) override { completion(content); }

    std::vector<FileURL> files;
    std::string text;
    std::vector<std::shared_ptr<ItemProvider>> content;
};

}  // namespace stowpocket
