#pragma once

/// The tables that a plug-in hands to PluginRegisterClass, in the newest layout (version 12), and
/// the shorter records of hosts with control version 9.

#include "sdk/types.h"

/// An accessor of this value makes the host read or write the instance data itself, at the offset
/// that the property's parameter gives.
inline constexpr REALword REALdirectAccess = -1;

/// Bits of the flag words. The last three are requests of the plug-in to itself, resolved before
/// the host sees them.
enum REALflags : REALword {
    REALconsoleSafe = 4,
    REALsystemFlag8 = 8,
    REALconstructorFlag80 = 0x80,
    REALpropertyFlags = 6,
    REALconsoleSafeOnNewHosts = 0x40000,
    REALsystemFlag8OnNewHosts = 0x80000,
    REALreservedRequest = 0x100000,
};

struct REALproperty {
    const char* group;
    const char* name;
    const char* type;
    REALword flags;
    void* getter; ///< value (object, parameter); REALdirectAccess for a field
    void* setter; ///< void (object, parameter, value); null when read-only
    REALword parameter;
    REALword reserved[5];
};

struct REALpropertyVersion9 {
    const char* group;
    const char* name;
    const char* type;
    REALword flags;
    void* getter;
    void* setter;
    REALword parameter;
    REALword reserved[3];
};

struct REALmethod {
    void* function; ///< (object, parameters...); shared methods have no object
    void* setter;   ///< for a method with an assigning value: (object, parameters..., value)
    const char* declaration;
    REALword flags;
    REALword attributeCount;
    void* attributes;
};

struct REALmethodVersion9 {
    void* function;
    void* setter;
    const char* declaration;
    REALword flags;
};

/// Its second word belongs to the host; in a table for an older host it holds the older record.
struct REALevent {
    const char* declaration;
    REALword systemUse;
    REALword attributeCount;
    void* attributes;
};

struct REALeventVersion9 {
    const char* declaration;
    REALword systemUse;
};

struct REALconstant {
    const char* declaration; ///< "Name=value"
    REALword reserved[4];
};

struct REALconstantVersion9 {
    const char* declaration;
    REALword reserved[2];
};

/// The last four words are absent in hosts of control version 9; properties, methods, events and
/// constants then point at the shorter records.
struct REALclassDefinition {
    REALword version;
    const char* name;
    const char* superclass;
    REALword instanceDataSize; ///< bytes
    REALword systemUse; ///< the host writes the offset of the class's data in an instance here
    void* constructor;  ///< void (object)
    void* destructor;   ///< void (object)
    void* properties;
    REALword propertyCount;
    void* methods;
    REALword methodCount;
    void* events;
    REALword eventCount;
    void* eventInstances;
    REALword eventInstanceCount;
    const char* interfaces;
    void* bindings;
    REALword bindingCount;
    void* constants;
    REALword constantCount;
    REALword flags;
    void* sharedProperties;
    REALword sharedPropertyCount;
    void* sharedMethods;
    REALword sharedMethodCount;
    REALword reserved[4];
};

/// Control version 9: the first 25 words.
struct REALclassDefinitionVersion9 {
    REALword words[25];
};

static_assert(sizeof(REALclassDefinition) == 29 * sizeof(REALword));
static_assert(sizeof(REALclassDefinitionVersion9) == 25 * sizeof(REALword));
static_assert(sizeof(REALproperty) == 12 * sizeof(REALword));
static_assert(sizeof(REALpropertyVersion9) == 10 * sizeof(REALword));
static_assert(sizeof(REALmethod) == 6 * sizeof(REALword));
static_assert(sizeof(REALmethodVersion9) == 4 * sizeof(REALword));
static_assert(sizeof(REALevent) == 4 * sizeof(REALword));
static_assert(sizeof(REALeventVersion9) == 2 * sizeof(REALword));
static_assert(sizeof(REALconstant) == 5 * sizeof(REALword));
static_assert(sizeof(REALconstantVersion9) == 3 * sizeof(REALword));

