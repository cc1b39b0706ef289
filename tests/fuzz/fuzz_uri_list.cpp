// SPDX-License-Identifier: MIT
#include "foundation/Text.h"
#include "fuzz/Fuzz.h"
#include "intake/ExchangeFormats.h"

/// Whatever a drag source writes into its list of URLs.
void stowpocket::checkInput(const std::string& text) {
    const std::vector<FileURL> files = filesOfUriList(text, "desk");
    for (const FileURL& file : files) {
        const std::string name = file.lastPathComponent();
        invariant(name == "/" || name.find('/') == std::string::npos, "a name never leads elsewhere");
        invariant(validUtf8(validUtf8(name)) == validUtf8(name), "made valid, it stays so");
        static_cast<void>(file.pathExtension());
    }
    invariant(filesOfUriList(uriListOf(files), "") == files, "what is written reads back");
}
