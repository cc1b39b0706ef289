// SPDX-License-Identifier: MIT
#include "platform/linux/input/X11EventMonitors.h"

#include "platform/linux/input/Keys.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Events.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

#include <algorithm>
#include <array>
#include <xcb/xinput.h>

namespace stowpocket {
namespace {

/// In a combination like Alt+Shift that switches the layout, the last key has a symbol of its own (keysymdef.h:
/// ISO_Lock to ISO_Level5_Lock).
bool isLayoutSymbol(std::uint32_t symbol) {
    return symbol >= 0xFE01 && symbol <= 0xFE13;
}

bool isModifierKey(const QKeyEvent& event) {
    constexpr std::array keys{Qt::Key_Shift,    Qt::Key_Control, Qt::Key_Meta,    Qt::Key_Alt,     Qt::Key_AltGr,
                              Qt::Key_CapsLock, Qt::Key_Super_L, Qt::Key_Super_R, Qt::Key_Hyper_L, Qt::Key_Hyper_R};
    return isLayoutSymbol(event.nativeVirtualKey()) || std::ranges::find(keys, event.key()) != keys.end();
}

/// The event as the reference platform describes it, without its characters.
KeyEvent keyEventOf(const QKeyEvent& event, std::uint8_t physicalKey) {
    constexpr std::array<std::pair<Qt::KeyboardModifier, std::int64_t>, 4> table{{
        {Qt::ShiftModifier, modifierFlag::shift},
        {Qt::ControlModifier, modifierFlag::control},
        {Qt::AltModifier, modifierFlag::option},
        {Qt::MetaModifier, modifierFlag::command},
    }};
    const std::uint16_t key = virtualKeyOf(physicalKey);
    std::int64_t flags = ownFlagsOf(key);
    for (const auto& [modifier, flag] : table) {
        if (event.modifiers().testFlag(modifier))
            flags |= flag;
    }
    if ((event.nativeModifiers() & x11Modifier::lock) != 0)
        flags |= keyFlag::capsLock;
    return {.keyCode = key, .modifierFlags = flags};
}

/// Buttons as the X protocol numbers them. Higher numbers are wheels and thumb buttons.
constexpr std::uint32_t leftButton = 1;
constexpr std::uint32_t middleButton = 2;
constexpr std::uint32_t rightButton = 3;

/// The bit of `pressedMouseButtons`.
std::uint32_t bitOf(std::uint32_t button) {
    return button == leftButton ? 1 : button == rightButton ? 2 : button == middleButton ? 4 : 0;
}

XcbAnswer<xcb_query_pointer_reply_t> pointerIn(xcb_connection_t* connection, xcb_window_t window) {
    return XcbAnswer<xcb_query_pointer_reply_t>(
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, window), nullptr));
}

/// Whether this is over an icon in a panel.
bool isOverEmbeddedWindow(const X11Connection& x11, const QPoint& pixels) {
    return std::ranges::any_of(QGuiApplication::topLevelWindows(), [&](QWindow* window) {
        const auto id = window->isVisible() ? static_cast<xcb_window_t>(window->winId()) : x11None;
        if (id == x11None || x11.parentOf(id) == x11.root())
            return false;
        const std::optional<QRect> place = x11.geometryOnRoot(id);
        return place && place->contains(pixels);
    });
}

}  // namespace

KeyDownMonitors::KeyDownMonitors(Character character) : character_(std::move(character)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool KeyDownMonitors::swallows(const KeyEvent& event) const {
    return monitors_.anyOf([&event](const Handler& handler) { return handler(event); });
}

bool KeyDownMonitors::swallows(const QKeyEvent& event) {
    const std::pair<std::uint64_t, std::uint32_t> identity{event.timestamp(), event.nativeScanCode()};
    if (event.type() == QEvent::KeyPress && decided_ == identity) {
        decided_.reset();
        return swallowed_;
    }
    decided_ = identity;
    const auto key = static_cast<std::uint8_t>(event.nativeScanCode() & 0xFF);
    KeyEvent keyEvent = keyEventOf(event, key);
    keyEvent.capitals = character_(key, event.nativeModifiers());
    swallowed_ = swallows(keyEvent);
    return swallowed_;
}

/// Qt first asks the window whether a shortcut is overridden, then runs shortcuts, then sends the press to the
/// window, which passes it on to its widgets. A monitor decides at the first of these. The shortcuts of a press that
/// it swallows are overridden.
bool KeyDownMonitors::eventFilter(QObject* receiver, QEvent* event) {
    const bool isKeyDown = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isKeyDown || !receiver->isWindowType())
        return false;
    auto* const keyEvent = static_cast<QKeyEvent*>(event);
    if (isModifierKey(*keyEvent) || !swallows(*keyEvent))
        return false;
    keyEvent->accept();
    return true;
}

