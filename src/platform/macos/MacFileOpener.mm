// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"

#import <AppKit/AppKit.h>
#import <Quartz/Quartz.h>

/// Gives a file to the system's preview panel. The panel asks for its controller along the key window's chain of
/// responders, at whose end this stands.
@interface StowpocketPreview : NSResponder <QLPreviewPanelDataSource>
- (void)showFile:(NSURL*)file;
@end

@implementation StowpocketPreview {
    NSURL* _file;
}

- (void)showFile:(NSURL*)file {
    QLPreviewPanel* const panel = [QLPreviewPanel sharedPreviewPanel];
    if (panel.visible && [_file isEqual:file])
        return [panel orderOut:nil];
    _file = file;
    NSWindow* const window = NSApplication.sharedApplication.keyWindow;
    if (window == nil)
        return;
    if (window != panel && window.nextResponder != self) {
        self.nextResponder = window.nextResponder;
        window.nextResponder = self;
    }
    [panel updateController];
    [panel reloadData];
    [panel makeKeyAndOrderFront:nil];
}

- (BOOL)acceptsPreviewPanelControl:(QLPreviewPanel*)panel {
    return YES;
}

- (void)beginPreviewPanelControl:(QLPreviewPanel*)panel {
    panel.dataSource = self;
}

- (void)endPreviewPanelControl:(QLPreviewPanel*)panel {
    panel.dataSource = nil;
}

- (NSInteger)numberOfPreviewItemsInPreviewPanel:(QLPreviewPanel*)panel {
    return _file == nil ? 0 : 1;
}

- (id<QLPreviewItem>)previewPanel:(QLPreviewPanel*)panel previewItemAtIndex:(NSInteger)index {
    return _file;
}

@end

namespace stowpocket {
namespace {

class MacFileOpener : public FileOpener {
public:
    void open(std::span<const FileURL> files, Completion completion) override {
        bool areAllOpened = true;
        for (const FileURL& file : files)
            areAllOpened = [NSWorkspace.sharedWorkspace openURL:nsURL(file)] && areAllOpened;
        completion(areAllOpened);
    }

    void showInFolder(std::span<const FileURL> files) override {
        NSMutableArray<NSURL*>* const urls = [NSMutableArray arrayWithCapacity:files.size()];
        for (const FileURL& file : files)
            [urls addObject:nsURL(file)];
        [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:urls];
    }

    void preview(const FileURL& file) override {
        if (preview_ == nil)
            preview_ = [[StowpocketPreview alloc] init];
        [preview_ showFile:nsURL(file)];
    }

private:
    /// Windows do not retain what follows them.
    StowpocketPreview* preview_ = nil;
};

}  // namespace

std::unique_ptr<FileOpener> makeMacFileOpener() {
    return std::make_unique<MacFileOpener>();
}

}  // namespace stowpocket
