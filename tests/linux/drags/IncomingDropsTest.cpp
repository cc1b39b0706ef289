// SPDX-License-Identifier: MIT
#include "linux/drags/FakeDragSource.h"
#include "platform/linux/drags/DirectSaves.h"
#include "platform/linux/drags/X11FileDrag.h"
#include "platform/linux/drags/X11IncomingDrops.h"
#include "platform/qt/QtDispatch.h"
#include "platform/qt/QtDrops.h"
#include "support/ComesTrue.h"
#include "support/DisplayHand.h"
#include "support/TemporaryFolder.h"

#include <QDropEvent>
#include <QGuiApplication>
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

class DragsTest : public testing::Test {
protected:
    std::unique_ptr<X11Connection> connection = X11Connection::ofApplication();
    QtDispatch dispatch;
    DirectSaves saves{*connection, dispatch};
};

class IncomingDropsTest : public DragsTest {
protected:
    explicit IncomingDropsTest(const DropPatience& patience = {}) : drops(*connection, dispatch, saves, patience) {
        place.show();
        EXPECT_TRUE(comesTrue([this] { return connection->geometryOnRoot(window()).has_value(); }));
    }
    [[nodiscard]] xcb_window_t window() const { return static_cast<xcb_window_t>(place.winId()); }
    /// Whether the drop was taken. The source lives in this program: one that is waited for would never answer.
    bool drop(FakeDragSource& source) {
        source.drop(window());
        EXPECT_TRUE(comesTrue([&] { source.work(); }, [&] { return source.wasTaken.has_value(); }));
        return source.wasTaken.value_or(false);
    }

    X11IncomingDrops drops;
    Place place{drops};
};

/// Gives up whoever is silent at once, but nobody for taking long.
struct HastyDropsTest : IncomingDropsTest {
    HastyDropsTest() : IncomingDropsTest({.silence = 100ms, .list = 1h, .contents = 1h}) {}
};

TEST_F(HastyDropsTest, waitForNoSourceAndTakeNothingFromABadOne) {
    const std::string endless(2'000'000, 'x');
    for (const auto& [format, bytes, manner] : {std::tuple(uriList, std::string("file:///a"), Manner::silent),
                                                {uriList, "file:///a\n" + endless, Manner::inPieces},
                                                {uriList, "", Manner::inPieces},
                                                {"image/png", endless, Manner::silent},
                                                {"image/png", endless, Manner::stopsInTheMiddle}}) {
        FakeDragSource source;
        source.offer(format, bytes, manner);
        EXPECT_FALSE(drop(source)) << static_cast<int>(manner);
        EXPECT_TRUE(place.taken.empty());
    }
    {
        FakeDragSource vanishing;
        vanishing.offer(uriList, "file:///a", Manner::silent);
        vanishing.drop(window());
    }
    FakeDragSource sound;
    sound.offer(uriList, "file:///b\r\nhttp://x\r\nfile:///a\r\n");
    EXPECT_TRUE(drop(sound));
    EXPECT_EQ(place.taken.size(), 2U);
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
    const auto note = [&](const auto& file) {
        written.set_value(file ? std::filesystem::file_size(file->path()) : 0);
    };
    place.taken[0]->loadFileRepresentation("public.png", note);
    EXPECT_EQ(written.get_future().get(), size);
}

namespace fs = std::filesystem;
using Answer = std::optional<FileURL>;

class DirectSavesTest : public DragsTest {
protected:
    template <class Condition>
    bool waitFor(Condition condition) {
        return comesTrue([this] { source.work(); }, condition);
    }
    void receive(DirectSaves& from) {
        from.receiver()->receivePromisedFiles(*FileURL::fromPath(spool.path()),
                                              [this](const Answer& file) { answers.push_back(file); });
    }
    /// The file that a source writes which was given this URL.
    static std::ofstream file(const std::string& url) {
        return std::ofstream(FileURL::parse(url, QSysInfo::machineHostName().toStdString()).value().path());
    }

    FakeDragSource source{"../../a\xFF\n"};
    TemporaryFolder spool;
    std::vector<Answer> answers;
};

TEST_F(DirectSavesTest, deliversEveryFileThatArrivedOnceThereIsContent) {
    std::ofstream late;
    source.replyWith("S", [&](const std::string& url) { late = file(url); });
    receive(saves);
    ASSERT_TRUE(waitFor([&] { return late.is_open(); }));
    source.propose("../../a\xFF\n");
    source.replyWith("S", [](const std::string& url) {
        file(url) << "promised";
        file(url.substr(0, url.rfind('/')) + "/second") << "promised";
    });
    receive(saves);
    ASSERT_TRUE(waitFor([this] { return answers.size() == 2; }));
    EXPECT_EQ(answers[0].value().lastPathComponent(), "a\xFF\n");
    EXPECT_EQ(answers[1].value().lastPathComponent(), "second");
    EXPECT_EQ(answers[0]->parent().parent().path(), spool.path());
    EXPECT_TRUE(fs::exists(answers[0]->path()));
    late << "late";
    late.close();
    ASSERT_TRUE(waitFor([this] { return answers.size() == 3; }));
    EXPECT_EQ(fs::file_size(answers[2].value().path()), 4U);
}

