// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/X11QuickDropDesktop.h"

#include "intake/ExchangeFormats.h"
#include "platform/linux/quickdrop/QuickDropRun.h"

#include <QLoggingCategory>
#include <QString>
#include <QSysInfo>

#include <algorithm>

namespace stowpocket {
namespace {

Q_LOGGING_CATEGORY(quickDropLog, "stowpocket.quickdrop")

constexpr std::size_t longestProtocolList = 1024;

using std::chrono::milliseconds;

/// A working owner on a busy machine delivers the largest pictures within this time. A stopped one never does.
constexpr milliseconds snapshotLimit(1000);
constexpr std::size_t snapshotBudget = 16u << 20;
/// For a busy file manager to handle the keys. Files that it copies later stay on the clipboard.
constexpr milliseconds busyLimit(5000);
/// For the copy after that. The slowest one seen took 13 ms, with 5000 files selected.
constexpr milliseconds copyLimit(400);
constexpr milliseconds filesLimit(2000);
/// Window managers answer within a few milliseconds.
constexpr milliseconds activationLimit(500);
constexpr milliseconds activationInterval(2);
constexpr std::uint32_t fromPager = 2;
constexpr std::size_t longestUriList = 16u << 20;
constexpr std::size_t longestClass = 1024;

XcbSession::Deadline in(milliseconds time) {
    return std::chrono::steady_clock::now() + time;
}

}  // namespace

X11ActiveWindow::X11ActiveWindow(const X11Connection& connection) : connection_(connection) {
    readActiveWindow();
}

bool X11ActiveWindow::handleEvent(const xcb_generic_event_t& event) {
    const auto* const change = eventAs<xcb_property_notify_event_t>(event);
    if (change != nullptr && change->window == connection_.root() &&
        change->atom == connection_.atom(X11Atom::activeWindow))
        later([this] { readActiveWindow(); });
    return false;
}

void X11ActiveWindow::readActiveWindow() {
    const std::vector<std::uint32_t> read = connection_.property(connection_.root(), X11Atom::activeWindow);
    const xcb_window_t active = read.empty() ? x11None : read.front();
    if (active == x11None ? isWaylandSession() : !connection_.isOwn(active))
        lastForeign_ = active;
}

void X11WindowPing::prepare(xcb_window_t window) {
    const auto spoken = session_.property(window, session_.atom("WM_PROTOCOLS"), longestProtocolList).words();
    if (std::ranges::find(spoken, session_.atom("_NET_WM_PING")) == spoken.end())
        return;
    window_ = window;
    time_ = session_.serverTime();
    watchRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
}

void X11WindowPing::send() const {
    if (!isPossible())
        return;
    xcb_client_message_event_t question{};
    question.response_type = XCB_CLIENT_MESSAGE;
    question.format = 32;
    question.window = window_;
    question.type = session_.atom("WM_PROTOCOLS");
    question.data.data32[0] = session_.atom("_NET_WM_PING");
    question.data.data32[1] = time_;
    question.data.data32[2] = window_;
    sendEvent(session_.raw(), window_, XCB_EVENT_MASK_NO_EVENT, question);
}

bool X11WindowPing::isAnswer(const xcb_generic_event_t& event) {
    const auto* const message = isPossible() ? eventAs<xcb_client_message_event_t>(event) : nullptr;
    return message != nullptr && message->window == session_.root() && message->format == 32 &&
           message->data.data32[0] == session_.atom("_NET_WM_PING") && message->data.data32[1] == time_ &&
           message->data.data32[2] == window_;
}

void X11WindowPing::end() {
    if (isPossible())
        watchRoot(XCB_EVENT_MASK_NO_EVENT);
    window_ = XCB_WINDOW_NONE;
}

void X11WindowPing::watchRoot(std::uint32_t events) const {
    xcb_change_window_attributes(session_.raw(), session_.root(), XCB_CW_EVENT_MASK, &events);
    xcb_flush(session_.raw());
}

X11QuickDropDesktop::X11QuickDropDesktop(std::unique_ptr<XcbSession> session, const X11ActiveWindow& windows)
    : session_(std::move(session)),
      windows_(windows),
      reader_(*session_),
      owner_(*session_),
      keys_(*session_),
      ping_(*session_) {
    session_->setEventHandler([this](const xcb_generic_event_t& event) { owner_.handleEvent(event); });
}

std::uint32_t X11QuickDropDesktop::cardinal(xcb_window_t window, const std::string& property) {
    const auto words = session_->property(window, session_->atom(property), sizeof(std::uint32_t)).words();
    return words.empty() ? 0 : words.front();
}

std::uint32_t X11QuickDropDesktop::activeWindow() {
    return cardinal(session_->root(), "_NET_ACTIVE_WINDOW");
}

/// Asks as a pager, which window managers always obey. Polls for the result, since the events of the root window
/// serve another purpose.
bool X11QuickDropDesktop::activate(std::uint32_t window) {
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = window;
    request.type = session_->atom("_NET_ACTIVE_WINDOW");
    request.data.data32[0] = fromPager;
    request.data.data32[1] = session_->serverTime();
    sendEvent(session_->raw(), session_->root(),
              XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, request);
    const XcbSession::Deadline end = in(activationLimit);
    while (activeWindow() != window && std::chrono::steady_clock::now() < end)
        static_cast<void>(session_->await(in(activationInterval), [](const auto&) { return false; }));
    return activeWindow() == window;
}

/// WM_CLASS has two texts, the instance and the class, each ended by NUL.
std::string X11QuickDropDesktop::classOf(std::uint32_t window) {
    const X11Property property = session_->property(window, XCB_ATOM_WM_CLASS, longestClass);
    const auto classBegin =
        std::next(std::ranges::find(property.bytes, std::byte{0}), property.bytes.empty() ? 0 : 1);
    std::string name;
    for (const std::byte letter : std::vector(std::min(classBegin, property.bytes.end()), property.bytes.end())) {
        if (letter == std::byte{0})
            break;
        name.push_back(static_cast<char>(letter));
    }
    return name;
}

ClipboardSnapshot X11QuickDropDesktop::takeSnapshot() {
    session_->handleEvents();  // may report that another program has taken the clipboard
    if (!owner_.items().empty())
        return {owner_.items(), true};
    if (reader_.owner() == XCB_WINDOW_NONE)
        return {};
    const XcbSession::Deadline deadline = in(snapshotLimit);
    SnapshotBuilder builder(reader_.targets(deadline), std::min(snapshotBudget, owner_.mostBytes()));
    while (const std::optional<std::string> target = builder.wanted())
        builder.take(reader_.read(*target, deadline, builder.budgetLeft()));
    ClipboardSnapshot snapshot = std::move(builder).finished();
    if (!snapshot.isComplete)
        qCWarning(quickDropLog, "the clipboard could not be saved, so the copied files will stay on it");
    return snapshot;
}

bool X11QuickDropDesktop::copyOverBus(std::uint32_t window) {
    const std::uint32_t process = cardinal(window, "_NET_WM_PID");
    reader_.watchOwner(true);
    return process != 0 && copyInDolphin(process, window);
}

bool X11QuickDropDesktop::prepareKeys(CopyKey key, std::uint32_t window) {
    if (!keys_.prepare(key))
        return false;
    ping_.prepare(window);
    reader_.watchOwner(true);
    return true;
}

void X11QuickDropDesktop::pressKeys() {
    keys_.press();
    ping_.send();
}

bool X11QuickDropDesktop::awaitNewOwner() {
    const auto isAwaited = [this](const xcb_generic_event_t& event) {
        return reader_.newOwnerIn(event) != XCB_WINDOW_NONE || ping_.isAnswer(event);
    };
    XcbSession::Deadline deadline = in(ping_.isPossible() ? busyLimit : copyLimit);
    while (const XcbSession::Event event = session_->await(deadline, isAwaited)) {
        copyOwner_ = reader_.newOwnerIn(*event);
        if (copyOwner_ != XCB_WINDOW_NONE)
            return true;
        deadline = std::min(deadline, in(copyLimit));
    }
    return false;
}

std::vector<FileURL> X11QuickDropDesktop::filesOnClipboard() {
    const auto targets = reader_.targets(in(filesLimit));
    const std::string wanted(uriListTarget);
    if (!targets || std::ranges::find(*targets, wanted) == targets->end())
        return {};
    const ClipboardAnswer answer = reader_.read(wanted, in(filesLimit), longestUriList);
    if (answer.failure || answer.item.format != 8)
        return {};
    const auto* const text = reinterpret_cast<const char*>(answer.item.bytes.data());
    return filesOfUriList({text, answer.item.bytes.size()}, QSysInfo::machineHostName().toStdString());
}

void X11QuickDropDesktop::restore(ClipboardSnapshot snapshot) {
    if (reader_.owner() == copyOwner_)
        owner_.offer(std::move(snapshot.items));
}

}  // namespace stowpocket
