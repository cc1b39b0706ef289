// SPDX-License-Identifier: MIT
// Quick drops from real file managers.
#include "input/DisplayHand.h"
#include "input/PrivateDisplay.h"
#include "intake/UriList.h"
#include "platform/linux/input/ClipboardOwner.h"
#include "platform/linux/input/X11FileManagerSelection.h"
#include "platform/linux/input/X11HotkeyService.h"
#include "platform/qt/QtDispatch.h"
#include "x11/ComesTrue.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QGuiApplication>
#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <unistd.h>

namespace stowpocket {
namespace {

constexpr std::string_view clipboardText = "kept text";

class QuickDropTest : public testing::Test {
protected:
    using Files = std::vector<FileURL>;

    QuickDropTest() {
        service.installEventHandler([this](const HotkeyIdentifier*) {
            selection.read([this](const Files& files) { answers.push_back(files); });
            return 0;
        });
    }

    ~QuickDropTest() override {
        owner.kill();
        owner.waitForFinished();
    }

    [[nodiscard]] static Files folderOf(const std::string& name, int count) {
        Files files;
        const auto folder = PrivateDisplay::home() / name;
        std::filesystem::create_directory(folder);
        for (int number = 1; number <= count; ++number) {
            const auto path = folder / ("file #" + std::to_string(number) + " \xC3\xBC.txt");
            std::ofstream(path) << number;
            files.push_back(*FileURL::fromPath(path.string()));
        }
        return files;
    }
    /// True once a window of this program, with this class, has the focus.
    [[nodiscard]] bool comesToFront(const std::string& windowClass) {
        return comesTrue([&] {
            const std::string found = hand.textOf(hand.activeWindow(), "WM_CLASS");
            return found.find('\0' + windowClass + '\0') != std::string::npos;
        });
    }
    /// Presses the hotkey and holds it until the files are there.
    [[nodiscard]] Files quickDrop() {
        const std::size_t before = answers.size();
        const std::vector<std::uint8_t> keys{key::alt, key::shift, key::d};
        std::ranges::for_each(keys, [this](std::uint8_t key) { hand.downOnKeyboard(key); });
        EXPECT_TRUE(comesTrue([&] { return answers.size() > before; }));
        std::ranges::for_each(keys, [this](std::uint8_t key) { hand.upOnKeyboard(key); });
        hand.sync();
        return answers.empty() ? Files() : answers.back();
    }
    /// Selects all and takes it, as soon as the folder is there.
    [[nodiscard]] bool staysSelectedAs(const Files& files) {
        return comesTrue([&] {
            hand.press({key::control, key::a});
            return quickDrop() == files;
        });
    }
    /// Has another program own the clipboard with the text.
    [[nodiscard]] bool fillClipboard() {
        owner.kill();
        EXPECT_TRUE(comesTrue([this] { return owner.state() == QProcess::NotRunning; }));
        const xcb_window_t before = hand.clipboardOwner();
        owner.setProgram(QStringLiteral("xclip"));
        owner.setArguments({QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-quiet")});
        owner.start();
        owner.write(clipboardText.data(), clipboardText.size());
        owner.closeWriteChannel();
        return comesTrue([&] { return hand.clipboardOwner() != before && clipboard() == clipboardText; });
    }
    /// What another program pastes.
    [[nodiscard]] static std::string clipboard() {
        QProcess paste;
        paste.start(QStringLiteral("xclip"),
                    {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o"),
                     QStringLiteral("-t"), QStringLiteral("UTF8_STRING")});
        EXPECT_TRUE(comesTrue([&paste] { return paste.state() == QProcess::NotRunning; }));
        return paste.readAllStandardOutput().toStdString();
    }

    DisplayHand hand;
    QtDispatch dispatch;
    X11HotkeyService service{qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection(), dispatch};
    X11FileManagerSelection selection{dispatch};
    std::unique_ptr<HotkeyRegistration> hotkey =
        service.registerHotkey(2, carbonModifier::optionKey | carbonModifier::shiftKey, {0x53504B32, 2});
    std::vector<Files> answers;
    QProcess owner;
};

struct Manager {
    std::string program;
    std::string windowClass;
};

class QuickDropFromManagerTest : public QuickDropTest, public testing::WithParamInterface<Manager> {};

TEST_P(QuickDropFromManagerTest, takesSelectedFilesAndNoOtherSelection) {
    const auto& [program, windowClass] = GetParam();
    const Files files = folderOf(program, 2);
    const Program manager({program, PrivateDisplay::home() / program});
    ASSERT_TRUE(comesToFront(windowClass));
    ASSERT_TRUE(staysSelectedAs(files));
    ASSERT_TRUE(fillClipboard());
    for (const char* holder : {"of another program", "put back by the quick drop before"}) {
        EXPECT_EQ(quickDrop(), files);
        EXPECT_EQ(clipboard(), clipboardText) << holder;
    }

    const xcb_window_t mainWindow = hand.activeWindow();
    hand.press({key::control, key::l});  // the focus goes to the folder's path, with all of it selected
    EXPECT_TRUE(comesTrue([&] { return quickDrop().empty(); }));
    EXPECT_EQ(hand.activeWindow(), mainWindow);
    EXPECT_EQ(clipboard(), clipboardText);
}

TEST_P(QuickDropFromManagerTest, findsNothingWhileANameIsEdited) {
    const auto& [program, windowClass] = GetParam();
    const std::string folder = program + "-rename";
    const Files files = folderOf(folder, 1);
    const Program manager({program, PrivateDisplay::home() / folder});
    ASSERT_TRUE(comesToFront(windowClass));
    ASSERT_TRUE(staysSelectedAs(files));
    ASSERT_TRUE(fillClipboard());
    hand.press({key::f2});
    EXPECT_TRUE(comesTrue([&] { return quickDrop().empty(); }));
    EXPECT_EQ(clipboard(), clipboardText);
    hand.press({key::a});
    hand.press({key::enter});
    EXPECT_TRUE(comesTrue([&] { return std::filesystem::exists(PrivateDisplay::home() / folder / "a.txt"); }))
        << "the name was being edited all the time";
}

TEST_F(QuickDropTest, restoresNoMoreThanItSaved) {
    const Files files = folderOf("owners", 1);
    const Program manager({"thunar", PrivateDisplay::home() / "owners"});
    ASSERT_TRUE(comesToFront("Thunar"));
    ASSERT_TRUE(staysSelectedAs(files));
    ASSERT_TRUE(fillClipboard());
    kill(static_cast<pid_t>(owner.processId()), SIGSTOP);
    EXPECT_EQ(quickDrop(), files) << "the clipboard's owner hangs";
    kill(static_cast<pid_t>(owner.processId()), SIGCONT);
    EXPECT_NE(clipboard(), "") << "nothing is offered in place of what could not be read";

    ASSERT_TRUE(fillClipboard());
    owner.terminate();
    ASSERT_TRUE(comesTrue([&] { return hand.clipboardOwner() == 0; }));
    EXPECT_EQ(quickDrop(), files);
    EXPECT_TRUE(comesTrue([&] { return hand.clipboardOwner() == 0; })) << "nobody had it before";
}

TEST_F(QuickDropTest, findsTheCopyKeyInTheLayoutInForce) {
    const Files files = folderOf("layouts", 1);
    const Program manager({"thunar", PrivateDisplay::home() / "layouts"});
    ASSERT_TRUE(comesToFront("Thunar"));
    EXPECT_EQ(Program({"setxkbmap", "us,us", "-variant", ",dvorak", "-option", "grp:caps_toggle"}).wait(), 0);
    hand.press({key::capsLock});
    EXPECT_TRUE(staysSelectedAs(files));
    EXPECT_EQ(Program({"setxkbmap", "us", "-option", ""}).wait(), 0);
}

TEST_F(QuickDropTest, runsOneReadAtATime) {
    selection.read([this](const Files& files) { answers.push_back(files); });
    EXPECT_TRUE(answers.empty());
    bool answered = false;
    selection.read([&answered](const Files&) { answered = true; });
    EXPECT_TRUE(answered);
    EXPECT_TRUE(comesTrue([this] { return answers.size() == 1; }));
}

/// Stands in for one Dolphin process with two windows on the bus.
class FakeDolphin : public QDBusVirtualObject {
public:
    FakeDolphin(xcb_window_t window, std::function<void()> copy) : window_(window), copy_(std::move(copy)) {
        bus_.registerService(QStringLiteral("org.kde.dolphin-%1").arg(getpid()));
        bus_.registerVirtualObject(QStringLiteral("/dolphin"), this, QDBusConnection::SubPath);
    }
    ~FakeDolphin() override { QDBusConnection::disconnectFromBus(bus_.name()); }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        calls += message.path().toStdString() + " " + message.member().toStdString() + "\n";
        QVariantList answer;
        if (message.member() == QStringLiteral("Introspect"))
            answer = {QStringLiteral("<node><node name='Dolphin_1'/><node name='Dolphin_2'/></node>")};
        else if (message.member() == QStringLiteral("winId"))
            answer = {message.path().endsWith(u'2') ? qlonglong{window_} : qlonglong{1}};
        else
            copy_();
        return bus.send(message.createReply(answer));
    }
    std::string calls;

private:
    const xcb_window_t window_;
    const std::function<void()> copy_;
    QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("dolphin"));
};

TEST_F(QuickDropTest, asksDolphinOverTheBus) {
    const Files files = folderOf("dolphin", 2);
    const xcb_window_t window = hand.openForeignWindow();
    hand.setProperty(window, "WM_CLASS", XCB_ATOM_STRING, 8, std::string("dolphin\0dolphin\0", 16));
    const auto process = static_cast<std::uint32_t>(getpid());
    hand.setProperty(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, 32,
                     std::string(reinterpret_cast<const char*>(&process), sizeof process));
    ClipboardOwner clipboardOfDolphin(hand.session());
    hand.session().setEventHandler([&](const xcb_generic_event_t& event) { clipboardOfDolphin.handle(event); });
    FakeDolphin dolphin(window, [&] {
        const std::string list = uriListOf(files);
        const auto* const bytes = reinterpret_cast<const std::byte*>(list.data());
        clipboardOfDolphin.put({{"text/uri-list", "text/uri-list", 8, {bytes, bytes + list.size()}}});
    });
    hand.press({key::alt, key::shift, key::d});
    EXPECT_TRUE(comesTrue([&] {
        hand.session().handleEvents();
        return !answers.empty();
    }));
    EXPECT_EQ(answers, std::vector<Files>{files});
    EXPECT_EQ(dolphin.calls, "/dolphin Introspect\n/dolphin/Dolphin_1 winId\n/dolphin/Dolphin_2 winId\n"
                             "/dolphin/Dolphin_2/actions/edit_copy trigger\n");
}

INSTANTIATE_TEST_SUITE_P(Managers, QuickDropFromManagerTest,
                         testing::Values(Manager{"thunar", "Thunar"}, Manager{"pcmanfm-qt", "pcmanfm-qt"}),
                         [](const auto& manager) { return manager.param.windowClass.substr(0, 6); });

}  // namespace
}  // namespace stowpocket
