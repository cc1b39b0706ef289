// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/IconThemeIndex.h"

#include <algorithm>

namespace stowpocket {
namespace {

/// No icon is larger.
constexpr int largestSize = 4096;

/// A section of the file; all but one describe a folder.
struct Section {
    QByteArrayView name = {};
    QByteArrayView context = {};
    QByteArrayView type = "Threshold";
    int size = 0;
    bool isScaled = false;
    int minimum = 0;
    int maximum = 0;
    int threshold = 2;
};

bool holdsFileIcons(const Section& section) {
    const QByteArrayView context = section.context;
    return context.isEmpty() || context.compare("MimeTypes", Qt::CaseInsensitive) == 0 ||
           context.compare("Places", Qt::CaseInsensitive) == 0 ||
           context.compare("FileSystems", Qt::CaseInsensitive) == 0;
}

IconFolder folderOf(const Section& section) {
    int smallest = section.size;
    int largest = section.size;
    if (section.type == "Scalable") {
        smallest = section.minimum > 0 ? section.minimum : section.size;
        largest = section.maximum > 0 ? section.maximum : section.size;
    } else if (section.type == "Threshold") {
        smallest -= section.threshold;
        largest += section.threshold;
    }
    return {QString::fromUtf8(section.name), smallest, std::max(smallest, largest)};
}

int number(QByteArrayView value, int largest) {
    return std::clamp(value.toInt(), 0, largest);
}

void setValue(Section& section, QByteArrayView key, QByteArrayView value) {
    if (key == "Context")
        section.context = value;
    else if (key == "Type")
        section.type = value;
    else if (key == "Size")
        section.size = number(value, largestSize);
    else if (key == "Scale")
        section.isScaled = value != "1";
    else if (key == "MinSize")
        section.minimum = number(value, largestSize);
    else if (key == "MaxSize")
        section.maximum = number(value, largestSize);
    else if (key == "Threshold")
        section.threshold = number(value, largestSize);
}

}  // namespace

IconThemeIndex parsedIconThemeIndex(QByteArrayView text) {
    IconThemeIndex index;
    Section section;
    const auto finish = [&] {
        // A scaled folder holds what is drawn for a small size, as simple as that has to be; on a dense screen the
        // folders of larger sizes serve.
        if (section.size > 0 && !section.isScaled && holdsFileIcons(section))
            index.folders.push_back(folderOf(section));
    };
    while (!text.isEmpty()) {
        const qsizetype end = text.indexOf('\n');
        const QByteArrayView line = (end < 0 ? text : text.first(end)).trimmed();
        text = end < 0 ? QByteArrayView() : text.sliced(end + 1);
        const qsizetype equals = line.indexOf('=');
        if (line.startsWith('[') && line.endsWith(']')) {
            finish();
            section = {.name = line.sliced(1, line.size() - 2)};
        } else if (equals > 0) {
            const QByteArrayView key = line.first(equals).trimmed();
            const QByteArrayView value = line.sliced(equals + 1).trimmed();
            if (section.name == "Icon Theme" && key == "Inherits")
                index.inherits = QString::fromUtf8(value).split(QLatin1Char(','), Qt::SkipEmptyParts);
            else
                setValue(section, key, value);
        }
    }
    finish();
    return index;
}

}  // namespace stowpocket
