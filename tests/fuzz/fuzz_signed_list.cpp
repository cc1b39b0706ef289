// SPDX-License-Identifier: MIT
// A list of releases whose last line says that the makers signed it. The seeds are signed with the key below.
#include "foundation/Invariant.h"
#include "platform/linux/updates/DownloadFile.h"

#include <sodium.h>

#include <array>
#include <string>

using namespace stowpocket;

namespace {

struct Makers {
    Makers() {
        constexpr std::array<unsigned char, crypto_sign_SEEDBYTES> seed{};
        invariant(sodium_init() >= 0, "the library works");
        crypto_sign_seed_keypair(publicKey.data(), secretKey.data(), seed.data());
    }
    template <std::size_t size>
    static std::string base64(const std::array<unsigned char, size>& bytes) {
        std::array<char, sodium_base64_ENCODED_LEN(size, sodium_base64_VARIANT_ORIGINAL)> text{};
        return sodium_bin2base64(text.data(), text.size(), bytes.data(), size, sodium_base64_VARIANT_ORIGINAL);
    }
    [[nodiscard]] std::string lineSigning(const std::string& list) const {
        std::array<unsigned char, crypto_sign_BYTES> signature{};
        crypto_sign_detached(signature.data(), nullptr, reinterpret_cast<const unsigned char*>(list.data()),
                             list.size(), secretKey.data());
        return "<!-- edSignature: " + base64(signature) + " -->\n";
    }

    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> publicKey{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secretKey{};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Makers makers;
    static const std::string key = Makers::base64(makers.publicKey);
    const std::string list(reinterpret_cast<const char*>(data), size);
    if (const auto part = signedPart(list, key)) {
        const std::string line = makers.lineSigning(std::string(*part));
        invariant(list.starts_with(std::string(*part) + line.substr(0, line.size() - 1)), "the makers signed it");
    }
    const std::string whole = list + makers.lineSigning(list);
    invariant(signedPart(whole, key) == list, "what is signed is believed");
    return 0;
}
