// SPDX-License-Identifier: MIT
#include "platform/qt/QtPopover.h"

#include "foundation/Invariant.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QStyle>

namespace stowpocket {
namespace {

constexpr int shadowWidth = 14;
constexpr int shadowDrop = 3;
constexpr int shadowStrength = 70;  // of 255, summed over the whole width
constexpr int borderWidth = 2;
constexpr float borderOpacity = 0.22F;
/// Qt shares fills of more than 95 spans out to other threads and waits for them, which may take long. A line of the
/// outline has at most three.
constexpr int bandHeight = 30;

QRect qRect(const Rect& rect) {
    return QRectF(rect.x, rect.y, rect.width, rect.height).toRect();
}

/// The panel with its arrow, relative to the frame's corner.
QPainterPath bubble(const PopoverPlacement& placement) {
    const QSizeF size(placement.frame.width, placement.frame.height);
    const bool isTop = placement.arrowSide == ArrowSide::top;
    const double panelTop = isTop ? popoverArrowHeight : 0;
    // One point inside the panel: shapes that merely touch are not united.
    const double base = isTop ? popoverArrowHeight + 1 : size.height() - popoverArrowHeight - 1;
    const double tip = isTop ? 0 : size.height();
    QPainterPath panel;
    panel.addRoundedRect(QRectF(0, panelTop, size.width(), size.height() - popoverArrowHeight), popoverCornerRadius,
                         popoverCornerRadius);
    QPainterPath arrow;
    arrow.moveTo(placement.arrowTip - popoverArrowWidth / 2, base);
    arrow.lineTo(placement.arrowTip, tip);
    arrow.lineTo(placement.arrowTip + popoverArrowWidth / 2, base);
    arrow.closeSubpath();
    return panel.united(arrow);
}

void paintShadow(QPainter& painter, const QPainterPath& outline) {
    painter.save();
    painter.translate(0, shadowDrop);
    painter.setBrush(Qt::NoBrush);
    for (int width = shadowWidth - shadowDrop; width > 0; --width) {
        const QColor color(0, 0, 0, 2 * shadowStrength / (shadowWidth * 3));
        painter.setPen(QPen(color, 2 * width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(outline);
    }
    painter.restore();
}

constexpr int fadeMs = 110;

QRect availableAround(const QRect& anchor) {
    const QScreen* screen = QGuiApplication::screenAt(anchor.center());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? QRect() : screen->availableGeometry();
}

}  // namespace

Rect rectOf(const QRect& rect) {
    return {static_cast<double>(rect.x()), static_cast<double>(rect.y()), static_cast<double>(rect.width()),
            static_cast<double>(rect.height())};
}

QRectF exactRect(const Rect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

/// A dialog, because some window managers hide tool windows together with the program's last active window, even
/// during a drag, and some tile ordinary windows.
PopoverWindow::PopoverWindow(PopoverEdge edge, Place place, std::function<void()> cancel)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      edge_(edge),
      place_(std::move(place)),
      cancel_(std::move(cancel)) {
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_TranslucentBackground, edge_ == PopoverEdge::shadowed);
}

void PopoverWindow::setContent(QWidget* content) {
    content_ = content;
    content_->setParent(this);
    content_->show();
}

void PopoverWindow::fitContent() {
    const QSize wanted = content_->sizeHint().expandedTo(content_->minimumSizeHint());
    const PopoverPlacement placement = place_(wanted, edge_ == PopoverEdge::shadowed ? shadowWidth : 0);
    const QRect frame = qRect(placement.frame);
    const QRect window = qRect(placement.window);
    if (placement == placement_ && window == geometry())
        return;
    placement_ = placement;
    outline_ =
        bubble(placement).translated(placement.frame.x - placement.window.x, placement.frame.y - placement.window.y);
    const int arrow = static_cast<int>(popoverArrowHeight);
    const QRect panel = frame.adjusted(0, placement_.arrowSide == ArrowSide::top ? arrow : 0, 0,
                                       placement_.arrowSide == ArrowSide::top ? 0 : -arrow);
    panel_ = panel.translated(-window.topLeft());
    content_->setGeometry(panel_);
    // The size limits are widened before and closed after the change, so that size and place change in one request:
    // the window manager replies to each one, and Qt waits for the server at each reply.
    setMinimumSize(minimumSize().boundedTo(window.size()));
    setMaximumSize(maximumSize().expandedTo(window.size()));
    setGeometry(window);
    setFixedSize(window.size());
    if (edge_ == PopoverEdge::cut)
        setMask(QRegion(outline_.toFillPolygon().toPolygon()));
    update();
}

/// The owner closes the window. Refusing the event would also keep the session from ending the program.
void PopoverWindow::closeEvent(QCloseEvent* event) {
    cancel_();
    event->accept();
}

bool PopoverWindow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest && isVisible())
        fitContent();
    return QWidget::event(event);
}

void PopoverWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        cancel_();
    else
        QWidget::keyPressEvent(event);
}

void PopoverWindow::moveEvent(QMoveEvent* event) {
    const QPoint wanted = qRect(placement_.window).topLeft();
    if (isVisible() && event->pos() != wanted && std::exchange(insists_, false))
        move(wanted);
}

