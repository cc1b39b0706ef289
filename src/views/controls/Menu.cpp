// SPDX-License-Identifier: MIT
#include "views/controls/Menu.h"

#include <QEvent>
#include <QMenu>

namespace stowpocket {
namespace {

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

void popUpMenu(QWidget& owner, const QPoint& point, const std::vector<MenuEntry>& entries) {
    auto* const menu = new Menu(owner);
    for (const MenuEntry& entry : entries) {
        if (entry.beginsGroup)
            menu->addSeparator();
        menu->addAction(entry.title, menu, entry.action)->setEnabled(entry.isEnabled);
    }
    menu->popup(point);
}

}  // namespace stowpocket
