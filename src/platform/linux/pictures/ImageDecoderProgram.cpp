// SPDX-License-Identifier: MIT
// stowpocket-decoder SIDE: decodes the picture on standard input and writes the reply to standard output. It runs for
// one picture, gives up every right that decoding does not need, and has no application object and no display.
#include "platform/linux/pictures/Confinement.h"
#include "platform/linux/pictures/ImageDecoder.h"

#include <QFile>
#include <QImageReader>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>

// The sanitizers reserve terabytes of address space for their own data.
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
/// Enough for a photograph of 60 million pixels in a format that cannot be scaled while it is read.
constexpr int imageMegabytesLimit = 256;

bool setLimit(decltype(RLIMIT_AS) resource, rlim_t value) {
    const rlimit limit{value, value};
    return ::setrlimit(resource, &limit) == 0;
}

/// Nobody looks at its crashes, so it leaves no core dump.
bool setLimits() {
    return ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::prctl(PR_SET_DUMPABLE, 0) == 0 &&
           setLimit(RLIMIT_AS, addressSpaceLimit) && setLimit(RLIMIT_CPU, processorSecondsLimit) &&
           setLimit(RLIMIT_FSIZE, 0) && setLimit(RLIMIT_NOFILE, openFilesLimit);
}

/// Plain pixel formats only. Drawings such as SVG need a whole interpreter and may refer to other files.
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

/// Formats whose libraries load parts of themselves only for a picture, which is too late here.
bool isLoadedLate(const QByteArray& format) {
    return format == "heif" || format == "heic" || format == "avif";
}

/// Standard input, which is not queried after it is open.
class InputFile : public QFile {
public:
    InputFile() : size_(open(STDIN_FILENO, QIODevice::ReadOnly) ? QFile::size() : 0) {}
    [[nodiscard]] qint64 size() const override { return size_; }

private:
    const qint64 size_;
};

bool decode(int side) {
    InputFile file;
    if (!file.isOpen())
        return false;
    static_cast<void>(QImageReader::supportedImageFormats());  // loads all plugins
    if (!confineToOpenFiles())
        return writeAll(encodedReply(DecoderReply::Outcome::unconfined));
    QImageReader::setAllocationLimit(imageMegabytesLimit);
    QImageReader reader(&file);  // standard input has no name: the content decides
    reader.setAutoTransform(true);
    const QByteArray format = reader.format();
    if (!isDecodedHere(format))
        return writeAll(encodedReply(DecoderReply::Outcome::unsupported));
    if (const QSize size = reader.size(); !size.isEmpty())
        reader.setScaledSize(fittedSize(size, side));
    const QImage image = reader.read();
    if (image.isNull())
        return isLoadedLate(format) && writeAll(encodedReply(DecoderReply::Outcome::unsupported));
    return writeAll(encodedReply(scaledToFit(image, side)));
}

}  // namespace
}  // namespace stowpocket

int main(int argc, char** argv) {
    using namespace stowpocket;
    const int side = argc == 2 ? QByteArray(argv[1]).toInt() : 0;
    const bool isDone = side >= 1 && side <= maxDecodedSide && setLimits() && decode(side);
    // The exit handlers of libraries are of no use, and some are no longer allowed.
    std::_Exit(isDone ? EXIT_SUCCESS : EXIT_FAILURE);
}
