// SPDX-License-Identifier: MIT
#include "ComesTrue.h"
#include "FakeDragSource.h"
#include "platform/linux/x11/X11IncomingDrops.h"
#include "platform/qt/QtDispatch.h"
#include "platform/qt/QtDropData.h"

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
    IncomingDropsTest() {
        place.show();
        EXPECT_TRUE(comesTrue([this] { return connection->geometryOnRoot(window()).has_value(); }));
    }
    [[nodiscard]] xcb_window_t window() const { return static_cast<xcb_window_t>(place.winId()); }
    /// Whether the drop was taken. The program is never kept waiting meanwhile.
    bool drop(FakeDragSource& source) {
        int turns = 0;
        source.drop(window());
        const bool isOver = comesTrue([&] { source.work(); }, [&] { return ++turns, source.wasTaken().has_value(); });
        EXPECT_TRUE(isOver);
        EXPECT_GT(turns, 3);
        return source.wasTaken().value_or(false);
    }

    std::unique_ptr<X11Connection> connection = X11Connection::ofApplication();
    QtDispatch dispatch;
    X11DirectSaves saves{*connection, dispatch};
    X11IncomingDrops drops{*connection, dispatch, saves, 100ms};
    Place place{drops};
};

TEST_F(IncomingDropsTest, bringTheFilesOfEverySourceThatHandsThemOver) {
    for (const Manner manner : {Manner::atOnce, Manner::inPieces}) {
        FakeDragSource source;
        source.offer(uriList, "file:///b\r\nhttp://x\r\nfile:///a\r\n", manner);
        EXPECT_TRUE(drop(source));
        EXPECT_EQ(place.taken.size(), 2U);
    }
}

TEST_F(IncomingDropsTest, waitForNoSourceAndTakeNothingFromABadOne) {
    const std::string long_(2'000'000, 'x');
    const std::vector<std::pair<std::string, Manner>> cases{{"file:///a", Manner::silent},
                                                            {long_, Manner::stopsInTheMiddle},
                                                            {"file:///a\n" + long_, Manner::inPieces},
                                                            {"", Manner::wrongUnits},
                                                            {"", Manner::inPieces},
                                                            {"", Manner::atOnce}};
    for (const auto& [bytes, manner] : cases) {
        FakeDragSource source;
        source.offer(uriList, bytes, manner);
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
