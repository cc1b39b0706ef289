// SPDX-License-Identifier: MIT
#import "platform/macos/KeyPathObservation.h"

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
