// SPDX-License-Identifier: MIT
#include "views/shelf/ShelfView.h"

#include "services/Preferences.h"
#include "views/controls/Motion.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <utility>

namespace stowpocket {
namespace {

constexpr int shelfWidth = 320;

Text* bannerText() {
    return paragraph({}, {.pointSize = 11, .weight = FontWeight::medium, .role = ColorRole::onBanner});
}

/// A warning on an orange background, with further views at its end.
template <class... Ends>
QWidget* warningBanner(Text* words, Ends... ends) {
    QWidget* const sign = symbol("exclamationmark.triangle.fill", {.pointSize = 10, .role = ColorRole::onBanner});
    return panel(padded(hstack(defaultSpacing, sign, words, ends...), {.horizontal = 12, .top = 6}),
                 {.role = ColorRole::banner});
}

}  // namespace

DragHandle::DragHandle(QLayout* stack, std::function<void(QWidget& handle)> startDrag)
    : startDrag_(std::move(startDrag)) {
    setLayout(stack);
}

void DragHandle::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        pressedAt_ = event->position().toPoint();
}

void DragHandle::mouseMoveEvent(QMouseEvent* event) {
    if (!pressedAt_ ||
        (event->position().toPoint() - *pressedAt_).manhattanLength() < QApplication::startDragDistance())
        return;
    pressedAt_.reset();
    startDrag_(*this);
}

void DragHandle::mouseReleaseEvent(QMouseEvent*) {
    pressedAt_.reset();
}

ShelfView::ShelfView(Dependencies dependencies)
    : dependencies_(std::move(dependencies)),
      viewModel_(*dependencies_.viewModel),
      content_(new ShelfContentView(dependencies_.viewModel, dependencies_.drops, dependencies_.tiles, shelfWidth)) {
    setFixedWidth(shelfWidth);
    setFocusPolicy(Qt::ClickFocus);
    compose(*this, vstack(defaultSpacing, header(), divider(), banner(), saveBanner(), content_, progressRow(),
                          divider(), footer()));
    content_->grid().commands().confirmOpening = [this](std::size_t fileCount, std::function<void()> open) {
        askOnce(openConfirmation_, *this, QStringLiteral("Open %1 Files?").arg(fileCount),
                QStringLiteral("Each may open a window of its own."), QStringLiteral("Open"), std::move(open));
    };
    observe();
    refresh();
}

QLayout* ShelfView::header() {
    badge_ = text({}, {.pointSize = 10, .weight = FontWeight::medium, .role = ColorRole::secondary});
    constexpr SymbolStyle tray{.pointSize = 13, .weight = FontWeight::semibold, .role = ColorRole::orange};
    constexpr int titleSpacing = 6;
    auto* const handle =
        new DragHandle(vstack(0, panel(padded(badge_, {.horizontal = 7, .top = 3}),
                                       {.role = ColorRole::secondary, .opacity = 0.1, .cornerRadius = capsule})),
                       [this](QWidget& source) { content_->grid().startDragOfAll(source); });
    handle->setToolTip(QStringLiteral("Drag to take all files"));
    return padded(hstack(titleSpacing, symbol("tray.and.arrow.down", tray),
                         text(QStringLiteral("stowpocket"), {.pointSize = 13, .weight = FontWeight::bold}), Spacer{},
                         handle),
                  {.horizontal = 14, .top = 10});
}

QWidget* ShelfView::banner() {
    constexpr SymbolStyle cross{
        .pointSize = 9, .weight = FontWeight::semibold, .role = ColorRole::onBanner, .opacity = 0.8};
    const auto dismiss = [this] { viewModel_.setCapacityMessage(std::nullopt); };
    bannerText_ = bannerText();
    banner_ = warningBanner(bannerText_, Button::ofSymbol("xmark", cross, QStringLiteral("Dismiss"), dismiss));
    return banner_;
}

/// Disappears by itself once the shelf is saved.
QWidget* ShelfView::saveBanner() {
    saveBannerText_ = bannerText();
    saveBanner_ = warningBanner(saveBannerText_);
    return saveBanner_;
}

