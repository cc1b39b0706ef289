// SPDX-License-Identifier: MIT
// Lets what clang compiles with automatic reference counting run on the runtime of GCC, which Debian's GNUstep uses.
// clang makes such code for a newer runtime only. Three things differ: a class arrives with the sizes and offsets of
// its own variables alone, a method is looked up as a "slot", and reference counting consists of function calls.
#define _GNU_SOURCE
#include <Block.h>
#include <dlfcn.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

typedef struct Class_* Class;
typedef struct Object {
    Class isa;
} * id;
typedef const void* SEL;
typedef id (*Method)(id, SEL);

struct Variable {
    const char* name;
    const char* type;
    int offset;
};
struct Variables {
    int count;
    struct Variable list[];
};
struct Protocol {
    size_t version;
    const char* name;
    struct Protocols* adopted;
};
struct Protocols {
    struct Protocols* next;
    size_t count;
    struct Protocol* list[];
};
struct Class_ {
    Class isa;
    const char* superclass;  // its name until the runtime has loaded the class
    const char* name;
    long version;
    unsigned long flags;
    long size;
    struct Variables* variables;
    void* methods;
    void* table;
    Class subclasses;
    Class siblings;
    struct Protocols* protocols;
    void* unused;
    long abi;  // this and the next belong to the newer runtime
    int** offsets;
};
struct Category {
    const char* name;
    const char* className;
    void* methods[2];
    struct Protocols* protocols;
};
struct Symbols {
    unsigned long selectorCount;
    void* selectors;
    unsigned short classCount;
    unsigned short categoryCount;
    void* list[];
};
struct Module {
    unsigned long version;
    unsigned long size;
    const char* name;
    struct Symbols* symbols;
};
struct Super {
    id object;
    Class superclass;
};
struct Slot {
    Class owner;
    Class cachedFor;
    const char* types;
    int version;
    Method method;
};

extern Class objc_lookUpClass(const char* name);
extern size_t class_getInstanceSize(Class class);
extern Method objc_msg_lookup(id object, SEL selector);
extern Method objc_msg_lookup_super(struct Super* super, SEL selector);
extern SEL sel_registerName(const char* name);
extern Class objc_allocateClassPair(Class superclass, const char* name, size_t extra);
extern char class_addMethod(Class class, SEL selector, Method method, const char* types);
extern void objc_registerClassPair(Class class);
extern int __gxx_personality_v0(int version, int actions, unsigned long kind, void* exception, void* context);
extern void* _NSConcreteGlobalBlock[];
extern void* _NSConcreteStackBlock[];
extern void* _NSConcreteMallocBlock[];

// ---- loading

enum { oldModuleVersion = 8, oldModuleSize = 32, newProtocol = 3, oldProtocol = 2, flagsOfOldClasses = 0xf };

static void convertProtocols(struct Protocols* protocols) {
    for (; protocols != NULL; protocols = protocols->next) {
        for (size_t index = 0; index < protocols->count; ++index) {
            struct Protocol* const protocol = protocols->list[index];
            if (protocol == NULL || protocol->version != newProtocol)
                continue;
            protocol->version = oldProtocol;
            convertProtocols(protocol->adopted);
        }
    }
}

static void convertClass(Class class) {
    const Class superclass = objc_lookUpClass(class->superclass);
    if (superclass == NULL) {
        fprintf(stderr, "%s is loaded before its superclass %s\n", class->name, class->superclass);
        abort();
    }
    const size_t word = sizeof(void*);
    const int start = (int)((class_getInstanceSize(superclass) + word - 1) / word * word);
    if (class->size <= 0)
        class->size = start - class->size;
    for (int index = 0; class->variables != NULL && index < class->variables->count; ++index) {
        class->variables->list[index].offset += start;
        if (class->offsets != NULL)
            *class->offsets[index] = class->variables->list[index].offset;
    }
    class->flags &= flagsOfOldClasses;
    class->isa->flags &= flagsOfOldClasses;
    convertProtocols(class->protocols);
}

