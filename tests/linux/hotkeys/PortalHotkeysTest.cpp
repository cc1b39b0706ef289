// SPDX-License-Identifier: MIT
#include "fakes/FakeInput.h"
#include "platform/linux/dbus/BusCalls.h"
#include "platform/linux/hotkeys/PortalHotkeyService.h"
#include "platform/linux/hotkeys/PortalShortcuts.h"
#include "services/Preferences.h"
#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusObjectPath>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

constexpr std::uint32_t optionShift = carbonModifier::optionKey | carbonModifier::shiftKey;
const std::string both = "drop ALT+SHIFT+d shelf ALT+SHIFT+s ";

class PortalHotkeysTest : public testing::Test {
protected:
    /// Starts the service and registers the hotkeys.
    void start() {
        auto grabs = std::make_unique<FakeHotkeyService>();
        keyGrabs = grabs.get();
        service = std::make_unique<PortalHotkeyService>(
            bus.connection(QStringLiteral("client")), preferences,
            [](const HotkeyIdentifier& hotkey) {
                const QString id = hotkey.id == 1 ? QStringLiteral("shelf") : QStringLiteral("drop");
                return PortalHotkeyService::Name{id, QStringLiteral("Does it")};
            },
            [kept = std::make_shared<std::unique_ptr<HotkeyService>>(std::move(grabs))] { return std::move(*kept); },
            [this](const std::string& token) { presses += token + ':'; });
        service->installEventHandler([this](const HotkeyIdentifier* hotkey) {
            presses += std::to_string(hotkey->id);
            return 0;
        });
        registerHotkeys();
    }
    void end() {
        unregisterHotkeys();
        service.reset();
    }
    void startPortal() { portal = std::make_unique<FakePortal>(bus.connection(QStringLiteral("portal"))); }
    void endPortal() {
        portal.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
    }
    void unregisterHotkeys() {
        shelf.reset();
        drop.reset();
    }
    /// Drops the former registrations, as the manager of the hotkeys does.
    void registerHotkeys(std::uint32_t shelfKey = 1) {
        shelf.reset();
        shelf = service->registerHotkey(shelfKey, optionShift, {0, 1});
        drop.reset();
        drop = service->registerHotkey(2, optionShift, {0, 2});
    }
    void startBound() {
        startPortal();
        start();
        waitFor(HotkeySource::portal);
    }
    void waitFor(HotkeySource source) {
        bus.waitUntil([&] { return service->source() == source; });
    }
    void waitForGrabs(std::size_t count) {
        bus.waitUntil([&] { return keyGrabs->registered.size() == count; });
    }
    /// Until the portal has handled all that the service sends, and the service all of the answers: a session takes
    /// two questions, and the answer to the second may end it.
    void comeToRest() {
        const QDBusMessage question =
            propertyCall(portalNames::service, portalNames::path, portalNames::shortcuts, QStringLiteral("version"));
        for (int round = 0; round < 6; ++round) {
            QCoreApplication::processEvents();
            static_cast<void>(bus.call(QDBusConnection(QStringLiteral("client")), question));
        }
    }

    PrivateBus bus;
    LayeredPreferenceStore preferences;
    std::unique_ptr<FakePortal> portal;
    FakeHotkeyService* keyGrabs = nullptr;
    std::string presses;
    std::unique_ptr<PortalHotkeyService> service;
    std::unique_ptr<HotkeyRegistration> shelf;
    std::unique_ptr<HotkeyRegistration> drop;
};

TEST_F(PortalHotkeysTest, bindsInOneSessionWhatIsRegisteredInOneTurn) {
    startBound();
    EXPECT_EQ(portal->application, QStringLiteral("com.example.stowpocket"));
    portal->press(QStringLiteral("nobody's"));
    portal->activate({QVariant::fromValue(QDBusObjectPath(QStringLiteral("/another/session"))),
                      QStringLiteral("shelf"), qulonglong{1}, QVariantMap()});
    portal->activate({QStringLiteral("shelf")});
    portal->press(QStringLiteral("shelf"));
    portal->press(QStringLiteral("drop"), QStringLiteral("token"));
    bus.waitUntil([&] { return presses.size() >= 8; });
    EXPECT_EQ(presses, "1token:2");
}

TEST_F(PortalHotkeysTest, opensNoDialogForWhatIsBoundWithTheSession) {
    startPortal();
    portal->bindsAtOnce = true;
    qputenv("XDG_CURRENT_DESKTOP", "KDE");
    start();
    registerHotkeys();
    waitFor(HotkeySource::portal);
    comeToRest();
    EXPECT_EQ(portal->dialogs, 0);
    qunsetenv("XDG_CURRENT_DESKTOP");
    end();
    start();
    registerHotkeys();
    waitFor(HotkeySource::portal);
    EXPECT_EQ(portal->dialogs, 1) << "another desktop's shortcuts are no business of that portal";
}

