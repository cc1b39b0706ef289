// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"
#include "linux/updates/Makers.h"
#include "platform/linux/updates/DownloadFile.h"

/// A list of releases whose last line says that the makers signed it. The seeds are signed with their key.
void stowpocket::checkInput(const std::string& text) {
    static const Makers makers(0);
    static const std::string key = makers.publicKey();
    if (const auto part = signedPart(text, key)) {
        const std::string line = makers.lineSigning(std::string(*part));
        invariant(text.starts_with(std::string(*part) + line.substr(0, line.size() - 1)), "the makers signed it");
    }
    invariant(signedPart(text + makers.lineSigning(text), key) == text, "what is signed is believed");
}
