// SPDX-License-Identifier: MIT
// What GNUstep's Foundation lacks, by means of what it has. Only as much as the adapters call.
#include "gnustep/StandIns.h"
#include "gnustep/Toolkit.h"

#import <CoreFoundation/CoreFoundation.h>
#import <dispatch/dispatch.h>
#import <Foundation/NSDebug.h>
#import <objc/runtime.h>
#import <Sparkle/Sparkle.h>

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <sstream>
#include <sys/mount.h>
#include <sys/stat.h>
#include <utility>

namespace stowpocket::standIn {

std::map<std::string, bool> mounts;
std::map<std::string, std::string> scripts;
SPUUpdater* __unsafe_unretained updater;

static std::mutex callsMutex;
static std::vector<std::string> calls;

void record(std::string call) {
    const std::lock_guard lock(callsMutex);
    calls.push_back(std::move(call));
}

std::vector<std::string> takeCalls() {
    const std::lock_guard lock(callsMutex);
    return std::exchange(calls, {});
}

std::function<void()> otherLoop;

bool comesTrue(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        if (otherLoop)
            otherLoop();
        @autoreleasepool {
            NSDate* const soon = [NSDate dateWithTimeIntervalSinceNow:0.002];
            [NSRunLoop.currentRunLoop runMode:NSDefaultRunLoopMode beforeDate:soon];
            while (NSEvent* const event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                                             untilDate:nil
                                                                inMode:NSDefaultRunLoopMode
                                                               dequeue:YES])
                [NSApp sendEvent:event];
        }
    }
    return true;
}

std::map<std::string, int> living() {
    std::map<std::string, int> counts;
    for (const Class* each = GSDebugAllocationClassList(); *each != Nil; ++each)
        counts[class_getName(*each)] = GSDebugAllocationCount(*each);
    return counts;
}

}  // namespace stowpocket::standIn

using namespace stowpocket;

// ---- CoreFoundation and the C library

static constexpr CFTypeID numberType = 1;
static constexpr CFTypeID booleanType = 2;

CFTypeID CFBooleanGetTypeID() {
    return booleanType;
}
CFTypeID CFGetTypeID(CFTypeRef object) {
    return [(__bridge id)object isKindOfClass:NSClassFromString(@"NSBoolNumber")] ? booleanType : numberType;
}
Boolean CFNumberIsFloatType(CFNumberRef number) {
    const char type = *((__bridge NSNumber*)number).objCType;
    return type == *@encode(float) || type == *@encode(double);
}

int getfsstat(struct statfs* buffer, int size, int) {
    const int room = size / static_cast<int>(sizeof *buffer);
    int count = 0;
    for (const auto& [point, isLocal] : standIn::mounts) {
        if (buffer != nullptr && count < room) {
            buffer[count].f_flags = isLocal ? MNT_LOCAL : 0;
            std::snprintf(buffer[count].f_mntonname, sizeof buffer->f_mntonname, "%s", point.c_str());
        }
        ++count;
    }
    return buffer == nullptr ? count : std::min(count, room);
}

// ---- queues

@interface StandInWork : NSObject
@property(copy) dispatch_block_t block;
@end
@implementation StandInWork {
    dispatch_block_t _block;
}
- (dispatch_block_t)block {
    return _block;
}
- (void)setBlock:(dispatch_block_t)block {
    _block = block;
}
- (void)run {
    @autoreleasepool {
        _block();
        _block = nil;
    }
}
@end

dispatch_queue_t dispatch_get_main_queue() {
    return nil;
}
dispatch_queue_t dispatch_get_global_queue(intptr_t, uintptr_t) {
    static id const queue = [[NSObject alloc] init];
    return queue;
}
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    if (queue != nil)
        return standIn::onAnotherThread(block);
    StandInWork* const work = [[StandInWork alloc] init];
    work.block = block;
    [work performSelectorOnMainThread:@selector(run) withObject:nil waitUntilDone:NO];
}
void standIn::onAnotherThread(void (^block)(void)) {
    StandInWork* const work = [[StandInWork alloc] init];
    work.block = block;
    [NSThread detachNewThreadSelector:@selector(run) toTarget:work withObject:nil];
}

