// SPDX-License-Identifier: MIT
#include "linux/drags/FakeDragSource.h"
#include "platform/linux/drags/X11Clipboard.h"
#include "platform/linux/drags/X11IncomingDrops.h"
#include "platform/qt/QtDispatch.h"
#include "platform/qt/QtDrops.h"
#include "support/ComesTrue.h"

#include <QDropEvent>
#include <QWidget>

#include <gtest/gtest.h>

#include <filesystem>
#include <future>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;
using Manner = FakeDragSource::Manner;
const std::string uriList = "text/uri-list";

/// Takes what brings something, as the popover does.
class Place : public QWidget {
public:
    explicit Place(IncomingDrops& drops) : drops_(drops) {
        setAcceptDrops(true);
        resize(50, 50);
    }
    std::vector<std::shared_ptr<ItemProvider>> taken;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent* event) override {
        taken = itemProvidersOf(*event->mimeData(), drops_);
        event->setAccepted(!taken.empty());
    }

private:
    IncomingDrops& drops_;
};

class IncomingDropsTest : public testing::Test {
protected:
    explicit IncomingDropsTest(const DropPatience& patience = {}) : drops(*connection, dispatch, saves, patience) {
        place.show();
        EXPECT_TRUE(comesTrue([this] { return connection->geometryOnRoot(window()).has_value(); }));
    }
    [[nodiscard]] xcb_window_t window() const { return static_cast<xcb_window_t>(place.winId()); }
    /// Whether the drop was taken. The source lives in this program: one that is waited for would never answer.
    bool drop(FakeDragSource& source) {
        source.drop(window());
        EXPECT_TRUE(comesTrue([&] { source.work(); }, [&] { return source.wasTaken().has_value(); }));
        return source.wasTaken().value_or(false);
    }

    std::unique_ptr<X11Connection> connection = X11Connection::ofApplication();
    QtDispatch dispatch;
    DirectSaves saves{*connection, dispatch};
    X11IncomingDrops drops;
    Place place{drops};
};

/// Gives up whoever is silent at once, but nobody for taking long.
class HastyDropsTest : public IncomingDropsTest {
protected:
    HastyDropsTest() : IncomingDropsTest({.silence = 100ms, .list = 1h, .contents = 1h}) {}
};

class HastyListsTest : public IncomingDropsTest {
protected:
    HastyListsTest() : IncomingDropsTest({.silence = 1h, .list = 1ms, .contents = 1h}) {}
};

TEST_F(IncomingDropsTest, bringTheFilesOfEverySourceThatHandsThemOver) {
    for (const Manner manner : {Manner::atOnce, Manner::inPieces}) {
        FakeDragSource source;
        source.offer(uriList, "file:///b\r\nhttp://x\r\nfile:///a\r\n", manner);
        EXPECT_TRUE(drop(source));
        EXPECT_EQ(place.taken.size(), 2U);
    }
}

TEST_F(HastyDropsTest, waitForNoSourceAndTakeNothingFromABadOne) {
    const std::string long_(2'000'000, 'x');
    struct Case {
        std::string format, bytes;
        Manner manner;
    };
    const std::vector<Case> cases{{uriList, "file:///a", Manner::silent},
                                  {uriList, long_, Manner::stopsInTheMiddle},
                                  {uriList, "file:///a\n" + long_, Manner::inPieces},
                                  {uriList, "", Manner::wrongUnits},
                                  {uriList, "", Manner::inPieces},
                                  {uriList, "", Manner::atOnce},
                                  {"image/png", long_, Manner::silent},
                                  {"image/png", long_, Manner::stopsInTheMiddle}};
    for (const auto& [format, bytes, manner] : cases) {
        FakeDragSource source;
        source.offer(format, bytes, manner);
        EXPECT_FALSE(drop(source)) << static_cast<int>(manner);
        EXPECT_TRUE(place.taken.empty());
    }
    auto vanishing = std::make_unique<FakeDragSource>();
    vanishing->offer(uriList, "file:///a", Manner::silent);
    vanishing->drop(window());
    vanishing->vanish();
    vanishing.reset();
    FakeDragSource sound;
    sound.offer(uriList, "file:///a");
    EXPECT_TRUE(drop(sound));
}

TEST_F(HastyDropsTest, clipboardIsReadLikeADropAndWaitsForNoOwner) {
    X11Clipboard clipboard(dispatch, {.silence = 100ms, .list = 1s, .contents = 1s});
    const auto countPasted = [&](FakeDragSource& owner) {
        std::optional<std::size_t> count;
        clipboard.read([&](const auto& providers) { count = providers.size(); });
        EXPECT_TRUE(comesTrue([&] { owner.work(); }, [&] { return count.has_value(); }));
        return count.value_or(99);
    };
    for (const Manner manner : {Manner::silent, Manner::stopsInTheMiddle, Manner::wrongUnits, Manner::inPieces}) {
        FakeDragSource owner("CLIPBOARD");
        owner.offer("x-special/gnome-copied-files", "cut\nfile:///a\nfile:///b" + std::string(200'000, '\n'), manner);
        EXPECT_EQ(countPasted(owner), manner == Manner::inPieces ? 2U : 0U);
    }
    FakeDragSource text("CLIPBOARD");
    text.offer("UTF8_STRING", "words");
    EXPECT_EQ(countPasted(text), 1U);
    text.vanish();
    EXPECT_EQ(countPasted(text), 0U);
    clipboard.copyFiles({*FileURL::fromPath("/one"), *FileURL::fromPath("/bad\xFF")});
    EXPECT_EQ(countPasted(text), 2U) << "its own offer, with every byte of the names";
}

TEST_F(HastyListsTest, waitLongerForContentsThanForAList) {
    for (const auto& [format, isTaken] : {std::pair(uriList, false), {std::string("image/png"), true}}) {
        FakeDragSource source;
        source.offer(format, "file:///a\n" + std::string(500'000, 'x'), Manner::inPieces);
        EXPECT_EQ(drop(source), isTaken) << format;
    }
}

TEST_F(IncomingDropsTest, bringAPictureAsAFileAndNotItsAddress) {
    constexpr std::size_t size = 3'000'000;
    FakeDragSource source;
    source.offer(uriList, "http://example.org/a.png");
    source.offer("text/plain", "http://example.org/a.png");
    source.offer("image/png", std::string(size, 'p'), Manner::inPieces);
    EXPECT_TRUE(drop(source));
    ASSERT_EQ(place.taken.size(), 1U);
    std::promise<std::uintmax_t> written;
    place.taken[0]->loadFileRepresentation(
        place.taken[0]->registeredTypeIdentifiers().front(), [&](const auto& file) {
            written.set_value(file && file->pathExtension() == "png" ? std::filesystem::file_size(file->path()) : 0);
        });
    EXPECT_EQ(written.get_future().get(), size);
}

}  // namespace
}  // namespace stowpocket