TEST_F(DirectSavesTest, givesUpASourceThatVanishesAndAnswersWhatIsOnItsWayWhenItEnds) {
    receive(saves);
    receive(saves);
    ASSERT_TRUE(waitFor([this] { return source.wasAsked; }));
    source.vanish();
    ASSERT_TRUE(waitFor([this] { return answers.size() == 2; }));
    receive(saves);
    EXPECT_EQ(answers, std::vector<Answer>(3)) << "at once where there is no source";
    EXPECT_TRUE(spool.names().empty());
    {
        const FakeDragSource silent("a");
        DirectSaves ending(*connection, dispatch);
        receive(ending);
        EXPECT_EQ(answers.size(), 3U);
    }
    EXPECT_EQ(answers, std::vector<Answer>(4));
}

TEST_F(DirectSavesTest, areOneFileOrOneFolderOfADrop) {
    for (const bool isAlone : {true, false}) {
        source.replyWith("S", [isAlone](const std::string& url) {
            file(url) << "promised";
            if (!isAlone)
                file(url + "2") << "promised";
        });
        const std::shared_ptr<ItemProvider> provider = saves.itemProvider();
        EXPECT_FALSE(provider->hasItemConformingTo(uniformType::fileURL));
        std::promise<std::pair<Answer, bool>> seen;
        auto arrival = seen.get_future();
        provider->loadFileRepresentation(provider->registeredTypeIdentifiers().front(), [&](const Answer& thing) {
            seen.set_value({thing, thing && fs::exists(thing->path())});
        });
        ASSERT_TRUE(waitFor([&] { return arrival.wait_for(0s) == std::future_status::ready; }));
        const auto [thing, wasThere] = arrival.get();
        ASSERT_TRUE(wasThere);
        EXPECT_EQ(thing->lastPathComponent().starts_with("Files "), !isAlone);
        EXPECT_TRUE(waitFor([path = thing->path()] { return !fs::exists(path); }));
    }
}

/// A window of another program, which answers each position of a drag with the same action.
struct DragTarget {
    explicit DragTarget(const char* action) {
        constexpr std::uint32_t isUnmanaged = 1;
        xcb_create_window(session->raw(), XCB_COPY_FROM_PARENT, window, session->root(), 700, 500, 200, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                          &isUnmanaged);
        xcb_map_window(session->raw(), window);
        session->setProperty(window, session->atom("XdndAware"), XCB_ATOM_ATOM, {5});
        session->setEventHandler([this, action = session->atom(action)](const xcb_generic_event_t& event) {
            if (const auto* const said = eventAs<xcb_client_message_event_t>(event))
                ++heard[said->type];
            if (heard[session->atom(X11Atom::dragPosition)] == answered)
                return;
            ++answered;
            constexpr std::uint32_t acceptedAndWantsMore = 3;
            const xcb_window_t source = session->selectionOwner(X11Atom::dragSelection);
            session->sendMessage(source, XCB_EVENT_MASK_NO_EVENT, source, X11Atom::dragStatus,
                                 {window, acceptedAndWantsMore, 0, 0, action});
        });
    }
    /// What it has heard by now.
    [[nodiscard]] int count(X11Atom message) {
        static_cast<void>(session->serverTime());
        session->handleEvents();
        return heard[session->atom(message)];
    }

    const std::unique_ptr<XcbSession> session = XcbSession::open();
    const xcb_window_t window = xcb_generate_id(session->raw());
    std::map<xcb_atom_t, int> heard;
    int answered = 0;
};

TEST_F(DragsTest, outOfTheShelfEndOnlyOnWhatCopies) {
    X11FileDrag fileDrag(*connection);
    DisplayHand hand;
    QPixmap picture(8, 8);
    picture.fill(Qt::transparent);
    QWidget source;
    source.setGeometry(100, 100, 100, 100);
    source.show();
    const auto sourceWindow = static_cast<xcb_window_t>(source.winId());
    ASSERT_TRUE(comesTrue([&] { return connection->isViewable(sourceWindow); }));
    for (const auto& [action, isDropped] : {std::pair("XdndActionCopy", true), {"XdndActionMove", false}}) {
        DragTarget target(action);
        const QPoint start = connection->geometryOnRoot(sourceWindow)->center();
        hand.moveTo(start.x(), start.y());
        hand.buttonDown(1);
        // The window manager may keep the press for a moment; a drag begun before it never moves.
        ASSERT_TRUE(comesTrue([] { return QGuiApplication::mouseButtons() == Qt::LeftButton; }));
        QTimer::singleShot(0, [&] {
            // A position is told only after the last one has been answered.
            EXPECT_TRUE(comesTrue([&, step = 0]() mutable { hand.moveTo(850 + ++step % 2, 600); },
                                  [&] { return target.count(X11Atom::dragPosition) >= 3; }));
            hand.buttonUp(1);
        });
        fileDrag.start(source, {*FileURL::fromPath("/a")}, picture, {});
        xcb_flush(connection->raw());
        EXPECT_EQ(target.count(X11Atom::dragDrop), isDropped ? 1 : 0) << action;
    }
}

}  // namespace
}  // namespace stowpocket