/// GNUstep's own main queue runs on threads of its own.
@interface StandInMainQueue : NSOperationQueue
@end
@implementation StandInMainQueue
+ (NSOperationQueue*)standInMainQueue {
    static StandInMainQueue* const queue = [[StandInMainQueue alloc] init];
    return queue;
}
- (void)addOperation:(NSOperation*)operation {
    [operation performSelectorOnMainThread:@selector(start) withObject:nil waitUntilDone:NO];
}
- (void)addOperationWithBlock:(void (^)(void))block {
    [self addOperation:[NSBlockOperation blockOperationWithBlock:block]];
}
@end

extern "C" void makeBlocksObjects(void);

void standIn::begin() {
    GSDebugAllocationActive(YES);
    makeBlocksObjects();
    method_exchangeImplementations(class_getClassMethod(NSOperationQueue.class, @selector(mainQueue)),
                                   class_getClassMethod(StandInMainQueue.class, @selector(standInMainQueue)));
}

@interface StandInSemaphore : NSObject <OS_dispatch_semaphore>
@end
@implementation StandInSemaphore {
@public
    std::mutex mutex;
    std::condition_variable changed;
    intptr_t value;
}
@end

dispatch_semaphore_t dispatch_semaphore_create(intptr_t value) {
    StandInSemaphore* const semaphore = [[StandInSemaphore alloc] init];
    semaphore->value = value;
    return semaphore;
}
intptr_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore) {
    StandInSemaphore* const signalled = static_cast<StandInSemaphore*>(semaphore);
    const std::lock_guard lock(signalled->mutex);
    ++signalled->value;
    signalled->changed.notify_one();
    return 0;
}
intptr_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t timeout) {
    StandInSemaphore* const awaited = static_cast<StandInSemaphore*>(semaphore);
    std::unique_lock lock(awaited->mutex);
    const std::chrono::nanoseconds most(static_cast<std::int64_t>(timeout));
    if (!awaited->changed.wait_for(lock, most, [&] { return awaited->value > 0; }))
        return 1;
    --awaited->value;
    return 0;
}
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta) {
    return when + static_cast<dispatch_time_t>(delta);
}

// ---- Foundation

@implementation NSObject (Later)
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context {
    [self removeObserver:observer forKeyPath:keyPath];
}
@end

/// A bookmark holds the number of the file and its path, one after the other, as text.
static std::optional<ino_t> fileNumberAt(const std::string& path) {
    struct stat found {};
    return lstat(path.c_str(), &found) == 0 ? std::optional(found.st_ino) : std::nullopt;
}

/// The right to use a file belongs to the very object that was resolved.
@interface StandInResolvedURL : NSURL
@end
@implementation StandInResolvedURL
@end
static std::string scopeOf(NSURL* url) {
    return ([url isKindOfClass:StandInResolvedURL.class] ? "resolved " : "") +
           std::string(url.lastPathComponent.UTF8String);
}

@implementation NSURL (Later)
+ (NSURL*)fileURLWithFileSystemRepresentation:(const char*)path
                                  isDirectory:(BOOL)isDirectory
                                relativeToURL:(NSURL*)base {
    std::string text = "file://";
    for (const char* at = path; *at != 0; ++at) {
        std::array<char, 4> escaped{};
        std::snprintf(escaped.data(), escaped.size(), "%%%02X", static_cast<unsigned char>(*at));
        text += std::isalnum(static_cast<unsigned char>(*at)) || std::strchr("/-._~", *at) ? std::string(1, *at)
                                                                                           : escaped.data();
    }
    if (isDirectory && !text.ends_with('/'))
        text += '/';
    return [[self alloc] initWithString:[NSString stringWithUTF8String:text.c_str()]];
}

- (NSData*)bookmarkDataWithOptions:(NSUInteger)options
    includingResourceValuesForKeys:(NSArray*)keys
                     relativeToURL:(NSURL*)base
                             error:(NSError**)error {
    const std::string path = self.path.fileSystemRepresentation;
    const std::optional<ino_t> number = fileNumberAt(path);
    const std::string text = number ? std::to_string(*number) + ' ' + path : "";
    return number ? [NSData dataWithBytes:text.data() length:text.size()] : nil;
}

