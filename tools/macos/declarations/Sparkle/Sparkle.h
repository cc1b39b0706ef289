// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
@protocol SPUUpdaterDelegate;
@protocol SPUStandardUserDriverDelegate;
@interface SPUUpdater : NSObject
@property(readonly) BOOL canCheckForUpdates;
@property BOOL automaticallyDownloadsUpdates;
@end
@interface SPUStandardUpdaterController : NSObject
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(nullable id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:(nullable id<SPUStandardUserDriverDelegate>)userDriverDelegate;
@property(readonly) SPUUpdater* updater;
- (void)checkForUpdates:(nullable id)sender;
@end
NS_ASSUME_NONNULL_END
