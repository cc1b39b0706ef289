// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DropReading.h"

#include "intake/ExchangeFormats.h"
#include "platform/linux/drags/DirectSaves.h"
#include "platform/linux/files/DurableFile.h"

#include <QFile>
#include <QSysInfo>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>

namespace stowpocket {
namespace {

/// Best first. Some file managers put only the second one on the clipboard; its first line, "copy" or "cut", is no
/// URL.
constexpr std::array<std::string_view, 2> listFormats{"text/uri-list", "x-special/gnome-copied-files"};

constexpr std::string_view mozURLFormat = "text/x-moz-url";

constexpr ContentsKind promisedFile{"public.data", "File", "bin"};

constexpr ContentsKind linkFile{"public.url", "Link", "desktop"};

bool offers(const std::vector<std::string>& formats, std::string_view format) {
    return std::ranges::find(formats, format) != formats.end();
}

bool namesFiles(const std::string& list) {
    return !filesOfUriList(list, QSysInfo::machineHostName().toStdString()).empty();
}

struct ContentsSearch {
    std::optional<DroppedContents> contents;
    /// The source was silent, and would be again.
    bool isOver = false;
};

ContentsSearch contentsIn(DragData& data, const std::vector<std::string>& formats,
                          std::span<const ContentsFormat> wanted) {
    for (const ContentsFormat& each : wanted) {
        const std::string_view format(each.format.data(), static_cast<std::size_t>(each.format.size()));
        if (!offers(formats, format))
            continue;
        DroppedContents contents(each.kind);
        const std::optional<SelectionFailure> failure = data.write(format, contents.path());
        if (!failure)
            return {std::move(contents)};
        if (failure == SelectionFailure::late)
            return {std::nullopt, true};
    }
    return {};
}

/// With the title of the page, where the source knows it.
std::optional<DroppedLink> linkOf(const DragData::List& named, const std::string& uriList) {
    std::optional<DroppedLink> link = named.failure ? std::nullopt : linkOfMozURL(named.text);
    return link ? link : linkOfUriList(uriList);
}

std::optional<DroppedContents> linkFileOf(const DroppedLink& link) {
    DroppedContents contents(linkFile);
    QFile file(contents.path());
    const std::string entry = desktopEntryOf(link);
    if (!file.open(QIODevice::WriteOnly) || file.write(entry.data(), static_cast<qint64>(entry.size())) < 0)
        return std::nullopt;
    file.close();
    contents.nameAfter(firstWords(link.title));
    return contents;
}

/// The text is named after what it begins with.
void nameText(DroppedContents& contents) {
    constexpr qint64 longestBeginning = 2048;
    QFile file(contents.path());
    if (file.open(QIODevice::ReadOnly))
        contents.nameAfter(firstWords(file.read(longestBeginning).toStdString()));
}

constexpr ContentsFormat promisedBytes{QLatin1String("application/octet-stream"), promisedFile};

/// Chromium offers a page's picture as bytes beside a promise, whose name it tells, and writes no file itself.
bool offersPromisedBytes(const std::vector<std::string>& formats) {
    return offers(formats, "text/html") && offers(formats, promisedBytes.format.data());
}

std::optional<DroppedContents> promisedContents(DragData& data, const std::vector<std::string>& formats,
                                                const std::filesystem::path& name) {
    std::optional<DroppedContents> contents = contentsIn(data, formats, {&promisedBytes, 1}).contents;
    if (contents) {
        const std::string extension = name.extension().string();
        contents->nameAfter(name.stem().string(), extension.empty() ? extension : extension.substr(1));
    }
    return contents;
}

/// A picture, else a link, else a text. Links and texts give way to promised files. The link to a page's picture is
/// what remains of a large one: Chromium does not deliver more than a megabyte in a drag.
std::optional<DroppedContents> contentsOf(DragData& data, const std::vector<std::string>& formats,
                                          const std::string& uriList) {
    ContentsSearch picture = contentsIn(data, formats, pictureFormats());
    const bool isPromised = offers(formats, DirectSaves::format);
    const std::filesystem::path promised(isPromised ? directSaveName(data.promisedName()).value_or("") : "");
    // Its own format stays, as browsers deliver any picture as PNG.
    if (picture.contents)
        picture.contents->nameAfter(firstWords(promised.stem().string()));
    if (picture.contents || picture.isOver || (isPromised && !offersPromisedBytes(formats)))
        return picture.contents;
    const DragData::List named = offers(formats, mozURLFormat) ? data.list(mozURLFormat) : DragData::List();
    if (!promised.empty()) {
        if (std::optional<DroppedContents> contents = promisedContents(data, formats, promised))
            return contents;
    }
    if (const std::optional<DroppedLink> link = linkOf(named, uriList))
        return linkFileOf(*link);
    if (isPromised || named.failure == SelectionFailure::late)
        return std::nullopt;
    ContentsSearch text = contentsIn(data, formats, textFormats());
    if (text.contents)
        nameText(*text.contents);
    return text.contents;
}

constexpr std::size_t longestFormatList = 4096;

class SelectionData : public DragData {
public:
    SelectionData(XcbSession& session, const SelectionInTime& which, const DropPatience& patience)
        : session_(session),
          reader_(session, which.selection),
          source_(which.source),
          time_(which.time),
          patience_(patience) {}