TEST_F(PortalHotkeysTest, asksAgainOnlyForAnotherSet) {
    startBound();
    registerHotkeys();
    comeToRest();
    registerHotkeys(5);
    registerHotkeys(0);
    comeToRest();
    EXPECT_EQ(portal->shortcuts, "drop ALT+SHIFT+d shelf ALT+SHIFT+a ");
    EXPECT_EQ(portal->dialogs, 2);
    unregisterHotkeys();
    comeToRest();
    EXPECT_EQ(portal->sessions, 0);
    EXPECT_EQ(service->source(), HotkeySource::portal);
}

TEST_F(PortalHotkeysTest, aRefusalHoldsUntilTheHotkeysChange) {
    startPortal();
    portal->bound = {1U, QVariantMap()};
    start();
    comeToRest();
    EXPECT_EQ(portal->sessions, 0);
    EXPECT_EQ(service->source(), HotkeySource::none);
    endPortal();
    startPortal();
    registerHotkeys();
    comeToRest();
    end();
    start();
    comeToRest();
    EXPECT_EQ(portal->dialogs, 0) << "nor does the next start open the dialog again";
    registerHotkeys(0);
    waitFor(HotkeySource::portal);
    portal->closeSession();
    waitFor(HotkeySource::none);
    EXPECT_TRUE(keyGrabs == nullptr || keyGrabs->registered.empty())
        << "keys that the user did not grant are not grabbed either";
}

TEST_F(PortalHotkeysTest, grabsKeysWhileThereIsNoPortal) {
    start();
    waitForGrabs(2);
    EXPECT_EQ(service->source(), HotkeySource::none);
    const HotkeyIdentifier first{0, 1};
    keyGrabs->handler(&first);
    EXPECT_EQ(presses, "1");
    startPortal();
    waitFor(HotkeySource::portal);
    endPortal();
    waitForGrabs(2);
    startPortal();
    waitFor(HotkeySource::portal);
    EXPECT_EQ(portal->shortcuts, both);
}

TEST_F(PortalHotkeysTest, aPortalThatEndsWhenAskedIsLeftAlone) {
    startPortal();
    portal->isSilent = true;
    start();
    bus.waitUntil([&] { return portal->dialogs == 1; });
    endPortal();
    waitForGrabs(2);
    startPortal();
    comeToRest();
    EXPECT_EQ(portal->sessions, 0);
}

TEST_F(PortalHotkeysTest, takesAPortalThatTalksNonsenseForNone) {
    using Answer = std::optional<QVariantList>;
    const auto map = [](const char* key, const QVariant& value) { return QVariantMap{{QLatin1String(key), value}}; };
    const auto expectNone = [this](const QVariant& version, const Answer& created = {}, const Answer& bound = {}) {
        startPortal();
        std::tie(portal->version, portal->created, portal->bound) = std::tie(version, created, bound);
        start();
        waitForGrabs(2);
        EXPECT_EQ(service->source(), HotkeySource::none);
        end();
        QDBusConnection::disconnectFromBus(QStringLiteral("client"));
        endPortal();
    };
    expectNone(0U);
    expectNone(2U, QVariantList{0U, map("session_handle", QStringLiteral("not a path"))});
    expectNone(2U, {}, QVariantList{2U, QVariantMap()});
    expectNone(2U, {}, QVariantList{0U, map("shortcuts", QStringList{QStringLiteral("shelf")})});
}

TEST(ShortcutTriggerTest, namesKeysByTheirBaseSymbol) {
    const auto controlCommand = carbonModifier::controlKey | carbonModifier::cmdKey;
    using Case = std::tuple<std::uint32_t, std::uint32_t, std::string>;
    for (const auto& [key, modifiers, trigger] : {Case{1, optionShift, "ALT+SHIFT+s"},
                                                  {2, controlCommand | 0x400, "CTRL+LOGO+d"},
                                                  {41, 0, "semicolon"},
                                                  {90, 0, "F20"},
                                                  {126, 0, "Up"},
                                                  {92, 0, "KP_9"},
                                                  {52, optionShift, ""},
                                                  {0xFFFFFFFF, optionShift, ""}})
        EXPECT_EQ(shortcutTrigger(key, modifiers), trigger) << key;
}

}  // namespace
}  // namespace stowpocket