+ (instancetype)URLByResolvingBookmarkData:(NSData*)data
                                   options:(NSUInteger)options
                             relativeToURL:(NSURL*)base
                       bookmarkDataIsStale:(BOOL*)isStale
                                     error:(NSError**)error {
    std::istringstream text(std::string(static_cast<const char*>(data.bytes), data.length));
    ino_t number = 0;
    std::string path;
    if (!(text >> number) || !std::getline(text >> std::ws, path))
        return nil;
    const std::optional<ino_t> there = fileNumberAt(path);
    *isStale = there != number;
    if (*isStale) {
        for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(path).parent_path())) {
            if (fileNumberAt(entry.path()) == number)
                return [StandInResolvedURL fileURLWithFileSystemRepresentation:entry.path().c_str()
                                                                   isDirectory:NO
                                                                 relativeToURL:nil];
        }
    }
    return there ? [StandInResolvedURL fileURLWithFileSystemRepresentation:path.c_str()
                                                               isDirectory:NO
                                                             relativeToURL:nil]
                 : nil;
}

- (BOOL)startAccessingSecurityScopedResource {
    standIn::record("begin " + scopeOf(self));
    return YES;
}
- (void)stopAccessingSecurityScopedResource {
    standIn::record("end " + scopeOf(self));
}
@end

@implementation NSFileManager (Later)
- (NSURL*)homeDirectoryForCurrentUser {
    return [NSURL fileURLWithPath:NSHomeDirectory() isDirectory:YES];
}
- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory inDomains:(NSSearchPathDomainMask)domains {
    NSString* const path = NSSearchPathForDirectoriesInDomains(directory, domains, YES).firstObject;
    return path == nil ? @[] : @[ [NSURL fileURLWithPath:path isDirectory:YES] ];
}
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)result error:(NSError**)error {
    NSString* const trash = [NSHomeDirectory() stringByAppendingPathComponent:@".Trash"];
    [self createDirectoryAtPath:trash withIntermediateDirectories:YES attributes:nil error:nil];
    NSString* const place = [trash stringByAppendingPathComponent:url.path.lastPathComponent];
    return [self moveItemAtPath:url.path toPath:place error:nil];
}
@end

static std::recursive_mutex handlersMutex;

/// The blocks of all file handles and tasks. A place stays once it has been asked for.
template <class Object>
static void (^__strong& handlerOf(Object* object))(Object*) {
    static std::map<const void*, void (^)(Object*)> handlers;
    return handlers[(__bridge void*)object];
}

@implementation NSFileHandle (Later)
- (void (^)(NSFileHandle*))readabilityHandler {
    const std::lock_guard lock(handlersMutex);
    return handlerOf(self);
}
- (void)setReadabilityHandler:(void (^)(NSFileHandle*))handler {
    const std::lock_guard lock(handlersMutex);
    handlerOf(self) = handler;
    if (handler != nil)
        [NSThread detachNewThreadSelector:@selector(callReadabilityHandler) toTarget:self withObject:nil];
}
- (void)callReadabilityHandler {
    for (;;) {
        @autoreleasepool {
            const auto handler = self.readabilityHandler;
            if (handler == nil)
                return;
            handler(self);
        }
    }
}
@end

@implementation NSTask (Later)
- (NSURL*)executableURL {
    return [NSURL fileURLWithPath:self.launchPath];
}
- (void)setExecutableURL:(NSURL*)url {
    self.launchPath = url.path;
}
- (void (^)(NSTask*))terminationHandler {
    const std::lock_guard lock(handlersMutex);
    return handlerOf(self);
}
- (void)setTerminationHandler:(void (^)(NSTask*))handler {
    const std::lock_guard lock(handlersMutex);
    handlerOf(self) = handler;
}
- (BOOL)launchAndReturnError:(NSError**)error {
    if (![NSFileManager.defaultManager isExecutableFileAtPath:self.launchPath])
        return NO;
    [self launch];
    [NSThread detachNewThreadSelector:@selector(callTerminationHandler) toTarget:self withObject:nil];
    return YES;
}
- (void)callTerminationHandler {
    @autoreleasepool {
        while (self.running)
            [NSThread sleepForTimeInterval:0.005];
        if (const auto handler = self.terminationHandler)
            handler(self);
        self.terminationHandler = nil;
    }
}
@end

