// SPDX-License-Identifier: MIT
#include "views/controls/Form.h"

#include "views/controls/AccessibleRole.h"
#include "views/controls/ScrollView.h"

#include <QPainter>

namespace stowpocket {
namespace {

constexpr Padding pagePadding{.horizontal = 20, .top = 14, .bottom = 16};
constexpr int sectionSpacing = 14;
constexpr int titleBottom = 6;
constexpr int titleLeft = 10;
constexpr Padding rowPadding{.horizontal = 12, .top = 8};
constexpr int minimumRowHeight = 38;
constexpr double panelRadius = 9;

/// Paints the line between itself and the row above.
class Row : public QWidget {
public:
    explicit Row(QLayout* stack) {
        compose(*this, padded(stack, rowPadding));
        setMinimumHeight(minimumRowHeight);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (y() > 0)
            QPainter(this).fillRect(rowPadding.horizontal, 0, width() - 2 * rowPadding.horizontal, 1,
                                    Theme::color(ColorRole::separator, palette()));
    }
};

}  // namespace

QWidget* formRow(QLayout* stack) {
    return new Row(stack);
}

QWidget* formSection(const QString& title, std::initializer_list<QWidget*> rows) {
    QLayout* const list = vstack(0);
    for (QWidget* const row : rows)
        list->addWidget(row);
    QWidget* const box = panel(list, {.role = ColorRole::formBackground, .cornerRadius = panelRadius});
    if (title.isEmpty())
        return box;
    Text* const heading = text(title, {.pointSize = 13, .weight = FontWeight::semibold});
    QWidget* const section = group(vstack(titleBottom, padded(hstack(0, heading), {.horizontal = titleLeft}), box));
    setAccessibleRole(*section, QAccessible::Grouping);
    section->setAccessibleName(title);
    return section;
}

QWidget* form(std::initializer_list<QWidget*> sections) {
    QLayout* const list = vstack(sectionSpacing);
    for (QWidget* const section : sections) {
        if (section != nullptr)
            list->addWidget(section);
    }
    return new ScrollView(padded(vstack(0, list, Spacer{}), pagePadding));
}

}  // namespace stowpocket
