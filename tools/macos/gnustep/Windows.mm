// SPDX-License-Identifier: MIT
// What GNUstep's AppKit lacks of windows, the menu bar and events. GNUstep's own status items are empty, and its
// popovers fail.
#include "gnustep/StandIns.h"
#include "gnustep/Toolkit.h"

#import <Carbon/Carbon.h>
#import <Quartz/Quartz.h>
#import <ServiceManagement/ServiceManagement.h>

namespace stowpocket::standIn {

bool isMotionReduced = false;
bool isDark = false;
NSWindow* __unsafe_unretained keyWindow;
NSStatusItem* __unsafe_unretained statusItem;
NSPopover* __unsafe_unretained popover;
SMAppServiceStatus loginItemStatus = SMAppServiceStatusNotRegistered;

static std::map<std::pair<const void*, std::string>, std::string> notes;

std::string noted(id object, const std::string& property) {
    const auto note = notes.extract({(__bridge void*)object, property});
    return note ? note.mapped() : "";
}
void note(id object, const std::string& property, const std::string& value) {
    notes[{(__bridge void*)object, property}] = value;
}

}  // namespace stowpocket::standIn

using namespace stowpocket;

@interface NSApplication (StandIn)
@end

static NSWindow* plainWindow(NSRect frame) {
    NSWindow* const window = [[NSWindow alloc] initWithContentRect:frame
                                                         styleMask:NSBorderlessWindowMask
                                                           backing:NSBackingStoreBuffered
                                                             defer:NO];
    window.releasedWhenClosed = NO;
    return window;
}

// ---- windows

@implementation NSWindow (Later)
- (BOOL)titlebarAppearsTransparent {
    return standIn::noted(self, "titlebarAppearsTransparent") == "1";
}
- (void)setTitlebarAppearsTransparent:(BOOL)isTransparent {
    standIn::note(self, "titlebarAppearsTransparent", isTransparent ? "1" : "0");
}
- (NSInteger)titleVisibility {
    return std::atoi(standIn::noted(self, "titleVisibility").c_str());
}
- (void)setTitleVisibility:(NSInteger)visibility {
    standIn::note(self, "titleVisibility", std::to_string(visibility));
}
- (void)setStyleMask:(NSUInteger)mask {
    standIn::note(self, "styleMask", std::to_string(mask));
}
@end

/// GNUstep's own is that of the window manager, which knows nothing of this process without its main loop.
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"
@implementation NSApplication (StandIn)
- (NSWindow*)keyWindow {
    return standIn::keyWindow;
}
@end

@implementation NSWorkspace (Later)
- (BOOL)accessibilityDisplayShouldReduceMotion {
    return standIn::isMotionReduced;
}
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)urls {
    for (NSURL* url in urls)
        standIn::record("select " + std::string(url.lastPathComponent.UTF8String));
}
@end

@implementation QLPreviewPanel
@synthesize dataSource = _dataSource;
+ (QLPreviewPanel*)sharedPreviewPanel {
    static QLPreviewPanel* panel;
    if (panel == nil) {
        panel = [[QLPreviewPanel alloc] initWithContentRect:NSMakeRect(0, 0, 10, 10)
                                                  styleMask:NSTitledWindowMask
                                                    backing:NSBackingStoreBuffered
                                                      defer:NO];
        panel.releasedWhenClosed = NO;
    }
    return panel;
}
- (void)updateController {
    for (NSResponder* responder = NSApp.keyWindow; responder != nil; responder = responder.nextResponder) {
        if ([responder respondsToSelector:@selector(acceptsPreviewPanelControl:)])
            return [responder beginPreviewPanelControl:self];
    }
}
- (void)reloadData {
    for (NSInteger index = 0; index < [_dataSource numberOfPreviewItemsInPreviewPanel:self]; ++index) {
        const id item = [_dataSource previewPanel:self previewItemAtIndex:index];
        standIn::record("preview " + std::string(((NSURL*)item).lastPathComponent.UTF8String));
    }
}
@end

