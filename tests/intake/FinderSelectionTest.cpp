// SPDX-License-Identifier: MIT
#include "intake/FileLists.h"

#include "services/FileManagerSelection.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

/// What the script returns: a list of items, or one text.
struct FakeResult {
    std::vector<std::optional<std::string>> items;
    std::optional<std::string> text;
};

class FakeDescriptor : public EventDescriptor {
public:
    explicit FakeDescriptor(FakeResult result) : result_(std::move(result)) {}
    [[nodiscard]] int numberOfItems() const override { return static_cast<int>(result_.items.size()); }
    [[nodiscard]] std::unique_ptr<EventDescriptor> descriptorAtIndex(int index) const override {
        const auto& item = result_.items.at(static_cast<std::size_t>(index - 1));
        return item == "<none>" ? nullptr : std::make_unique<FakeDescriptor>(FakeResult{{}, item});
    }
    [[nodiscard]] std::optional<std::string> stringValue() const override { return result_.text; }

private:
    const FakeResult result_;
};

class FakeScripts : public ScriptService {
public:
    [[nodiscard]] std::unique_ptr<Script> makeScript(const std::string& newSource) override {
        source = newSource;
        return makes ? std::make_unique<FakeScript>(result) : nullptr;
    }
    std::string source;
    bool makes = true;
    /// None for a script that ends in an error.
    std::optional<FakeResult> result;

private:
    struct FakeScript : Script {
        explicit FakeScript(std::optional<FakeResult> made) : result(std::move(made)) {}
        [[nodiscard]] std::unique_ptr<EventDescriptor> execute() override {
            return result ? std::make_unique<FakeDescriptor>(*result) : nullptr;
        }
        std::optional<FakeResult> result;
    };
};

class FinderSelectionTest : public testing::Test {
protected:
    std::vector<std::string> selected() {
        std::vector<std::string> paths;
        FinderSelection(scripts).read([&](const std::vector<FileURL>& files) {
            for (const FileURL& file : files)
                paths.push_back(file.path());
        });
        return paths;
    }
    FakeScripts scripts;
};

TEST_F(FinderSelectionTest, takesAListInItsOrderOrOnePathAndSkipsWhatIsNone) {
    scripts.result = FakeResult{{"/b", std::nullopt, "/a", "<none>", "/folder/", "/a"}, "/ignored"};
    EXPECT_EQ(selected(), (std::vector<std::string>{"/b", "/a", "/folder", "/a"}));
    scripts.result = FakeResult{{}, "/only"};
    EXPECT_EQ(selected(), std::vector<std::string>{"/only"});
    EXPECT_EQ(scripts.source, "tell application \"Finder\"\n"
                              "    set theSelection to selection\n"
                              "    set thePaths to {}\n"
                              "    repeat with theItem in theSelection\n"
                              "        set end of thePaths to POSIX path of (theItem as alias)\n"
                              "    end repeat\n"
                              "    return thePaths\n"
                              "end tell");
}

TEST_F(FinderSelectionTest, everyFailureIsAnEmptySelection) {
    for (const std::optional<FakeResult>& result : {std::optional<FakeResult>(), {FakeResult{}}, {{{}, ""}}}) {
        scripts.result = result;
        EXPECT_TRUE(selected().empty());
    }
    scripts.makes = false;
    EXPECT_TRUE(selected().empty());
}

}  // namespace
}  // namespace stowpocket
