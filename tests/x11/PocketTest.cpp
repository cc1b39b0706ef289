// SPDX-License-Identifier: MIT
#include "ComesTrue.h"
#include "FakeDragSource.h"
#include "FakeNotifierPanel.h"
#include "FakeTray.h"
#include "platform/linux/x11/X11DirectSaves.h"
#include "platform/linux/x11/X11StatusItem.h"
#include "platform/qt/QtDispatch.h"

#include <QApplication>
#include <QScreen>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

constexpr std::uint32_t darkPanel = 0x303030;
constexpr std::uint32_t lightPanel = 0xEEEEEE;

/// Wants promised files in `spool`.
class Shelf : public DraggingDestination {
public:
    explicit Shelf(FileURL spool) : spool_(std::move(spool)) {}
    [[nodiscard]] const std::vector<std::string>& registeredDraggedTypes() const override { return types_; }
    [[nodiscard]] DragOperation draggingEntered(DraggingPasteboard&) override { return DragOperation::copy; }
    [[nodiscard]] DragOperation draggingUpdated(DraggingPasteboard&) override { return DragOperation::copy; }
    [[nodiscard]] bool performDragOperation(DraggingPasteboard& pasteboard) override {
        for (const auto& receiver : pasteboard.filePromiseReceivers())
            receiver->receivePromisedFiles(spool_, [](const auto&) {});
        return true;
    }

private:
    const std::vector<std::string> types_{std::string(pasteboardType::fileURL),
                                          std::string(pasteboardType::promisedFileURL)};
    const FileURL spool_;
};

class Pocket : public testing::Test {
protected:
    Pocket() {
        button().setImage({"tray", 16, FontWeight::medium, "Shelf"});
        button().setAction([this] { ++clicks; });
        button().addDropView(shelf);
    }

    template <class Condition>
    bool waitFor(Condition condition) {
        return comesTrue(
            [this] {
                if (tray)
                    tray->work();
                if (source)
                    source->work();
            },
            condition);
    }
    X11StatusItemButton& button() { return static_cast<X11StatusItemButton&>(*item->button()); }
    /// Null while it is not on the screen.
    static QWidget* pocket() {
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->windowTitle() == QStringLiteral("stowpocket pocket"))
                return window;
        }
        return nullptr;
    }
    bool appears() {
        return waitFor([] { return pocket() != nullptr; });
    }
    bool goes() {
        return waitFor([] { return pocket() == nullptr; });
    }
    bool docksIn(FakeTray::Container container, std::uint32_t color = darkPanel) {
        tray = std::make_unique<FakeTray>(container, color);
        return waitFor([this] { return tray->docked() != 0 && tray->docked() == button().window(); });
    }
    void drag(std::vector<std::string> types, bool refuses = false) {
        source = std::make_unique<FakeDragSource>(std::move(types), refuses);
        source->press(100, 500);
        source->begin();
    }
    /// Holds what is dragged over the pocket; the window that is the pocket.
    xcb_window_t enterPocket() {
        const auto window = static_cast<xcb_window_t>(pocket()->winId());
        const QPoint middle = pocket()->geometry().center();
        source->enter(window, static_cast<std::int16_t>(middle.x()), static_cast<std::int16_t>(middle.y()));
        return window;
    }

    QTemporaryDir folder;
    std::shared_ptr<Shelf> shelf = std::make_shared<Shelf>(*FileURL::fromPath(folder.path().toStdString()));
    std::unique_ptr<X11Connection> connection = X11Connection::ofApplication();
    QtDispatch dispatch;
    X11DirectSaves promises{*connection, dispatch};
    std::unique_ptr<StatusItem> item = X11StatusBar(
                                           *connection,
                                           [](const StatusItemImage&, const QColor& color, int pixels) {
                                               QImage symbol(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
                                               symbol.fill(color);
                                               return symbol;
                                           },
                                           &promises, [this] { ++placings; })
                                           .makeStatusItem();
    std::unique_ptr<FakeTray> tray;
    std::unique_ptr<FakeDragSource> source;
    int clicks = 0;
    int placings = 0;
};

TEST_F(Pocket, isTheIconWhereThereIsNoTray) {
    EXPECT_EQ(placings, 0);
    ASSERT_TRUE(appears());
    EXPECT_EQ(placings, 1);
    EXPECT_TRUE(QGuiApplication::primaryScreen()->availableGeometry().contains(pocket()->geometry()));
    EXPECT_EQ(button().rectOnScreen(), pocket()->geometry());
    const int width = pocket()->width();
    button().setTitle({" 12", 9, FontWeight::bold, 4});
    EXPECT_GT(pocket()->width(), width);
    EXPECT_EQ(button().rectOnScreen(), pocket()->geometry());

    ASSERT_TRUE(docksIn(FakeTray::Container::inPanel));
    EXPECT_TRUE(goes());
    tray.reset();
    EXPECT_TRUE(appears());
}