/// Whether no border, corner or shadow is drawn in it.
bool PopoverWindow::isPlain(const QRect& area) const {
    const int corner = static_cast<int>(popoverCornerRadius);
    return panel_.adjusted(borderWidth, corner, -borderWidth, -corner).contains(area) ||
           panel_.adjusted(corner, borderWidth, -corner, -borderWidth).contains(area);
}

void PopoverWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QRect area = event->rect();
    if (isPlain(area)) {
        painter.fillRect(area, palette().window());
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing, edge_ == PopoverEdge::shadowed);
    for (int top = area.top(); top <= area.bottom(); top += bandHeight) {
        painter.setClipRect(QRect(area.left(), top, area.width(), bandHeight) & area);
        paintOutline(painter);
    }
}

void PopoverWindow::paintOutline(QPainter& painter) const {
    if (edge_ == PopoverEdge::shadowed)
        paintShadow(painter, outline_);
    QColor border = palette().color(QPalette::WindowText);
    border.setAlphaF(borderOpacity);
    // Half of the line lies outside a cut edge, so it is drawn twice as wide there.
    painter.setPen(QPen(border, edge_ == PopoverEdge::cut ? borderWidth : 1));
    painter.fillPath(outline_, palette().window());
    painter.drawPath(outline_);
}

void QtPopover::show(StatusItemButton& anchor) {
    auto* const button = dynamic_cast<QtStatusItemButton*>(&anchor);
    invariant(button != nullptr, "a popover hangs on an icon of its own desktop");
    anchor_ = button;
    button->setAttached(true);
    isShown_ = true;
    prepareWindow();
    anchorMoved_ = button->moved.connect([this] { window_->fitContent(); });
    watchScreens();
    window_->fitContent();
    if (fades()) {
        window_->setWindowOpacity(0);
        fade(0, 1);
    } else {
        window_->setWindowOpacity(1);
    }
    host_.willShow(*window_);
    if (host_.takesSecondRequests())
        window_->insistOnce();
    window_->show();
    window_->raise();
}

void QtPopover::makeKey() {
    if (isShown_)
        host_.focus(*window_);
}

void QtPopover::performClose() {
    if (!isShown_)
        return;
    isShown_ = false;
    anchorMoved_.reset();
    screens_.reset();
    std::exchange(anchor_, nullptr)->setAttached(false);
    if (fades())
        fade(window_->windowOpacity(), 0);
    else
        hide();
}

void QtPopover::hide() {
    host_.afterDrag([this, window = QPointer<QWidget>(window_.get())] {
        if (window && !isShown_)
            window->hide();
    });
}

/// A compositor may have started or ended since the last time, and an existing window cannot change its edge.
void QtPopover::prepareWindow() {
    fade_.reset();
    const PopoverEdge edge = host_.blendsWindows() ? PopoverEdge::shadowed : PopoverEdge::cut;
    if (window_ && window_->edge() == edge)
        return;
    auto window = std::make_unique<PopoverWindow>(
        edge, [this](const QSize& size, int shadow) { return placementFor(size, shadow); }, [this] { onCancel(); });
    if (content_ == nullptr)
        content_ = makeContent_().release();
    window->setContent(content_);
    window->setWindowTitle(QStringLiteral("stowpocket shelf"));
    window_ = std::move(window);
}

PopoverPlacement QtPopover::placementFor(const QSize& content, int shadow) {
    if (anchor_ != nullptr) {
        anchorRect_ = anchor_->rectOnScreen();
        barRect_ = anchor_->barOnScreen();
    }
    const PopoverPlacement placement = placePopover(
        rectOf(anchorRect_), {static_cast<double>(content.width()), static_cast<double>(content.height())},
        areaBesideBar(rectOf(availableAround(anchorRect_)), rectOf(barRect_)), shadow);
    host_.willPlace(*window_, qRect(placement.window).topLeft());
    return placement;
}

void QtPopover::watchScreens() {
    screens_ = std::make_unique<QObject>();
    const auto fit = [this] { window_->fitContent(); };
    for (const QScreen* const screen : QGuiApplication::screens()) {
        QObject::connect(screen, &QScreen::geometryChanged, screens_.get(), fit, Qt::QueuedConnection);
        QObject::connect(screen, &QScreen::availableGeometryChanged, screens_.get(), fit, Qt::QueuedConnection);
    }
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, screens_.get(), fit, Qt::QueuedConnection);
}

/// Fading needs a compositor and is left out if the desktop asks for reduced motion.
bool QtPopover::fades() const {
    const int duration = window_->style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, window_.get());
    return animates_ && window_->edge() == PopoverEdge::shadowed && duration > 0;
}

void QtPopover::fade(double from, double to) {
    fade_ = std::make_unique<QPropertyAnimation>(window_.get(), "windowOpacity");
    fade_->setDuration(fadeMs);
    fade_->setStartValue(from);
    fade_->setEndValue(to);
    QObject::connect(fade_.get(), &QPropertyAnimation::finished, window_.get(), [this] {
        if (!isShown_)
            hide();
    });
    fade_->start();
}

}  // namespace stowpocket
