// SPDX-License-Identifier: MIT
#include "platform/macos/QtBridge.h"

#include <QKeyEvent>
#include <QScreen>
#include <QSysInfo>

namespace stowpocket {
namespace {

/// What a popover needs around its content: the arrow, and a margin at the edge of the screen.
constexpr QSize aroundContent{24, 48};

/// Qt stores a pixel as one number. On the processors of a Mac its bytes are in the order of Pixels.
constexpr QImage::Format format = QImage::Format_ARGB32_Premultiplied;
static_assert(QSysInfo::ByteOrder == QSysInfo::LittleEndian);

constexpr int bytesPerPixel = 4;

}  // namespace

QtHostedView::QtHostedView(std::unique_ptr<QWidget> content, std::optional<QSize> fixedSize)
    : content_(std::move(content)), fixedSize_(fixedSize) {
    content_->setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    content_->setAttribute(Qt::WA_QuitOnClose, false);
    content_->installEventFilter(&watch_);
    announced_ = QtHostedView::size();
}

void* QtHostedView::nativeView() {
    // On macOS the identifier of a window is its NSView. NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<void*>(content_->winId());
}

Size QtHostedView::size() const {
    const QSize largest = content_->screen()->availableSize() - aroundContent;
    const QSize wanted = fixedSize_.value_or(content_->sizeHint().expandedTo(content_->minimumSizeHint()));
    const QSize size = wanted.boundedTo(largest);
    return {static_cast<double>(size.width()), static_cast<double>(size.height())};
}

void QtHostedView::layoutRequested() {
    const Size wanted = size();
    if (wanted == announced_)
        return;
    announced_ = wanted;
    sizeChanged_.emit();
}

bool QtHostedView::keyPressed(int key) {
    if (key != Qt::Key_Escape || !cancel_)
        return false;
    cancel_();
    return true;
}

bool QtHostedView::ContentWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::LayoutRequest)
        view_.layoutRequested();
    else if (event->type() == QEvent::KeyPress && view_.keyPressed(static_cast<QKeyEvent*>(event)->key()))
        return true;
    return QObject::eventFilter(watched, event);
}

QImage qImageOf(const Pixels& pixels) {
    const int bytesPerLine = pixels.width * bytesPerPixel;
    if (pixels.bytes.size() < static_cast<std::size_t>(bytesPerLine) * static_cast<std::size_t>(pixels.height))
        return {};
    return QImage(pixels.bytes.data(), pixels.width, pixels.height, bytesPerLine, format).copy();
}

Pixels pixelsOfImage(const QImage& image) {
    const QImage converted = image.convertToFormat(format);
    Pixels pixels{converted.width(), converted.height(), {}};
    for (int row = 0; row < converted.height(); ++row) {
        const uchar* const line = converted.constScanLine(row);
        pixels.bytes.insert(pixels.bytes.end(), line, line + qsizetype{bytesPerPixel} * converted.width());
    }
    return pixels;
}

}  // namespace stowpocket
