#pragma once

/// The functions of the class NSImageRepZNT, which serve its subclasses too. `representation` is
/// the host object.

#include "sdk/types.h"

void NSImageRepConstructor(REALobjectStruct* representation);
void NSImageRepDestructor(REALobjectStruct* representation);
void construct_representation(REALobjectStruct* representation);
REALobjectStruct* representation_size(REALobjectStruct* representation, REALword);
void set_representation_size(REALobjectStruct* representation, REALword, REALobjectStruct* size);
void set_representation_size_of_numbers(REALobjectStruct* representation, double width,
                                        double height);
double representation_width(REALobjectStruct* representation, REALword);
double representation_height(REALobjectStruct* representation, REALword);
bool canInitWithData(REALmemoryBlockStruct* data);