/// Leaves the screen at once when told to close, and says so at the end of its animation.
@implementation NSPopover {
    NSWindow* _window;
    NSSize _contentSize;
    BOOL _isShown;
    BOOL _isClosing;
}
- (instancetype)init {
    self = [super init];
    _window = plainWindow(NSMakeRect(0, 0, 10, 10));
    standIn::popover = self;
    return self;
}
- (void)dealloc {
    [_window close];
    if (standIn::popover == self)
        standIn::popover = nil;
}
- (BOOL)isShown {
    return _isShown;
}
- (NSSize)contentSize {
    return _contentSize;
}
- (void)setContentSize:(NSSize)size {
    _contentSize = size;
    [_window setContentSize:size];
}
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)edge {
    if (view.window == nil)
        [NSException raise:NSInvalidArgumentException format:@"the view is in no window"];
    _window.contentView = self.contentViewController.view;
    [_window setContentSize:_contentSize];
    NSView* const content = view.window.contentView;
    const NSPoint corner = [view convertPoint:NSMakePoint(NSMinX(rect), NSMinY(rect)) toView:content];
    [_window setFrameTopLeftPoint:[view.window convertBaseToScreen:corner]];
    [_window orderFront:nil];
    _isShown = YES;
}
- (void)performClose:(id)sender {
    if (!self.animates)
        return [self close];
    [self leave];
    [self performSelector:@selector(tellClosed) withObject:nil afterDelay:0.05];
}
- (void)close {
    [NSObject cancelPreviousPerformRequestsWithTarget:self];
    if (_isShown)
        [self leave];
    if (_isClosing)
        [self tellClosed];
}
- (void)leave {
    _isShown = NO;
    _isClosing = YES;
    [_window orderOut:nil];
}
- (void)tellClosed {
    _isClosing = NO;
    standIn::record("popover closed");
    [self.delegate popoverDidClose:[NSNotification notificationWithName:@"closed" object:self]];
}
@end

@implementation NSStatusItem
- (void)dealloc {
    [self.button.window close];
}
@end
@implementation NSStatusBar
+ (NSStatusBar*)systemStatusBar {
    static NSStatusBar* const bar = [[NSStatusBar alloc] init];
    return bar;
}
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    static NSWindow* bar;
    bar = plainWindow(NSMakeRect(900, 870, 60, 24));
    NSStatusItem* const item = [[NSStatusItem alloc] init];
    item.button = [[NSStatusBarButton alloc] initWithFrame:NSMakeRect(0, 0, 60, 24)];
    bar.contentView = item.button;
    [bar orderFront:nil];
    standIn::statusItem = item;
    standIn::record("status item");
    return item;
}
- (void)removeStatusItem:(NSStatusItem*)item {
    standIn::record("no status item");
    standIn::statusItem = nil;
}
@end

// ---- events

@interface StandInMonitor : NSObject
@end
@implementation StandInMonitor {
@public
    NSUInteger mask;
    NSEvent* (^local)(NSEvent*);
    void (^global)(NSEvent*);
}
@end

static NSMutableArray<StandInMonitor*>* monitors() {
    static NSMutableArray* const list = [[NSMutableArray alloc] init];
    return list;
}

static NSEvent* keyPress(NSString* text, unsigned short keyCode, NSUInteger flags) {
    return [NSEvent keyEventWithType:NSKeyDown
                            location:NSZeroPoint
                       modifierFlags:flags
                           timestamp:0
                        windowNumber:0
                             context:nil
                          characters:text
         charactersIgnoringModifiers:text
                           isARepeat:NO
                             keyCode:keyCode];
}

struct __CGEvent {
    CGKeyCode keyCode;
    CGEventFlags flags;
};
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef, CGKeyCode keyCode, bool) {
    return new __CGEvent{keyCode, 0};
}
void CGEventSetFlags(CGEventRef event, CGEventFlags flags) {
    event->flags = flags;
}
void CFRelease(CFTypeRef event) {
    delete static_cast<const __CGEvent*>(event);
}
static NSUInteger heldModifiers;

