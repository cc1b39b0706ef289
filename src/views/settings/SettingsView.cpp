// SPDX-License-Identifier: MIT
#include "views/settings/SettingsView.h"

#include "presentation/SettingsPresentation.h"
#include "views/controls/Compose.h"
#include "views/controls/TabBar.h"
#include "views/settings/AboutPage.h"
#include "views/settings/GeneralPage.h"
#include "views/settings/UtilitiesPage.h"

#include <QStackedWidget>

namespace stowpocket {
namespace {

constexpr QSize bodySize(450, 470);

}  // namespace

SettingsView::SettingsView(SettingsDependencies dependencies)
    : dependencies_(std::move(dependencies)), pages_(new QStackedWidget) {
    setMinimumHeight(bodySize.height());
    setFocusPolicy(Qt::ClickFocus);
    compose(*this, vstack(0, new TabBar([this](int tab) { select(tab); }), divider(), pages_));
    select(settingsTabs.front().id);
}

QSize SettingsView::sizeHint() const {
    return bodySize;
}

/// The keyboard waits here, so that nothing looks chosen before Tab is pressed.
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
