// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DropReading.h"

#include "intake/UriList.h"
#include "platform/linux/drags/X11DirectSaves.h"

#include <QSysInfo>

#include <algorithm>

namespace stowpocket {
namespace {

constexpr std::string_view uriListFormat = "text/uri-list";

bool offers(const std::vector<std::string>& formats, std::string_view format) {
    return std::ranges::find(formats, format) != formats.end();
}

bool namesFiles(const std::string& list) {
    return !filesOfUriList(list, QSysInfo::machineHostName().toStdString()).empty();
}

std::vector<std::span<const ContentsKind>> wantedKinds(const std::vector<std::string>& formats) {
    if (offers(formats, X11DirectSaves::format))
        return {pictureKinds()};
    return {pictureKinds(), textKinds()};
}

std::optional<DroppedContents> contentsOf(DragData& data, const std::vector<std::string>& formats) {
    for (const std::span<const ContentsKind> kinds : wantedKinds(formats)) {
        for (const ContentsKind& kind : kinds) {
            const std::string_view format(kind.format.data(), static_cast<std::size_t>(kind.format.size()));
            if (!offers(formats, format))
                continue;
            DroppedContents contents(kind);
            const std::optional<SelectionFailure> failure = data.write(format, contents.path());
            if (!failure)
                return contents;
            if (failure == SelectionFailure::late)
                return std::nullopt;
        }
    }
    return std::nullopt;
}

}  // namespace

DropReading readDrop(DragData& data, const std::vector<std::string>& formats) {
    DropReading reading;
    if (offers(formats, uriListFormat)) {
        DragData::List list = data.list(uriListFormat);
        // Who is silent now would be so again, and a list that is too long is no slip.
        if (list.failure == SelectionFailure::late || list.failure == SelectionFailure::tooBig)
            return reading;
        if (!list.failure && namesFiles(list.text)) {
            reading.uriList = std::move(list.text);
            return reading;
        }
    }
    reading.contents = contentsOf(data, formats);
    return reading;
}

}  // namespace stowpocket
