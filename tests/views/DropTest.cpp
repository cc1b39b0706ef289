// SPDX-License-Identifier: MIT
#include "ShelfViewFixture.h"

#include <gtest/gtest.h>

#include <QDropEvent>
#include <QTest>
#include <QUrl>

namespace stowpocket {
namespace {

class DropTest : public testing::Test, protected ShelfViewFixture {
protected:
    [[nodiscard]] QWidget& target() const { return *visible<ShelfContentView>(*view)[0]; }
    [[nodiscard]] bool isHighlighted() const { return visible<DropZoneView>(*view)[0]->isTargeted(); }

    static std::unique_ptr<QMimeData> urls(const QStringList& texts) {
        auto data = std::make_unique<QMimeData>();
        data->setUrls(QUrl::fromStringList(texts));
        return data;
    }
    /// Whether the view would take it.
    bool enter(const QMimeData& data, Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction) {
        QDragEnterEvent event(QPoint(100, 100), offered, &data, Qt::LeftButton, {});
        event.ignore();
        QApplication::sendEvent(&target(), &event);
        EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction);
        return event.isAccepted();
    }
    bool drop(const QMimeData& data) {
        QDropEvent event(QPointF(100, 100), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        event.ignore();
        QApplication::sendEvent(&target(), &event);
        EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction);
        for (const auto& provider : dropped) {
            if (provider->finish)
                provider->finish();
        }
        dispatch.runAll();
        return event.isAccepted();
    }
};

TEST_F(DropTest, filesLandOnTheShelf) {
    makeFiles(2);
    open();
    const auto data = urls({QStringLiteral("file:///files/0.txt"), QStringLiteral("file:///files/1.txt")});
    EXPECT_TRUE(enter(*data));
    EXPECT_TRUE(isHighlighted());
    constexpr int tinted = 220;  // of the window's 239, below orange at 8 %
    const auto blue = [&] { return visible<DropZoneView>(*view)[0]->grab().toImage().pixelColor(60, 20).blue(); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return blue() == tinted; }, 1000)) << "within a moment";
    EXPECT_TRUE(drop(*data));
    EXPECT_FALSE(isHighlighted());
    EXPECT_EQ(names(), (std::vector<std::string>{"0.txt", "1.txt"}));
    EXPECT_EQ(visible<ShelfItemView>(*view).size(), 2U);
}

TEST_F(DropTest, theHighlightGoesWithTheDrag) {
    addFiles(1);
    open();
    const QImage before = host.grab().toImage();
    const auto data = urls({QStringLiteral("file:///files/new.txt")});
    ASSERT_TRUE(enter(*data));
    QDragLeaveEvent leave;
    QApplication::sendEvent(&target(), &leave);
    EXPECT_FALSE(isHighlighted());
    ASSERT_TRUE(enter(*data));
    host.hide();
    host.show();
    EXPECT_EQ(host.grab().toImage(), before) << "a popover that closes during a drag and is opened again";
}

TEST_F(DropTest, onlyWhatCanBecomeAFileIsTaken) {
    open();
    QMimeData words;
    words.setText(QStringLiteral("words"));
    QMimeData promise;
    promise.setData(promiseFormat, "picture.png");
    EXPECT_FALSE(enter(words));
    EXPECT_FALSE(isHighlighted());
    EXPECT_TRUE(enter(promise));
    EXPECT_TRUE(dropped.empty()) << "nothing is read before the drop";
    EXPECT_FALSE(enter(*urls({QStringLiteral("file:///a")}), Qt::MoveAction)) << "files are never moved";
    EXPECT_FALSE(drop(words)) << "a drop that was never welcome";
    EXPECT_FALSE(drop(*urls({QStringLiteral("https://example.com/")})));
    EXPECT_TRUE(manager->items().empty());
}

TEST_F(DropTest, aFullShelfRefuses) {
    addFiles(19);
    open();
    const auto data = urls({QStringLiteral("file:///files/new.txt")});
    files.add("/files/new.txt");
    ASSERT_TRUE(enter(*data));
    addFiles(1, 100);
    EXPECT_FALSE(drop(*data)) << "full by the time of the drop";
    EXPECT_FALSE(enter(*data));
    EXPECT_EQ(manager->items().size(), 20U);
    EXPECT_FALSE(viewModel->capacityMessage());
    manager->removeItem(manager->items()[0].id);
    EXPECT_TRUE(enter(*data));
}

}  // namespace
}  // namespace stowpocket