@implementation NSEvent (Later)
+ (NSEventModifierFlags)modifierFlags {
    return heldModifiers;
}
+ (NSEvent*)eventWithCGEvent:(CGEventRef)event {
    return keyPress(event->keyCode == 1 ? @"s" : @"d", event->keyCode, event->flags);
}
+ (id)addLocalMonitorForEventsMatchingMask:(NSUInteger)mask handler:(NSEvent* (^)(NSEvent*))handler {
    StandInMonitor* const monitor = [[StandInMonitor alloc] init];
    monitor->mask = mask;
    monitor->local = handler;
    [monitors() addObject:monitor];
    return monitor;
}
+ (id)addGlobalMonitorForEventsMatchingMask:(NSUInteger)mask handler:(void (^)(NSEvent*))handler {
    StandInMonitor* const monitor = [[StandInMonitor alloc] init];
    monitor->mask = mask;
    monitor->global = handler;
    [monitors() addObject:monitor];
    return monitor;
}
+ (void)removeMonitor:(id)monitor {
    [monitors() removeObjectIdenticalTo:monitor];
}
@end

namespace stowpocket::standIn {

bool isSwallowed(NSString* text, unsigned short keyCode, NSUInteger flags) {
    NSEvent* event = keyPress(text, keyCode, flags);
    for (StandInMonitor* monitor in [monitors() copy]) {
        if (event != nil && monitor->local != nil && (monitor->mask & NSKeyDownMask) != 0)
            event = monitor->local(event);
    }
    return event == nil;
}

bool pressElsewhere(NSEventType type) {
    bool isWanted = false;
    for (StandInMonitor* monitor in [monitors() copy]) {
        if (monitor->global == nil || (monitor->mask & NSEventMaskFromType(type)) == 0)
            continue;
        monitor->global([NSEvent mouseEventWithType:type
                                           location:NSZeroPoint
                                      modifierFlags:0
                                          timestamp:0
                                       windowNumber:0
                                            context:nil
                                        eventNumber:0
                                         clickCount:1
                                           pressure:1]);
        isWanted = true;
    }
    return isWanted;
}

}  // namespace stowpocket::standIn

/// Does not retain its handler.
@implementation NSAppleEventManager {
@public
    id __unsafe_unretained _handler;
    SEL _selector;
}
+ (NSAppleEventManager*)sharedAppleEventManager {
    static NSAppleEventManager* const manager = [[NSAppleEventManager alloc] init];
    return manager;
}
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(uint32_t)eventClass
             andEventID:(uint32_t)eventID {
    if (eventClass != kCoreEventClass || eventID != kAEReopenApplication)
        return;
    _handler = handler;
    _selector = selector;
    standIn::record("reopening");
}
- (void)removeEventHandlerForEventClass:(uint32_t)eventClass andEventID:(uint32_t)eventID {
    if (eventClass == kCoreEventClass && eventID == kAEReopenApplication)
        _handler = nil;
}
@end

bool stowpocket::standIn::reopen() {
    NSAppleEventManager* const manager = NSAppleEventManager.sharedAppleEventManager;
    if (manager->_handler == nil)
        return false;
    NSAppleEventDescriptor* const event = [[NSAppleEventDescriptor alloc] init];
#pragma clang diagnostic ignored "-Warc-performSelector-leaks"
    [manager->_handler performSelector:manager->_selector withObject:event withObject:event];
    return true;
}

struct OpaqueEventRef {
    EventHotKeyID pressed;
};
struct OpaqueEventHotKeyRef {
    UInt32 keyCode = 0;
    UInt32 modifiers = 0;
    EventHotKeyID identifier{};
};
static EventHandlerUPP hotkeyHandler;
static std::vector<EventHotKeyRef> hotkeys;

