// SPDX-License-Identifier: MIT
#include "platform/linux/drags/X11FileDrag.h"

#include "intake/ExchangeFormats.h"
#include "platform/linux/x11/X11Connection.h"

#include <QBitmap>
#include <QCoreApplication>
#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>

#include <xcb/xfixes.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// GTK 3 and Qt targets fetch the data only after the drop has ended, some of them after asking the user.
constexpr auto keepingTime = 15s;
/// How soon a drag with a missed end is noticed. The release of the button normally arrives within milliseconds.
constexpr auto lookInterval = 200ms;
constexpr int looksUntilLost = 3;
/// Changes of the focus may follow the end of a drag.
constexpr auto settlingTime = 200ms;

/// The window of the drag's picture, which is under the pointer all the time. Null before it exists.
QWindow* pictureWindow() {
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto found =
        std::ranges::find_if(windows, [](const QWindow* window) { return window->inherits("QShapedPixmapWindow"); });
    return found == windows.end() ? nullptr : *found;
}

/// Cuts the window of the drag's picture to what is opaque. Qt does so before the window exists, which has no effect:
/// without a compositor the picture lay on a white box.
void cutToPicture(const QPixmap& picture) {
    QPixmap mask = picture.mask();
    mask.setDevicePixelRatio(1);
    const QRegion shape(QBitmap::fromPixmap(mask.scaled(picture.deviceIndependentSize().toSize())));
    if (QWindow* const window = pictureWindow())
        window->setMask(shape);
}

/// The places of the fields in the message (XDND 5).
constexpr std::size_t flagsField = 1;
constexpr std::size_t actionField = 4;
constexpr std::uint32_t acceptFlag = 1;

/// In the server's pixels, of which a screen has several for each of Qt's points.
QPoint pixelAt(const QPointF& point) {
    const QScreen* const screen = QGuiApplication::screenAt(point.toPoint());
    if (screen == nullptr)
        return point.toPoint();
    const QPointF origin = screen->geometry().topLeft();
    return (origin + (point - origin) * screen->devicePixelRatio()).toPoint();
}

}  // namespace

