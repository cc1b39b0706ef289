// SPDX-License-Identifier: MIT
#include "views/settings/SettingsPages.h"

#include "app/AppDelegate.h"
#include "app/Settings.h"
#include "presentation/SettingsPresentation.h"
#include "presentation/Texts.h"
#include "services/MainBundle.h"
#include "updates/UpdaterController.h"
#include "views/controls/Button.h"
#include "views/controls/Choices.h"
#include "views/controls/ScrollView.h"
#include "views/settings/ShortcutViews.h"

#include <algorithm>

namespace stowpocket {
namespace {

constexpr int captionSpacing = 3;
constexpr int clearButtonWidth = 110;

constexpr ShortcutKeys shelfShortcut{preferenceKey::shelfHotkeyKeyCode, preferenceKey::shelfHotkeyModifiers,
                                     preferenceKey::shelfHotkeyKeyChar};
constexpr ShortcutKeys quickDropShortcut{preferenceKey::quickDropKeyCode, preferenceKey::quickDropModifiers,
                                         preferenceKey::quickDropKeyChar};

Text* label(const QString& words) {
    return text(words, {.pointSize = 13});
}

Text* caption(const QString& words) {
    return paragraph(words, {.pointSize = captionPointSize, .role = ColorRole::secondary});
}

QWidget* recorderRow(HotkeyRecorderView* recorder, Text* taken, const QString& purpose) {
    return formRow(vstack(captionSpacing, recorder, taken, caption(purpose)));
}

Text* takenMark() {
    return paragraph(QStringLiteral("In use by another program"),
                     {.pointSize = captionPointSize, .role = ColorRole::red});
}

constexpr int columnWidth = 340;
constexpr int columnPadding = 32;
constexpr int columnSpacing = 16;
constexpr int dividerWidth = 200;
constexpr int updateSpacing = 8;
constexpr int updateButtonWidth = 170;

Text* line(const QString& words, TextStyle style) {
    return paragraph(words, style, Qt::AlignHCenter);
}

QLayout* shortDivider() {
    QWidget* const line = divider();
    line->setFixedWidth(dividerWidth);
    return centred(line);
}

QWidget* link(const char* words, std::string_view url, const std::function<void(const std::string&)>& openURL) {
    return new LinkButton(displayText(words), std::string_view(),
                          [url = std::string(url), openURL] { openURL(url); });
}

constexpr int iconPointSize = 18;
constexpr int iconSpacing = 12;
constexpr int lineSpacing = 2;
constexpr int footerSpacing = 6;
/// Leaves room for the focus ring around the row's content.
constexpr Padding linkPadding{.horizontal = 4, .top = 4};

using OpenURL = std::function<void(const std::string& url)>;

QWidget* row(const Utility& utility, const OpenURL& openURL) {
    const QString name = displayText(utility.name);
    const QString description = displayText(utility.description);
    QLayout* const lines = vstack(lineSpacing, text(name, {.pointSize = 13, .weight = FontWeight::medium}),
                                  text(description, {.pointSize = 11, .role = ColorRole::secondary}));
    QLayout* const content = hstack(
        iconSpacing, symbol(utility.icon, {.pointSize = iconPointSize, .role = ColorRole::orange}), lines, Spacer{});
    return formRow(vstack(0, new LinkButton(name + QStringLiteral(". ") + description, padded(content, linkPadding),
                                            [url = std::string(utility.url), openURL] { openURL(url); })));
}

}  // namespace

GeneralPage::GeneralPage(const SettingsDependencies& dependencies, QWidget& window)
    : dependencies_(dependencies), window_(window) {
    QWidget* const generalSection = general();
    QWidget* const shelfSection = dependencies_.viewModel ? shelf() : nullptr;
    QWidget* const shortcutsSection = shortcuts();
    compose(*this, vstack(0, form({generalSection, shelfSection, shortcutsSection})));
    observe();
    refresh();
    showTakenHotkeys();
}

QWidget* GeneralPage::general() {
    launchAtLogin_ = new Toggle(Toggle::Style::switchControl, QStringLiteral("Launch at login"),
                                [this](bool isOn) { setLaunchAtLogin(isOn); });
    return formSection(QStringLiteral("General"), {formRow(hstack(0, launchAtLogin_))});
}

QWidget* GeneralPage::shelf() {
    const QString title = QStringLiteral("Shelf capacity");
    QStringList choices;
    for (const std::int64_t choice : capacityChoices)
        choices.append(QString::number(choice));
    capacity_ = new SegmentedPicker(title, choices, [this](std::size_t index) {
        dependencies_.services.core.preferences.setValue(shelfCapacityKey, capacityChoices.at(index));
    });
    itemsOnShelf_ = text({}, {.pointSize = 13, .role = ColorRole::secondary});
    Button* const clear = Button::bordered(QStringLiteral("Clear Shelf"), {.pointSize = 13, .role = ColorRole::red},
                                           [this] { confirmClear(); });
    clear->setFixedWidth(clearButtonWidth);
    clearRow_ = formRow(hstack(0, clear, Spacer{}));
    return formSection(QStringLiteral("Shelf"),
                       {formRow(hstack(0, label(title), Spacer{}, capacity_)),
                        formRow(hstack(0, label(QStringLiteral("Items on shelf")), Spacer{}, itemsOnShelf_)),
                        clearRow_});
}

QWidget* GeneralPage::shortcuts() {
    const SettingsServices& services = dependencies_.services;
    const HotkeyRecorder::Services recording{services.core, services.eventMonitors};
    auto* const shelf = new HotkeyRecorderView(
        HotkeyRecorder::make(recording, shelfShortcut, quickDropShortcut, shortcutChangedNotification),
        QStringLiteral("Open/Close Shelf"));
    auto* const quickDrop = new HotkeyRecorderView(
        HotkeyRecorder::make(recording, quickDropShortcut, shelfShortcut, shortcutChangedNotification),
        QStringLiteral("Quick Drop"));
    shelfHotkeyTaken_ = takenMark();
    quickDropTaken_ = takenMark();
    const int labelWidth = std::max(shelf->labelWidth(), quickDrop->labelWidth());
    shelf->setLabelWidth(labelWidth);
    quickDrop->setLabelWidth(labelWidth);
    if (services.makeDesktopShortcuts)
        desktopShortcuts_ = new DesktopShortcutsView(services.makeDesktopShortcuts());
    return formSection(
        QStringLiteral("Keyboard Shortcuts"),
        {recorderRow(shelf, shelfHotkeyTaken_, QStringLiteral("Opens or closes the shelf popover from any app.")),
         recorderRow(quickDrop, quickDropTaken_, QString::fromUtf8(platformTexts.quickDropCaption)),
         desktopShortcuts_ == nullptr ? nullptr : desktopShortcuts_->row()});
}

void GeneralPage::observe() {
    observations_.push_back(dependencies_.services.core.preferences.changed().connect([this](const std::string& key) {
        if (key == preferenceKey::launchAtLogin || key == shelfCapacityKey)
            refresh();
    }));
    // The shortcuts are registered anew before this window hears that they have changed.
    observations_.push_back(dependencies_.services.core.notifications.observe(shortcutChangedNotification,
                                                                              [this] { showTakenHotkeys(); }));
    if (dependencies_.viewModel)
        observations_.push_back(
            dependencies_.viewModel->shelfManager().itemsChanged.connect([this](const ShelfChange&) { refresh(); }));
}

void GeneralPage::refresh() {
    const PreferenceStore& preferences = dependencies_.services.core.preferences;
    launchAtLogin_->setChecked(preferences.boolean(preferenceKey::launchAtLogin));
    if (!dependencies_.viewModel)
        return;
    const std::size_t count = dependencies_.viewModel->shelfManager().items().size();
    capacity_->setChosen(chosenCapacity(preferences));
    itemsOnShelf_->setText(QString::fromStdString(itemsOnShelfText(count, preferences)));
    clearRow_->setVisible(count > 0);
}

void GeneralPage::showTakenHotkeys() {
    const auto& isTaken = dependencies_.services.isHotkeyTaken;
    shelfHotkeyTaken_->setVisible(isTaken && isTaken(shelfHotkey));
    quickDropTaken_->setVisible(isTaken && isTaken(quickDropHotkey));
}

/// Nothing announces that the desktop was restarted or its shortcuts were changed.
void GeneralPage::showEvent(QShowEvent* event) {
    if (desktopShortcuts_ != nullptr)
        desktopShortcuts_->look();
    showTakenHotkeys();
    QWidget::showEvent(event);
}

void GeneralPage::setLaunchAtLogin(bool wanted) {
    const SettingsServices& services = dependencies_.services;
    services.core.preferences.setValue(preferenceKey::launchAtLogin, wanted);
    LaunchAtLogin(services.loginItem, services.core.preferences).settingChanged(wanted);
}

void GeneralPage::confirmClear() {
    askOnce(clearConfirmation_, window_, QStringLiteral("Clear Shelf"),
            QStringLiteral("Remove all items from the shelf?"), QStringLiteral("Clear All"),
            [this] { clearShelf(); });
}

void GeneralPage::clearShelf() {
    dependencies_.viewModel->shelfManager().clear();
    dependencies_.viewModel->setCapacityMessage(std::nullopt);
}

AboutPage::AboutPage(const SettingsDependencies& dependencies)
    : updaterController_(dependencies.updaterController),
      observation_(updaterController_->changed().connect([this] { refresh(); })) {
    constexpr TextStyle plain{.pointSize = 13, .role = ColorRole::secondary};
    const SettingsServices& services = dependencies.services;
    QWidget* const column = group(padded(
        vstack(columnSpacing, centred(symbol("tray.and.arrow.down", {.pointSize = 48, .role = ColorRole::orange})),
               line(QStringLiteral("stowpocket"), {.pointSize = 20, .weight = FontWeight::bold}),
               line(QString::fromStdString(versionText(services.core.bundle)), plain),
               line(QString::fromUtf8(platformTexts.tagline), plain), shortDivider(),
               updateControls(services.core.bundle),
               hstack(columnSpacing, Spacer{}, link("Website", productPage, services.openURL),
                      link("More from Larkfield", makerPage, services.openURL), Spacer{}),
               line(QStringLiteral("Questions? support@larkfield.example"), plain),
               line(QStringLiteral("\u00a9 2026 Larkfield. Released under the MIT licence."),
                    {.pointSize = 10, .role = ColorRole::tertiary})),
        {.horizontal = columnPadding, .top = columnPadding}));
    column->setFixedWidth(columnWidth);
    compose(*this, vstack(0, new ScrollView(vstack(0, centred(column), Spacer{}))));
    refresh();
}

/// Hidden if the program was built without a feed to look for newer versions.
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

void AboutPage::refresh() {
    automaticDownloads_->setChecked(updaterController_->automaticallyDownloadsUpdates());
}

QWidget* utilitiesPage(const OpenURL& openURL) {
    auto* const list =
        formSection({}, {row(utilities[0], openURL), row(utilities[1], openURL), row(utilities[2], openURL),
                         row(utilities[3], openURL), row(utilities[4], openURL)});
    auto* const all = new LinkButton(QStringLiteral("View All Larkfield"), "arrow.up.right.square",
                                     [openURL] { openURL(std::string(makerPage)); });
    QWidget* const footer = group(vstack(
        footerSpacing,
        hstack(0, Spacer{},
               text(QString::fromUtf8(platformTexts.allUtilities), {.pointSize = 11, .role = ColorRole::secondary}),
               Spacer{}),
        centred(all)));
    return form({list, divider(), footer});
}

}  // namespace stowpocket