/// Called by every object file before main().
void __objc_exec_class(struct Module* module) {
    if (module->version > oldModuleVersion) {
        struct Symbols* const symbols = module->symbols;
        for (int index = 0; index < symbols->classCount; ++index)
            convertClass(symbols->list[index]);
        for (int index = 0; index < symbols->categoryCount; ++index)
            convertProtocols(((struct Category*)symbols->list[symbols->classCount + index])->protocols);
        module->version = oldModuleVersion;
        module->size = oldModuleSize;
    }
    ((void (*)(struct Module*))dlsym(RTLD_NEXT, "__objc_exec_class"))(module);
}

// ---- messages and exceptions

Class object_getClass(id object) {
    return object == NULL ? NULL : object->isa;
}

struct Slot* objc_msg_lookup_sender(id* receiver, SEL selector, id sender) {
    static __thread struct Slot slot;
    (void)sender;
    if (*receiver != NULL)
        (void)*(volatile Class*)&(*receiver)->isa;  // where a sanitizer sees an object that is gone
    slot.method = objc_msg_lookup(*receiver, selector);
    return &slot;
}

struct Slot* objc_slot_lookup_super(struct Super* super, SEL selector) {
    static __thread struct Slot slot;
    slot.method = objc_msg_lookup_super(super, selector);
    return &slot;
}

int __gnustep_objcxx_personality_v0(int version, int actions, unsigned long kind, void* exception, void* context) {
    return __gxx_personality_v0(version, actions, kind, exception, context);
}

// ---- reference counting

static id send(id object, const char* message) {
    const SEL selector = sel_registerName(message);
    return objc_msg_lookup(object, selector)(object, selector);
}

id objc_retain(id object) {
    return object == NULL ? NULL : send(object, "retain");
}
void objc_release(id object) {
    if (object != NULL)
        send(object, "release");
}
id objc_autorelease(id object) {
    return object == NULL ? NULL : send(object, "autorelease");
}
id objc_retainBlock(id block) {
    return block == NULL ? NULL : _Block_copy(block);
}
id objc_retainAutorelease(id object) {
    return objc_autorelease(objc_retain(object));
}
id objc_autoreleaseReturnValue(id object) {
    return objc_autorelease(object);
}
id objc_retainAutoreleaseReturnValue(id object) {
    return objc_retainAutorelease(object);
}
id objc_retainAutoreleasedReturnValue(id object) {
    return objc_retain(object);
}
void objc_storeStrong(id* place, id object) {
    const id old = *place;
    *place = objc_retain(object);
    objc_release(old);
}
void* objc_autoreleasePoolPush(void) {
    return send(send((id)objc_lookUpClass("NSAutoreleasePool"), "alloc"), "init");
}
void objc_autoreleasePoolPop(void* pool) {
    send(pool, "release");
}

// ---- blocks, which GNUstep keeps in its lists and pools, become objects

static id retainBlock(id block, SEL selector) {
    (void)selector;
    return _Block_copy(block);
}
static id releaseBlock(id block, SEL selector) {
    (void)selector;
    _Block_release(block);
    return NULL;
}

/// Called once, before the first block. The runtime of blocks leaves room for a class where every block points to.
void makeBlocksObjects(void) {
    const Class class = objc_allocateClassPair(objc_lookUpClass("NSObject"), "StandInBlock", 0);
    class_addMethod(class, sel_registerName("retain"), retainBlock, "@16@0:8");
    class_addMethod(class, sel_registerName("copy"), retainBlock, "@16@0:8");
    class_addMethod(class, sel_registerName("copyWithZone:"), retainBlock, "@24@0:8^v16");
    class_addMethod(class, sel_registerName("release"), releaseBlock, "v16@0:8");
    objc_registerClassPair(class);
    send((id)class, "self");  // the first message makes a class ready
    for (int place = 0; place < 3; ++place)
        memcpy((void**[]){_NSConcreteStackBlock, _NSConcreteMallocBlock, _NSConcreteGlobalBlock}[place], class,
               sizeof *class - 2 * sizeof(void*));
}