/// Keeps a drag from falling through windows that take no drops, as old terminals: Qt then looks for one that does
/// among the windows below, which the user cannot see. An unseen window of one pixel lies above such a window under
/// the pointer. It says that it takes drops, so that Qt looks no further, and then takes none.
class X11FileDrag::Floor : public QObject {
public:
    explicit Floor(const X11Connection& connection)
        : connection_(connection), window_(xcb_generate_id(connection.raw())) {
        constexpr std::uint32_t isUnmanaged = 1;
        constexpr std::uint32_t version = 5;
        xcb_create_window(connection_.raw(), 0, window_, connection_.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &isUnmanaged);
        connection_.setProperty(window_, connection_.atom(X11Atom::dragAware), XCB_ATOM_ATOM, {version});
        // The filter that was installed last sees an event first, and Qt installs its own when the drag starts.
        QTimer::singleShot(0, this, [this] {
            lookThroughPicture();
            QCoreApplication::instance()->installEventFilter(this);
        });
    }
    /// Says no to a position that is meant for it.
    void answer(const xcb_client_message_event_t& message) const {
        constexpr std::size_t sourceField = 0;
        const xcb_window_t source = message.data.data32[sourceField];
        if (message.window == window_ && message.type == connection_.atom(X11Atom::dragPosition))
            connection_.sendMessage(source, XCB_EVENT_MASK_NO_EVENT, source, X11Atom::dragStatus, {window_});
    }
    Floor(const Floor&) = delete;
    Floor& operator=(const Floor&) = delete;
    ~Floor() override {
        xcb_destroy_window(connection_.raw(), window_);
        xcb_flush(connection_.raw());
    }

private:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseMove)
            follow(pixelAt(static_cast<const QMouseEvent*>(event)->globalPosition()));
        return false;
    }

    /// The picture counts as no window under the pointer then.
    void lookThroughPicture() const {
        const QWindow* const picture = pictureWindow();
        if (picture == nullptr)
            return;
        const xcb_xfixes_region_t nothing = xcb_generate_id(connection_.raw());
        xcb_xfixes_create_region(connection_.raw(), nothing, 0, nullptr);
        xcb_xfixes_set_window_shape_region(connection_.raw(), static_cast<xcb_window_t>(picture->winId()),
                                           XCB_SHAPE_SK_INPUT, 0, 0, nothing);
        xcb_xfixes_destroy_region(connection_.raw(), nothing);
    }

    void follow(const QPoint& pixel) const {
        const xcb_window_t met = childAt(connection_.root(), pixel);
        if (met == window_)
            return;
        if (takesDrops(met, pixel) || connection_.isOverlay(met))
            xcb_unmap_window(connection_.raw(), window_);
        else
            cover(met, pixel);
    }

    [[nodiscard]] xcb_window_t childAt(xcb_window_t window, const QPoint& pixel) const {
        const XcbAnswer<xcb_translate_coordinates_reply_t> met(xcb_translate_coordinates_reply(
            connection_.raw(),
            xcb_translate_coordinates(connection_.raw(), connection_.root(), window,
                                      static_cast<std::int16_t>(pixel.x()), static_cast<std::int16_t>(pixel.y())),
            nullptr));
        return met ? met->child : x11None;
    }

    [[nodiscard]] bool takesDrops(xcb_window_t window, const QPoint& pixel) const {
        for (; window != x11None; window = childAt(window, pixel)) {
            if (!connection_.property(window, X11Atom::dragAware).empty() ||
                !connection_.property(window, X11Atom::dragProxy).empty())
                return true;
        }
        return false;
    }

    /// The window may go meanwhile, which is no error. On the bare desktop Qt would keep the answer of the window
    /// before.
    void cover(xcb_window_t window, const QPoint& pixel) const {
        std::vector<std::uint32_t> values{static_cast<std::uint32_t>(pixel.x()),
                                          static_cast<std::uint32_t>(pixel.y())};
        if (window != x11None)
            values.push_back(window);
        values.push_back(window != x11None ? XCB_STACK_MODE_ABOVE : XCB_STACK_MODE_BELOW);
        const auto sibling = static_cast<std::uint16_t>(window != x11None ? XCB_CONFIG_WINDOW_SIBLING : 0);
        const auto request = xcb_configure_window_checked(
            connection_.raw(), window_,
            XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | sibling | XCB_CONFIG_WINDOW_STACK_MODE, values.data());
        xcb_discard_reply(connection_.raw(), request.sequence);
        xcb_map_window(connection_.raw(), window_);
    }

    const X11Connection& connection_;
    const xcb_window_t window_;
};

X11FileDrag::~X11FileDrag() = default;

X11FileDrag::X11FileDrag(const X11Connection& connection) : connection_(connection), kwinDrop_(connection) {
    forgetting_.setSingleShot(true);
    QObject::connect(&forgetting_, &QTimer::timeout, [this] { uriList_.clear(); });
    settling_.setSingleShot(true);
    QObject::connect(&settling_, &QTimer::timeout, [this] {
        for (const auto& work : std::exchange(afterwards_, {}))
            work();
    });
}

