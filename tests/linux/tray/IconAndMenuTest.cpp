// SPDX-License-Identifier: MIT
#include "platform/linux/tray/IconPlacing.h"
#include "platform/linux/tray/NotifierMenu.h"
#include "platform/linux/tray/StatusItemPainter.h"
#include "support/ComesTrue.h"
#include "support/PrivateBus.h"

#include <QDBusVariant>

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace stowpocket {
namespace {

using Step = TrayDocking::Step;
using Steps = std::vector<Step>;
using State = TrayDocking::State;
using Place = IconPlacing::Place;

constexpr TrayDocking::Manager first = 0x100;
constexpr TrayDocking::Manager second = 0x200;

TrayDocking docked() {
    TrayDocking docking;
    docking.embedded();
    EXPECT_EQ(docking.state(), State::waiting);
    EXPECT_EQ(docking.managerAppeared(first), Step::dock);
    EXPECT_EQ(docking.managerAppeared(first), Step::none);
    docking.embedded();
    return docking;
}

TEST(TrayDocking, docksInTheTrayThatFollows) {
    TrayDocking docking = docked();
    EXPECT_EQ((Steps{docking.windowDestroyed(second), docking.windowDestroyed(first), docking.lostWindow(),
                     docking.managerAppeared(second)}),
              (Steps{Step::none, Step::undock, Step::none, Step::dock}));
    TrayDocking replaced = docked();
    EXPECT_EQ((Steps{replaced.managerAppeared(second), replaced.windowDestroyed(first)}),
              (Steps{Step::dock, Step::none}));
}

TEST(TrayDocking, doesNotForceItselfOnATrayThatThrewItOut) {
    TrayDocking docking = docked();
    EXPECT_EQ(docking.lostWindow(), Step::undock);
    EXPECT_EQ(docking.managerAppeared(first), Step::dock);
}

TEST(TrayDocking, leavesATrayThatCopiesButNoneWhoseOwnWindowHoldsTheIcon) {
    TrayDocking docking = docked();
    EXPECT_EQ((Steps{docking.foundBelowRoot(first), docking.foundBelowRoot(second)}),
              (Steps{Step::none, Step::undock}));
}

TEST(TrayDocking, asksOnceMoreWhatShowsNothing) {
    TrayDocking docking = docked();
    EXPECT_EQ((Steps{docking.foundUnseen(), docking.foundUnseen()}), (Steps{Step::dock, Step::none}))
        << "it has not answered yet";
    docking.embedded();
    EXPECT_EQ(docking.foundUnseen(), Step::none) << "it hides on purpose";
    EXPECT_EQ(docking.managerAppeared(second), Step::dock);
    docking.embedded();
    EXPECT_EQ(docking.foundUnseen(), Step::dock);
}

/// Where the icon is after each event.
struct PlacedIcon : IconPlacing {
    Place tray(State state) { return setTray(state), place(); }
    Place slowTray() { return trayIsSlow(), place(); }
    Place host(bool isThere) { return setHost(isThere), place(); }
};
using Places = std::vector<Place>;

TEST(IconPlacing, followsTraysAndHostsThatComeAndGo) {
    PlacedIcon icon;
    EXPECT_EQ(icon.tray(State::waiting), Place::undecided);
    EXPECT_EQ((Places{icon.host(false), icon.host(true), icon.tray(State::requested)}),
              (Places{Place::pocket, Place::notifier, Place::notifier}))
        << "seen until the tray has answered";
    EXPECT_EQ((Places{icon.tray(State::docked), icon.host(false), icon.tray(State::waiting)}),
              (Places{Place::tray, Place::tray, Place::pocket}));
}

TEST(IconPlacing, keepsThePocketWhereAHostShowsNothing) {
    PlacedIcon icon;
    EXPECT_EQ((Places{icon.tray(State::waiting), icon.host(true)}), (Places{Place::undecided, Place::notifier}));
    EXPECT_FALSE(icon.wantsPocket());
    icon.itemIsOffered();
    EXPECT_TRUE(icon.wantsPocket());
    icon.setItemSeen(true);
    icon.itemIsOffered();
    EXPECT_FALSE(icon.wantsPocket());
    icon.setItemSeen(false);
    EXPECT_TRUE(icon.wantsPocket()) << "the panel has ended, and the watcher tells of a host all the same";
    icon.setItemSeen(true);
    icon.setHost(false);
    icon.setHost(true);
    EXPECT_FALSE(icon.wantsPocket()) << "another host is given its time";
}

TEST(IconPlacing, doesNotHideBehindATrayThatHangs) {
    PlacedIcon icon;
    EXPECT_EQ((Places{icon.tray(State::requested), icon.slowTray()}), Places(2, Place::undecided));
    EXPECT_EQ((Places{icon.host(false), icon.tray(State::docked), icon.slowTray(), icon.tray(State::requested)}),
              (Places{Place::pocket, Place::tray, Place::tray, Place::undecided}))
        << "another tray is given its time";
}

TEST(StatusItemPainterTest, readsTheAnnouncedForeground) {
    constexpr std::array<std::uint32_t, 12> announced{0x1234, 0xABCD, 0xFFFF};
    EXPECT_EQ(announcedForeground(announced), QColor(0x12, 0xAB, 0xFF));
    EXPECT_EQ(announcedForeground(std::span(announced).first(2)), std::nullopt);
    constexpr std::array<std::uint32_t, 12> unset{0, 0, 0, 0xFFFF, 0, 0, 0xFFFF, 0xFFFF, 0, 0, 0xFFFF, 0};
    EXPECT_EQ(announcedForeground(unset), std::nullopt);
}

TEST(StatusItemPainterTest, standsOutFromTheBar) {
    const QColor white(Qt::white);
    EXPECT_EQ(readableOn({50, 50, 50}), white);
    EXPECT_EQ(readableOn({0, 0, 255}), white);
    EXPECT_NE(readableOn({238, 238, 238}), white);
    EXPECT_NE(readableOn({0, 255, 0}), white);
}

TEST(StatusItemPainterTest, theLatestCountWaitsForTheFontAndLaterOnesDoNot) {
    std::string drawn;
    CountFont font;
    font.whenLoaded([&] { drawn += "first"; });
    font.whenLoaded([&] { drawn += "second"; });
    EXPECT_TRUE(comesTrue([&] { return drawn == "second"; }));
    font.whenLoaded([&] { drawn = "third"; });
    EXPECT_EQ(drawn, "third");

    CountFont forgotten;
    forgotten.whenLoaded([] { FAIL() << "after its end"; });
}

/// A host and the icon's menu on a bus.
class NotifierMenuTest : public testing::Test {
protected:
    std::string call(const char* method, const QVariantList& arguments) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(icon.baseService(), NotifierMenu::path,
                                           QStringLiteral("com.canonical.dbusmenu"), QString::fromLatin1(method));
        message.setArguments(arguments);
        answer = bus.call(host, message);
        return answer.type() == QDBusMessage::ReplyMessage ? answer.signature().toStdString() : "error";
    }
    bool isToBeFetched() {
        call("AboutToShow", {0});
        return answer.arguments().at(0).toBool();
    }

    PrivateBus bus;
    QDBusConnection icon = bus.connection(QStringLiteral("icon"));
    QDBusConnection host = bus.connection(QStringLiteral("host"));
    std::vector<StatusItemMenuEntry> entries{{.id = 1, .title = "Open a_b"},
                                             {.id = 2, .title = "Quit", .isEnabled = false, .beginsGroup = true}};
    std::vector<int> chosen;
    NotifierMenu menu{icon, {[this] { return entries; }, [this](int id) { chosen.push_back(id); }}};
    QDBusMessage answer;
};

TEST_F(NotifierMenuTest, isFetchedAnewWhenItHasChangedAndPassesTheChoiceOn) {
    EXPECT_TRUE(isToBeFetched());
    EXPECT_EQ(call("GetLayout", {0, -1, QStringList()}), "u(ia{sv}av)");
    const auto revision = answer.arguments().at(0).toUInt();
    EXPECT_FALSE(isToBeFetched());
    entries.pop_back();
    EXPECT_TRUE(isToBeFetched());
    call("GetLayout", {0, -1, QStringList()});
    EXPECT_GT(answer.arguments().at(0).toUInt(), revision);
    call("GetProperty", {1, QStringLiteral("label")});
    EXPECT_EQ(answer.arguments().at(0).value<QDBusVariant>().variant(), QStringLiteral("Open a__b"));
    for (const char* const event : {"hovered", "clicked"})
        call("Event", {1, QString::fromLatin1(event), QVariant::fromValue(QDBusVariant(0)), 0U});
    bus.waitUntil([this] { return !chosen.empty(); });
    EXPECT_EQ(chosen, std::vector{1});
}

TEST_F(NotifierMenuTest, answersWhateverAHostSends) {
    const QVariant ids = QVariant::fromValue(QList<int>(20'000, -7));
    EXPECT_EQ(call("GetLayout", {-5, 1, QStringList()}), "error");
    EXPECT_EQ(call("GetGroupProperties", {ids, QStringList()}), "a(ia{sv})");
    EXPECT_EQ(call("AboutToShowGroup", {ids}), "aiai");
    EXPECT_EQ(call("Event", {1}), "error");
    EXPECT_TRUE(chosen.empty());
}

}  // namespace
}  // namespace stowpocket
