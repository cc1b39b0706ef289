// SPDX-License-Identifier: MIT
// Declarations for the type check; see ../README.md.
#pragma once

#include <stdint.h>

typedef int32_t OSStatus;
typedef uint32_t OSType, UInt32, OptionBits;
typedef unsigned long ItemCount, ByteCount;
typedef OSType EventParamName, EventParamType;
typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef struct OpaqueEventHotKeyRef* EventHotKeyRef;
struct EventHotKeyID {
    OSType signature;
    UInt32 id;
};
struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};
typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef, EventRef, void*);
typedef EventHandlerProcPtr EventHandlerUPP;
enum : OSStatus { noErr = 0, eventNotHandledErr = -9874 };
enum : OSType {
    kEventClassKeyboard = 0x6b657962,      // keyb
    kEventParamDirectObject = 0x2d2d2d2d,  // ----
    typeEventHotKeyID = 0x686b6964,        // hkid
};
enum : OSType {
    kCoreEventClass = 0x61657674,       // aevt
    kAEReopenApplication = 0x72617070,  // rapp
};
enum : UInt32 {
    kEventHotKeyPressed = 5,
    cmdKey = 1 << 8,
    shiftKey = 1 << 9,
    optionKey = 1 << 11,
    controlKey = 1 << 12
};

extern "C" {
EventTargetRef GetApplicationEventTarget(void);
OSStatus InstallEventHandler(EventTargetRef, EventHandlerUPP, ItemCount, const EventTypeSpec*, void*,
                             EventHandlerRef*);
OSStatus RegisterEventHotKey(UInt32, UInt32, EventHotKeyID, EventTargetRef, OptionBits, EventHotKeyRef*);
OSStatus UnregisterEventHotKey(EventHotKeyRef);
OSStatus GetEventParameter(EventRef, EventParamName, EventParamType, EventParamType*, ByteCount, ByteCount*, void*);
}
