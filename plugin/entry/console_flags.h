#pragma once

#include "sdk/records.h"

/// Resolves the flags by which a class, its methods and its properties ask to be console-safe on
/// newer hosts only (from 2010.029 on), and takes the request bits out. Changes the definition and
/// its lists in place, so it runs once for each class, before the registration.
void FixConsoleFlags(REALclassDefinition& definition);
