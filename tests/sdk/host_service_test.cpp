#include "sdk/host_service.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

namespace {

int lookups = 0;
bool offered = false;

double version() { return 2013.5; }
std::uint32_t encoding(REALstringStruct* string) { return string->encoding; }

void* resolve(const char* name) {
    ++lookups;
    if (!offered) return nullptr;
    if (!std::strcmp(name, "REALGetRBVersion")) return reinterpret_cast<void*>(&version);
    if (!std::strcmp(name, "REALGetStringEncoding")) return reinterpret_cast<void*>(&encoding);
    return nullptr;
}

class HostService : public testing::Test {
protected:
    HostService() {
        lookups = 0;
        offered = false;
        gResolver = nullptr;
    }
};

TEST_F(HostService, GivesTheNeutralValueBeforeThereIsAResolver) {
    REALhostService service(REALservices::GetRBVersion);
    EXPECT_EQ(service(), 0.0);
}

TEST_F(HostService, IsLookedUpAgainOnEveryUseWhileMissing) {
    gResolver = resolve;
    REALhostService service(REALservices::GetRBVersion);
    EXPECT_EQ(service(), 0.0);
    EXPECT_EQ(service(), 0.0);
    EXPECT_EQ(lookups, 2);
    offered = true;
    EXPECT_EQ(service(), 2013.5);
    EXPECT_EQ(lookups, 3);
}

TEST_F(HostService, IsLookedUpOnceWhenThere) {
    gResolver = resolve;
    offered = true;
    REALhostService service(REALservices::GetStringEncoding);
    REALstringStruct string{1, nullptr, 0, 0, REALtextEncodingUTF8};
    EXPECT_EQ(service(&string), REALtextEncodingUTF8);
    offered = false;
    EXPECT_EQ(service(&string), REALtextEncodingUTF8);
    EXPECT_EQ(lookups, 1);
}

TEST_F(HostService, HasANameOfItsOwnInTheList) {
    std::set<std::string> names;
#define COUNT_NAME(identifier, text, result, parameters)                                           \
    EXPECT_TRUE(names.insert(REALservices::identifier.name).second) << text;
    REAL_HOST_SERVICES(COUNT_NAME)
#undef COUNT_NAME
    EXPECT_EQ(names.size(), 66U);
}

} // namespace
