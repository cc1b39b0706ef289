// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/quickdrop/X11QuickDropDesktop.h"
#include "services/FileManagerSelection.h"

#include <atomic>
#include <memory>
#include <thread>

namespace stowpocket {

class Dispatch;

/// The selection of the file manager in front, had by making it copy. The first call starts a thread with its own
/// connection to the X server; between calls that thread sleeps, but for other programs that paste what it put back
/// on the clipboard. A call during another is answered with no files at once.
class X11FileManagerSelection : public FileManagerSelection {
public:
    /// Both outlive it. Made after the application.
    X11FileManagerSelection(Dispatch& dispatch, const X11Connection& connection);
    /// Waits for the other thread, which is cut off from the server. Reads that are not answered yet never will be.
    ~X11FileManagerSelection() override;
    X11FileManagerSelection(const X11FileManagerSelection&) = delete;
    X11FileManagerSelection& operator=(const X11FileManagerSelection&) = delete;

    void read(Completion completion) override;

private:
    class Worker;
    void finished(const std::vector<FileURL>& files);

    Dispatch& dispatch_;
    const X11ActiveWindow windows_;
    std::unique_ptr<Worker> worker_;
    Completion completion_;  ///< of the read under way
    const std::shared_ptr<X11FileManagerSelection*> self_ = std::make_shared<X11FileManagerSelection*>(this);
};

}  // namespace stowpocket
