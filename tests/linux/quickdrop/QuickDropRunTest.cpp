// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/QuickDropRun.h"
#include "support/ComesTrue.h"
#include "support/PrivateBus.h"

#include <QDBusVirtualObject>

#include <gtest/gtest.h>

#include <future>

namespace stowpocket {
namespace {

ClipboardItem item(const std::string& target, std::size_t size) {
    return {target, target, 8, std::vector<std::byte>(size)};
}

/// A desktop whose active window is `window`. It insists on the order in which the steps make sense.
class ScriptedDesktop : public QuickDropDesktop {
public:
    std::uint32_t activeWindow() override { return std::exchange(window, windowLater.value_or(window)); }
    std::string classOf(std::uint32_t) override { return windowClass; }
    bool isOwn(std::uint32_t any) override { return any == ownWindow; }
    std::uint32_t lastForeignWindow() override { return foreign; }
    bool activate(std::uint32_t wanted) override {
        if (isObeyed)
            window = wanted;
        return isObeyed;
    }
    ClipboardSnapshot takeSnapshot() override {
        isSaved = true;
        return {{item("UTF8_STRING", 3)}, true};
    }
    bool copyOverBus(std::uint32_t) override { return isCopied = busWorks; }
    bool prepareKeys(CopyKey key, std::uint32_t) override {
        prepared = key;
        return true;
    }
    void pressKeys() override {
        EXPECT_TRUE(isSaved && prepared && window == fileManager);
        pressed = prepared;
        isCopied = true;
    }
    bool awaitNewOwner() override { return isCopied; }
    std::vector<FileURL> filesOnClipboard() override {
        EXPECT_TRUE(isSaved && isCopied);
        return {*FileURL::fromPath("/tmp/a")};
    }
    void restore(ClipboardSnapshot taken) override {
        isRestored = taken.items == std::vector{item("UTF8_STRING", 3)};
    }

