// SPDX-License-Identifier: MIT
#include "intake/FinderSelection.h"

#include "platform/ScriptService.h"

#include <gtest/gtest.h>

#include <algorithm>

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
        if (item == "<none>")
            return nullptr;
        return std::make_unique<FakeDescriptor>(FakeResult{{}, item});
    }
    [[nodiscard]] std::optional<std::string> stringValue() const override { return result_.text; }

private:
    const FakeResult result_;
};

class FakeScript : public Script {
public:
    explicit FakeScript(std::optional<FakeResult> result) : result_(std::move(result)) {}
    [[nodiscard]] std::unique_ptr<EventDescriptor> execute() override {
        return result_ ? std::make_unique<FakeDescriptor>(*result_) : nullptr;
    }

private:
    const std::optional<FakeResult> result_;
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

TEST_F(FinderSelectionTest, asksWithItsFixedScript) {
    static_cast<void>(selected());
    EXPECT_EQ(std::ranges::count(scripts.source, '\n'), 7);
    EXPECT_TRUE(scripts.source.starts_with("tell application \"Finder\"\n    set theSelection to selection\n"));
    EXPECT_NE(
        scripts.source.find("\n        set end of thePaths to POSIX path of (theItem as alias)\n    end repeat\n"),
        std::string::npos);
    EXPECT_TRUE(scripts.source.ends_with("\n    return thePaths\nend tell"));
}

TEST_F(FinderSelectionTest, takesAListInItsOrderOrOnePathAndSkipsWhatIsNone) {
    scripts.result = FakeResult{{"/b", std::nullopt, "/a", "<none>", "/folder/", "/a"}, "/ignored"};
    EXPECT_EQ(selected(), (std::vector<std::string>{"/b", "/a", "/folder", "/a"}));
    scripts.result = FakeResult{{}, "/only"};
    EXPECT_EQ(selected(), std::vector<std::string>{"/only"});
}

TEST_F(FinderSelectionTest, everyFailureIsAnEmptySelection) {
    EXPECT_TRUE(selected().empty()) << "the script failed";
    scripts.result = FakeResult{{}, ""};
    EXPECT_TRUE(selected().empty());
    scripts.result = FakeResult{};
    EXPECT_TRUE(selected().empty());
    scripts.makes = false;
    EXPECT_TRUE(selected().empty());
}

}  // namespace
}  // namespace stowpocket
