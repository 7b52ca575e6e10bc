#pragma once

/// Times as Cocoa values. The family's base part makes and reads them: it adds the selectors to
/// NSValue, and registers the host classes, which keep the time itself at the start of their data.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

// An autoreleased value of the time in a host object; nil without the base part.
NSValue* NSValueOfQTTime(REALobjectStruct* time);
NSValue* NSValueOfQTTimeRange(REALobjectStruct* range);
NSValue* NSValueOfCMTime(REALobjectStruct* time);
NSValue* NSValueOfCMTimeRange(REALobjectStruct* range);
NSValue* NSValueOfCMTimeMapping(REALobjectStruct* mapping);

// A new host object for the caller, made by the base part; null without it.
REALobjectStruct* NewQTTime(NSValue* value);
REALobjectStruct* NewQTTimeRange(NSValue* value);
REALobjectStruct* NewCMTime(NSValue* value);
REALobjectStruct* NewCMTimeRange(NSValue* value);
REALobjectStruct* NewCMTimeMapping(NSValue* value);
