/// A plug-in that registers nothing, for programs that need none.

#include "sdk/services.h"

extern "C" __attribute__((visibility("default"))) void REALPluginMain(REALresolver) {}
