// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/IconTheme.h"

#include "platform/qt/QtImages.h"

#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QImageReader>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace stowpocket {
namespace {

/// The size limit of an icon.
constexpr int largestSize = 4096;

/// A section of the file; all but one of them describe a folder.
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

/// Ten times the longest known file.
constexpr qint64 longestIndex = 2'000'000;
constexpr std::array<const char*, 2> endings{".png", ".svg"};

std::optional<IconThemeIndex> readIndex(const QString& theme) {
    const QString path = theme + QStringLiteral("/index.theme");
    QFile file(path);
    // Not a pipe, which might never end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return parsedIconThemeIndex(file.read(longestIndex));
}

/// A theme may be installed in several places; the first one with a description is used.
std::pair<QStringList, std::vector<IconFolder>> readTheme(const QString& name) {
    QStringList places;
    std::optional<IconThemeIndex> index;
    for (const QString& folder : QIcon::themeSearchPaths()) {
        const QString place = folder + QLatin1Char('/') + name;
        if (!QFileInfo(place).isDir())
            continue;
        places.append(place);
        if (!index)
            index = readIndex(place);
    }
    if (!index)
        return {};
    std::vector<IconFolder> folders;
    for (const IconFolder& folder : index->folders) {
        for (const QString& place : std::as_const(places)) {
            const QString path = place + QLatin1Char('/') + folder.path;
            if (QFileInfo(path).isDir())
                folders.push_back({path, folder.smallest, folder.largest});
        }
    }
    return {index->inherits, std::move(folders)};
}

/// How badly the icons of a folder fit; one that is too small is worse than one that is too large by as much.
int distance(const IconFolder& folder, int side) {
    const int lacking = side - folder.largest;
    const int excess = folder.smallest - side;
    return std::max({0, 2 * lacking, 2 * excess - 1});
}

QImage loaded(const QString& path, int side) {
    const QSize room(side, side);
    if (path.endsWith(QLatin1String("svg"))) {
        QFile drawing(path);
        return svgImage(drawing, room);
    }
    QImage image = QImageReader(path).read();
    if (image.width() > side || image.height() > side)
        image = image.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return image;
}

template <class Use>
bool anyFile(const std::vector<IconFolder>& folders, const QString& name, const Use& use) {
    for (const IconFolder& folder : folders) {
        for (const char* const ending : endings) {
            const QString path = folder.path + QLatin1Char('/') + name + QLatin1String(ending);
            if (QFileInfo(path).isFile() && use(path))
                return true;
        }
    }
    return false;
}

}  // namespace

IconThemeIndex parsedIconThemeIndex(QByteArrayView text) {
    IconThemeIndex index;
    Section section;
    const auto finish = [&] {
        // A scaled folder contains simple drawings, made for a small size. On a dense screen the folders of larger
        // sizes are used instead.
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

QImage IconTheme::icon(const QString& name, int side) {
    if (!std::exchange(isReady_, true))
        load();
    QImage image;
    for (Theme& theme : themes_) {
        std::ranges::stable_sort(theme, {}, [side](const IconFolder& folder) { return distance(folder, side); });
        const bool isFound = anyFile(theme, name, [&](const QString& path) {
            image = loaded(path, side);
            return !image.isNull();
        });
        if (isFound)
            break;
    }
    return image;
}

void IconTheme::load() {
    for (const QString& name : {QIcon::themeName(), QIcon::fallbackThemeName(), QStringLiteral("hicolor")})
        addWithParents(name);
    const std::size_t ownThemes = themes_.size();
    for (const char* const name : {"breeze", "Adwaita", "Papirus", "elementary-xfce", "Yaru", "mate", "gnome"}) {
        if (hasFileIcons())
            return;
        themes_.resize(ownThemes);
        addWithParents(QLatin1String(name));
    }
}

void IconTheme::addWithParents(const QString& name) {
    // A single path component, which does not lead out of the folder of themes.
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name == QLatin1String("..") || names_.contains(name))
        return;
    names_.append(name);
    auto [parents, folders] = readTheme(name);
    themes_.push_back(std::move(folders));
    for (const QString& parent : std::as_const(parents))
        addWithParents(parent.trimmed());
}

/// Without an icon for plain text a theme has none for any file.
bool IconTheme::hasFileIcons() const {
    return std::ranges::any_of(themes_, [](const Theme& theme) {
        return anyFile(theme, QStringLiteral("text-x-generic"), [](const QString&) { return true; });
    });
}

}  // namespace stowpocket