X11ClickWatch::X11ClickWatch(const X11Connection& connection, Drags drags)
    : x11_(connection), connection_(connection.raw()), drags_(std::move(drags)), root_(connection.root()) {
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(connection_, &xcb_input_id);
    if (extension != nullptr && extension->present != 0)
        inputExtension_ = extension->major_opcode;
}

X11ClickWatch::~X11ClickWatch() {
    QObject::disconnect(deactivation_);
}

std::uint32_t X11ClickWatch::heldButtons() const {
    const auto pointer = pointerIn(connection_, root_);
    const auto bit = [&pointer](xcb_button_mask_t mask, std::uint32_t button) {
        return pointer && (pointer->mask & mask) != 0 ? bitOf(button) : 0;
    };
    return bit(XCB_BUTTON_MASK_1, leftButton) | bit(XCB_BUTTON_MASK_2, middleButton) |
           bit(XCB_BUTTON_MASK_3, rightButton);
}

/// The server does not know of a button that was pressed over a Wayland window.
std::uint32_t X11ClickWatch::pressedButtons() const {
    return (heldButtons() & ~staleButtons_) | (drags_.isWaylandDragOn() ? bitOf(leftButton) : 0);
}

void X11ClickWatch::monitorsChanged() {
    selectServerEvents();
    staleButtons_ &= heldButtons();
    QObject::disconnect(deactivation_);
    gnome_.reset();
    isDragConcerned_ = !monitors_.isEmpty() && drags_.isWaylandDragOn();
    if (monitors_.isEmpty() || !isWaylandSession())
        return;
    deactivation_ =
        QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationInactive)
                reportLostKeyboard();
        });
    if (GnomeClicks::areNeeded(x11_))
        gnome_.emplace(x11_, [this] { reportClick(); });
}

/// KWin and sway activate the window under a drag and do not report a click on it afterwards.
void X11ClickWatch::reportLostKeyboard() {
    isDragConcerned_ = drags_.isWaylandDragOn();
    if (isDragConcerned_)
        return;
    const auto wasDragging = std::make_shared<bool>(false);
    drags_.afterOwn([this, wasDragging] {
        if (*wasDragging)
            staleButtons_ = heldButtons();
        reportIfInactive();
    });
    *wasDragging = true;
}

void X11ClickWatch::waylandDragEnded() {
    if (std::exchange(isDragConcerned_, false))
        reportIfInactive();
}

void X11ClickWatch::reportIfInactive() const {
    if (QGuiApplication::applicationState() == Qt::ApplicationInactive)
        reportClick();
}

void X11ClickWatch::selectServerEvents() {
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t bits = 0;
    } mask;
    if (inputExtension_ == 0)
        return;
    mask.bits = monitors_.isEmpty() ? 0 : XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
    xcb_input_xi_select_events(connection_, root_, 1, &mask.head);
    xcb_flush(connection_);
}

bool X11ClickWatch::handleEvent(const xcb_generic_event_t& event) {
    const auto* const press = eventAs<xcb_input_raw_button_press_event_t>(event, XCB_GE_GENERIC);
    if (press != nullptr && press->extension == inputExtension_ && press->event_type == XCB_INPUT_RAW_BUTTON_PRESS)
        handlePress(press->detail);
    return false;
}

void X11ClickWatch::handlePress(std::uint32_t button) {
    staleButtons_ &= ~bitOf(button);
    if ((button == leftButton || button == rightButton) && !pointerIsOverOwnWindow())
        reportClick();
}

void X11ClickWatch::reportClick() const {
    static_cast<void>(monitors_.anyOf([](const Handler& handler) {
        handler();
        return false;
    }));
}

/// Raw events carry no position. A panel that the compositor draws itself passes clicks on. Every window of this
/// connection has a number from the connection's own range.
bool X11ClickWatch::pointerIsOverOwnWindow() const {
    const xcb_setup_t* const setup = xcb_get_setup(connection_);
    xcb_window_t window = root_;
    while (window != XCB_WINDOW_NONE) {
        if (gnome_ && gnome_->isDesktop(window))
            return false;
        if ((window & ~setup->resource_id_mask) == setup->resource_id_base)
            return true;
        const auto pointer = pointerIn(connection_, window);
        if (window == root_ && pointer && x11_.isOverlay(pointer->child))
            return isOverEmbeddedWindow(x11_, {pointer->root_x, pointer->root_y});
        window = pointer ? pointer->child : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    }
    return false;
}

}  // namespace stowpocket
