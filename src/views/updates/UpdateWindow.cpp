// SPDX-License-Identifier: MIT
#include "views/updates/UpdateWindow.h"

#include "views/controls/Button.h"
#include "views/controls/Motion.h"
#include "views/controls/ScrollView.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace stowpocket {
namespace {

constexpr int windowWidth = 420;
constexpr int margin = 20;
constexpr int sectionSpacing = 14;
constexpr int textSpacing = 4;
constexpr int symbolPointSize = 36;
constexpr int notesHeight = 150;
constexpr int notesMargin = 8;
constexpr int notesPointSize = 12;
constexpr int barHeight = 6;
constexpr int barSteps = 1000;
constexpr int buttonPadding = 28;
constexpr int minimumButtonWidth = 84;
constexpr double trackOpacity = 0.12;

/// A thin progress bar. Assistive technology reads its value.
class Bar : public QProgressBar {
public:
    Bar() {
        setRange(0, barSteps);
        setTextVisible(false);
        setFixedHeight(barHeight);
        setAccessibleName(QStringLiteral("Download"));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        constexpr double radius = barHeight / 2.0;
        painter.setBrush(Theme::color(ColorRole::primary, palette(), trackOpacity));
        painter.drawRoundedRect(rect(), radius, radius);
        QRectF done(rect());
        done.setWidth(done.width() * value() / barSteps);
        painter.setBrush(Theme::color(ColorRole::orange, palette()));
        painter.drawRoundedRect(
            layoutDirection() == Qt::RightToLeft ? done.translated(width() - done.width(), 0) : done, radius, radius);
    }
};

/// Text to read and copy, with a scroll indicator instead of a scroll bar.
class Notes : public QPlainTextEdit {
public:
    Notes() : indicator_(new ScrollIndicator(*verticalScrollBar(), this)) {
        setReadOnly(true);
        setTabChangesFocus(true);
        setFrameShape(QFrame::NoFrame);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFixedHeight(notesHeight);
        setFont(Theme::font(notesPointSize));
        document()->setDocumentMargin(notesMargin);
        setAccessibleName(QStringLiteral("What is new"));
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QPlainTextEdit::resizeEvent(event);
        indicator_->cover();
    }

private:
    ScrollIndicator* const indicator_;
};

}  // namespace

UpdateView::UpdateView(Chosen chosen)
    : chosen_(std::move(chosen)),
      title_(paragraph({}, {.pointSize = 13, .weight = FontWeight::bold})),
      message_(paragraph({}, {.pointSize = 12, .role = ColorRole::secondary})),
      notes_(new Notes),
      progress_(new Bar),
      spinner_(new Spinner),
      buttonRow_(new QHBoxLayout) {
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    buttonRow_->setSpacing(defaultSpacing);
    compose(
        *this,
        padded(vstack(sectionSpacing,
                      hstack(sectionSpacing,
                             symbol("tray.and.arrow.down", {.pointSize = symbolPointSize, .role = ColorRole::orange}),
                             vstack(textSpacing, Spacer{}, title_, message_, Spacer{})),
                      notes_, progress_, hstack(defaultSpacing, spinner_, Spacer{}, buttonRow_)),
               {.horizontal = margin, .top = margin}));
}

void UpdateView::setPresentation(const UpdatePresentation& presentation) {
    onClose_ = presentation.onClose;
    const QString title = QString::fromStdString(presentation.title);
    setWindowTitle(title);
    title_->setText(title);
    message_->setText(QString::fromStdString(presentation.message));
    message_->setVisible(!presentation.message.empty());
    if (const QString notes = QString::fromStdString(presentation.notes); notes != notes_->toPlainText())
        notes_->setPlainText(notes);
    notes_->setVisible(!presentation.notes.empty());
    progress_->setValue(static_cast<int>(std::lround(presentation.progress.value_or(0) * barSteps)));
    progress_->setVisible(presentation.progress.has_value());
    spinner_->setVisible(presentation.isBusy);
    setButtons(presentation.buttons);
    fitHeight();
}

/// Unchanged buttons are kept, so that the focus stays where it is.
void UpdateView::setButtons(const std::vector<UpdateButton>& buttons) {
    if (buttons == shownButtons_)
        return;
    shownButtons_ = buttons;
    while (QLayoutItem* const item = buttonRow_->takeAt(0)) {
        item->widget()->hide();
        item->widget()->deleteLater();  // not immediately: it may be handling its own click
        delete item;
    }
    for (const UpdateButton& shown : buttons) {
        Button* const button = Button::bordered(QString::fromStdString(shown.title), {.pointSize = 13},
                                                [this, choice = shown.choice] { chosen_(choice); });
        button->setFixedWidth(std::max(minimumButtonWidth, button->sizeHint().width() + buttonPadding));
        buttonRow_->addWidget(button);
        button->show();
        if (&shown == &buttons.back())
            button->setFocus(Qt::OtherFocusReason);
    }
}

void UpdateView::fitHeight() {
    layout()->activate();
    setFixedSize(windowWidth, layout()->totalHeightForWidth(windowWidth));
}

void UpdateView::bringToFront() {
    setAttribute(Qt::WA_ShowWithoutActivating, false);
    show();
    raise();
    activateWindow();
}

bool UpdateView::answerForClosing() {
    if (!onClose_)
        return false;
    chosen_(*onClose_);
    return true;
}

/// In the middle of the screen where the user is, at the first time.
void UpdateView::showEvent(QShowEvent* event) {
    const QScreen* const screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen != nullptr && !testAttribute(Qt::WA_Moved)) {
        QRect place({}, size());
        place.moveCenter(screen->availableGeometry().center());
        move(place.topLeft());
    }
    QWidget::showEvent(event);
}

/// The answer decides whether the window closes.
void UpdateView::closeEvent(QCloseEvent* event) {
    event->ignore();
    answerForClosing();
}

void UpdateView::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape || !answerForClosing())
        QWidget::keyPressEvent(event);
}

void DeleteViewLater::operator()(UpdateView* view) const {
    view->hide();
    view->deleteLater();
}

void QtUpdateWindow::show(const UpdateStatus& status) {
    if (!view_)
        view_.reset(new UpdateView([this](UpdateChoice choice) { chosen_.emit(choice); }));
    view_->setPresentation(presentationOf(status));
    if (view_->isVisible())
        return;
    view_->setAttribute(Qt::WA_ShowWithoutActivating);
    view_->show();
}

void QtUpdateWindow::bringToFront() {
    if (view_)
        view_->bringToFront();
}

void QtAlerts::runModal(const InformationalAlert& alert) {
    view_.reset(new UpdateView([this](UpdateChoice) { view_.reset(); }));
    view_->setWindowModality(Qt::ApplicationModal);
    view_->setPresentation({.title = alert.messageText,
                            .message = alert.informativeText,
                            .buttons = {{alert.buttonTitle, UpdateChoice::later}},
                            .onClose = UpdateChoice::later});
    view_->bringToFront();
}

}  // namespace stowpocket