    static constexpr std::uint32_t fileManager = 7;
    static constexpr std::uint32_t ownWindow = 99;
    std::string windowClass;
    std::uint32_t window = fileManager;
    std::uint32_t foreign = fileManager;
    std::optional<std::uint32_t> windowLater;
    bool busWorks = false;
    bool isObeyed = true;
    bool isSaved = false;
    bool isCopied = false;
    bool isRestored = false;
    std::optional<CopyKey> prepared;
    std::optional<CopyKey> pressed;
};

/// How a quick drop in front of such a window ends: "C" and "Insert" are keys that were pressed.
std::string outcomeOn(ScriptedDesktop& desktop) {
    const bool brought = !runQuickDrop(desktop).empty();
    EXPECT_EQ(brought, desktop.isRestored);
    const std::string key = !desktop.pressed ? "" : desktop.pressed == CopyKey::controlC ? " by C" : " by Insert";
    return (brought ? "files" : desktop.isSaved ? "nothing" : "untouched") + key;
}

TEST(QuickDropRunTest, copiesInTheFileManagerInFrontAsThatUnderstandsIt) {
    for (const bool isOwnInFront : {false, true}) {
        for (const auto& [windowClass, busWorks, outcome] : {std::tuple("Thunar", false, "files by C"),
                                                             {"dolphin", true, "files"},
                                                             {"dolphin", false, "files by Insert"}}) {
            ScriptedDesktop desktop;
            desktop.windowClass = windowClass;
            desktop.busWorks = busWorks;
            desktop.window = isOwnInFront ? desktop.ownWindow : desktop.fileManager;
            const std::uint32_t inFront = desktop.window;
            EXPECT_EQ(outcomeOn(desktop), outcome);
            EXPECT_EQ(desktop.window, inFront) << "has the keyboard again";
        }
    }
}

TEST(QuickDropRunTest, sendsNothingToOtherPrograms) {
    for (const char* other : {"XTerm", "", "thunar.Thunar", "Nemo-desktop", "dolphin-emu"}) {
        for (const std::uint32_t window : {ScriptedDesktop::fileManager, ScriptedDesktop::ownWindow}) {
            ScriptedDesktop desktop;
            desktop.windowClass = other;
            desktop.window = window;
            EXPECT_EQ(outcomeOn(desktop), "untouched") << other;
        }
    }
    for (const auto& [window, foreign, later, isObeyed, outcome] :
         {std::tuple(0u, 7u, 0u, true, "untouched"),  // no window is active
          {99u, 0u, 99u, true, "untouched"},          // none was before
          {7u, 7u, 8u, true, "nothing"},              // the user went on to another
          {99u, 7u, 99u, false, "nothing"}}) {        // the window manager refuses
        ScriptedDesktop desktop;
        desktop.windowClass = "Thunar";
        desktop.window = window;
        desktop.foreign = foreign;
        desktop.windowLater = later;
        desktop.isObeyed = isObeyed;
        EXPECT_EQ(outcomeOn(desktop), outcome) << window;
    }
}

TEST(ClipboardSnapshotTest, keepsDataInItsBestForms) {
    EXPECT_EQ(targetsToKeep({"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS", "UTF8_STRING", "text/html",
                             "UTF8_STRING", "image/bmp", "application/ico", "image/png", "image/jpeg", "DELETE"}),
              (std::vector<std::string>{"UTF8_STRING", "text/html", "image/png"}));
    EXPECT_EQ(targetsToKeep({"image/jpeg", "image/tiff"}), (std::vector<std::string>{"image/jpeg", "image/tiff"}));
}

/// A snapshot of the targets a, b and c with these answers.
ClipboardSnapshot snapshotOf(const std::vector<ClipboardAnswer>& answers, std::size_t budget) {
    SnapshotBuilder builder(std::vector<std::string>{"TARGETS", "a", "b", "c"}, budget);
    for (const ClipboardAnswer& answer : answers) {
        if (builder.wanted())
            builder.take(answer);
    }
    return std::move(builder).finished();
}

TEST(ClipboardSnapshotTest, isCompleteOnlyWithEverythingTheOwnerHas) {
    const ClipboardAnswer three{std::nullopt, item("a", 3)};
    const ClipboardAnswer refused{SelectionFailure::refused, {}};
    EXPECT_EQ(snapshotOf({three, refused, three}, 9).items.size(), 2u);
    EXPECT_FALSE(snapshotOf({three, three, three}, 8).isComplete) << "over the budget";
    EXPECT_FALSE(snapshotOf({three, three}, 9).isComplete) << "not finished";
    EXPECT_FALSE(snapshotOf({refused, refused, refused}, 9).isComplete) << "nothing to put back";
    for (const SelectionFailure failure : {SelectionFailure::late, SelectionFailure::tooBig}) {
        const ClipboardSnapshot cut = snapshotOf({three, {failure, {}}, three}, 9);
        EXPECT_TRUE(cut.items.empty());
    }
    EXPECT_FALSE(SnapshotBuilder(std::nullopt, 9).finished().isComplete) << "a stopped owner";
}

constexpr std::uint32_t process = 4711;

/// One Dolphin process with the windows 1 and 2 on the bus.
class FakeDolphin : public QDBusVirtualObject {
public:
    explicit FakeDolphin(QDBusConnection bus) {
        bus.registerService(QStringLiteral("org.kde.dolphin-%1").arg(process));
        bus.registerVirtualObject(QStringLiteral("/dolphin"), this, QDBusConnection::SubPath);
    }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        calls += message.path().toStdString() + " " + message.member().toStdString() + "\n";
        QVariantList answer;
        if (message.member() == QStringLiteral("Introspect"))
            answer = {QStringLiteral("<node><node name='Dolphin_1'/><node name='Dolphin_2'/></node>")};
        else if (message.member() == QStringLiteral("winId"))
            answer = {message.path().right(1).toLongLong()};
        return bus.send(message.createReply(answer));
    }
    std::string calls;
};

TEST(DolphinCopyTest, asksTheWindowInFrontAndNoOther) {
    PrivateBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    FakeDolphin dolphin(bus.connection(QStringLiteral("dolphin")));
    const auto copied = [](std::uint32_t window) {
        auto answer = std::async(std::launch::async, copyInDolphin, process, window);
        EXPECT_TRUE(comesTrue([&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
        return answer.get();
    };
    EXPECT_TRUE(copied(2));
    EXPECT_EQ(std::exchange(dolphin.calls, {}),
              "/dolphin Introspect\n/dolphin/Dolphin_1 winId\n/dolphin/Dolphin_2 winId\n"
              "/dolphin/Dolphin_2/actions/edit_copy trigger\n");
    EXPECT_FALSE(copied(3));
}

}  // namespace
}  // namespace stowpocket
