// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN
@class QLPreviewPanel;
@protocol QLPreviewItem <NSObject>
@end
@interface NSURL (QLPreviewConvenienceAdditions) <QLPreviewItem>
@end
@protocol QLPreviewPanelDataSource
- (NSInteger)numberOfPreviewItemsInPreviewPanel:(null_unspecified QLPreviewPanel*)panel;
- (null_unspecified id<QLPreviewItem>)previewPanel:(null_unspecified QLPreviewPanel*)panel
                                previewItemAtIndex:(NSInteger)index;
@end
@interface NSObject (QLPreviewPanelController)
- (BOOL)acceptsPreviewPanelControl:(null_unspecified QLPreviewPanel*)panel;
- (void)beginPreviewPanelControl:(null_unspecified QLPreviewPanel*)panel;
- (void)endPreviewPanelControl:(null_unspecified QLPreviewPanel*)panel;
@end
@interface QLPreviewPanel : NSWindow
+ (null_unspecified QLPreviewPanel*)sharedPreviewPanel;
@property(nullable, assign) id<QLPreviewPanelDataSource> dataSource;
- (void)updateController;
- (void)reloadData;
@end
NS_ASSUME_NONNULL_END
