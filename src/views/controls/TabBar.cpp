// SPDX-License-Identifier: MIT
#include "views/controls/TabBar.h"

#include "presentation/SettingsPresentation.h"
#include "views/controls/AccessibleRole.h"
#include "views/controls/Compose.h"
#include "views/controls/PaintedButton.h"

#include <QPainter>

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

QString displayText(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

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

}  // namespace

TabBar::TabBar(const std::function<void(int)>& onSelect) {
    setAccessibleRole(*this, QAccessible::PageTabList);
    setAccessibleName(QStringLiteral("Pages"));
    QLayout* const row = hstack(tabSpacing);
    for (const SettingsTab& tab : settingsTabs)
        row->addWidget(new TabButton(tab, [onSelect, id = tab.id] { onSelect(id); }));
    compose(*this, padded(row, {.horizontal = barPaddingHorizontal, .top = barPaddingVertical}));
}

}  // namespace stowpocket
