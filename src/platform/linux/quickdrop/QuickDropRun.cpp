// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/QuickDropRun.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QXmlStreamReader>

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <utility>

namespace stowpocket {
namespace {

/// Classes as the programs in Debian 12 set them. All offer text/uri-list on the clipboard. Only Dolphin copies
/// files on Ctrl+Insert too.
constexpr std::array<KnownFileManager, 7> knownFileManagers{{
    {"thunar", CopyKey::controlC, false},
    {"pcmanfm", CopyKey::controlC, false},
    {"pcmanfm-qt", CopyKey::controlC, false},
    {"org.gnome.nautilus", CopyKey::controlC, false},
    {"caja", CopyKey::controlC, false},
    {"nemo", CopyKey::controlC, false},
    {"dolphin", CopyKey::controlInsert, true},
}};

bool equalIgnoringCase(std::string_view one, std::string_view other) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::ranges::equal(one, other, {}, lower, lower);
}

struct Target {
    std::uint32_t window = 0;
    /// Our own window when it has the keyboard. 0 when the target has it.
    std::uint32_t ownWindow = 0;
};

Target targetOn(QuickDropDesktop& desktop) {
    const std::uint32_t active = desktop.activeWindow();
    return desktop.isOwn(active) ? Target{desktop.lastForeignWindow(), active} : Target{active, 0};
}

bool haveSelectionCopied(QuickDropDesktop& desktop, const KnownFileManager& manager, const Target& target) {
    if (manager.copiesOverBus && desktop.copyOverBus(target.window))
        return true;
    if (!desktop.prepareKeys(manager.copyKey, target.window))
        return false;
    // Time has passed, and the keys may only reach the window that was examined.
    const bool hasKeyboard =
        target.ownWindow != 0 ? desktop.activate(target.window) : desktop.activeWindow() == target.window;
    if (hasKeyboard)
        desktop.pressKeys();
    return hasKeyboard;
}

std::vector<FileURL> selectionOf(QuickDropDesktop& desktop, const KnownFileManager& manager, const Target& target) {
    ClipboardSnapshot snapshot = desktop.takeSnapshot();
    if (!haveSelectionCopied(desktop, manager, target) || !desktop.awaitNewOwner())
        return {};
    std::vector<FileURL> files = desktop.filesOnClipboard();
    if (snapshot.isComplete)
        desktop.restore(std::move(snapshot));
    return files;
}

constexpr std::size_t keyCount = 256;

using Keymap = std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)>;
using State = std::unique_ptr<xkb_state, decltype(&xkb_state_unref)>;

bool isOn(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t layout, xkb_keysym_t symbol) {
    const xkb_keysym_t* symbols = nullptr;
    return xkb_keymap_key_get_syms_by_level(keymap, key, layout, 0, &symbols) == 1 && *symbols == symbol;
}

std::uint8_t keyIn(xkb_keymap* keymap, xkb_layout_index_t layout, xkb_keysym_t symbol) {
    const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap), keyCount - 1);
    for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap); key <= last; ++key) {
        if (isOn(keymap, key, layout, symbol))
            return static_cast<std::uint8_t>(key);
    }
    return 0;
}

/// Searches the current layout first, as programs do, then the others. 0 when no layout has the symbol.
std::uint8_t keyFor(xkb_keymap* keymap, xkb_layout_index_t inForce, xkb_keysym_t symbol) {
    std::uint8_t key = keyIn(keymap, inForce, symbol);
    for (xkb_layout_index_t layout = 0; key == 0 && layout < xkb_keymap_num_layouts(keymap); ++layout)
        key = keyIn(keymap, layout, symbol);
    return key;
}

bool hasKeyPresses(xcb_connection_t* connection) {
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(connection, &xcb_test_id);
    return extension != nullptr && extension->present != 0;
}

bool hasKeymaps(xcb_connection_t* connection) {
    return xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                       XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr) != 0;
}

/// A program that shows a folder answers in a millisecond or two.
constexpr std::chrono::milliseconds timeLimit(300);

/// The bus objects of one Dolphin process, called one after another until the time is up.
class DolphinProcess {
public:
    explicit DolphinProcess(std::uint32_t process) : service_(QStringLiteral("org.kde.dolphin-%1").arg(process)) {}

