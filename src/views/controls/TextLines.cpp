// SPDX-License-Identifier: MIT
#include "views/controls/TextLines.h"

#include <QFontMetrics>
#include <QTextLayout>

namespace stowpocket {

QStringList brokenIntoLines(const QString& text, const QFont& font, int width) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(text, font);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

QStringList brokenIntoTwoLines(const QString& text, const QFont& font, int width) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(text, font);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine first = layout.createLine();
    if (!first.isValid())
        return {};
    first.setLineWidth(width);
    layout.endLayout();

    const QString rest = text.mid(first.textLength()).trimmed();
    QStringList lines{text.left(first.textLength()).trimmed()};
    if (!rest.isEmpty())
        lines.append(QFontMetrics(font).elidedText(rest, Qt::ElideMiddle, width));
    return lines;
}

}  // namespace stowpocket