/// Loads files, on a thread of its own and bit by bit, and answers as a web server would. Keeps its handler as long
/// as it lives.
@implementation NSURLSessionDataTask {
    NSURL* _url;
    void (^_completion)(NSData*, NSURLResponse*, NSError*);
    NSMutableData* _data;
    std::atomic<bool> _isCancelled;
}
- (instancetype)initWithURL:(NSURL*)url completion:(void (^)(NSData*, NSURLResponse*, NSError*))completion {
    self = [super init];
    _url = url;
    _completion = completion;
    _data = [NSMutableData data];
    return self;
}
- (int64_t)countOfBytesReceived {
    return static_cast<int64_t>(_data.length);
}
- (void)resume {
    [NSThread detachNewThreadSelector:@selector(load) toTarget:self withObject:nil];
}
- (void)cancel {
    if (!_isCancelled.exchange(true))
        standIn::record("request cancelled");
}
- (void)load {
    @autoreleasepool {
        std::ifstream file(_url.path.fileSystemRepresentation);
        const bool exists = file.good();
        std::array<char, 65536> part{};
        while (!_isCancelled && file.read(part.data(), part.size()).gcount() > 0) {
            [self willChangeValueForKey:@"countOfBytesReceived"];
            [_data appendBytes:part.data() length:static_cast<NSUInteger>(file.gcount())];
            [self didChangeValueForKey:@"countOfBytesReceived"];
        }
        NSURLResponse* const response = [[NSHTTPURLResponse alloc] initWithURL:_url
                                                                    statusCode:exists ? 200 : 404
                                                                   HTTPVersion:@"HTTP/1.1"
                                                                  headerFields:@{}];
        if (_isCancelled)
            _completion(nil, nil, [NSError errorWithDomain:NSURLErrorDomain code:NSURLErrorCancelled userInfo:nil]);
        else
            _completion(_data, response, nil);
    }
}
@end
@implementation NSURLSession
+ (NSURLSession*)sharedSession {
    static NSURLSession* const session = [[NSURLSession alloc] init];
    return session;
}
- (NSURLSessionDataTask*)dataTaskWithURL:(NSURL*)url
                       completionHandler:(void (^)(NSData*, NSURLResponse*, NSError*))completionHandler {
    return [[NSURLSessionDataTask alloc] initWithURL:url completion:completionHandler];
}
@end

@implementation NSAppleEventDescriptor {
    std::string _text;
}
- (instancetype)initWithText:(std::string)text {
    self = [super init];
    _text = std::move(text);
    return self;
}
- (NSInteger)numberOfItems {
    return std::ranges::count(_text, '\n');
}
- (NSString*)stringValue {
    return [NSString stringWithUTF8String:_text.c_str()];
}
/// Counted from one.
- (NSAppleEventDescriptor*)descriptorAtIndex:(NSInteger)index {
    std::istringstream text(_text);
    std::string line;
    for (NSInteger number = 0; number < index; ++number)
        std::getline(text, line);
    return index < 1 || !text ? nil : [[NSAppleEventDescriptor alloc] initWithText:line];
}
@end
@implementation NSAppleScript {
    std::string _source;
}
- (instancetype)initWithSource:(NSString*)source {
    self = [super init];
    _source = source.UTF8String;
    return self;
}
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>**)error {
    const auto result = standIn::scripts.find(_source);
    if (result != standIn::scripts.end())
        return [[NSAppleEventDescriptor alloc] initWithText:result->second];
    *error = @{};
    return nil;
}
@end

// ---- the update framework

@implementation SPUUpdater
@synthesize canCheckForUpdates = _canCheckForUpdates;
@synthesize automaticallyDownloadsUpdates = _automaticallyDownloadsUpdates;
- (void)setCanCheckForUpdates:(BOOL)can {
    _canCheckForUpdates = can;
}
@end
@implementation SPUStandardUpdaterController
@synthesize updater = _updater;
- (instancetype)initWithStartingUpdater:(BOOL)start updaterDelegate:(id)delegate userDriverDelegate:(id)driver {
    self = [super init];
    _updater = [[SPUUpdater alloc] init];
    standIn::updater = _updater;
    standIn::record(start ? "updater started" : "updater made");
    return self;
}
- (void)dealloc {
    standIn::record("updater gone");
}
- (void)checkForUpdates:(id)sender {
    standIn::record("check for updates");
}
@end
