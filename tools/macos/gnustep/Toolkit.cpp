// SPDX-License-Identifier: MIT
// What the toolkit does here in place of macOS: the few calls of CoreGraphics, and the views of widgets.
#include "gnustep/Toolkit.h"

#include <QApplication>
#include <QFileOpenEvent>
#include <QImage>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <array>
#include <map>
#include <string>

struct CGImage {
    QImage picture;
};
struct CGContext {
    QImage picture;
};
struct CGColorSpace {};

const CFStringRef kCGColorSpaceSRGB = nullptr;

CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef) {
    return new CGColorSpace;
}
void CGColorSpaceRelease(CGColorSpaceRef space) {
    delete space;
}
CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                   size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo) {
    if (space == nullptr || bitsPerComponent != 8 ||
        bitmapInfo != (uint32_t{kCGImageAlphaPremultipliedFirst} | kCGBitmapByteOrder32Little))
        return nullptr;
    return new CGContext{QImage(static_cast<uchar*>(data), static_cast<int>(width), static_cast<int>(height),
                                static_cast<qsizetype>(bytesPerRow), QImage::Format_ARGB32_Premultiplied)};
}
CGImageRef CGBitmapContextCreateImage(CGContextRef context) {
    return new CGImage{context->picture.copy()};
}
void CGContextRelease(CGContextRef context) {
    delete context;
}
void CGContextSetInterpolationQuality(CGContextRef, CGInterpolationQuality) {}
/// Its rows are counted from the bottom.
void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image) {
    const double top = context->picture.height() - rect.origin.y - rect.size.height;
    QPainter(&context->picture)
        .drawImage(QRectF(rect.origin.x, top, rect.size.width, rect.size.height), image->picture);
}
size_t CGImageGetWidth(CGImageRef image) {
    return image == nullptr ? 0 : static_cast<size_t>(image->picture.width());
}
size_t CGImageGetHeight(CGImageRef image) {
    return image == nullptr ? 0 : static_cast<size_t>(image->picture.height());
}
void CGImageRelease(CGImageRef image) {
    delete image;
}

namespace stowpocket::standIn {

CGImageRef imageOfRGBA(const unsigned char* bytes, int width, int height, int bytesPerRow) {
    return new CGImage{QImage(bytes, width, height, bytesPerRow, QImage::Format_RGBA8888).copy()};
}
void copyRGBA(CGImageRef image, unsigned char* bytes) {
    const QImage picture = image->picture.convertToFormat(QImage::Format_RGBA8888);
    std::copy_n(picture.constBits(), picture.sizeInBytes(), bytes);
}
CGImageRef imageOfFile(const char* path) {
    const QImage picture(QString::fromUtf8(path));
    return picture.isNull() ? nullptr : new CGImage{picture};
}

}  // namespace stowpocket::standIn

/// On macOS the number of a widget's window is the address of its view. Here the call has another name in all that
/// asks for it, this file included, so that the toolkit keeps its own.
WId QWidget::winId() const {
    static std::map<const QWidget*, void*> views;
    auto* const widget = const_cast<QWidget*>(this);
    const auto [place, isNew] = views.try_emplace(widget);
    if (isNew) {
        place->second =
            stowpocket::standIn::makeQtView([widget](int width, int height) { widget->resize(width, height); });
        QObject::connect(widget, &QObject::destroyed,
                         [widget] { stowpocket::standIn::releaseQtView(views.extract(widget).mapped()); });
    }
    return reinterpret_cast<WId>(place->second);
}

void stowpocket::standIn::openFiles(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        QFileOpenEvent event(QString::fromStdString(path));
        QCoreApplication::sendEvent(qApp, &event);
    }
}

void stowpocket::standIn::pressEscape() {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        if (window->isVisible())
            QCoreApplication::sendEvent(window, &event);
    }
}

int stowpocketMain(int argc, char** argv);

int stowpocket::standIn::runProgram(const std::function<void()>& user) {
    static std::function<void()> waiting;
    waiting = user;
    otherLoop = [] { QCoreApplication::processEvents(); };
    terminateThrough([] { QCoreApplication::quit(); });
    qAddPreRoutine([] { QTimer::singleShot(1, qApp, [] { waiting(); }); });
    std::string name = "stowpocket";
    std::array<char*, 2> arguments{name.data(), nullptr};
    return stowpocketMain(1, arguments.data());
}
