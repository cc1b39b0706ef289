// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/QuickDropRun.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

ClipboardItem item(const std::string& target, std::size_t size) {
    return {target, target, 8, std::vector<std::byte>(size)};
}

class ScriptedDesktop : public QuickDropDesktop {
public:
    std::uint32_t activeWindow() override { return ++looks > 1 && windowLater ? *windowLater : window; }
    std::string classOf(std::uint32_t) override { return windowClass; }
    bool isOwn(std::uint32_t any) override { return any == own; }
    std::uint32_t lastForeignWindow() override { return foreign; }
    bool activate(std::uint32_t wanted) override {
        note(wanted == own ? "back" : "activate", true);
        if (isObeyed)
            window = wanted;
        return isObeyed;
    }
    ClipboardSnapshot takeSnapshot() override { return note("snapshot", snapshot); }
    bool copyOverBus(std::uint32_t) override { return note("bus", busWorks); }
    bool prepareKeys(CopyKey key, std::uint32_t) override {
        return note(key == CopyKey::controlC ? "find C" : "find Insert", true);
    }
    void pressKeys() override { note("press", true); }
    bool awaitNewOwner() override { return note("wait", true); }
    std::vector<FileURL> filesOnClipboard() override { return note("files", files); }
    void restore(ClipboardSnapshot taken) override {
        EXPECT_EQ(taken.items, snapshot.items);
        note("restore", true);
    }

    std::string windowClass = "Thunar";
    std::uint32_t window = 7;
    std::optional<std::uint32_t> windowLater;
    std::uint32_t own = 99;
    std::uint32_t foreign = 7;
    bool isObeyed = true;
    ClipboardSnapshot snapshot{{item("UTF8_STRING", 3)}, true};
    bool busWorks = false;
    std::vector<FileURL> files{*FileURL::fromPath("/tmp/a")};
    std::string calls;
    int looks = 0;

private:
    template <class Answer>
    Answer note(const char* call, Answer answer) {
        calls += calls.empty() ? call : std::string(", ") + call;
        return answer;
    }
};

TEST(QuickDropRunTest, copiesReadsAndRestores) {
    ScriptedDesktop thunar;
    EXPECT_EQ(runQuickDrop(thunar), thunar.files);
    EXPECT_EQ(thunar.calls, "snapshot, find C, press, wait, files, restore");
}

TEST(QuickDropRunTest, sendsNothingToOtherPrograms) {
    for (const char* other : {"XTerm", "", "thunar.Thunar", "Nemo-desktop", "dolphin-emu"}) {
        ScriptedDesktop desktop;
        desktop.windowClass = other;
        EXPECT_TRUE(runQuickDrop(desktop).empty());
        EXPECT_EQ(desktop.calls, "") << other;
    }
    ScriptedDesktop none;
    none.window = 0;
    EXPECT_TRUE(runQuickDrop(none).empty());
    EXPECT_EQ(none.calls, "");

    ScriptedDesktop switched;
    switched.windowLater = 8;
    EXPECT_TRUE(runQuickDrop(switched).empty());
    EXPECT_EQ(switched.calls, "snapshot, find C");
}

TEST(QuickDropRunTest, asksTheFileManagerThatWasActiveBeforeOurOwnWindow) {
    ScriptedDesktop thunar;
    thunar.window = thunar.own;
    EXPECT_EQ(runQuickDrop(thunar), thunar.files);
    EXPECT_EQ(thunar.calls, "snapshot, find C, activate, press, wait, files, restore, back");

    ScriptedDesktop stubborn;
    stubborn.window = stubborn.own;
    stubborn.isObeyed = false;
    EXPECT_TRUE(runQuickDrop(stubborn).empty());
    EXPECT_EQ(stubborn.calls, "snapshot, find C, activate");

    ScriptedDesktop dolphin;
    dolphin.window = dolphin.own;
    dolphin.windowClass = "dolphin";
    dolphin.busWorks = true;
    EXPECT_EQ(runQuickDrop(dolphin), dolphin.files);
    EXPECT_EQ(dolphin.calls, "snapshot, bus, wait, files, restore");

    for (const std::uint32_t before : {0U, 7U}) {
        ScriptedDesktop terminal;
        terminal.window = terminal.own;
        terminal.foreign = before;
        terminal.windowClass = before == 0 ? "Thunar" : "XTerm";
        EXPECT_TRUE(runQuickDrop(terminal).empty());
        EXPECT_EQ(terminal.calls, "");
    }
}

TEST(QuickDropRunTest, neverPressesControlCInDolphin) {
    ScriptedDesktop dolphin;
    dolphin.windowClass = "dolphin";
    EXPECT_EQ(runQuickDrop(dolphin), dolphin.files);
    EXPECT_EQ(dolphin.calls, "snapshot, bus, find Insert, press, wait, files, restore");

    ScriptedDesktop answering;
    answering.windowClass = "dolphin";
    answering.busWorks = true;
    EXPECT_EQ(runQuickDrop(answering), answering.files);
    EXPECT_EQ(answering.calls, "snapshot, bus, wait, files, restore");
}

TEST(ClipboardSnapshotTest, keepsDataInItsBestForms) {
    EXPECT_EQ(targetsToKeep({"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS", "UTF8_STRING", "text/html",
                             "UTF8_STRING", "image/bmp", "application/ico", "image/png", "image/jpeg", "DELETE"}),
              (std::vector<std::string>{"UTF8_STRING", "text/html", "image/png"}));
    EXPECT_EQ(targetsToKeep({"image/jpeg", "image/tiff"}), (std::vector<std::string>{"image/jpeg", "image/tiff"}));
}

/// A snapshot of the targets a, b and c with these answers.
ClipboardSnapshot snapshotOf(const std::vector<ClipboardAnswer>& answers, std::size_t budget) {
    SnapshotBuilder builder(std::vector<std::string>{"TARGETS", "a", "b", "c"}, budget);
    for (const ClipboardAnswer& answer : answers) {
        if (builder.wanted())
            builder.take(answer);
    }
    return std::move(builder).finished();
}

TEST(ClipboardSnapshotTest, isCompleteOnlyWithEverythingTheOwnerHas) {
    const ClipboardAnswer three{std::nullopt, item("a", 3)};
    const ClipboardAnswer refused{SelectionFailure::refused, {}};
    EXPECT_TRUE(snapshotOf({three, three, three}, 9).isComplete);
    EXPECT_EQ(snapshotOf({three, refused, three}, 9).items.size(), 2u);
    EXPECT_TRUE(snapshotOf({three, refused, three}, 9).isComplete);
    EXPECT_FALSE(snapshotOf({three, three, three}, 8).isComplete) << "over the budget";
    EXPECT_FALSE(snapshotOf({three, three}, 9).isComplete) << "not finished";
    EXPECT_FALSE(snapshotOf({refused, refused, refused}, 9).isComplete) << "nothing to put back";
    for (const SelectionFailure failure : {SelectionFailure::late, SelectionFailure::tooBig}) {
        const ClipboardSnapshot cut = snapshotOf({three, {failure, {}}, three}, 9);
        EXPECT_FALSE(cut.isComplete);
        EXPECT_TRUE(cut.items.empty());
    }
    EXPECT_FALSE(SnapshotBuilder(std::nullopt, 9).finished().isComplete) << "a stopped owner";
    EXPECT_FALSE(SnapshotBuilder(std::vector<std::string>{"TARGETS"}, 9).finished().isComplete);
}

}  // namespace
}  // namespace stowpocket
