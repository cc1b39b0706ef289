// SPDX-License-Identifier: MIT
// Whatever a drag source writes into its list of URLs.
#include "foundation/Invariant.h"
#include "foundation/Text.h"
#include "intake/ExchangeFormats.h"

using namespace stowpocket;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const std::vector<FileURL> files = filesOfUriList(text, "desk");
    for (const FileURL& file : files) {
        const std::string name = file.lastPathComponent();
        invariant(name == "/" || name.find('/') == std::string::npos, "a name never leads elsewhere");
        invariant(validUtf8(validUtf8(name)) == validUtf8(name), "made valid, it stays so");
        static_cast<void>(file.pathExtension());
    }
    invariant(filesOfUriList(uriListOf(files), "") == files, "what is written reads back");
    return 0;
}
