// SPDX-License-Identifier: MIT
#include "views/shelf/ShelfAccessibility.h"

#include "views/shelf/DropZoneView.h"
#include "views/shelf/ShelfGridView.h"

#include <QAccessibleWidget>

namespace stowpocket {
namespace {

QString removeAction() {
    return QStringLiteral("remove");
}

/// Any tile can be given the keyboard, though Tab stops at one of them only.
class AccessibleTile : public QAccessibleWidget {
public:
    explicit AccessibleTile(ShelfItemView& tile) : QAccessibleWidget(&tile, QAccessible::ListItem), tile_(tile) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = true;
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override { return {removeAction(), setFocusAction()}; }
    [[nodiscard]] QString localizedActionName(const QString& name) const override {
        return name == removeAction() ? QStringLiteral("Remove from shelf")
                                      : QAccessibleWidget::localizedActionName(name);
    }
    void doAction(const QString& name) override {
        if (name == removeAction())
            tile_.remove();
        else if (name == setFocusAction())
            tile_.takeFocus();
    }

private:
    ShelfItemView& tile_;
};

QAccessibleInterface* makeAccessible(const QString& /*className*/, QObject* object) {
    if (auto* const tile = dynamic_cast<ShelfItemView*>(object))
        return new AccessibleTile(*tile);
    if (auto* const grid = dynamic_cast<ShelfGridView*>(object))
        return new QAccessibleWidget(grid, QAccessible::List);
    if (auto* const zone = dynamic_cast<DropZoneView*>(object))
        return new QAccessibleWidget(zone, QAccessible::Grouping);
    return nullptr;
}

}  // namespace

void installShelfAccessibility() {
    QAccessible::installFactory(makeAccessible);
}

}  // namespace stowpocket
