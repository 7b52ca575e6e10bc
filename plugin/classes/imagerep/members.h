#pragma once

/// The functions of the class NSImageRepZNT, which serve its subclasses too. `representation` is
/// the host object.

#include "sdk/types.h"

namespace imagerep {

void NSImageRepConstructor(REALobjectStruct* representation);
void NSImageRepDestructor(REALobjectStruct* representation);
void construct_empty(REALobjectStruct* representation);
REALobjectStruct* size(REALobjectStruct* representation, REALword);
void setSize(REALobjectStruct* representation, REALword, REALobjectStruct* size);
void setSizeOfNumbers(REALobjectStruct* representation, double width, double height);
double width(REALobjectStruct* representation, REALword);
double height(REALobjectStruct* representation, REALword);
bool canInitWithData(REALmemoryBlockStruct* data);

} // namespace imagerep
