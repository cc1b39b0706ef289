// SPDX-License-Identifier: MIT
// Whatever window classes, clipboard owners and file lists a quick drop meets.
#include "Fuzzing.h"
#include "intake/UriList.h"
#include "platform/linux/input/QuickDropRun.h"

using namespace stowpocket;

namespace {

constexpr std::size_t budget = 64;

/// A desktop that answers with the bytes of the input.
class FuzzedDesktop : public QuickDropDesktop {
public:
    explicit FuzzedDesktop(std::span<const std::uint8_t> input) : input_(input) {}

    std::uint32_t activeWindow() override { return input_.byte() % 3; }
    std::string classOf(std::uint32_t) override {
        const bool isKnown = input_.byte() % 2 == 0;
        const std::string name = isKnown ? "Thunar" : input_.text();
        known_ = fileManagerOf(name).has_value();
        return name;
    }
    ClipboardSnapshot takeSnapshot() override {
        std::vector<std::string> offered;
        for (int count = input_.byte() % 8; count > 0; --count)
            offered.push_back(input_.text());
        SnapshotBuilder builder(offered, budget);
        while (builder.wanted())
            builder.take({failure(), {"target", "type", 8, std::vector<std::byte>(input_.byte())}});
        ClipboardSnapshot snapshot = std::move(builder).finished();
        std::size_t size = 0;
        for (const ClipboardItem& item : snapshot.items)
            size += item.bytes.size();
        invariant(size <= budget, "a snapshot stays within its budget");
        complete_ = snapshot.isComplete;
        return snapshot;
    }
    bool copyOverBus(std::uint32_t) override { return input_.byte() % 2 == 0; }
    bool prepareKeys(CopyKey, std::uint32_t) override { return input_.byte() % 2 == 0; }
    void pressKeys() override { invariant(known_, "keys go to file managers only"); }
    bool awaitNewOwner() override { return input_.byte() % 2 == 0; }
    std::vector<FileURL> filesOnClipboard() override { return filesOfUriList(input_.text(), "desk"); }
    void restore(ClipboardSnapshot) override { invariant(complete_, "only a complete snapshot is put back"); }

private:
    std::optional<ClipboardFailure> failure() {
        const std::uint8_t kind = input_.byte() % 8;
        return kind < 3 ? std::optional(static_cast<ClipboardFailure>(kind)) : std::nullopt;
    }

    FuzzInput input_;
    bool known_ = false;
    bool complete_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDesktop desktop(std::span(data, size));
    static_cast<void>(runQuickDrop(desktop));
    return 0;
}
