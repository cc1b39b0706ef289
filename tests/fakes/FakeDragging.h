// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dragging.h"

namespace stowpocket {

/// A clipboard that remembers what it was given, and delivers what the test puts into it.
struct FakeClipboard : Clipboard {
    void copyFiles(const std::vector<FileURL>& newFiles) override { files = newFiles; }
    void copyText(const std::string& newText) override { text = newText; }
    void read(Completion completion) override { completion(content); }

    std::vector<FileURL> files;
    std::string text;
    std::vector<std::shared_ptr<ItemProvider>> content;
};

/// A dropped thing whose loads end when the test says so.
struct FakeItemProvider : ItemProvider {
    /// A file given by its URL.
    static std::shared_ptr<FakeItemProvider> withURL(const std::string& text) {
        auto provider = std::make_shared<FakeItemProvider>();
        provider->types = {std::string(uniformType::fileURL)};
        provider->data = Bytes(text.begin(), text.end());
        return provider;
    }
    /// Contents of some type without a file, which loading writes to `temporaryPath`.
    static std::shared_ptr<FakeItemProvider> withContents(const std::string& type, const std::string& temporaryPath) {
        auto provider = std::make_shared<FakeItemProvider>();
        if (!type.empty())
            provider->types = {type};
        provider->temporaryFile = FileURL::fromPath(temporaryPath);
        return provider;
    }

    [[nodiscard]] bool hasItemConformingTo(std::string_view typeIdentifier) const override {
        return !types.empty() && types.front() == typeIdentifier;
    }
    [[nodiscard]] std::vector<std::string> registeredTypeIdentifiers() const override { return types; }
    void loadItem(std::string_view typeIdentifier, std::function<void(std::optional<Bytes>)> completion) override {
        askedType = typeIdentifier;
        finish = [this, completion = std::move(completion)] { completion(data); };
    }
    void loadFileRepresentation(std::string_view typeIdentifier,
                                std::function<void(std::optional<FileURL>)> completion) override {
        askedType = typeIdentifier;
        finish = [this, completion = std::move(completion)] { completion(temporaryFile); };
    }

    std::vector<std::string> types;
    std::optional<Bytes> data;
    std::optional<FileURL> temporaryFile;
    std::string askedType;
    std::function<void()> finish;
};

struct FakePasteboard : DraggingPasteboard {
    [[nodiscard]] std::vector<PasteboardItem> items() override { return content; }
    [[nodiscard]] std::vector<std::shared_ptr<FilePromiseReceiver>> filePromiseReceivers() override {
        return receivers;
    }
    void addFileURL(const std::string& text) { content.push_back({{{std::string(pasteboardType::fileURL), text}}}); }
    std::vector<PasteboardItem> content;
    std::vector<std::shared_ptr<FilePromiseReceiver>> receivers;
};

/// A promise whose files arrive when the test says so.
struct FakePromiseReceiver : FilePromiseReceiver {
    void receivePromisedFiles(const FileURL& folder, Reader newReader) override {
        destination = folder;
        reader = std::move(newReader);
    }
    void arrive(const std::string& name) { reader(destination->appending(name)); }

    std::optional<FileURL> destination;
    Reader reader;
};

}  // namespace stowpocket
