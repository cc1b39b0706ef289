// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/quickdrop/X11QuickDropDesktop.h"
#include "services/OtherPrograms.h"

#include <atomic>
#include <memory>
#include <thread>

namespace stowpocket {

class Dispatch;

/// The selection of the file manager in front, which is made to copy it. The first call starts a thread with its own
/// connection to the X server. Between calls that thread only serves other programs that paste the restored
/// clipboard. A call during another one completes at once without files.
class X11FileManagerSelection : public FileManagerSelection {
public:
    /// Both outlive it. Made after the application.
    X11FileManagerSelection(Dispatch& dispatch, const X11Connection& connection);
    /// Disconnects the thread from the server and waits for it. A read under way never completes.
    ~X11FileManagerSelection() override;
    X11FileManagerSelection(const X11FileManagerSelection&) = delete;
    X11FileManagerSelection& operator=(const X11FileManagerSelection&) = delete;

    /// False in front of a Wayland program.
    [[nodiscard]] bool isKnown() const override;
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
