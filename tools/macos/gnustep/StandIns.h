// SPDX-License-Identifier: MIT
// How tests steer the stand-ins for what GNUstep lacks, and see what these were told.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "gnustep/Toolkit.h"
#include "platform/macos/MacWindows.h"

#import <ServiceManagement/ServiceManagement.h>

@class SPUUpdater;

namespace stowpocket::standIn {

/// Called first of all, within a pool.
void begin();

/// The file systems that getfsstat() names: mount point, and whether it is on this machine.
extern std::map<std::string, bool> mounts;
/// What a script with that source returns, one item per line; other sources fail.
extern std::map<std::string, std::string> scripts;
/// Remembers a call. Any thread.
void record(std::string call);
/// Returns and forgets what was recorded.
[[nodiscard]] std::vector<std::string> takeCalls();
/// The last updater, which the framework's controller owns.
extern SPUUpdater* __unsafe_unretained _Nullable updater;

/// Runs the main run loop until `condition` holds; false after ten seconds.
[[nodiscard]] bool comesTrue(const std::function<bool()>& condition);
void onAnotherThread(void (^_Nonnull work)(void));
/// How many objects of each class are alive of those made since begin().
[[nodiscard]] std::map<std::string, int> living();

// ---- AppKit

extern bool isMotionReduced;
extern bool isDark;
extern NSWindow* __unsafe_unretained _Nullable keyWindow;
extern NSStatusItem* __unsafe_unretained _Nullable statusItem;
extern NSPopover* __unsafe_unretained _Nullable popover;
/// Returns and forgets what was set on an object that GNUstep has no such property for. An image has its "symbol".
[[nodiscard]] std::string noted(id _Nullable object, const std::string& property);
void note(id _Nullable object, const std::string& property, const std::string& value);
/// The user presses a key in this application; whether a monitor keeps the event to itself.
[[nodiscard]] bool isSwallowed(NSString* _Nonnull text, unsigned short keyCode, NSUInteger flags);
/// The user presses a button of the mouse in another application; false when no monitor wants to know.
bool pressElsewhere(NSEventType type);
/// The user presses a hotkey; false when nobody has registered it.
bool pressHotkey(std::uint32_t keyCode, std::uint32_t modifiers);
/// The user opens the program again; false when nobody handles that.
bool reopen();
extern SMAppServiceStatus loginItemStatus;

/// A view of the toolkit without the toolkit. It tells when it is shown, hidden and gone.
class Content : public HostedView {
public:
    explicit Content(std::vector<std::string>& told) : told_(told) {}
    ~Content() override { told_.push_back("gone"); }
    [[nodiscard]] void* _Nonnull nativeView() override { return (__bridge void*)view; }
    [[nodiscard]] Size size() const override { return wanted; }
    [[nodiscard]] Signal<>& sizeChanged() override { return changed; }
    void setCancel(std::function<void()> newCancel) override { cancel = std::move(newCancel); }
    void setShown(bool isShown) override { told_.push_back(isShown ? "shown" : "hidden"); }

    NSView* const _Nonnull view = (__bridge_transfer NSView*)makeQtView(nullptr);
    Size wanted{200, 100};
    Signal<> changed;
    std::function<void()> cancel;

private:
    std::vector<std::string>& told_;
};

// ---- what is dragged

/// A file or other data on a pasteboard, in one type or in several, and files that are promised.
[[nodiscard]] NSPasteboardItem* _Nonnull itemOf(NSString* _Nonnull type, const std::string& text);
[[nodiscard]] NSPasteboardItem* _Nonnull itemOf(NSArray* _Nonnull types, const std::vector<std::string>& texts);
[[nodiscard]] NSFilePromiseReceiver* _Nonnull promiseOf(NSArray* _Nonnull types,
                                                        const std::vector<std::string>& files);
/// Puts these on the pasteboard of drags, and returns what a destination is told.
id<NSDraggingInfo> _Nonnull drag(NSArray* _Nonnull objects);
struct Drag {
    NSEvent* _Nonnull event;
    id<NSDraggingSource> _Nonnull source;
    id<NSPasteboardWriting> _Nonnull writer;
    NSRect frame;
    NSImage* _Nullable contents;
    NSUInteger count;
    NSPasteboard* _Nonnull board;
};
/// The last drag that began here.
extern std::optional<Drag> begunDrag;

}  // namespace stowpocket::standIn