#if defined(__i386__)
// The offsets that 32-bit hosts rely on, field by field.
#define REAL_ASSERT_OFFSET(record, field, offset)                                                  \
    static_assert(offsetof(record, field) == (offset), #record "." #field " has moved")

REAL_ASSERT_OFFSET(REALstringData, data, 0);
REAL_ASSERT_OFFSET(REALstringData, length, 4);
REAL_ASSERT_OFFSET(REALstringData, encoding, 8);
static_assert(sizeof(REALstringData) == 12);

REAL_ASSERT_OFFSET(REALpictureDescription, type, 0);
REAL_ASSERT_OFFSET(REALpictureDescription, data, 4);
REAL_ASSERT_OFFSET(REALpictureDescription, width, 8);
REAL_ASSERT_OFFSET(REALpictureDescription, height, 12);

REAL_ASSERT_OFFSET(REALproperty, group, 0);
REAL_ASSERT_OFFSET(REALproperty, name, 4);
REAL_ASSERT_OFFSET(REALproperty, type, 8);
REAL_ASSERT_OFFSET(REALproperty, flags, 12);
REAL_ASSERT_OFFSET(REALproperty, getter, 16);
REAL_ASSERT_OFFSET(REALproperty, setter, 20);
REAL_ASSERT_OFFSET(REALproperty, parameter, 24);
REAL_ASSERT_OFFSET(REALproperty, reserved, 28);
REAL_ASSERT_OFFSET(REALpropertyVersion9, parameter, 24);
REAL_ASSERT_OFFSET(REALpropertyVersion9, reserved, 28);

REAL_ASSERT_OFFSET(REALmethod, function, 0);
REAL_ASSERT_OFFSET(REALmethod, setter, 4);
REAL_ASSERT_OFFSET(REALmethod, declaration, 8);
REAL_ASSERT_OFFSET(REALmethod, flags, 12);
REAL_ASSERT_OFFSET(REALmethod, attributeCount, 16);
REAL_ASSERT_OFFSET(REALmethod, attributes, 20);
REAL_ASSERT_OFFSET(REALmethodVersion9, declaration, 8);
REAL_ASSERT_OFFSET(REALmethodVersion9, flags, 12);

REAL_ASSERT_OFFSET(REALevent, declaration, 0);
REAL_ASSERT_OFFSET(REALevent, systemUse, 4);

REAL_ASSERT_OFFSET(REALconstant, declaration, 0);
REAL_ASSERT_OFFSET(REALconstant, reserved, 4);
REAL_ASSERT_OFFSET(REALconstantVersion9, reserved, 4);

REAL_ASSERT_OFFSET(REALclassDefinition, version, 0);
REAL_ASSERT_OFFSET(REALclassDefinition, name, 4);
REAL_ASSERT_OFFSET(REALclassDefinition, superclass, 8);
REAL_ASSERT_OFFSET(REALclassDefinition, instanceDataSize, 12);
REAL_ASSERT_OFFSET(REALclassDefinition, systemUse, 16);
REAL_ASSERT_OFFSET(REALclassDefinition, constructor, 20);
REAL_ASSERT_OFFSET(REALclassDefinition, destructor, 24);
REAL_ASSERT_OFFSET(REALclassDefinition, properties, 28);
REAL_ASSERT_OFFSET(REALclassDefinition, propertyCount, 32);
REAL_ASSERT_OFFSET(REALclassDefinition, methods, 36);
REAL_ASSERT_OFFSET(REALclassDefinition, methodCount, 40);
REAL_ASSERT_OFFSET(REALclassDefinition, events, 44);
REAL_ASSERT_OFFSET(REALclassDefinition, eventCount, 48);
REAL_ASSERT_OFFSET(REALclassDefinition, eventInstances, 52);
REAL_ASSERT_OFFSET(REALclassDefinition, eventInstanceCount, 56);
REAL_ASSERT_OFFSET(REALclassDefinition, interfaces, 60);
REAL_ASSERT_OFFSET(REALclassDefinition, bindings, 64);
REAL_ASSERT_OFFSET(REALclassDefinition, bindingCount, 68);
REAL_ASSERT_OFFSET(REALclassDefinition, constants, 72);
REAL_ASSERT_OFFSET(REALclassDefinition, constantCount, 76);
REAL_ASSERT_OFFSET(REALclassDefinition, flags, 80);
REAL_ASSERT_OFFSET(REALclassDefinition, sharedProperties, 84);
REAL_ASSERT_OFFSET(REALclassDefinition, sharedPropertyCount, 88);
REAL_ASSERT_OFFSET(REALclassDefinition, sharedMethods, 92);
REAL_ASSERT_OFFSET(REALclassDefinition, sharedMethodCount, 96);
REAL_ASSERT_OFFSET(REALclassDefinition, reserved, 100);

#undef REAL_ASSERT_OFFSET
#endif
