// SPDX-License-Identifier: MIT
#include "platform/linux/drags/X11FileDrag.h"

#include "intake/ExchangeFormats.h"
#include "platform/linux/x11/X11Connection.h"

#include <QBitmap>
#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QWindow>

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

/// Cuts the window of the drag's picture to what is opaque. Qt does so before the window exists, which has no effect:
/// without a compositor the picture lay on a white box.
void cutToPicture(const QPixmap& picture) {
    QPixmap mask = picture.mask();
    mask.setDevicePixelRatio(1);
    const QRegion shape(QBitmap::fromPixmap(mask.scaled(picture.deviceIndependentSize().toSize())));
    for (QWindow* const window : QGuiApplication::topLevelWindows()) {
        if (window->inherits("QShapedPixmapWindow"))
            window->setMask(shape);
    }
}

/// The places of the fields in the message (XDND 5).
constexpr std::size_t flagsField = 1;
constexpr std::size_t actionField = 4;
constexpr std::uint32_t acceptFlag = 1;

}  // namespace

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
    if (connection_.selectionOwner(X11Atom::compositorOwner) == x11None)
        QTimer::singleShot(0, drag, [&picture] { cutToPicture(picture); });
    drag->exec(Qt::CopyAction, Qt::CopyAction);
    kwinDrop_.end();
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
    if (const auto* const message = eventAs<xcb_client_message_event_t>(event))
        return isDragging_ && refuseMove(*message);
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
