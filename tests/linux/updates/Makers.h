// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <sodium.h>
#include <string>

namespace stowpocket {

/// Those who sign what they publish. Their keys come from the seed.
class Makers {
public:
    explicit Makers(unsigned char seed) {
        const std::array<unsigned char, crypto_sign_SEEDBYTES> bytes{seed};
        crypto_sign_seed_keypair(publicKey_.data(), secretKey_.data(), bytes.data());
    }
    [[nodiscard]] std::string publicKey() const { return base64(publicKey_); }
    [[nodiscard]] std::string signatureOf(const std::string& text) const {
        std::array<unsigned char, crypto_sign_BYTES> signature{};
        crypto_sign_detached(signature.data(), nullptr, reinterpret_cast<const unsigned char*>(text.data()),
                             text.size(), secretKey_.data());
        return base64(signature);
    }
    /// The last line of a list that they have signed.
    [[nodiscard]] std::string lineSigning(const std::string& list) const {
        return "<!-- edSignature: " + signatureOf(list) + " -->\n";
    }

private:
    template <std::size_t size>
    static std::string base64(const std::array<unsigned char, size>& bytes) {
        std::array<char, sodium_base64_ENCODED_LEN(size, sodium_base64_VARIANT_ORIGINAL)> text{};
        return sodium_bin2base64(text.data(), text.size(), bytes.data(), size, sodium_base64_VARIANT_ORIGINAL);
    }

    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> publicKey_{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secretKey_{};
};

}  // namespace stowpocket