void X11FileDrag::start(QWidget& source, const std::vector<FileURL>& files, const QPixmap& picture,
                        const QPoint& hotSpot) {
    forgetting_.stop();
    settling_.stop();
    uriList_ = QByteArray::fromStdString(uriListOf(files));
    auto* const data = new QMimeData;
    data->setData(QStringLiteral("text/uri-list"), uriList_);
    auto* const drag = new QDrag(&source);  // deletes itself
    drag->setMimeData(data);
    drag->setPixmap(picture);
    drag->setHotSpot(hotSpot);
    QTimer looking;
    const auto window = static_cast<xcb_window_t>(source.window()->winId());
    QObject::connect(&looking, &QTimer::timeout, [this, window] { endIfLost(window); });
    looking.start(lookInterval);
    looksWithoutButton_ = 0;
    isDragging_ = true;
    kwinDrop_.begin();
    // In a Wayland session the compositor sees to what lies under the pointer.
    if (!isWaylandSession())
        floor_ = std::make_unique<Floor>(connection_);
    if (connection_.selectionOwner(X11Atom::compositorOwner) == x11None)
        QTimer::singleShot(0, drag, [&picture] { cutToPicture(picture); });
    drag->exec(Qt::CopyAction, Qt::CopyAction);
    kwinDrop_.end();
    floor_.reset();
    isDragging_ = false;
    settling_.start(settlingTime);
    forgetting_.start(keepingTime);
}

void X11FileDrag::whenOver(std::function<void()> work) {
    if (isDragging_ || settling_.isActive())
        afterwards_.push_back(std::move(work));
    else
        work();
}

/// The server grabs the pointer for the window that the drag began in. If that window leaves the screen for any
/// reason, the release of the button goes to another program, and Qt would wait for it forever.
void X11FileDrag::endIfLost(xcb_window_t source) {
    looksWithoutButton_ = connection_.isButtonHeld() ? 0 : looksWithoutButton_ + 1;
    if (!connection_.isViewable(source) || looksWithoutButton_ == looksUntilLost)
        QDrag::cancel();
}

/// GTK 4 asks with time 0. Qt takes that for a stale request and refuses it, so requests are answered here first.
bool X11FileDrag::handleEvent(const xcb_generic_event_t& event) {
    if (const auto* const message = eventAs<xcb_client_message_event_t>(event)) {
        if (floor_)
            floor_->answer(*message);
        return isDragging_ && refuseMove(*message);
    }
    const auto* const request = eventAs<xcb_selection_request_event_t>(event);
    return request != nullptr && !uriList_.isEmpty() && answer(*request);
}

/// Some targets move files whatever a drag offers (seen in gThumb). Qt would take that for an acceptance; it gets the
/// same answer as a refusal instead.
bool X11FileDrag::refuseMove(const xcb_client_message_event_t& status) const {
    const auto& fields = status.data.data32;
    if (status.type != connection_.atom(X11Atom::dragStatus) || (fields[flagsField] & acceptFlag) == 0 ||
        fields[actionField] != connection_.atom(X11Atom::dragMove))
        return false;
    xcb_client_message_event_t refusal = status;
    refusal.data.data32[flagsField] = 0;  // Qt takes any flag for an acceptance
    refusal.data.data32[actionField] = XCB_ATOM_NONE;
    sendEvent(connection_.raw(), status.window, XCB_EVENT_MASK_NO_EVENT, refusal);
    return true;
}

bool X11FileDrag::answer(const xcb_selection_request_event_t& request) {
    if (request.selection != connection_.atom(X11Atom::dragSelection))
        return false;
    // The oldest requestors leave the choice of the property to the owner.
    const xcb_atom_t property = request.property == x11None ? request.target : request.property;
    const xcb_atom_t uriList = connection_.atom(X11Atom::uriList);
    const xcb_atom_t targets = connection_.atom(X11Atom::targets);
    if (request.target == uriList)
        xcb_change_property(connection_.raw(), XCB_PROP_MODE_REPLACE, request.requestor, property, uriList, 8,
                            static_cast<std::uint32_t>(uriList_.size()), uriList_.constData());
    else if (request.target == targets)
        connection_.setProperty(request.requestor, property, XCB_ATOM_ATOM, {targets, uriList});
    else
        return false;
    answerSelectionRequest(connection_.raw(), request, property);
    if (request.target == uriList)
        kwinDrop_.asked();
    return true;
}

}  // namespace stowpocket
