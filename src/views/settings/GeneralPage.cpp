// SPDX-License-Identifier: MIT
#include "views/settings/GeneralPage.h"

#include "app/AppDelegate.h"
#include "app/LaunchAtLogin.h"
#include "app/Preferences.h"
#include "presentation/SettingsPresentation.h"
#include "views/controls/Button.h"
#include "views/controls/Form.h"
#include "views/controls/SegmentedPicker.h"
#include "views/controls/Toggle.h"
#include "views/settings/HotkeyRecorderView.h"

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
    Text* const lines = text(words, {.pointSize = captionPointSize, .role = ColorRole::secondary});
    lines->setWordWrap(true);
    return lines;
}

QWidget* recorderRow(HotkeyRecorderView* recorder, const QString& purpose) {
    return formRow(vstack(captionSpacing, recorder, caption(purpose)));
}

}  // namespace

GeneralPage::GeneralPage(const SettingsDependencies& dependencies, QWidget& window)
    : dependencies_(dependencies), window_(window) {
    QWidget* const generalSection = general();
    QWidget* const shelfSection = dependencies_.viewModel ? shelf() : nullptr;
    QWidget* const shortcutsSection = shortcuts();
    compose(*this, vstack(0, form({generalSection, shelfSection, shortcutsSection})));
    observe();
    evaluate();
    showHotkeySource();
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
    hotkeySource_ = caption({});
    hotkeySourceRow_ = formRow(vstack(0, hotkeySource_));
    const int labelWidth = std::max(shelf->labelWidth(), quickDrop->labelWidth());
    shelf->setLabelWidth(labelWidth);
    quickDrop->setLabelWidth(labelWidth);
    return formSection(
        QStringLiteral("Keyboard Shortcuts"),
        {recorderRow(shelf, QStringLiteral("Opens or closes the shelf popover from any app.")),
         recorderRow(quickDrop, QStringLiteral("Adds the currently selected file in Finder to the shelf.")),
         hotkeySourceRow_});
}

void GeneralPage::observe() {
    observations_.push_back(dependencies_.services.core.preferences.changed().connect([this](const std::string& key) {
        if (key == preferenceKey::launchAtLogin || key == shelfCapacityKey)
            evaluate();
    }));
    if (dependencies_.viewModel)
        observations_.push_back(
            dependencies_.viewModel->shelfManager().itemsChanged.connect([this](const ShelfChange&) { evaluate(); }));
}

void GeneralPage::evaluate() {
    const PreferenceStore& preferences = dependencies_.services.core.preferences;
    launchAtLogin_->setChecked(preferences.boolean(preferenceKey::launchAtLogin));
    if (!dependencies_.viewModel)
        return;
    const std::size_t count = dependencies_.viewModel->shelfManager().items().size();
    capacity_->setChosen(chosenCapacity(preferences));
    itemsOnShelf_->setText(QString::fromStdString(itemsOnShelfText(count, preferences)));
    clearRow_->setVisible(count > 0);
}

void GeneralPage::showHotkeySource() {
    const std::string_view words = hotkeySourceText(dependencies_.services.hotkeySource());
    hotkeySource_->setText(QString::fromUtf8(words.data(), static_cast<qsizetype>(words.size())));
    hotkeySourceRow_->setVisible(!words.empty());
}

/// Desktops restart and users change their minds, neither of which is told.
void GeneralPage::showEvent(QShowEvent* event) {
    showHotkeySource();
    QWidget::showEvent(event);
}

void GeneralPage::setLaunchAtLogin(bool wanted) {
    const SettingsServices& services = dependencies_.services;
    services.core.preferences.setValue(preferenceKey::launchAtLogin, wanted);
    LaunchAtLogin(services.loginItem, services.core.preferences).wishChanged(wanted);
}

void GeneralPage::confirmClear() {
    using Role = AlertView::Answer::Role;
    if (clearConfirmation_ && !clearConfirmation_->isAnswered())
        return;
    clearConfirmation_ =
        new AlertView(window_, QStringLiteral("Clear Shelf"), QStringLiteral("Remove all items from the shelf?"),
                      {
                          {QStringLiteral("Clear All"), Role::destructive, [this] { clearShelf(); }},
                          {QStringLiteral("Cancel"), Role::cancel, [] {}},
                      });
    clearConfirmation_->present();
}

void GeneralPage::clearShelf() {
    dependencies_.viewModel->shelfManager().clear();
    dependencies_.viewModel->setCapacityMessage(std::nullopt);
}

}  // namespace stowpocket
