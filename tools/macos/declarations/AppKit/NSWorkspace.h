// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import "NSImage.h"

NS_ASSUME_NONNULL_BEGIN
extern "C" NSNotificationName const NSWorkspaceDidMountNotification;
extern "C" NSNotificationName const NSWorkspaceDidUnmountNotification;
@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion SINCE(10.12);
- (NSImage*)iconForFile:(NSString*)path;
- (BOOL)openURL:(NSURL*)url;
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)fileURLs SINCE(10.6);
@end
NS_ASSUME_NONNULL_END
