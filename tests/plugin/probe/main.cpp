#include "plugin/entry/console_flags.h"
#include "sdk/registration.h"
#include "tests/plugin/probe/probe.h"

#include <initializer_list>

extern "C" __attribute__((visibility("default"))) void REALPluginMain(REALresolver resolver) {
    REALregistration::take_up_host(resolver);
    FixConsoleFlags(FlagProbe);
    for (REALclassDefinition* definition :
         {&StringProbe, &DataProbe, &URLProbe, &PictureProbe, &ValueProbe, &WrapperProbe,
          &FrameProbe, &ExceptionProbe, &FlagProbe})
        MyREALRegisterClass(*definition);
}
