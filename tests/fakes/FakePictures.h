// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Text.h"
#include "services/Pictures.h"

#include <functional>
#include <string>
#include <vector>

namespace stowpocket {

class FakeImageContent : public ImageContent {
public:
    explicit FakeImageContent(bool isSmall = false) : isPacked(isSmall) {}
    [[nodiscard]] std::shared_ptr<const ImageContent> packed() const override {
        return std::make_shared<FakeImageContent>(true);
    }

    const bool isPacked;
};

[[nodiscard]] inline Image fakeImage() {
    return {std::make_shared<FakeImageContent>(), Size{256, 200}};
}

class FakeThumbnails : public Thumbnails {
public:
    struct Asked {
        ThumbnailRequest request;
        Completion completion;
    };
    void generate(const ThumbnailRequest& request, Completion completion) override {
        asked.push_back({request, std::move(completion)});
    }
    std::vector<Asked> asked;
};

class FakeIcons : public WorkspaceIcons {
public:
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

class FakeScreen : public MainScreen {
public:
    [[nodiscard]] std::optional<double> backingScaleFactor() const override { return scale; }
    std::optional<double> scale = 1.0;
};

}  // namespace stowpocket
