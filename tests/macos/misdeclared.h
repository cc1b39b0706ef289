// SPDX-License-Identifier: MIT
// Declarations with one mistake each, which the comparison with another's headers must find.
#import <AppKit/AppKit.h>

@interface NSWindow (Misdeclared)
@property BOOL hidesOnDeactivate;
- (BOOL)makeFirstResponder:(NSString*)responder;
- (void)setAlphaValue:(NSInteger)alpha;
- (void)setFrameOrigin:(NSSize)origin;
- (NSString*)convertBaseToScreen:(NSPoint)point;
@end
@interface NSView (Misdeclared)
- (NSURL*)opaqueAncestor;
+ (void)setNeedsDisplay:(BOOL)needs;
- (void)setDoubleAction:(SEL)action;
@end
enum { NSOrderedAscending = 1, NSOrderedSame };
