// SPDX-License-Identifier: MIT
// What lies between the toolkit's views and the system's windows, as far as it is the toolkit's.
#include "platform/macos/QtHostedView.h"
#include "platform/macos/QtPixels.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace stowpocket {
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

TEST(QtHostedViewTest, neverGrowsBeyondTheScreen) {
    auto content = std::make_unique<QWidget>();
    content->setMinimumHeight(100'000);
    EXPECT_LT(QtHostedView(std::move(content)).size().height, QApplication::primaryScreen()->size().height());
    const QtHostedView fixed(std::make_unique<QLabel>(QStringLiteral("short")), QSize(450, 520));
    EXPECT_EQ(fixed.size(), (Size{450, 520}));
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

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
