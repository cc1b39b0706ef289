// SPDX-License-Identifier: MIT
#include "views/shelf/ShelfContentView.h"

#include "views/controls/Compose.h"
#include "views/controls/Drawing.h"
#include "views/controls/Motion.h"
#include "views/controls/Theme.h"

#include <QDropEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace stowpocket {
namespace {

constexpr int compactHeight = 44;
constexpr int fullMinimumHeight = 200;
constexpr int fullPadding = 24;
constexpr int fullSpacing = 12;

constexpr double cornerRadius = 8;
constexpr double strokeWidth = 2;
/// In stroke widths: 8 points drawn, 4 points blank.
const QList<qreal> dashPattern{4, 2};
constexpr double borderOpacity = 0.3;
constexpr double targetedFillOpacity = 0.08;
constexpr std::chrono::milliseconds highlightDuration{150};

constexpr std::string_view symbolName = "tray.and.arrow.down";
constexpr int symbolPointSize = 32;
constexpr int fullTextPointSize = 13;
constexpr int compactTextPointSize = 11;

QString invitation() {
    return QStringLiteral("Drop files here");
}

QString hint() {
    return QStringLiteral("or drag them out when you're ready");
}

QFont invitationFont(DropZoneView::Form form) {
    const int pointSize = form == DropZoneView::Form::full ? fullTextPointSize : compactTextPointSize;
    return Theme::font(pointSize, FontWeight::medium);
}

int contentHeight(DropZoneView::Form form) {
    const int invitationHeight = QFontMetrics(invitationFont(form)).height();
    if (form == DropZoneView::Form::compact)
        return invitationHeight;
    return Symbol::side(symbolPointSize) + fullSpacing + invitationHeight + fullSpacing +
           QFontMetrics(Theme::font(captionPointSize)).height();
}

constexpr int gridPadding = 10;
constexpr int belowGridPadding = 8;
constexpr int bottomPadding = 10;

}  // namespace

