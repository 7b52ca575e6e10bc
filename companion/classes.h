#pragma once

/// The classes that this part registers.

#include "sdk/records.h"

namespace base_part {

// Values, kept in the instance data itself for other parts to read and write.
extern REALclassDefinition sizeClass;        ///< NSSizeZNT: width, height, as 32-bit floats
extern REALclassDefinition pointClass;       ///< NSPointZNT: x, y, as 32-bit floats
extern REALclassDefinition rectClass;        ///< NSRectZNT: x, y, width, height, as 32-bit floats
extern REALclassDefinition rangeClass;       ///< NSRangeZNT: location, length, as unsigned 32 bits
extern REALclassDefinition qtTimeClass;      ///< QTKitTimeZNT: a QTTime
extern REALclassDefinition qtTimeRangeClass; ///< QTKitTimeRangeZNT: a QTTimeRange
extern REALclassDefinition cmTimeClass;      ///< CMTimeZNT: a CMTime
extern REALclassDefinition cmTimeRangeClass; ///< CMTimeRangeZNT: a CMTimeRange
extern REALclassDefinition cmTimeMappingClass; ///< CMTimeMappingZNT: a CMTimeMapping

// Wrappers: the first word of the instance data holds the retained object.
extern REALclassDefinition colorSpaceClass; ///< NSColorSpaceZNT
extern REALclassDefinition colorClass;      ///< NSColorZNT
extern REALclassDefinition imageClass;      ///< CGImageZNT

// Subclasses of NSObjectZNT, which wraps whatever has no class of its own.
extern REALclassDefinition objectClass;           ///< NSObjectZNT
extern REALclassDefinition attributedStringClass; ///< NSAttributedStringZNT
extern REALclassDefinition characterSetClass;     ///< NSCharacterSetZNT
extern REALclassDefinition errorClass;            ///< NSErrorZNT
extern REALclassDefinition localeClass;           ///< NSLocaleZNT
extern REALclassDefinition timeZoneClass;         ///< NSTimeZoneZNT

// Subclasses of CFObjectZNT. Their instance data tell other parts that they are laid out so: the
// first word holds the retained object, the third the tag.
extern REALclassDefinition cfObjectClass;     ///< CFObjectZNT
extern REALclassDefinition cfErrorClass;      ///< CFErrorZNT
extern REALclassDefinition cfUUIDClass;       ///< CFUUIDZNT
extern REALclassDefinition cgColorClass;      ///< CGColorZNT
extern REALclassDefinition cgColorSpaceClass; ///< CGColorSpaceZNT

} // namespace base_part
