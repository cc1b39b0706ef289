// SPDX-License-Identifier: MIT
// What an AppImage begins with: unpacks what follows it in the same file, once, and runs the program AppRun in there.
//   --appimage-offset     prints where that begins
//   --appimage-extract    unpacks it into ./squashfs-root
#include "SquashedFolder.h"
#include "Trial.h"
#include "UnpackedFolder.h"

#include <elf.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

using namespace stowpocket;

/// The name of the contents and their size in bytes, with a blank between them. Filled in when they are packed.
[[gnu::section(".contents"), gnu::used]] const volatile char contents[128] = "none 0";

/// The contents begin behind the section headers, which end this executable.
std::size_t ownSize(const std::string& file) {
    Elf64_Ehdr header{};
    std::FILE* const stream = std::fopen(file.c_str(), "rbe");
    if (stream == nullptr || std::fread(&header, sizeof header, 1, stream) != 1)
        fail(file, std::strerror(errno));
    std::fclose(stream);
    return header.e_shoff + std::size_t{header.e_shentsize} * header.e_shnum;
}

Image thisImage() {
    std::array<char, PATH_MAX> file{};
    if (::readlink("/proc/self/exe", file.data(), file.size() - 1) < 0)
        fail("stowpocket", "/proc is not there");
    std::string text;
    for (const volatile char* at = contents; *at != '\0'; ++at)
        text += *at;
    const std::size_t blank = text.find(' ');
    return {file.data(), ownSize(file.data()), text.substr(0, blank),
            std::strtoull(text.c_str() + blank + 1, nullptr, 10)};
}

/// A machine without a single font would show boxes for letters. Its own choice goes first.
void provideFonts(const std::string& folder) {
    const bool isChosen = std::getenv("FONTCONFIG_FILE") != nullptr || std::getenv("FONTCONFIG_PATH") != nullptr;
    if (!isChosen && ::access("/etc/fonts/fonts.conf", R_OK) != 0)
        ::setenv("FONTCONFIG_FILE", (folder + "/usr/share/stowpocket/fonts/fonts.conf").c_str(), 1);
}

}  // namespace

int main(int argc, char** argv) {
    const Image image = thisImage();
    const std::string_view wish = argc > 1 ? argv[1] : "";
    if (wish == "--appimage-offset")
        return std::printf("%zu\n", image.offset) < 0 ? EXIT_FAILURE : EXIT_SUCCESS;
    if (wish == "--appimage-extract") {
        const std::string problem = unpackSquashedFolder(image.file, image.offset, "squashfs-root");
        if (!problem.empty())
            fail(image.file, problem);
        return EXIT_SUCCESS;
    }
    beginTrial(image.file, argv);
    const std::string folder = unpackedFolder(image);
    provideFonts(folder);
    ::setenv("APPIMAGE", image.file.c_str(), 1);
    ::setenv("APPDIR", folder.c_str(), 1);
    ::setenv("ARGV0", argc > 0 ? argv[0] : "", 1);
    const std::string program = folder + "/AppRun";
    ::execv(program.c_str(), argv);
    fail(image.file, program + ": " + std::strerror(errno));
}