DropZoneView::DropZoneView(Form form) : form_(form) {
    setAccessibleRole(*this, QAccessible::Grouping);
    setAccessibleName(QStringLiteral("Drop zone for files"));
    setSizePolicy(QSizePolicy::Expanding, form == Form::full ? QSizePolicy::MinimumExpanding : QSizePolicy::Fixed);
    Motion::prepare(animation_, highlightDuration);
    animation_.setStartValue(0.0);
    animation_.setEndValue(1.0);
    animation_.setDirection(QVariantAnimation::Backward);  // at rest it is back at its start
    connect(&animation_, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

void DropZoneView::setTargeted(bool isTargeted) {
    if (isTargeted_ == isTargeted)
        return;
    isTargeted_ = isTargeted;
    animation_.setDirection(isTargeted ? QVariantAnimation::Forward : QVariantAnimation::Backward);
    if (isVisible() && Motion::isWanted(*this)) {
        animation_.start();
    } else {
        Motion::finish(animation_);
        update();
    }
}

void DropZoneView::hideEvent(QHideEvent* event) {
    Motion::finish(animation_);
    QWidget::hideEvent(event);
}

QSize DropZoneView::sizeHint() const {
    if (form_ == Form::compact)
        return {0, compactHeight};
    return {0, std::max(fullMinimumHeight, contentHeight(form_) + 2 * fullPadding)};
}

void DropZoneView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintFrame(painter);
    paintContent(painter);
}

void DropZoneView::paintFrame(QPainter& painter) const {
    const QPalette& colors = palette();
    const double fill = targetedFillOpacity * highlight();
    painter.fillPath(continuousRoundedRect(rect(), cornerRadius), Theme::color(ColorRole::orange, colors, fill));

    QPen pen(mixedColor(Theme::color(ColorRole::secondary, colors, borderOpacity),
                        Theme::color(ColorRole::orange, colors), highlight()),
             strokeWidth, Qt::CustomDashLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setDashPattern(dashPattern);
    constexpr double inset = strokeWidth / 2;
    const QRectF border = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    painter.strokePath(continuousRoundedRect(border, cornerRadius - inset), pen);
}

void DropZoneView::paintContent(QPainter& painter) const {
    const QPalette& colors = palette();
    const QColor color =
        mixedColor(Theme::color(ColorRole::secondary, colors), Theme::color(ColorRole::orange, colors), highlight());
    int top = (height() - contentHeight(form_)) / 2;
    const auto drawLine = [&](const QString& line, const QFont& font, const QColor& lineColor) {
        const int lineHeight = QFontMetrics(font).height();
        painter.setFont(font);
        painter.setPen(lineColor);
        painter.drawText(QRect(0, top, width(), lineHeight), Qt::AlignCenter, line);
        top += lineHeight + fullSpacing;
    };

    if (form_ == Form::full) {
        const QImage image =
            Symbol::image(symbolName, symbolPointSize, FontWeight::regular, {color}, devicePixelRatioF());
        painter.drawImage(QPoint((width() - Symbol::side(symbolPointSize)) / 2, top), image);
        top += Symbol::side(symbolPointSize) + fullSpacing;
    }
    drawLine(invitation(), invitationFont(form_), color);
    if (form_ == Form::full)
        drawLine(hint(), Theme::font(captionPointSize), Theme::color(ColorRole::tertiary, colors));
}

ShelfContentView::ShelfContentView(std::shared_ptr<ShelfViewModel> viewModel, DropReader drops,
                                   TileServices tileServices, int width)
    : viewModel_(std::move(viewModel)),
      drops_(std::move(drops)),
      dropZone_(new DropZoneView(DropZoneView::Form::full)),
      grid_(new ShelfGridView(viewModel_, std::move(tileServices), width - 2 * gridPadding)),
      compactDropZone_(new DropZoneView(DropZoneView::Form::compact)),
      fullNotice_(text(QStringLiteral("Shelf full - remove items to add more."),
                       {.pointSize = captionPointSize, .role = ColorRole::orange})),
      scrollView_(new ScrollView(
          padded(vstack(defaultSpacing, padded(grid_, {.horizontal = gridPadding, .top = gridPadding, .bottom = 0}),
                        padded(compactDropZone_, {.horizontal = gridPadding, .top = belowGridPadding, .bottom = 0}),
                        padded(fullNotice_, {.top = belowGridPadding, .bottom = 0})),
                 {.bottom = bottomPadding}))) {
    compose(*this, vstack(0, padded(dropZone_, {.horizontal = gridPadding}), scrollView_));
    setAcceptDrops(true);
    fullNotice_->setAlignment(Qt::AlignCenter);
    grid_->onTileFocused = [this](QWidget& tile) { scrollView_->ensureWidgetVisible(&tile, 0, gridPadding); };
}

void ShelfContentView::setPresentation(const ShelfPresentation& shown) {
    using Content = ShelfPresentation::Content;
    using BelowGrid = ShelfPresentation::BelowGrid;
    acceptsDrops_ = shown.acceptsDrops;
    compactDropZone_->setVisible(shown.belowGrid == BelowGrid::compactDropZone);
    fullNotice_->setVisible(shown.belowGrid == BelowGrid::fullNotice);
    // Before it is shown: content that changes its size while its first size is announced would miss the change.
    scrollView_->measureContent();
    dropZone_->setVisible(shown.content == Content::dropZone);
    scrollView_->setVisible(shown.content == Content::grid);
    updateGeometry();
}

void ShelfContentView::setTargeted(bool isTargeted) {
    dropZone_->setTargeted(isTargeted);
    compactDropZone_->setTargeted(isTargeted);
}

void ShelfContentView::dragEnterEvent(QDragEnterEvent* event) {
    const bool isWanted =
        acceptsDrops_ && event->possibleActions().testFlag(Qt::CopyAction) && drops_.offersItems(*event->mimeData());
    if (!isWanted) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setTargeted(true);
}

void ShelfContentView::dragMoveEvent(QDragMoveEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(acceptsDrops_ && dropZone_->isTargeted());
}

void ShelfContentView::dragLeaveEvent(QDragLeaveEvent*) {
    setTargeted(false);
}

void ShelfContentView::dropEvent(QDropEvent* event) {
    setTargeted(false);
    const auto providers = drops_.itemProviders(*event->mimeData());
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(!providers.empty() && viewModel_->handleDrop(providers));
}

void ShelfContentView::hideEvent(QHideEvent* event) {
    setTargeted(false);
    QWidget::hideEvent(event);
}

}  // namespace stowpocket
