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

/// A widget inside a window or popover of the system. To Qt the widget is a window. Its native view becomes a subview
/// of the system's window.
class QtHostedView : public HostedView {
public:
    /// Without a fixed size the view is as large as its content asks, but never larger than the screen.
    explicit QtHostedView(std::unique_ptr<QWidget> content, std::optional<QSize> fixedSize = std::nullopt);

    [[nodiscard]] void* nativeView() override;
    [[nodiscard]] Size size() const override;
    [[nodiscard]] Signal<>& sizeChanged() override { return sizeChanged_; }
    void setCancel(std::function<void()> cancel) override { cancel_ = std::move(cancel); }
    void setShown(bool isShown) override { content_->setVisible(isShown); }

private:
    /// Watches for layout requests of the content and for keys that the content has not used.
    class ContentWatch : public QObject {
    public:
        explicit ContentWatch(QtHostedView& view) : view_(view) {}
        bool eventFilter(QObject* watched, QEvent* event) override;

    private:
        QtHostedView& view_;
    };

    void layoutRequested();
    /// Returns whether the key was used.
    [[nodiscard]] bool keyPressed(int key);

    const std::unique_ptr<QWidget> content_;
    const std::optional<QSize> fixedSize_;
    Signal<> sizeChanged_;
    std::function<void()> cancel_;
    ContentWatch watch_{*this};
    Size announced_;
};

/// Returns a null image when bytes are missing.
[[nodiscard]] QImage qImageOf(const Pixels& pixels);
[[nodiscard]] Pixels pixelsOfImage(const QImage& image);

}  // namespace stowpocket