TEST_F(Pocket, liesOverTheDockedIconWhileFilesAreDragged) {
    ASSERT_TRUE(docksIn(FakeTray::Container::inPanel));
    ASSERT_TRUE(goes());
    const QRect docked(FakeTray::panelX + 5, FakeTray::panelY + 3, FakeTray::grantedWidth, FakeTray::grantedHeight);
    ASSERT_TRUE(waitFor([&] { return button().rectOnScreen() == docked; }));
    using Types = std::vector<std::string>;
    for (const auto& [types, refuses] : {std::pair<Types, bool>{{"text/plain", "text/uri-list"}, false},
                                         {{"XdndDirectSave0"}, false},
                                         {{"text/uri-list", "a", "b", "c"}, true},
                                         {{}, true}}) {
        drag(types, refuses);
        ASSERT_TRUE(appears()) << types.size();
        EXPECT_EQ(pocket()->geometry(), docked);
        source->release();
        ASSERT_TRUE(goes());
    }
}

TEST_F(Pocket, leavesTextAndOurOwnDragsAlone) {
    ASSERT_TRUE(docksIn(FakeTray::Container::inPanel));
    X11DragWatch watch(*connection);
    int announced = 0;
    const Subscription counting = watch.began.connect([&] { ++announced; });
    const X11Requestor own(*connection);
    drag({"text/plain"});
    xcb_set_selection_owner(connection->raw(), own.window(), connection->atom(X11Atom::dragSelection),
                            XCB_CURRENT_TIME);
    ASSERT_TRUE(waitFor([&] { return connection->selectionOwner(X11Atom::dragSelection) == own.window(); }));
    // What went before has been seen when this one is.
    drag({"text/uri-list"});
    ASSERT_TRUE(waitFor([&] { return announced > 0; }));
    EXPECT_EQ(announced, 1);
}

TEST_F(Pocket, waitsForADropThatIsLateButNotForADeadSource) {
    ASSERT_TRUE(appears());
    ASSERT_TRUE(docksIn(FakeTray::Container::inPanel));
    ASSERT_TRUE(goes());
    X11DragWatch watch(*connection);
    drag({"text/uri-list"});
    ASSERT_TRUE(appears());
    static_cast<void>(enterPocket());
    bool hasEnded = false;
    const Subscription ending = watch.ended.connect([&](DragEnd) { hasEnded = true; });
    source->release();
    ASSERT_TRUE(waitFor([&] { return hasEnded; }));
    EXPECT_NE(pocket(), nullptr);
    source->vanish();
    EXPECT_TRUE(goes());
}

TEST_F(Pocket, hasPromisedFilesWrittenWithTheTimeOfTheDrop) {
    ASSERT_TRUE(appears());
    drag({"XdndDirectSave0"});
    source->propose("promised");
    const xcb_window_t window = enterPocket();
    constexpr xcb_timestamp_t dropTime = 4711;
    source->drop(window, dropTime);
    ASSERT_TRUE(waitFor([this] { return source->wasSaveWanted(); }));
    EXPECT_EQ(source->savedAt(), dropTime);
}

using StatusItemInTray = Pocket;

TEST_F(StatusItemInTray, standsOutFromTheBarThatItIsIn) {
    ASSERT_TRUE(docksIn(FakeTray::Container::inPanel, darkPanel));
    EXPECT_TRUE(waitFor([this] { return tray->lightest() == 0xFFFFFFU; }));
    ASSERT_TRUE(docksIn(FakeTray::Container::inPanel, lightPanel));
    EXPECT_TRUE(waitFor([this] { return tray->darkest() < 0x404040U && tray->darkest() > 0U; }));
}

TEST_F(StatusItemInTray, leavesATrayThatOnlyCopiesItsPicture) {
    ASSERT_TRUE(docksIn(FakeTray::Container::underRoot));
    EXPECT_TRUE(waitFor([this] { return button().window() == x11None; }));
    EXPECT_EQ(tray->dockedCount(), 1);
    EXPECT_TRUE(docksIn(FakeTray::Container::inPanel));
}

TEST_F(Pocket, isAnItemOfANotifierHostWhereTheTrayOnlyCopies) {
    auto panel = std::make_unique<FakeNotifierPanel>();
    ASSERT_TRUE(docksIn(FakeTray::Container::underRoot));
    ASSERT_TRUE(waitFor([&] { return !panel->item().isEmpty(); }));
    EXPECT_EQ(panel->pictureSizes(), (QList<int>{16, 22, 32, 48}));
    EXPECT_TRUE(goes());
    panel->click(700, 20);
    ASSERT_TRUE(waitFor([this] { return clicks == 1; }));
    EXPECT_EQ(button().rectOnScreen().topLeft(), QPoint(700, 20));

    panel.reset();
    ASSERT_TRUE(appears());
    panel = std::make_unique<FakeNotifierPanel>();
    ASSERT_TRUE(waitFor([&] { return !panel->item().isEmpty(); }));
    EXPECT_TRUE(goes());
    ASSERT_TRUE(docksIn(FakeTray::Container::inPanel));
    EXPECT_TRUE(waitFor([&] { return panel->item().isEmpty(); }));
}

}  // namespace
}  // namespace stowpocket
