// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Text.h"
#include "services/Pictures.h"

namespace stowpocket {

struct FakeImageContent : ImageContent {
    explicit FakeImageContent(bool isSmall = false) : isPacked(isSmall) {}
    [[nodiscard]] std::shared_ptr<const ImageContent> packed() const override {
        return std::make_shared<FakeImageContent>(true);
    }

    const bool isPacked;
};

[[nodiscard]] inline Image fakeImage() {
    return {std::make_shared<FakeImageContent>(), Size{256, 200}};
}

struct FakeThumbnails : Thumbnails {
    struct Asked {
        ThumbnailRequest request;
        Completion completion;
    };
    void generate(const ThumbnailRequest& request, Completion completion) override {
        asked.push_back({request, std::move(completion)});
    }
    std::vector<Asked> asked;
};

struct FakeIcons : WorkspaceIcons {
    [[nodiscard]] Image icon(const FileURL& url) override {
        askedPaths.push_back(url.path());
        return paint(url);
    }
    [[nodiscard]] std::string lowercased(const std::string& extension) const override {
        return asciiLowercased(extension);
    }
    std::vector<std::string> askedPaths;
    std::function<Image(const FileURL&)> paint = [](const FileURL&) { return fakeImage(); };
};

struct FakeScreen : MainScreen {
    [[nodiscard]] std::optional<double> backingScaleFactor() const override { return scale; }
    std::optional<double> scale = 1.0;
};

}  // namespace stowpocket
