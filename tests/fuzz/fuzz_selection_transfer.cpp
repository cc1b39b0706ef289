// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"
#include "platform/linux/x11/SelectionReader.h"

#include <fuzzer/FuzzedDataProvider.h>

namespace stowpocket {
namespace {

/// An owner that does what the input says from its end on, and is silent afterwards.
class InputOwner : public SelectionExchange {
public:
    explicit InputOwner(const std::string& steps)
        : steps_(reinterpret_cast<const std::uint8_t*>(steps.data()), steps.size()) {}

    [[nodiscard]] Sign awaitAnswer() override { return sign(); }
    [[nodiscard]] Sign awaitPiece() override { return sign(); }
    [[nodiscard]] Part take(std::size_t) override {
        const auto flags = steps_.ConsumeIntegral<std::uint8_t>();
        const std::size_t size = steps_.ConsumeIntegral<std::uint8_t>() * std::size_t{64};
        return {(flags & 1) != 0, (flags & 2) != 0, flags, flags, std::vector<std::byte>(size), (flags & 4) != 0};
    }

private:
    [[nodiscard]] Sign sign() {
        if (steps_.remaining_bytes() == 0)
            return Sign::timeUp;
        return steps_.ConsumeIntegral<std::uint8_t>() == 0 ? Sign::refused : Sign::come;
    }

    FuzzedDataProvider steps_;
};

}  // namespace

void checkInput(const std::string& text) {
    constexpr std::size_t most = 20'000;
    InputOwner owner(text);
    std::size_t taken = 0;
    bool isRefusing = false;
    const SelectionAnswer answer = transferSelection(owner, [&](std::span<const std::byte> part) {
        invariant(!isRefusing && !part.empty(), "nothing is handed on after a refusal");
        isRefusing = part.size() > most - taken;
        taken += isRefusing ? 0 : part.size();
        return !isRefusing;
    });
    invariant(isRefusing == (answer.failure == SelectionFailure::tooBig), "a refusal is told");
}

}  // namespace stowpocket
