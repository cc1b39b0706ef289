// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"
#include "platform/linux/x11/SelectionReader.h"

namespace stowpocket {
namespace {

/// An owner that does what the input says, two bytes a step, and is silent afterwards.
class InputOwner : public SelectionExchange {
public:
    explicit InputOwner(std::string_view steps) : steps_(steps) {}

    [[nodiscard]] Sign awaitAnswer() override { return sign(); }
    [[nodiscard]] Sign awaitPiece() override { return sign(); }
    [[nodiscard]] Part take(std::size_t) override {
        const std::uint8_t flags = next();
        const std::size_t size = next() * std::size_t{64};
        return {(flags & 1) != 0, (flags & 2) != 0, flags, flags, std::vector<std::byte>(size), (flags & 4) != 0};
    }

private:
    [[nodiscard]] Sign sign() {
        if (steps_.empty())
            return Sign::timeUp;
        return next() == 0 ? Sign::refused : Sign::come;
    }
    [[nodiscard]] std::uint8_t next() {
        if (steps_.empty())
            return 0;
        const auto step = static_cast<std::uint8_t>(steps_.front());
        steps_.remove_prefix(1);
        return step;
    }

    std::string_view steps_;
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
