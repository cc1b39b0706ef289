// SPDX-License-Identifier: MIT
#include "platform/linux/x11/SelectionReader.h"

#include <algorithm>
#include <cstdlib>

namespace {

using namespace stowpocket;

/// An owner that does what the input says, two bytes a step, and is silent afterwards.
class InputOwner : public SelectionExchange {
public:
    explicit InputOwner(std::span<const std::uint8_t> steps) : steps_(steps) {}

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
        const std::uint8_t step = steps_.front();
        steps_ = steps_.subspan(1);
        return step;
    }

    std::span<const std::uint8_t> steps_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t most = 20'000;
    InputOwner owner({data, size});
    std::size_t taken = 0;
    bool isRefusing = false;
    const SelectionAnswer answer = transferSelection(owner, [&](std::span<const std::byte> part) {
        if (isRefusing || part.empty())
            std::abort();  // nothing is handed on after a refusal
        isRefusing = part.size() > most - taken;
        taken += isRefusing ? 0 : part.size();
        return !isRefusing;
    });
    if (isRefusing != (answer.failure == SelectionFailure::tooBig))
        std::abort();
    return 0;
}
