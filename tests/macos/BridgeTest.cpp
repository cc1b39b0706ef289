// SPDX-License-Identifier: MIT
// What lies between the toolkit's views and the system's windows, as far as it is the toolkit's.
#include "main/macos/OpenedFiles.h"
#include "platform/macos/MacPictures.h"
#include "platform/macos/QtBridge.h"
#include "views/controls/Theme.h"
#include "views/onboarding/OnboardingParts.h"

#include <QApplication>
#include <QFileOpenEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using Rgba = std::array<double, 4>;
Rgba accentOfUser{0, 0, 1, 1};

}  // namespace

/// A system that has two colours.
std::optional<Rgba> rgbaOf(MacColor color, bool isDark) {
    if (color == MacColor::controlAccent)
        return accentOfUser;
    if (color == MacColor::secondaryLabel)
        return isDark ? Rgba{1, 1, 1, 0.5} : Rgba{0, 0, 0, 0.5};
    return std::nullopt;
}
std::optional<Pixels> systemSymbolPixels(const SymbolPicture&, int) {
    return std::nullopt;
}

namespace {

TEST(QtHostedViewTest, asksForAnotherSizeWheneverItsContentDoes) {
    auto content = std::make_unique<QWidget>();
    auto* const label = new QLabel(QStringLiteral("short"));
    (new QVBoxLayout(content.get()))->addWidget(label);
    QtHostedView view(std::move(content));
    ASSERT_NE(view.nativeView(), nullptr);
    view.setShown(true);
    QCoreApplication::sendPostedEvents();
    int asked = 0;
    const Subscription watching = view.sizeChanged().connect([&] { ++asked; });
    const Size before = view.size();
    label->setText(QStringLiteral("a text that is a good deal longer"));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(asked, 1);
    EXPECT_GT(view.size().width, before.width);
    label->updateGeometry();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(asked, 1) << "nothing has changed";
    view.setShown(false);
    EXPECT_FALSE(label->isVisible());
}

TEST(QtHostedViewTest, isCancelledByEscapeThatItsContentLeaves) {
    auto content = std::make_unique<QWidget>();
    auto* const label = new QLabel(content.get());
    QtHostedView view(std::move(content));
    int cancelled = 0;
    const auto press = [&](QWidget* widget, int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(press(label, Qt::Key_Escape));
    view.setCancel([&] { ++cancelled; });
    EXPECT_FALSE(press(label, Qt::Key_Return));
    EXPECT_EQ(cancelled, 0);
    EXPECT_TRUE(press(label, Qt::Key_Escape)) << "the system beeps at keys without effect";
    EXPECT_EQ(cancelled, 1);
}

TEST(QtHostedViewTest, neverGrowsBeyondTheScreen) {
    auto content = std::make_unique<QWidget>();
    content->setMinimumHeight(100'000);
    EXPECT_LT(QtHostedView(std::move(content)).size().height, QApplication::primaryScreen()->size().height());
    const QtHostedView fixed(std::make_unique<QLabel>(QStringLiteral("short")), QSize(450, 520));
    EXPECT_EQ(fixed.size(), (Size{450, 520}));
}

TEST(OpenedFilesTest, deliversTogetherWhatIsOpenedTogether) {
    std::vector<std::vector<FileURL>> delivered;
    const OpenedFiles opened([&](const std::vector<FileURL>& files) { delivered.push_back(files); });
    const auto open = [](const char* path) {
        QFileOpenEvent event(QString::fromUtf8(path));
        QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
    };
    open("/home/a b.txt");
    open("");
    open("/home/\u00e4.txt");
    EXPECT_TRUE(delivered.empty());
    QCoreApplication::sendPostedEvents();
    open("/home/c");
    QCoreApplication::sendPostedEvents();
    using Files = std::vector<FileURL>;
    const std::vector<Files> expected{{*FileURL::fromPath("/home/a b.txt"), *FileURL::fromPath("/home/\u00e4.txt")},
                                      {*FileURL::fromPath("/home/c")}};
    EXPECT_EQ(delivered, expected);
}

TEST(SystemColorsTest, areThoseOfTheWindowsAppearance) {
    const QPalette light(Qt::white);
    const QPalette dark = Theme::darkPalette();
    EXPECT_EQ(Theme::color(ColorRole::secondary, light).rgba(), qRgba(0, 0, 0, 128));
    EXPECT_EQ(Theme::color(ColorRole::secondary, dark, 0.5).rgba(), qRgba(255, 255, 255, 64));
    EXPECT_GT(Theme::color(ColorRole::orange, dark).red(), 200) << "the program's own where the system has none";
}

TEST(SystemColorsTest, aNewAccentShowsAtOnce) {
    OnboardingBadge badge;
    OnboardingPresentation shown;
    shown.ringOpacity = 1;
    badge.setPresentation(shown);
    const auto blueOnRing = [&] { return badge.grab().toImage().pixelColor(badge.width() / 2, 1).blue(); };
    EXPECT_GT(blueOnRing(), 200);
    accentOfUser = {1, 0, 0, 1};
    EXPECT_LT(blueOnRing(), 100);
}

TEST(QtPixelsTest, keepsEveryPixelBothWays) {
    QImage image(3, 2, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(255, 128, 0));
    image.setPixelColor(2, 1, QColor(0, 0, 255, 0));
    const Pixels pixels = pixelsOfImage(image);
    ASSERT_EQ(pixels.bytes.size(), 3U * 2U * 4U);
    EXPECT_EQ(Bytes(pixels.bytes.begin(), pixels.bytes.begin() + 4), (Bytes{0, 128, 255, 255}));
    EXPECT_EQ(qImageOf(pixels), image);
    EXPECT_EQ(pixelsOfImage(image.convertToFormat(QImage::Format_RGB32)).bytes.size(), pixels.bytes.size());
    EXPECT_TRUE(qImageOf({3, 2, Bytes(23)}).isNull()) << "one byte is missing";
}

}  // namespace
}  // namespace stowpocket
