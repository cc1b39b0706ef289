// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"

namespace stowpocket {
namespace {

FeedResponse feedResponseOf(NSData* data, NSURLResponse* response) {
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
        NSURLSessionDataTask* const task = [NSURLSession.sharedSession
              dataTaskWithURL:address
            completionHandler:^(NSData* data, NSURLResponse* response, NSError* error) {
              completion(error == nil ? std::optional(feedResponseOf(data, response)) : std::nullopt);
            }];
        [task resume];
    }
};

}  // namespace

std::unique_ptr<FeedSession> makeMacFeedSession() {
    return std::make_unique<MacFeedSession>();
}

}  // namespace stowpocket
