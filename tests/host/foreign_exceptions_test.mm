#include "host/registered_class.h"
#include "support/host.h"

#import <Foundation/Foundation.h>

namespace {

void throwForeign() { @throw @"foreign"; }

void throwFromMethod(REALobjectStruct*) { throwForeign(); }

TEST(ForeignExceptions, PassThroughTheHostUnchanged) {
    ClassTables tables{{.name = "Throwing"},
                       {},
                       {REALtables::method("Throw", throwFromMethod)},
                       {REALtables::shared_method("ThrowShared", throwForeign)}};
    Host host{{.bare = true}};
    tables.registerAs();
    const host::ObjectRef object = host.create("Throwing");
    int caught = 0;
    for (const bool isShared : {true, false}) {
        @try {
            if (isShared)
                host.shared("Throwing", "ThrowShared");
            else
                host.call(object, "Throw");
        } @catch (NSString* text) {
            caught += [text isEqualToString:@"foreign"];
        }
    }
    EXPECT_EQ(caught, 2);
    EXPECT_EQ(host.references(object), 1) << "the host's own references were given back";
    EXPECT_EQ(host.raised(), "");
}

} // namespace
