// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"

#import <dispatch/dispatch.h>

#include <array>
#include <chrono>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

namespace stowpocket {
namespace {

class AppleEventDescriptor : public EventDescriptor {
public:
    explicit AppleEventDescriptor(NSAppleEventDescriptor* descriptor) : descriptor_(descriptor) {}

    [[nodiscard]] int numberOfItems() const override { return static_cast<int>(descriptor_.numberOfItems); }
    [[nodiscard]] std::unique_ptr<EventDescriptor> descriptorAtIndex(int index) const override {
        NSAppleEventDescriptor* const item = [descriptor_ descriptorAtIndex:index];
        return item == nil ? nullptr : std::make_unique<AppleEventDescriptor>(item);
    }
    [[nodiscard]] std::optional<std::string> stringValue() const override { return utf8(descriptor_.stringValue); }

private:
    NSAppleEventDescriptor* const descriptor_;
};

class AppleScript : public Script {
public:
    explicit AppleScript(NSAppleScript* script) : script_(script) {}

    [[nodiscard]] std::unique_ptr<EventDescriptor> execute() override {
        NSDictionary<NSString*, id>* errorInfo = nil;
        NSAppleEventDescriptor* const result = [script_ executeAndReturnError:&errorInfo];
        return errorInfo != nil ? nullptr : std::make_unique<AppleEventDescriptor>(result);
    }

private:
    NSAppleScript* const script_;
};

class AppleScriptService : public ScriptService {
public:
    [[nodiscard]] std::unique_ptr<Script> makeScript(const std::string& source) override {
        NSAppleScript* const script = [[NSAppleScript alloc] initWithSource:nsString(source)];
        return script == nil ? nullptr : std::make_unique<AppleScript>(script);
    }
};

using Clock = std::chrono::steady_clock;

/// Detaching a disk image that is in use may take a minute. A list of images has a few kilobytes.
constexpr std::chrono::minutes longestRun{2};
constexpr std::size_t largestOutput = std::size_t{4} * 1024 * 1024;

NSArray<NSString*>* argumentsOf(const std::vector<std::string>& arguments) {
    NSMutableArray<NSString*>* const list = [NSMutableArray arrayWithCapacity:arguments.size()];
    for (const std::string& argument : arguments)
        [list addObject:nsString(argument)];
    return list;
}

/// Returns a pipe that discards what is written to it. Without a reader a full pipe would block the child.
NSPipe* drainingPipe() {
    NSPipe* const pipe = [NSPipe pipe];
    pipe.fileHandleForReading.readabilityHandler = ^(NSFileHandle* handle) {
      if (handle.availableData.length == 0)
          handle.readabilityHandler = nil;
    };
    return pipe;
}

/// Reads until the other end is closed. Returns false when that takes too long, or when there is more output than an
/// honest child writes.
bool readAll(int file, Clock::time_point deadline, Bytes& output) {
    std::array<std::uint8_t, 65536> part{};
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd question{.fd = file, .events = POLLIN, .revents = 0};
        if (left.count() <= 0 || ::poll(&question, 1, static_cast<int>(left.count())) <= 0)
            return false;
        const ssize_t count = ::read(file, part.data(), part.size());
        if (count <= 0)
            return count == 0;
        output.insert(output.end(), part.begin(), part.begin() + count);
        if (output.size() > largestOutput)
            return false;
    }
}

bool endsBefore(Clock::time_point deadline, dispatch_semaphore_t ended) {
    const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(deadline - Clock::now());
    return dispatch_semaphore_wait(ended, dispatch_time(DISPATCH_TIME_NOW, left.count())) == 0;
}

class MacChildProcess : public ChildProcess {
public:
    [[nodiscard]] std::optional<Bytes> run(const std::string& executable,
                                           const std::vector<std::string>& arguments) override {
        @autoreleasepool {
            NSTask* const task = [[NSTask alloc] init];
            NSPipe* const output = [NSPipe pipe];
            const dispatch_semaphore_t ended = dispatch_semaphore_create(0);
            task.executableURL = [NSURL fileURLWithPath:nsString(executable) isDirectory:NO];
            task.arguments = argumentsOf(arguments);
            task.standardInput = NSFileHandle.fileHandleWithNullDevice;
            task.standardOutput = output;
            task.standardError = drainingPipe();
            task.terminationHandler = ^(NSTask*) {
              dispatch_semaphore_signal(ended);
            };
            const Clock::time_point deadline = Clock::now() + longestRun;
            if (![task launchAndReturnError:nil])
                return std::nullopt;
            Bytes bytes;
            if (readAll(output.fileHandleForReading.fileDescriptor, deadline, bytes) && endsBefore(deadline, ended))
                return bytes;
            // The child may ignore SIGTERM. A child of its own that still has the pipe is left alone.
            if (task.running)
                ::kill(task.processIdentifier, SIGKILL);
            return std::nullopt;
        }
    }
};

}  // namespace

std::unique_ptr<ScriptService> makeAppleScriptService() {
    return std::make_unique<AppleScriptService>();
}

std::unique_ptr<ChildProcess> makeMacChildProcess() {
    return std::make_unique<MacChildProcess>();
}

}  // namespace stowpocket
