#pragma once

/// A plug-in for tests, built from the product's own entry and bridge sources: it shows the host
/// what no member of the product's classes shows by itself. Each class is one file.

#include "sdk/records.h"

extern REALclassDefinition StringProbe;
extern REALclassDefinition DataProbe;
extern REALclassDefinition URLProbe;
extern REALclassDefinition PictureProbe;
extern REALclassDefinition ValueProbe;
extern REALclassDefinition WrapperProbe;
extern REALclassDefinition FrameProbe;
extern REALclassDefinition ExceptionProbe;
extern REALclassDefinition FlagProbe;
