#include "plugin/classes/definitions.h"
#include "plugin/entry/console_flags.h"
#include "sdk/registration.h"

#include <initializer_list>
#include <pthread.h>

// What this part is, for whoever looks at a process with many of them.
const char* gpartname = nullptr;
const char* gpluginname = nullptr;
unsigned char gplugin = 0;

/// The host calls this once, before anything else; `resolver` maps the name of a host service to
/// its address, or to null.
extern "C" __attribute__((visibility("default"))) void REALPluginMain(REALresolver resolver) {
    REALregistration::take_up_host(resolver);
    gpartname = "NSImage";
    gplugin = 1;
    gpluginname = "Cocoa";
    // Keeps the thread library linked in; the result is of no use.
    static_cast<void>(pthread_self());

    for (REALclassDefinition* definition :
         {&NSImageClass, &NSImageRepClass, &NSBitmapImageRepClass})
        FixConsoleFlags(*definition);

    // A base class comes before its subclasses.
    for (REALclassDefinition* definition :
         {&NSImageClass, &NSImageRepClass, &NSPDFImageRepClass, &NSEPSImageRepClass,
          &NSPICTImageRepClass, &NSBitmapImageRepClass})
        MyREALRegisterClass(*definition);
}
