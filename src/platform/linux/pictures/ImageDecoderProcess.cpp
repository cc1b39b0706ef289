// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/ImageDecoderProcess.h"

#include "platform/linux/pictures/DecoderReply.h"

#include <QFile>
#include <QImageReader>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>

// The sanitizers reserve terabytes of address space for their own bookkeeping.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define STOWPOCKET_NEEDS_ADDRESS_SPACE
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define STOWPOCKET_NEEDS_ADDRESS_SPACE
#endif
#endif

namespace stowpocket {
namespace {

#ifdef STOWPOCKET_NEEDS_ADDRESS_SPACE
constexpr rlim_t addressSpaceLimit = RLIM_INFINITY;
#else
constexpr rlim_t addressSpaceLimit = rlim_t{512} << 20u;
#endif
constexpr rlim_t processorSecondsLimit = 5;
constexpr rlim_t openFilesLimit = 32;  // plugins are looked for and loaded
/// Room for a photograph of 60 million pixels whose format cannot be scaled while it is read.
constexpr int imageMegabytesLimit = 256;

bool setLimit(decltype(RLIMIT_AS) resource, rlim_t value) {
    const rlimit limit{value, value};
    return ::setrlimit(resource, &limit) == 0;
}

bool giveUpRights() {
    return ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           setLimit(RLIMIT_AS, addressSpaceLimit) && setLimit(RLIMIT_CPU, processorSecondsLimit) &&
           setLimit(RLIMIT_FSIZE, 0) && setLimit(RLIMIT_NOFILE, openFilesLimit);
}

/// Plain pixel formats only. Drawings such as SVG run a whole interpreter and may name other files.
bool isDecodedHere(const QByteArray& format) {
    static constexpr std::array formats{"png", "jpeg", "jpg",  "gif",  "bmp", "webp", "tiff", "tif", "ico",
                                        "cur", "avif", "heif", "heic", "jxl", "tga",  "pbm",  "pgm", "ppm"};
    return std::ranges::any_of(formats, [&format](const char* known) { return format == known; });
}

QSize fittedSize(const QSize& size, int side) {
    if (size.width() <= side && size.height() <= side)
        return size;
    return size.scaled(side, side, Qt::KeepAspectRatio).expandedTo({1, 1});
}

QImage scaledToFit(const QImage& image, int side) {
    const QSize fitted = fittedSize(image.size(), side);
    return fitted == image.size() ? image : image.scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

bool writeAll(const Bytes& bytes) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(STDOUT_FILENO, bytes.data() + written, bytes.size() - written);
        if (count <= 0)
            return false;
        written += static_cast<std::size_t>(count);
    }
    return true;
}

bool decode(int side) {
    QFile file;
    if (!file.open(STDIN_FILENO, QIODevice::ReadOnly))
        return false;
    QImageReader::setAllocationLimit(imageMegabytesLimit);
    QImageReader reader(&file);  // standard input has no name: the content decides
    reader.setAutoTransform(true);
    if (!isDecodedHere(reader.format()))
        return writeAll(encodedReply({}));
    if (const QSize size = reader.size(); !size.isEmpty())
        reader.setScaledSize(fittedSize(size, side));
    const QImage image = reader.read();
    return !image.isNull() && writeAll(encodedReply(scaledToFit(image, side)));
}

}  // namespace

bool isImageDecoderProcess(int argc, char** argv) {
    return argc == 3 && std::strcmp(argv[1], decodeImageOption) == 0;
}

int runImageDecoder(int argc, char** argv) {
    if (!isImageDecoderProcess(argc, argv) || !giveUpRights())
        return EXIT_FAILURE;
    const int side = std::clamp(QByteArray(argv[2]).toInt(), 1, maxDecodedSide);
    return decode(side) ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace stowpocket
