// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"

#import <dispatch/dispatch.h>

static void* const observationContext = const_cast<char*>("countOfBytesReceived");
static NSString* const observedKey = @"countOfBytesReceived";

/// Ends a task whose answer grows too long. A task with a completion handler tells no delegate what arrives, but its
/// properties can be observed.
@interface StowpocketAnswerLimit : NSObject
- (instancetype)initWithTask:(NSURLSessionTask*)task;
/// Called once, when the task has ended.
- (void)end;
@end

@implementation StowpocketAnswerLimit {
    NSURLSessionTask* _task;
}

- (instancetype)initWithTask:(NSURLSessionTask*)task {
    self = [super init];
    if (self != nil) {
        _task = task;
        [task addObserver:self
               forKeyPath:observedKey
                  options:NSKeyValueObservingOptionNew
                  context:observationContext];
    }
    return self;
}

- (void)end {
    [_task removeObserver:self forKeyPath:observedKey context:observationContext];
    _task = nil;
}

/// On whatever thread the session receives.
- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    if (context != observationContext)
        return [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
    NSURLSessionTask* const task = static_cast<NSURLSessionTask*>(object);
    if (task.countOfBytesReceived > stowpocket::maxAnswerSize)
        [task cancel];
}

@end

namespace stowpocket {
namespace {

std::optional<FeedResponse> feedResponseOf(NSData* data, NSURLResponse* response) {
    // What arrived may have been compressed.
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
        __block StowpocketAnswerLimit* limit = nil;  // set before the task begins
        NSURLSessionDataTask* const task = [NSURLSession.sharedSession
              dataTaskWithURL:address
            completionHandler:^(NSData* data, NSURLResponse* response, NSError* error) {
              [limit end];
              limit = nil;
              const auto answer = error == nil ? feedResponseOf(data, response) : std::nullopt;
              // Only the main thread can tell whether anybody still waits.
              dispatch_async(dispatch_get_main_queue(), ^{
                if (!alive.expired())
                    completion(answer);
              });
            }];
        limit = [[StowpocketAnswerLimit alloc] initWithTask:task];
        [task resume];
    }

private:
    const std::shared_ptr<const bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace

std::unique_ptr<FeedSession> makeMacFeedSession() {
    return std::make_unique<MacFeedSession>();
}

}  // namespace stowpocket
