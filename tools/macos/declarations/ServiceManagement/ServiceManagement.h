// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN
DECL_ENUM(NSInteger, SMAppServiceStatus){SMAppServiceStatusNotRegistered = 0, SMAppServiceStatusEnabled = 1,
                                         SMAppServiceStatusRequiresApproval = 2, SMAppServiceStatusNotFound = 3};
SINCE(13.0)
@interface SMAppService : NSObject
@property(class, readonly) SMAppService* mainAppService;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError* _Nullable* _Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError* _Nullable* _Nullable)error;
@end
NS_ASSUME_NONNULL_END
