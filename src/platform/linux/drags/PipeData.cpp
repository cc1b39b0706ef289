// SPDX-License-Identifier: MIT
#include "platform/linux/drags/PipeData.h"

#include "platform/linux/files/DurableFile.h"

#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace stowpocket {
namespace {

using std::chrono::milliseconds;

constexpr std::size_t pieceSize = 64u << 10;

/// Whether something has come, be it the end, before the deadline and without such a long silence.
bool awaitPiece(int pipe, std::chrono::steady_clock::time_point deadline, milliseconds silence) {
    const auto left = std::chrono::duration_cast<milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd readable{.fd = pipe, .events = POLLIN, .revents = 0};
    return left.count() > 0 && ::poll(&readable, 1, static_cast<int>(std::min(left, silence).count())) != 0;
}

}  // namespace

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