    /// The first value that the method returns. Empty without an answer.
    [[nodiscard]] std::optional<QVariant> call(const QString& path, const QString& interface,
                                               const QString& method) const {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
        if (left.count() <= 0)
            return std::nullopt;
        const QDBusMessage answer =
            QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(service_, path, interface, method),
                                               QDBus::Block, static_cast<int>(left.count()));
        if (answer.type() != QDBusMessage::ReplyMessage)
            return std::nullopt;
        return answer.arguments().value(0);
    }

private:
    const QString service_;
    const std::chrono::steady_clock::time_point end_ = std::chrono::steady_clock::now() + timeLimit;
};

QStringList childrenIn(const QString& introspection) {
    QStringList names;
    QXmlStreamReader xml(introspection);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != u"node")
            continue;
        const QString name = xml.attributes().value(QLatin1String("name")).toString();
        if (!name.isEmpty())
            names.push_back(name);
    }
    return names;
}

}  // namespace

std::optional<KnownFileManager> fileManagerOf(std::string_view windowClass) {
    for (const KnownFileManager& manager : knownFileManagers) {
        if (equalIgnoringCase(manager.windowClass, windowClass))
            return manager;
    }
    return std::nullopt;
}

std::vector<FileURL> runQuickDrop(QuickDropDesktop& desktop) {
    const Target target = targetOn(desktop);
    const std::optional<KnownFileManager> manager =
        target.window == 0 ? std::nullopt : fileManagerOf(desktop.classOf(target.window));
    if (!manager)
        return {};
    std::vector<FileURL> files = selectionOf(desktop, *manager, target);
    if (target.ownWindow != 0 && desktop.activeWindow() == target.window)
        desktop.activate(target.ownWindow);
    return files;
}

X11CopyKeys::X11CopyKeys(XcbSession& session)
    : session_(session),
      context_(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES)),
      canPress_(context_ != nullptr && hasKeyPresses(session.raw()) && hasKeymaps(session.raw())) {}

X11CopyKeys::~X11CopyKeys() {
    xkb_context_unref(context_);
}

bool X11CopyKeys::prepare(CopyKey key) {
    const std::int32_t device = canPress_ ? xkb_x11_get_core_keyboard_device_id(session_.raw()) : -1;
    if (device < 0)
        return false;
    const Keymap keymap(xkb_x11_keymap_new_from_device(context_, session_.raw(), device, XKB_KEYMAP_COMPILE_NO_FLAGS),
                        xkb_keymap_unref);
    const State state(keymap ? xkb_x11_state_new_from_device(keymap.get(), session_.raw(), device) : nullptr,
                      xkb_state_unref);
    if (!state)
        return false;
    const auto inForce = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
    controlKey_ = keyFor(keymap.get(), inForce, XKB_KEY_Control_L);
    copyKey_ = keyFor(keymap.get(), inForce, key == CopyKey::controlC ? XKB_KEY_c : XKB_KEY_Insert);
    return controlKey_ != 0 && copyKey_ != 0;
}

void X11CopyKeys::press() {
    xcb_connection_t* const connection = session_.raw();
    const XcbAnswer<xcb_query_keymap_reply_t> held(
        xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr));
    const auto fake = [&](std::uint8_t type, std::size_t key) {
        xcb_test_fake_input(connection, type, static_cast<std::uint8_t>(key), XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0,
                            0);
    };
    for (std::size_t key = 0; held && key < keyCount; ++key) {
        if ((held->keys[key / 8] >> (key % 8) & 1) != 0)
            fake(XCB_KEY_RELEASE, key);
    }
    fake(XCB_KEY_PRESS, controlKey_);
    fake(XCB_KEY_PRESS, copyKey_);
    fake(XCB_KEY_RELEASE, copyKey_);
    fake(XCB_KEY_RELEASE, controlKey_);
    xcb_flush(connection);
}

bool copyInDolphin(std::uint32_t process, std::uint32_t window) {
    const DolphinProcess dolphin(process);
    const QString windows = QStringLiteral("/dolphin");
    const auto introspection =
        dolphin.call(windows, QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    for (const QString& name : childrenIn(introspection.value_or(QVariant()).toString())) {
        const QString path = windows + QLatin1Char('/') + name;
        const auto id = dolphin.call(path, QStringLiteral("org.kde.KMainWindow"), QStringLiteral("winId"));
        if (id && id->toULongLong() == window)
            return dolphin
                .call(path + QStringLiteral("/actions/edit_copy"), QStringLiteral("org.qtproject.Qt.QAction"),
                      QStringLiteral("trigger"))
                .has_value();
    }
    return false;
}

}  // namespace stowpocket
