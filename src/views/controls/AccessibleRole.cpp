// SPDX-License-Identifier: MIT
#include "views/controls/AccessibleRole.h"

#include <QAbstractButton>
#include <QAccessibleWidget>

namespace stowpocket {
namespace {

constexpr auto roleProperty = "accessibleRole";

class RoleInterface : public QAccessibleWidget {
public:
    RoleInterface(QWidget* view, QAccessible::Role role) : QAccessibleWidget(view, role) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        if (role() == QAccessible::PageTab) {
            state.selectable = true;
            state.selected = button() != nullptr && button()->isChecked();
        }
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return (button() == nullptr ? QStringList() : QStringList(pressAction())) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (button() != nullptr && name == pressAction())
            button()->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    [[nodiscard]] QAbstractButton* button() const { return qobject_cast<QAbstractButton*>(widget()); }
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    const QVariant role = object->property(roleProperty);
    auto* const view = qobject_cast<QWidget*>(object);
    return role.isValid() && view != nullptr ? new RoleInterface(view, QAccessible::Role(role.toInt())) : nullptr;
}

}  // namespace

void setAccessibleRole(QWidget& view, QAccessible::Role role) {
    static const bool isInstalled = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
    Q_UNUSED(isInstalled);
    view.setProperty(roleProperty, int(role));
}

}  // namespace stowpocket
