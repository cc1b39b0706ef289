// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/ImageDecoder.h"

#include "platform/linux/files/DurableFile.h"

#include <QLoggingCategory>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <mutex>

namespace stowpocket {
namespace {

/// Both ends are the same program on the same machine, so numbers keep their byte order in memory.
struct Header {
    std::uint32_t mark;
    std::uint32_t width;
    std::uint32_t height;
};

using Outcome = DecoderReply::Outcome;

constexpr std::uint32_t replyMark = 0x50575453;
constexpr QImage::Format wireFormat = QImage::Format_RGBA8888;
constexpr std::size_t bytesPerPixel = 4;

Q_LOGGING_CATEGORY(picturesLog, "stowpocket.pictures")

using SteadyClock = std::chrono::steady_clock;
constexpr std::size_t chunkSize = 65536;

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

std::optional<Pipe> openPipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    return Pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

/// The whole environment of a child: where libraries and plugins are. No display, no bus, no secrets.
std::vector<char*> keptEnvironment() {
    constexpr std::array<std::string_view, 2> keptVariables{"LD_LIBRARY_PATH=", "QT_PLUGIN_PATH="};
    std::vector<char*> kept;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        if (std::ranges::any_of(keptVariables,
                                [&](auto name) { return std::string_view(*variable).starts_with(name); }))
            kept.push_back(*variable);
    }
    kept.push_back(nullptr);
    return kept;
}

/// How a child starts: with its three standard files and nothing else open, and default signal handlers.
class SpawnSettings {
public:
    SpawnSettings(int input, int output) {
        posix_spawn_file_actions_init(&files_);
        posix_spawn_file_actions_adddup2(&files_, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&files_, output, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&files_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1);

        sigset_t signals;
        posix_spawnattr_init(&attributes_);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&files_);
        posix_spawnattr_destroy(&attributes_);
    }

    [[nodiscard]] std::optional<pid_t> spawn(const std::vector<std::string>& command) const {
        std::vector<char*> arguments;
        arguments.reserve(command.size() + 1);
        for (const std::string& argument : command)
            arguments.push_back(const_cast<char*>(argument.c_str()));  // posix_spawn changes none of them
        arguments.push_back(nullptr);
        pid_t child = 0;
        if (::posix_spawn(&child, arguments.front(), &files_, &attributes_, arguments.data(),
                          keptEnvironment().data()) != 0)
            return std::nullopt;
        return child;
    }

private:
    posix_spawn_file_actions_t files_{};
    posix_spawnattr_t attributes_{};
};

bool isReadableBefore(SteadyClock::time_point deadline, int descriptor) {
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - SteadyClock::now());
        if (left.count() <= 0)
            return false;
        pollfd watched{descriptor, POLLIN, 0};
        const int ready = ::poll(&watched, 1, static_cast<int>(left.count()));
        if (ready > 0)
            return true;
        if (ready < 0 && errno != EINTR)
            return false;
    }
}

/// Reads to the end; none if there is more than `limit` or the end does not come in time.
std::optional<Bytes> readAll(int descriptor, std::size_t limit, SteadyClock::time_point deadline) {
    Bytes bytes;
    while (bytes.size() <= limit && isReadableBefore(deadline, descriptor)) {
        const std::size_t filled = bytes.size();
        bytes.resize(filled + std::min(chunkSize, limit + 1 - filled));
        const ssize_t count = ::read(descriptor, bytes.data() + filled, bytes.size() - filled);
        bytes.resize(filled + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0)
            return bytes;
        if (count < 0 && errno != EINTR)
            break;
    }
    return std::nullopt;
}

void end(pid_t child) {
    ::kill(child, SIGKILL);  // a child that has ended already waits for waitpid and does not notice
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void warnOnce() {
    static std::once_flag said;
    std::call_once(said, [] {
        qCWarning(picturesLog, "this kernel does not confine the decoder of pictures, so none are decoded");
    });
}

}  // namespace

std::size_t replySizeLimit(int side) {
    return sizeof(Header) + static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * bytesPerPixel;
}

Bytes encodedReply(const QImage& image) {
    const QImage pixels = image.convertToFormat(wireFormat);
    const Header header{replyMark, static_cast<std::uint32_t>(pixels.width()),
                        static_cast<std::uint32_t>(pixels.height())};
    const std::size_t rowSize = header.width * bytesPerPixel;
    Bytes reply(sizeof header + rowSize * header.height);
    std::memcpy(reply.data(), &header, sizeof header);
    for (int row = 0; row < pixels.height(); ++row) {
        const std::size_t at = sizeof header + rowSize * static_cast<std::size_t>(row);
        std::memcpy(reply.data() + at, pixels.constScanLine(row), rowSize);
    }
    return reply;
}

Bytes encodedReply(Outcome outcome) {
    const Header header{replyMark, 0, static_cast<std::uint32_t>(outcome)};
    Bytes reply(sizeof header);
    std::memcpy(reply.data(), &header, sizeof header);
    return reply;
}

DecoderReply parsedReply(std::span<const std::uint8_t> reply, int side) {
    Header header{};
    if (reply.size() < sizeof header)
        return {};
    std::memcpy(&header, reply.data(), sizeof header);
    const std::span<const std::uint8_t> pixels = reply.subspan(sizeof header);
    if (header.mark != replyMark)
        return {};
    if (header.width == 0 && pixels.empty()) {
        for (const Outcome outcome : {Outcome::unsupported, Outcome::unconfined}) {
            if (header.height == static_cast<std::uint32_t>(outcome))
                return {outcome, {}};
        }
    }
    const auto limit = static_cast<std::uint32_t>(side);
    if (header.width == 0 || header.width > limit || header.height == 0 || header.height > limit ||
        pixels.size() != bytesPerPixel * header.width * header.height)
        return {};

    QImage image(static_cast<int>(header.width), static_cast<int>(header.height), wireFormat);
    if (image.isNull())
        return {};
    const std::size_t rowSize = header.width * bytesPerPixel;
    for (int row = 0; row < image.height(); ++row)
        std::memcpy(image.scanLine(row), pixels.data() + rowSize * static_cast<std::size_t>(row), rowSize);
    return {Outcome::decoded, std::move(image)};
}

std::optional<Bytes> outputOf(const OneShotChild& child, int input) {
    const auto deadline = SteadyClock::now() + child.timeLimit;
    std::optional<Pipe> output = openPipe();
    if (!output)
        return std::nullopt;
    const std::optional<pid_t> process = SpawnSettings(input, output->writeEnd.get()).spawn(child.command);
    if (!process)
        return std::nullopt;
    output->writeEnd = FileDescriptor();
    std::optional<Bytes> bytes = readAll(output->readEnd.get(), child.outputLimit, deadline);
    end(*process);
    return bytes;
}

ImageDecoder::ImageDecoder(std::string executable, std::chrono::milliseconds limit)
    : executable_(std::move(executable)), limit_(limit) {}

DecoderReply ImageDecoder::decode(const RegularFile& file, int side) const {
    side = std::clamp(side, 1, maxDecodedSide);
    const OneShotChild child{{executable_, std::to_string(side)}, replySizeLimit(side), limit_};
    const std::optional<Bytes> output = outputOf(child, file.descriptor());
    DecoderReply reply = output ? parsedReply(*output, side) : DecoderReply{};
    if (reply.outcome == DecoderReply::Outcome::unconfined)
        warnOnce();
    return reply;
}

}  // namespace stowpocket
