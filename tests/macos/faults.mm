// SPDX-License-Identifier: MIT
// What the type check must refuse. Each marked line has one mistake that was made, or could be, in an adapter;
// clang's own -verify fails when a marked line passes, or when any other line is refused.

// A mark stays on its line.
// clang-format off
#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>
#import <QuickLookThumbnailing/QuickLookThumbnailing.h>
#import <ServiceManagement/ServiceManagement.h>
#import <Sparkle/Sparkle.h>

@interface StowpocketHalfSource : NSObject <NSDraggingSource>
@property(nullable, copy) void (^callback)(void);
@end
@implementation StowpocketHalfSource // expected-error {{in protocol 'NSDraggingSource' not implemented}}
@end

void misspelt(NSPopover* popover, NSView* view, NSURL* url, NSTask* task) {
    [popover showRelativeToRect:view.bounds ofView:view prefferedEdge:NSRectEdgeMinY]; // expected-error {{prefferedEdge}}
    [url startAccessingSecurityScopeResource];    // expected-error {{startAccessingSecurityScopeResource}}
    popover.behaviour = NSPopoverBehaviorTransient; // expected-error {{property 'behaviour' not found}}
    [task launchAndReturnErr:nil];                // expected-error {{launchAndReturnErr:}}
    static_cast<void>(@selector(clickd:));        // expected-error {{undeclared selector 'clickd:'}}
    static_cast<void>(NSWorkspaceDidMountNotificaton); // expected-error {{undeclared identifier}}
    static_cast<void>([NSImage imageWithSystemSymbol:@"tray" accessibilityDescription:nil]); // expected-error {{imageWithSystemSymbol:}}
}

void nullable(NSURL* url, NSStatusItem* item, NSPopover* popover, NSPasteboardItem* thing) {
    static_cast<void>([NSURL URLWithString:url.absoluteString]);             // expected-error {{nullable pointer}}
    static_cast<void>([NSURL fileURLWithPath:nil isDirectory:NO]);           // expected-error {{null passed to a callee}}
    [popover showRelativeToRect:NSZeroRect ofView:item.button preferredEdge:NSRectEdgeMinY]; // expected-error 1+ {{nullable pointer}}
    static_cast<void>([NSURL URLWithDataRepresentation:[thing dataForType:NSPasteboardTypeFileURL] relativeToURL:nil]); // expected-error {{nullable pointer}}
}

void mistyped(NSPopover* popover, NSStatusItem* item, NSView* view, NSArray<NSURL*>* urls, EventHotKeyRef hotKey) {
    [popover showRelativeToRect:NSMakeSize(1, 2) ofView:view preferredEdge:NSRectEdgeMinY]; // expected-error {{no viable conversion}}
    [popover showRelativeToRect:view.bounds ofView:view preferredEdge:NSPopoverBehaviorTransient]; // expected-error {{'NSRectEdge'}}
    static_cast<void>([NSURL URLWithString:urls[0]]);                        // expected-error {{'NSString *}}
    item.button.target = popover.behavior;                                   // expected-error {{'id}}
    [NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown handler:^(NSEvent*) {}]; // expected-error {{'NSEvent}}
    RegisterEventHotKey(1, cmdKey, hotKey, GetApplicationEventTarget(), 0, &hotKey); // expected-error {{no matching function}}
    static_cast<void>([[QLThumbnailGenerationRequest alloc] initWithFileAtURL:urls[0] size:48 scale:2 representationTypes:4]); // expected-error {{no viable conversion}}
    [SMAppService.mainAppService registerAndReturnError:urls];               // expected-error {{'NSError *}}
    int length = urls.count;                                                 // expected-error {{loses integer precision}}
    static_cast<void>(length);
}

void lifetime(StowpocketHalfSource* source, void* raw) {
    source.callback = ^{
        static_cast<void>(source.callback); // expected-error {{likely to lead to a retain cycle}}
    };
    NSView* view = (NSView*)raw; // expected-error {{requires a bridged cast}} expected-error {{old-style cast}}
    static_cast<void>(view);
}

#ifdef BEFORE_LOGIN_ITEMS  // for a system older than the one that brought them
void unguarded() {
    static_cast<void>(SMAppService.mainAppService); // expected-error 1+ {{only available on macOS 13.0}}
}
#endif
#ifdef __x86_64__  // where a BOOL is no bool; the compiler for arm64 is told so by another name
#ifndef __aarch64__
void boolean(NSURL* url, NSData* data, bool isStale) {
    static_cast<void>([NSURL URLByResolvingBookmarkData:data options:1024 relativeToURL:url bookmarkDataIsStale:&isStale error:nil]); // expected-error {{of type 'BOOL *}}
}
#endif
#endif