QWidget* ShelfView::progressRow() {
    progress_ = group(padded(
        hstack(defaultSpacing, Spacer{}, new Spinner,
               text(QStringLiteral("Adding files\u2026"), {.pointSize = 11, .role = ColorRole::secondary}), Spacer{}),
        {.horizontal = 8, .top = 8}));
    return progress_;
}

QLayout* ShelfView::footer() {
    clearButton_ =
        Button::ofText(QStringLiteral("Clear All"), {.pointSize = captionPointSize, .role = ColorRole::red},
                       [this] { confirmClear(); });
    return padded(hstack(defaultSpacing,
                         Button::ofSymbol("gearshape", {.pointSize = 12}, QStringLiteral("Settings"),
                                          [this] { dependencies_.onOpenSettings(); }),
                         Spacer{}, clearButton_, Spacer{},
                         Button::ofSymbol("power", {.pointSize = 11}, QStringLiteral("Quit stowpocket"),
                                          [this] { dependencies_.onQuit(); })),
                  {.horizontal = 14, .top = 8});
}

void ShelfView::observe() {
    ShelfManager& shelf = viewModel_.shelfManager();
    observations_.push_back(shelf.itemsChanged.connect([this](const ShelfChange& change) {
        content_->grid().apply(change);
        refresh();
    }));
    observations_.push_back(
        shelf.thumbnailChanged.connect([this](const UUID& id) { content_->grid().updatePicture(id); }));
    observations_.push_back(shelf.isLoadingChanged.connect([this] { refresh(); }));
    observations_.push_back(viewModel_.capacityMessageChanged.connect([this] { refresh(); }));
    observations_.push_back(viewModel_.clearRequested.connect([this] { confirmClear(); }));
    observations_.push_back(shelf.preferences().saveProblemChanged().connect([this] { refresh(); }));
}

void ShelfView::refresh() {
    setPresentation(shelfPresentation(viewModel_));
}

void ShelfView::setPresentation(const ShelfPresentation& shown) {
    shown_ = shown;
    badge_->setText(displayText(shown.badge));
    bannerText_->setText(displayText(shown.banner.value_or("")));
    banner_->setVisible(shown.banner.has_value());
    saveBannerText_->setText(displayText(shown.saveBanner.value_or("")));
    saveBanner_->setVisible(shown.saveBanner.has_value());
    content_->setPresentation(shown);
    progress_->setVisible(shown.showsProgress);
    clearButton_->setVisible(shown.showsClearButton);
    updateGeometry();
}

QSize ShelfView::sizeHint() const {
    // The height depends on the width only while a banner, whose text may wrap, is visible.
    const QLayout& stack = *layout();
    return {shelfWidth,
            stack.hasHeightForWidth() ? stack.totalHeightForWidth(shelfWidth) : stack.totalSizeHint().height()};
}

/// The capacity may have been changed in the settings. Usually it was not, and a new layout would delay the first
/// frame. The view itself takes the focus, so that no button looks selected before
/// Tab is pressed.
void ShelfView::showEvent(QShowEvent* event) {
    if (const ShelfPresentation now = shelfPresentation(viewModel_); now != shown_)
        setPresentation(now);
    setFocus();
    QWidget::showEvent(event);
}

void ShelfView::hideEvent(QHideEvent* event) {
    content_->grid().commands().selection().clear();
    QWidget::hideEvent(event);
}

/// Presses beside the tiles end here.
void ShelfView::mousePressEvent(QMouseEvent* event) {
    content_->grid().commands().selection().clear();
    QWidget::mousePressEvent(event);
}

/// Keys that no control inside takes.
void ShelfView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste))
        viewModel_.paste();
    else if (event->matches(QKeySequence::Undo))
        viewModel_.shelfManager().undo();
    else
        event->setAccepted(content_->grid().handleKey(*event));
}

void ShelfView::confirmClear() {
    askOnce(clearConfirmation_, *this, QStringLiteral("Clear Shelf?"),
            QStringLiteral("All items are taken off the shelf. The files stay where they are."),
            QStringLiteral("Clear All"), [this] { clear(); });
}

void ShelfView::clear() {
    viewModel_.shelfManager().clear();
    viewModel_.setCapacityMessage(std::nullopt);
}

}  // namespace stowpocket
