// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

namespace stowpocket {

/// Holds back the end of a drag until the target has asked for what is dragged, or for a moment.
///
/// KWin tells a Wayland target and this program of the release at the same time. When this program says that it has
/// dropped, and all that was asked for on the way has been delivered, KWin gives the drag up. A target that asks only
/// then, after the desktop below was dragged over and asked, receives nothing.
class DropDelay : public QObject {
public:
    DropDelay();

    /// Called before Qt runs the drag.
    void begin();
    /// The dragged data was asked for.
    void asked();
    /// Called when the drag is over.
    void end();

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    void drop();

    bool isOn_ = false;
    QTimer limit_;
    QPointer<QObject> receiver_;
    std::unique_ptr<QEvent> release_;
};

}  // namespace stowpocket
