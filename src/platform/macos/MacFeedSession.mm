// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#import "platform/macos/KeyPathObservation.h"
#include "platform/macos/MacSystem.h"

#import <dispatch/dispatch.h>

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
        __block StowpocketKeyPathObservation* limit = nil;  // set before the task begins
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
        // A task with a completion handler tells no delegate what arrives, but its properties can be observed.
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

}  // namespace

std::unique_ptr<FeedSession> makeMacFeedSession() {
    return std::make_unique<MacFeedSession>();
}

}  // namespace stowpocket
