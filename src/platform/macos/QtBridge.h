// SPDX-License-Identifier: MIT
#pragma once

#include "platform/macos/MacPictures.h"
#include "platform/macos/MacWindows.h"

#include <QImage>
#include <QObject>
#include <QSize>
#include <QWidget>

#include <memory>
#include <optional>

namespace stowpocket {

/// A widget inside a window or popover of the system. The widget is a window to Qt, whose native view goes into the
/// system's.
class QtHostedView : public HostedView {
public:
    /// As large as its content wishes, but never larger than the screen, or of a fixed size.
    explicit QtHostedView(std::unique_ptr<QWidget> content, std::optional<QSize> fixedSize = std::nullopt);

    [[nodiscard]] void* nativeView() override;
    [[nodiscard]] Size size() const override;
    [[nodiscard]] Signal<>& sizeChanged() override { return sizeChanged_; }
    void setCancel(std::function<void()> cancel) override { cancel_ = std::move(cancel); }
    void setShown(bool isShown) override { content_->setVisible(isShown); }

private:
    /// Watches for the content's wishes, and for keys that have come up to it unused.
    class ContentWatch : public QObject {
    public:
        explicit ContentWatch(QtHostedView& view) : view_(view) {}
        bool eventFilter(QObject* watched, QEvent* event) override;

    private:
        QtHostedView& view_;
    };

    void layoutRequested();
    /// Whether the key has had its effect.
    [[nodiscard]] bool keyPressed(int key);

    const std::unique_ptr<QWidget> content_;
    const std::optional<QSize> fixedSize_;
    Signal<> sizeChanged_;
    std::function<void()> cancel_;
    ContentWatch watch_{*this};
    Size announced_;
};

/// Null for pixels that are not there.
[[nodiscard]] QImage qImageOf(const Pixels& pixels);
[[nodiscard]] Pixels pixelsOfImage(const QImage& image);

}  // namespace stowpocket
