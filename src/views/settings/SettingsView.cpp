// SPDX-License-Identifier: MIT
#include "views/settings/SettingsView.h"

#include "presentation/SettingsPresentation.h"
#include "views/controls/Choices.h"
#include "views/controls/Compose.h"
#include "views/settings/SettingsPages.h"

#include <QPainter>
#include <QStackedWidget>

namespace stowpocket {
namespace {

constexpr int tabSpacing = 2;
constexpr int barPaddingHorizontal = 12;
constexpr int barPaddingVertical = 8;
constexpr int iconPointSize = 18;
constexpr int iconHeight = 22;
constexpr int labelPointSize = 10;
constexpr int labelTop = 2;
constexpr int tabPadding = 6;
constexpr double tabRadius = 6;

class TabButton : public ChoiceButton {
public:
    TabButton(const SettingsTab& tab, std::function<void()> action) : ChoiceButton(std::move(action)), tab_(tab) {
        setAccessibleRole(*this, QAccessible::PageTab);
        setText(displayText(tab.label));
        setAccessibleName(text());
        setFont(Theme::font(labelPointSize));
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        setChecked(tab.id == 0);
    }

    [[nodiscard]] QSize sizeHint() const override {
        const QFontMetrics metrics(font());
        return {metrics.horizontalAdvance(text()), 2 * tabPadding + iconHeight + labelTop + metrics.height()};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        paintChosen(painter, tabRadius);
        const ColorRole role = isChecked() ? ColorRole::onBanner : ColorRole::secondary;
        drawSymbol(painter, QRect(0, tabPadding, width(), iconHeight), tab_.icon,
                   {.pointSize = iconPointSize, .role = role}, *this);
        painter.setPen(Theme::color(role, palette()));
        painter.drawText(rect().adjusted(0, tabPadding + iconHeight + labelTop, 0, -tabPadding), Qt::AlignCenter,
                         text());
        paintFocusRing(painter, *this, rect(), tabRadius);
    }

private:
    const SettingsTab tab_;
};

/// The row of tabs, of which the first is initially selected. `onSelect` gets the id of the tab that the user chose.
QWidget* tabBar(const std::function<void(int)>& onSelect) {
    auto* const bar = new QWidget;
    setAccessibleRole(*bar, QAccessible::PageTabList);
    bar->setAccessibleName(QStringLiteral("Pages"));
    QLayout* const row = hstack(tabSpacing);
    for (const SettingsTab& tab : settingsTabs)
        row->addWidget(new TabButton(tab, [onSelect, id = tab.id] { onSelect(id); }));
    compose(*bar, padded(row, {.horizontal = barPaddingHorizontal, .top = barPaddingVertical}));
    return bar;
}

constexpr QSize bodySize(450, 470);

}  // namespace

SettingsView::SettingsView(SettingsDependencies dependencies)
    : dependencies_(std::move(dependencies)), pages_(new QStackedWidget) {
    setMinimumHeight(bodySize.height());
    setFocusPolicy(Qt::ClickFocus);
    compose(*this, vstack(0, tabBar([this](int tab) { select(tab); }), divider(), pages_));
    select(settingsTabs.front().id);
}

QSize SettingsView::sizeHint() const {
    return bodySize;
}

/// The view itself takes the focus, so that no control looks selected before Tab is pressed.
void SettingsView::showEvent(QShowEvent* event) {
    setFocus();
    QWidget::showEvent(event);
}

void SettingsView::select(int tab) {
    QWidget*& page = pageOfTab_.at(static_cast<std::size_t>(tab));
    if (page == nullptr) {
        page = makePage(tab);
        pages_->addWidget(page);
    }
    pages_->setCurrentWidget(page);
}

QWidget* SettingsView::makePage(int tab) {
    switch (tab) {
    case 0:
        return new GeneralPage(dependencies_, *this);
    case 1:
        return new AboutPage(dependencies_);
    default:
        return utilitiesPage(dependencies_.services.openURL);
    }
}

}  // namespace stowpocket
