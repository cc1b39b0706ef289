// SPDX-License-Identifier: MIT
#include "ShelfViewFixture.h"

#include <QDropEvent>
#include <QUrl>

namespace stowpocket {
namespace {

struct DropTest : testing::Test, ShelfViewFixture {
    [[nodiscard]] QWidget& target() const { return *visible<ShelfContentView>(*view)[0]; }
    [[nodiscard]] DropZoneView& zone() const { return *visible<DropZoneView>(*view)[0]; }

    static std::unique_ptr<QMimeData> urls(const QStringList& texts) {
        auto data = std::make_unique<QMimeData>();
        data->setUrls(QUrl::fromStringList(texts));
        return data;
    }
    /// Whether the view takes it, which is never by moving it.
    template <class Event>
    bool send(Event event) {
        event.ignore();
        QApplication::sendEvent(&target(), &event);
        EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction);
        return event.isAccepted();
    }
    bool enter(const QMimeData& data, Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction) {
        return send(QDragEnterEvent(QPoint(100, 100), offered, &data, Qt::LeftButton, {}));
    }
    bool drop(const QMimeData& data) {
        const bool isTaken =
            send(QDropEvent(QPointF(100, 100), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {}));
        for (const auto& provider : dropped) {
            if (provider->finish)
                provider->finish();
        }
        dispatch.runAll();
        return isTaken;
    }

    const std::unique_ptr<QMimeData> newFile = urls({QStringLiteral("file:///files/new.txt")});
};

TEST_F(DropTest, filesLandOnTheShelfAndTheHighlightGoesWithTheDrag) {
    open();
    const auto data = urls({QStringLiteral("file:///files/0.txt"), QStringLiteral("file:///files/1.txt")});
    EXPECT_TRUE(enter(*data));
    EXPECT_TRUE(zone().isTargeted());
    constexpr int tinted = 220;  // of the window's 239, below orange at 8 %
    const auto blue = [&] { return zone().grab().toImage().pixelColor(60, 20).blue(); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return blue() == tinted; }, 1000)) << "within a moment";
    EXPECT_TRUE(drop(*data));
    EXPECT_EQ(names(), (Names{"0.txt", "1.txt"}));

    const QImage before = host.grab().toImage();
    ASSERT_TRUE(enter(*newFile));
    QDragLeaveEvent leave;
    QApplication::sendEvent(&target(), &leave);
    EXPECT_FALSE(zone().isTargeted());
    ASSERT_TRUE(enter(*newFile));
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
    EXPECT_FALSE(enter(words) || zone().isTargeted());
    EXPECT_TRUE(enter(promise));
    EXPECT_FALSE(enter(*newFile, Qt::MoveAction)) << "files are never moved";
    EXPECT_FALSE(drop(words)) << "a drop that was never welcome";
}

TEST_F(DropTest, aFullShelfRefuses) {
    open(19);
    ASSERT_TRUE(enter(*newFile));
    addFiles(1, 100);
    EXPECT_FALSE(drop(*newFile)) << "full by the time of the drop";
    EXPECT_FALSE(enter(*newFile));
}

}  // namespace
}  // namespace stowpocket
