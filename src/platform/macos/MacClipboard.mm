// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#import "platform/macos/MacDraggingPasteboard.h"
#include "platform/macos/MacDrags.h"

namespace stowpocket {
namespace {

/// The system keeps what was copied, also after the end of the program, and offers the paths of files as text.
class MacClipboard : public Clipboard {
public:
    void copyFiles(const std::vector<FileURL>& files) override {
        NSMutableArray* const urls = [NSMutableArray arrayWithCapacity:files.size()];
        for (const FileURL& file : files)
            [urls addObject:nsURL(file)];
        replaceContent(urls);
    }
    void copyText(const std::string& text) override { replaceContent(@[ nsString(text) ]); }
    void read(Completion completion) override { completion(itemProvidersOn(NSPasteboard.generalPasteboard)); }

private:
    static void replaceContent(NSArray* objects) {
        NSPasteboard* const pasteboard = NSPasteboard.generalPasteboard;
        [pasteboard clearContents];
        [pasteboard writeObjects:objects];
    }
};

}  // namespace

std::unique_ptr<Clipboard> makeMacClipboard() {
    return std::make_unique<MacClipboard>();
}

}  // namespace stowpocket
