// SPDX-License-Identifier: MIT
#include "views/settings/AboutPage.h"

#include "presentation/SettingsPresentation.h"
#include "services/MainBundle.h"
#include "updates/UpdaterController.h"
#include "views/controls/Button.h"
#include "views/controls/LinkButton.h"
#include "views/controls/ScrollView.h"
#include "views/controls/Toggle.h"

namespace stowpocket {
namespace {

constexpr int columnWidth = 340;
constexpr int columnPadding = 32;
constexpr int columnSpacing = 16;
constexpr int dividerWidth = 200;
constexpr int updateSpacing = 8;
constexpr int updateButtonWidth = 170;

template <class View>
QLayout* centred(View* view) {
    return hstack(0, Spacer{}, view, Spacer{});
}

Text* line(const QString& words, TextStyle style) {
    Text* const line = text(words, style);
    line->setWordWrap(true);
    line->setAlignment(Qt::AlignHCenter);
    return line;
}

QLayout* shortDivider() {
    QWidget* const line = divider();
    line->setFixedWidth(dividerWidth);
    return centred(line);
}

QWidget* link(const char* words, std::string_view url, const std::function<void(const std::string&)>& openURL) {
    return new LinkButton(QString::fromUtf8(words), std::string_view(),
                          [url = std::string(url), openURL] { openURL(url); });
}

}  // namespace

AboutPage::AboutPage(const SettingsDependencies& dependencies)
    : updaterController_(dependencies.updaterController),
      observation_(updaterController_->changed().connect([this] { evaluate(); })) {
    constexpr TextStyle plain{.pointSize = 13, .role = ColorRole::secondary};
    const SettingsServices& services = dependencies.services;
    QWidget* const column = group(padded(
        vstack(columnSpacing, centred(symbol("tray.and.arrow.down", {.pointSize = 48, .role = ColorRole::orange})),
               line(QStringLiteral("stowpocket"), {.pointSize = 20, .weight = FontWeight::bold}),
               line(QString::fromStdString(versionText(services.core.bundle)), plain),
               line(QStringLiteral("A temporary drag-and-drop staging area for files in your menu bar."), plain),
               shortDivider(), updateControls(services.core.bundle),
               hstack(columnSpacing, Spacer{}, link("Website", productPage, services.openURL),
                      link("More from Larkfield", makerPage, services.openURL), Spacer{}),
               line(QStringLiteral("Questions? support@larkfield.example"), plain),
               line(QStringLiteral("\u00a9 2026 Larkfield. Released under the MIT licence."),
                    {.pointSize = 10, .role = ColorRole::tertiary})),
        {.horizontal = columnPadding, .top = columnPadding}));
    column->setFixedWidth(columnWidth);
    compose(*this, vstack(0, new ScrollView(vstack(0, centred(column), Spacer{}))));
    evaluate();
}

/// Nothing of them is seen where whoever built the program said that it has no newer versions to look for.
QWidget* AboutPage::updateControls(const MainBundle& bundle) {
    Button* const check = Button::bordered(QStringLiteral("Check for Updates\u2026"), {.pointSize = 13},
                                           [this] { updaterController_->checkForUpdates(); });
    check->setFixedWidth(updateButtonWidth);
    automaticDownloads_ =
        new Toggle(Toggle::Style::checkbox, QStringLiteral("Automatically download updates"),
                   [this](bool isOn) { updaterController_->setAutomaticallyDownloadsUpdates(isOn); });
    QWidget* const controls = group(
        vstack(columnSpacing, vstack(updateSpacing, centred(check), centred(automaticDownloads_)), shortDivider()));
    const std::string* const feed = bundle.infoString(infoKey::feedURL);
    controls->setHidden(feed != nullptr && feed->empty());
    return controls;
}

void AboutPage::evaluate() {
    automaticDownloads_->setChecked(updaterController_->automaticallyDownloadsUpdates());
}

}  // namespace stowpocket
