// SPDX-License-Identifier: MIT
// Compiles without a word, though nobody will ever call its method.
#import <AppKit/AppKit.h>

@interface StowpocketMisspelt : NSObject <NSPopoverDelegate>
@end
@implementation StowpocketMisspelt
- (void)popoverDidClosed:(NSNotification*)notification {
}
@end
