#pragma once

/// Times as Cocoa values, for all parts of the family.

#include "sdk/types.h"

#include <CoreMedia/CMTimeRange.h>
#include <QTKit/QTTimeRange.h>

#include <Cocoa/Cocoa.h>

/// The makers answer autoreleased values, whose objCType is, on every word size:
///
///     QTTime         {?=qll}
///     QTTimeRange    {?={?=qll}{?=qll}}
///     CMTime         {?=qiIq}
///     CMTimeRange    {?={?=qiIq}{?=qiIq}}
///     CMTimeMapping  {?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}
///
/// The readers answer a new object of the host class of that time, with one reference for the
/// caller; null for a value of another type, and when the host makes no object.
@interface NSValue (TimesZNT)

+ (NSValue*)valueWithQTTimeZNT:(QTTime)time;
+ (NSValue*)valueWithQTTimeRangeZNT:(QTTimeRange)range;
+ (NSValue*)valueWithCMTimeZNT:(CMTime)time;
+ (NSValue*)valueWithCMTimeRangeZNT:(CMTimeRange)range;
+ (NSValue*)valueWithCMTimeMappingZNT:(CMTimeMapping)mapping;

- (REALobjectStruct*)QTTimeValueZNT;
- (REALobjectStruct*)QTTimeRangeValueZNT;
- (REALobjectStruct*)CMTimeValueZNT;
- (REALobjectStruct*)CMTimeRangeValueZNT;
- (REALobjectStruct*)CMTimeMappingValueZNT;

@end
