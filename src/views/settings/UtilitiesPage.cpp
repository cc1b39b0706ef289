// SPDX-License-Identifier: MIT
#include "views/settings/UtilitiesPage.h"

#include "presentation/SettingsPresentation.h"
#include "views/controls/Form.h"
#include "views/controls/LinkButton.h"

namespace stowpocket {
namespace {

constexpr int iconPointSize = 18;
constexpr int iconSpacing = 12;
constexpr int lineSpacing = 2;
constexpr int footerSpacing = 6;
/// Room for the focus ring around the row's content.
constexpr Padding linkPadding{.horizontal = 4, .top = 4};

using OpenURL = std::function<void(const std::string& url)>;

QString displayText(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

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

QWidget* utilitiesPage(const OpenURL& openURL) {
    auto* const list =
        formSection({}, {row(utilities[0], openURL), row(utilities[1], openURL), row(utilities[2], openURL),
                         row(utilities[3], openURL), row(utilities[4], openURL)});
    auto* const all = new LinkButton(QStringLiteral("View All Larkfield"), "arrow.up.right.square",
                                     [openURL] { openURL(std::string(makerPage)); });
    QWidget* const footer =
        group(vstack(footerSpacing,
                     hstack(0, Spacer{},
                            text(QStringLiteral("Explore the full family of Mac menu bar utilities."),
                                 {.pointSize = 11, .role = ColorRole::secondary}),
                            Spacer{}),
                     hstack(0, Spacer{}, all, Spacer{})));
    return form({list, divider(), footer});
}

}  // namespace stowpocket
