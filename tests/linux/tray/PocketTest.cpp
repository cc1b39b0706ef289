// SPDX-License-Identifier: MIT
#include "platform/linux/tray/Pocket.h"

#include "linux/drags/FakeDrops.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

namespace stowpocket {
namespace {

/// Takes every file.
class FakeDropView : public DraggingDestination {
public:
    [[nodiscard]] const std::vector<std::string>& registeredDraggedTypes() const override { return types_; }
    [[nodiscard]] DragOperation draggingEntered(DraggingPasteboard&) override { return DragOperation::copy; }
    [[nodiscard]] DragOperation draggingUpdated(DraggingPasteboard&) override { return DragOperation::copy; }
    [[nodiscard]] bool performDragOperation(DraggingPasteboard&) override { return true; }

private:
    std::vector<std::string> types_{std::string(pasteboardType::fileURL)};
};

TEST(PocketTest, standsInTheCornerOnceTheIconIsNowhereElse) {
    const auto connection = X11Connection::ofApplication();
    const StatusItemContent content;
    FakeDrops drops;
    const SymbolPainter paintSymbol = [](const StatusItemImage&, const QColor&, int) { return QImage(); };
    Pocket pocket(*connection, content, paintSymbol, drops, [] {});
    pocket.setResident(true);
    const std::optional<QRect> corner = pocket.rectOnScreen();
    const QRect icon(400, 300, 31, 22);
    for (const bool hasDragEnded : {true, false}) {
        pocket.setResident(false);
        pocket.dragBegan(icon);
        ASSERT_EQ(pocket.rectOnScreen(), icon);
        if (hasDragEnded)
            pocket.dragEnded(DragEnd::sourceGone);
        pocket.setResident(true);
        EXPECT_EQ(pocket.rectOnScreen(), corner) << hasDragEnded;
    }
}

TEST(PocketTest, waitsForADropThatIsLateUnlessItsSourceHasGone) {
    const auto connection = X11Connection::ofApplication();
    const StatusItemContent content{{}, {}, std::make_shared<FakeDropView>()};
    FakeDrops drops;
    const SymbolPainter paintSymbol = [](const StatusItemImage&, const QColor&, int) { return QImage(); };
    Pocket pocket(*connection, content, paintSymbol, drops, [] {});
    pocket.dragBegan(QRect(400, 300, 31, 22));
    QMimeData files;
    files.setUrls({QUrl(QStringLiteral("file:///late.txt"))});
    QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(QApplication::topLevelAt(401, 301), &enter);

    pocket.dragEnded(DragEnd::released);
    EXPECT_TRUE(pocket.rectOnScreen());
    pocket.dragEnded(DragEnd::sourceGone);
    EXPECT_FALSE(pocket.rectOnScreen());
}

}  // namespace
}  // namespace stowpocket
