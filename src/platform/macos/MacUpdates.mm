// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"

#import <dispatch/dispatch.h>
#import <Sparkle/Sparkle.h>

#include <functional>

NS_ASSUME_NONNULL_BEGIN
/// Calls a function with a property's new value whenever it changes, on the thread that changes it. Retains the
/// observed object until the observation ends or is destroyed.
@interface StowpocketKeyPathObservation : NSObject
- (instancetype)initWithObject:(NSObject*)object
                       keyPath:(NSString*)keyPath
                       options:(NSKeyValueObservingOptions)options
                       changed:(std::function<void(id _Nullable)>)changed;
/// Stops the calls and releases the observed object.
- (void)end;
@end
NS_ASSUME_NONNULL_END

static void* const observationContext = const_cast<char*>("StowpocketKeyPathObservation");

@implementation StowpocketKeyPathObservation {
    NSObject* _object;
    NSString* _keyPath;
    std::function<void(id)> _changed;
}

- (instancetype)initWithObject:(NSObject*)object
                       keyPath:(NSString*)keyPath
                       options:(NSKeyValueObservingOptions)options
                       changed:(std::function<void(id)>)changed {
    self = [super init];
    if (self != nil) {
        _object = object;
        _keyPath = keyPath;
        _changed = std::move(changed);
        [object addObserver:self forKeyPath:keyPath options:options context:observationContext];
    }
    return self;
}

- (void)end {
    [_object removeObserver:self forKeyPath:_keyPath context:observationContext];
    _object = nil;
}

- (void)dealloc {
    [self end];
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    if (context != observationContext)
        return [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
    _changed(change[NSKeyValueChangeNewKey]);
}

@end

namespace stowpocket {
namespace {

std::optional<FeedResponse> feedResponseOf(NSData* data, NSURLResponse* response) {
    // A compressed body may be larger than the number of bytes received.
    if (static_cast<std::int64_t>(data.length) > maxAnswerSize)
        return std::nullopt;
    FeedResponse answer;
    if ([response isKindOfClass:NSHTTPURLResponse.class])
        answer.statusCode = static_cast<int>(static_cast<NSHTTPURLResponse*>(response).statusCode);
    if (data != nil)
        answer.body = bytesOf(data);
    return answer;
}

class MacFeedSession : public FeedSession {
public:
    [[nodiscard]] bool isValid(const std::string& url) const override {
        return [NSURL URLWithString:nsString(url)] != nil;
    }

    void dataTask(const std::string& url, Completion completion) override {
        NSURL* const address = [NSURL URLWithString:nsString(url)];
        if (address == nil)
            return completion(std::nullopt);
        const std::weak_ptr<const bool> alive = alive_;
        __block StowpocketKeyPathObservation* limit = nil;  // set before the task begins
        NSURLSessionDataTask* const task = [NSURLSession.sharedSession
              dataTaskWithURL:address
            completionHandler:^(NSData* data, NSURLResponse* response, NSError* error) {
              [limit end];
              limit = nil;
              const auto answer = error == nil ? feedResponseOf(data, response) : std::nullopt;
              // Only the main thread knows whether the caller still waits.
              dispatch_async(dispatch_get_main_queue(), ^{
                if (!alive.expired())
                    completion(answer);
              });
            }];
        // A task with a completion handler reports no progress to a delegate, but its properties can be observed.
        limit = [[StowpocketKeyPathObservation alloc] initWithObject:task
                                                             keyPath:@"countOfBytesReceived"
                                                             options:NSKeyValueObservingOptionNew
                                                             changed:[task](id) {
                                                                 if (task.countOfBytesReceived > maxAnswerSize)
                                                                     [task cancel];
                                                             }];
        [task resume];
    }

private:
    const std::shared_ptr<const bool> alive_ = std::make_shared<bool>(true);
};

class StandardUpdateFramework : public UpdateFramework {
public:
    StandardUpdateFramework()
        : controller_([[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                    updaterDelegate:nil
                                                                 userDriverDelegate:nil]),
          observation_([[StowpocketKeyPathObservation alloc]
              initWithObject:controller_.updater
                     keyPath:@"canCheckForUpdates"
                     options:NSKeyValueObservingOptionInitial | NSKeyValueObservingOptionNew
                     changed:[this](id value) {
                         changed_.emit([value isKindOfClass:NSNumber.class] &&
                                       static_cast<NSNumber*>(value).boolValue);
                     }]) {}

    [[nodiscard]] bool canCheckForUpdates() const override { return controller_.updater.canCheckForUpdates; }
    [[nodiscard]] Signal<bool>& canCheckForUpdatesChanged() override { return changed_; }
    void setAutomaticallyDownloadsUpdates(bool automatically) override {
        controller_.updater.automaticallyDownloadsUpdates = automatically;
    }
    void checkForUpdates() override { [controller_ checkForUpdates:nil]; }

private:
    Signal<bool> changed_;
    SPUStandardUpdaterController* const controller_;
    /// Nothing else retains it, so it ends with this object.
    StowpocketKeyPathObservation* const observation_;
};

}  // namespace

std::unique_ptr<FeedSession> makeMacFeedSession() {
    return std::make_unique<MacFeedSession>();
}

std::unique_ptr<UpdateFramework> startStandardUpdateFramework() {
    return std::make_unique<StandardUpdateFramework>();
}

}  // namespace stowpocket