    [[nodiscard]] List list(std::string_view format) override {
        std::vector<std::byte> bytes;
        const auto answer = reader_.read(std::string(format), time_, {start_ + patience_.list, patience_.silence},
                                         longestList, bytes);
        const auto* const text = reinterpret_cast<const char*>(bytes.data());
        if (answer.failure || answer.format != 8)
            return {answer.failure.value_or(SelectionFailure::refused), {}};
        return {std::nullopt, {text, bytes.size()}};
    }

    [[nodiscard]] std::optional<SelectionFailure> write(std::string_view format, const QString& path) override {
        const FileDescriptor file(
            ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
        if (!file.isOpen())
            return SelectionFailure::refused;
        std::size_t size = 0;
        const auto answer = reader_.read(
            std::string(format), time_, {start_ + patience_.contents, patience_.silence}, [&](auto part) {
                size += part.size();
                const std::string_view bytes(reinterpret_cast<const char*>(part.data()), part.size());
                return size <= largestContents && !writeAll(file.get(), bytes);
            });
        const bool isUsable = answer.format == 8 && size > 0;
        return answer.failure || isUsable ? answer.failure : SelectionFailure::refused;
    }

    [[nodiscard]] std::string promisedName() override {
        constexpr std::size_t longestName = 4096;
        const X11Property name = session_.property(source_, session_.atom(X11Atom::directSave), longestName);
        const auto* const text = reinterpret_cast<const char*>(name.bytes.data());
        return name.format == 8 ? std::string(text, name.bytes.size()) : std::string();
    }

private:
    XcbSession& session_;
    SelectionReader reader_;
    const xcb_window_t source_;
    const xcb_timestamp_t time_;
    const DropPatience patience_;
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

using std::chrono::milliseconds;

constexpr std::size_t pieceSize = 64u << 10;

/// Whether something has come, be it the end, before the deadline and without such a long silence.
bool awaitPiece(int pipe, std::chrono::steady_clock::time_point deadline, milliseconds silence) {
    const auto left = std::chrono::duration_cast<milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd readable{.fd = pipe, .events = POLLIN, .revents = 0};
    return left.count() > 0 && ::poll(&readable, 1, static_cast<int>(std::min(left, silence).count())) != 0;
}

}  // namespace

DropReading readDrop(DragData& data, const std::vector<std::string>& formats) {
    DropReading reading;
    std::string addresses;
    for (const std::string_view format : listFormats) {
        if (!offers(formats, format))
            continue;
        DragData::List list = data.list(format);
        // A silent source would be silent again, and too long a list is no accident.
        if (list.failure == SelectionFailure::late || list.failure == SelectionFailure::tooBig)
            return reading;
        if (!list.failure && namesFiles(list.text)) {
            reading.uriList = std::move(list.text);
            return reading;
        }
        addresses += list.text;
    }
    reading.contents = contentsOf(data, formats, addresses);
    return reading;
}

DropReading readSelection(XcbSession& session, const SelectionInTime& which, const std::vector<std::string>& formats,
                          const DropPatience& patience) {
    SelectionData data(session, which, patience);
    return readDrop(data, formats);
}

std::vector<std::string> offeredFormats(XcbSession& session, const SelectionInTime& which,
                                        const DropPatience& patience) {
    SelectionReader reader(session, which.selection);
    X11Property list;
    const auto answer = reader.read("TARGETS", which.time, {std::chrono::steady_clock::now() + patience.list},
                                    longestFormatList, list.bytes);
    if (answer.failure)
        return {};
    list.format = answer.format;
    return session.namesOf(list.words());
}

std::optional<SelectionFailure> PipeData::read(std::string_view format, Time deadline,
                                               const SelectionSink& sink) const {
    const FileDescriptor pipe(open_(std::string(format)));
    if (!pipe.isOpen())
        return SelectionFailure::refused;
    ::fcntl(pipe.get(), F_SETFL, O_NONBLOCK);
    std::array<std::byte, pieceSize> piece{};
    for (;;) {
        if (!awaitPiece(pipe.get(), deadline, patience_.silence))
            return SelectionFailure::late;
        const ssize_t size = ::read(pipe.get(), piece.data(), piece.size());
        if (size < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (size < 0)
            return SelectionFailure::refused;
        if (size == 0)
            return std::nullopt;
        if (!sink(std::span(piece).first(static_cast<std::size_t>(size))))
            return SelectionFailure::tooBig;
    }
}

DragData::List PipeData::list(std::string_view format) {
    List list;
    list.failure = read(format, start_ + patience_.list, [&](std::span<const std::byte> piece) {
        list.text.append(reinterpret_cast<const char*>(piece.data()), piece.size());
        return list.text.size() <= longestList;
    });
    if (list.failure)
        list.text.clear();
    return list;
}

std::optional<SelectionFailure> PipeData::write(std::string_view format, const QString& path) {
    const FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!file.isOpen())
        return SelectionFailure::refused;
    std::size_t size = 0;
    const auto failure = read(format, start_ + patience_.contents, [&](std::span<const std::byte> piece) {
        size += piece.size();
        return size <= largestContents &&
               !writeAll(file.get(), {reinterpret_cast<const char*>(piece.data()), piece.size()});
    });
    return failure || size > 0 ? failure : SelectionFailure::refused;
}

}  // namespace stowpocket