EventTargetRef GetApplicationEventTarget() {
    return nullptr;
}
OSStatus InstallEventHandler(EventTargetRef, EventHandlerUPP handler, ItemCount count, const EventTypeSpec* types,
                             void*, EventHandlerRef*) {
    if (count != 1 || types->eventClass != kEventClassKeyboard || types->eventKind != kEventHotKeyPressed)
        return eventNotHandledErr;
    hotkeyHandler = handler;
    return noErr;
}
OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID identifier, EventTargetRef, OptionBits,
                             EventHotKeyRef* hotkey) {
    const bool isTaken = std::ranges::any_of(
        hotkeys, [&](EventHotKeyRef other) { return other->keyCode == keyCode && other->modifiers == modifiers; });
    if (isTaken)
        return -9878;
    *hotkey = hotkeys.emplace_back(new OpaqueEventHotKeyRef{keyCode, modifiers, identifier});
    standIn::record("hotkey " + std::to_string(identifier.id));
    return noErr;
}
OSStatus UnregisterEventHotKey(EventHotKeyRef hotkey) {
    std::erase(hotkeys, hotkey);
    delete hotkey;
    return noErr;
}
OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType type, EventParamType*, ByteCount size,
                           ByteCount*, void* data) {
    if (name != kEventParamDirectObject || type != typeEventHotKeyID || size != sizeof event->pressed)
        return eventNotHandledErr;
    *static_cast<EventHotKeyID*>(data) = event->pressed;
    return noErr;
}

bool stowpocket::standIn::pressHotkey(std::uint32_t keyCode, std::uint32_t modifiers) {
    for (const EventHotKeyRef hotkey : hotkeys) {
        if (hotkey->keyCode != keyCode || hotkey->modifiers != modifiers)
            continue;
        OpaqueEventRef event{hotkey->identifier};
        heldModifiers = (modifiers & optionKey) != 0 ? NSAlternateKeyMask : 0;
        return hotkeyHandler(nullptr, &event, nullptr) == noErr;
    }
    return false;
}

// ---- the login item

@implementation SMAppService
+ (SMAppService*)mainAppService {
    static SMAppService* const service = [[SMAppService alloc] init];
    return service;
}
- (SMAppServiceStatus)status {
    return standIn::loginItemStatus;
}
- (BOOL)registerAndReturnError:(NSError**)error {
    standIn::loginItemStatus = SMAppServiceStatusEnabled;
    return YES;
}
- (BOOL)unregisterAndReturnError:(NSError**)error {
    const bool was = standIn::loginItemStatus == SMAppServiceStatusEnabled;
    standIn::loginItemStatus = SMAppServiceStatusNotRegistered;
    return was;
}
@end

// ---- the views of the toolkit

/// Takes the keyboard and hands its size on.
@interface StandInQtView : NSView
@end
@implementation StandInQtView {
@public
    std::function<void(int, int)> resized;
}
- (BOOL)acceptsFirstResponder {
    return YES;
}
- (void)setFrameSize:(NSSize)size {
    [super setFrameSize:size];
    if (resized)
        resized(static_cast<int>(size.width), static_cast<int>(size.height));
}
@end

void* stowpocket::standIn::makeQtView(std::function<void(int, int)> resized) {
    StandInQtView* const view = [[StandInQtView alloc] initWithFrame:NSZeroRect];
    view->resized = std::move(resized);
    return (__bridge_retained void*)view;
}

void stowpocket::standIn::releaseQtView(void* view) {
    StandInQtView* const gone = (__bridge_transfer StandInQtView*)view;
    gone->resized = nullptr;
}

@interface StandInApplicationDelegate : NSObject
@end
@implementation StandInApplicationDelegate {
@public
    std::function<void()> quit;
}
- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender {
    quit();
    return NSTerminateCancel;
}
@end

void stowpocket::standIn::terminateThrough(std::function<void()> quit) {
    static StandInApplicationDelegate* const delegate = [[StandInApplicationDelegate alloc] init];
    delegate->quit = std::move(quit);
    NSApp.delegate = (id)delegate;
}
