// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"

#import <dispatch/dispatch.h>

#include <atomic>

namespace stowpocket {
namespace {

/// Detaching a disk image that is in use may take a minute; a list of images takes some kilobytes.
constexpr std::int64_t longestRunSeconds = 120;
constexpr NSUInteger largestOutput = NSUInteger{4} * 1024 * 1024;
constexpr NSUInteger chunk = NSUInteger{64} * 1024;

NSArray<NSString*>* argumentsOf(const std::vector<std::string>& arguments) {
    NSMutableArray<NSString*>* const list = [NSMutableArray arrayWithCapacity:arguments.size()];
    for (const std::string& argument : arguments)
        [list addObject:nsString(argument)];
    return list;
}

/// A pipe whose other end may write without anybody caring. Unread, a full one would stop the program.
NSPipe* drainingPipe() {
    NSPipe* const pipe = [NSPipe pipe];
    pipe.fileHandleForReading.readabilityHandler = ^(NSFileHandle* handle) {
      if (handle.availableData.length == 0)
          handle.readabilityHandler = nil;
    };
    return pipe;
}

/// Reads to the end; true unless there was more than anybody honest writes.
bool readAll(NSFileHandle* handle, Bytes& output) {
    while (NSData* const data = [handle readDataUpToLength:chunk error:nil]) {
        if (data.length == 0)
            return true;
        const Bytes read = bytesOf(data);
        output.insert(output.end(), read.begin(), read.end());
        if (output.size() > largestOutput)
            return false;
    }
    return true;
}

class MacChildProcess : public ChildProcess {
public:
    [[nodiscard]] std::optional<Bytes> run(const std::string& executable,
                                           const std::vector<std::string>& arguments) override {
        @autoreleasepool {
            NSTask* const task = [[NSTask alloc] init];
            NSPipe* const output = [NSPipe pipe];
            task.executableURL = [NSURL fileURLWithPath:nsString(executable) isDirectory:NO];
            task.arguments = argumentsOf(arguments);
            task.standardInput = NSFileHandle.fileHandleWithNullDevice;
            task.standardOutput = output;
            task.standardError = drainingPipe();
            if (![task launchAndReturnError:nil])
                return std::nullopt;
            const auto isOverdue = std::make_shared<std::atomic<bool>>(false);
            terminateWhenOverdue(task, isOverdue);
            Bytes bytes;
            const bool isWithinLimits = readAll(output.fileHandleForReading, bytes);
            if (!isWithinLimits)
                [task terminate];
            [task waitUntilExit];
            return isWithinLimits && !*isOverdue ? std::optional(std::move(bytes)) : std::nullopt;
        }
    }

private:
    static void terminateWhenOverdue(NSTask* task, const std::shared_ptr<std::atomic<bool>>& isOverdue) {
        __weak NSTask* const waiting = task;
        dispatch_after(dispatch_time(DISPATCH_TIME_NOW, longestRunSeconds * std::int64_t{NSEC_PER_SEC}),
                       dispatch_get_global_queue(QOS_CLASS_UTILITY, 0), ^{
                         NSTask* const late = waiting;
                         if (!late.running)
                             return;
                         *isOverdue = true;
                         [late terminate];
                       });
    }
};

}  // namespace

std::unique_ptr<ChildProcess> makeMacChildProcess() {
    return std::make_unique<MacChildProcess>();
}

}  // namespace stowpocket
