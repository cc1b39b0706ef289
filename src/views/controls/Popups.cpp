// SPDX-License-Identifier: MIT
#include "views/controls/Popups.h"

#include "platform/qt/QtWindow.h"
#include "presentation/Layout.h"
#include "views/controls/Button.h"
#include "views/controls/Drawing.h"

#include <QAccessible>
#include <QEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace stowpocket {
namespace {

constexpr int sheetWidth = 244;
constexpr int sheetPadding = 16;
constexpr int textSpacing = 6;
constexpr int buttonSpacing = 8;
constexpr int buttonsTop = 8;
constexpr double sheetRadius = 10;
constexpr float dimming = 0.35F;
constexpr double edgeOpacity = 0.15;

class Sheet : public QWidget {
public:
    explicit Sheet(QLayout* stack) {
        setFixedWidth(sheetWidth);
        compose(*this, stack);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QPainterPath shape = continuousRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), sheetRadius);
        painter.fillPath(shape, palette().color(QPalette::Window));
        painter.strokePath(shape, Theme::color(ColorRole::primary, palette(), edgeOpacity));
    }
};

/// Deletes itself when it closes.
class Menu : public QMenu {
public:
    explicit Menu(QWidget& owner) : QMenu(&owner) {
        setAttribute(Qt::WA_DeleteOnClose);
        owner.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == parent() && event->type() == QEvent::Hide)
            close();
        return QMenu::eventFilter(watched, event);
    }
};

}  // namespace

AlertView::AlertView(QWidget& below, const QString& title, const QString& message, std::vector<Answer> answers)
    : QWidget(&below), below_(below), answers_(std::move(answers)) {
    setAccessibleName(title);
    setAccessibleDescription(message);
    setAttribute(Qt::WA_NoMousePropagation);
    auto* const sheet = new Sheet(
        padded(vstack(textSpacing, paragraph(title, {.pointSize = 13, .weight = FontWeight::bold}, Qt::AlignHCenter),
                      paragraph(message, {.pointSize = 11}, Qt::AlignHCenter),
                      padded(buttonRow(), {.top = buttonsTop, .bottom = 0})),
               {.horizontal = sheetPadding, .top = sheetPadding}));
    compose(*this, vstack(0, Spacer{}, centred(sheet), Spacer{}));
    below.installEventFilter(this);
    hide();
}

QLayout* AlertView::buttonRow() {
    QLayout* const row = hstack(buttonSpacing);
    for (const Answer& answer : answers_) {
        const ColorRole role = answer.role == Answer::Role::destructive ? ColorRole::red : ColorRole::primary;
        buttons_.push_back(Button::bordered(answer.text, {.pointSize = 13, .role = role},
                                            [this, action = answer.action] { finish(action); }));
        row->addWidget(buttons_.back());
    }
    return row;
}

void AlertView::open() {
    focusedBefore_ = below_.window()->focusWidget();
    setGeometry(below_.rect());
    show();
    raise();
    buttons_.back()->setFocus(Qt::OtherFocusReason);  // Return alone must not destroy anything
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void AlertView::finish(const std::function<void()>& action) {
    if (std::exchange(isAnswered_, true))
        return;
    if (focusedBefore_)
        focusedBefore_->setFocus(Qt::OtherFocusReason);
    hide();
    deleteLater();
    action();
}

bool AlertView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        setGeometry(below_.rect());
    return QWidget::eventFilter(watched, event);
}

bool AlertView::focusNextPrevChild(bool next) {
    const auto focused = std::ranges::find_if(buttons_, [](const QWidget* button) { return button->hasFocus(); });
    const auto count = buttons_.size();
    const auto index = static_cast<std::size_t>(focused - buttons_.begin());
    buttons_[(index + (next ? 1 : count - 1)) % count]->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void AlertView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        finish(answers_.back().action);
}

void AlertView::hideEvent(QHideEvent*) {
    finish(answers_.back().action);
}

void AlertView::paintEvent(QPaintEvent*) {
    QColor shade(Qt::black);
    shade.setAlphaF(dimming);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade);
    // Rounded, so that nothing shows outside the corners of the panel below.
    painter.drawRoundedRect(rect(), popoverCornerRadius, popoverCornerRadius);
}

void askOnce(QPointer<AlertView>& shown, QWidget& below, const QString& title, const QString& message,
             const QString& destroy, std::function<void()> action) {
    using Role = AlertView::Answer::Role;
    if (shown && !shown->isAnswered())
        return;
    shown = new AlertView(below, title, message,
                          {
                              {destroy, Role::destructive, std::move(action)},
                              {QStringLiteral("Cancel"), Role::cancel, [] {}},
                          });
    shown->open();
}

void popUpMenu(QWidget& owner, const QPoint& point, const std::vector<MenuEntry>& entries) {
    auto* const menu = new Menu(owner);
    for (const MenuEntry& entry : entries) {
        if (entry.beginsGroup)
            menu->addSeparator();
        menu->addAction(entry.title, menu, entry.action)->setEnabled(entry.isEnabled);
    }
    popUpAfterClick(*menu, point);
}

}  // namespace stowpocket
