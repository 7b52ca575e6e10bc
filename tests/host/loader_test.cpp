#include "support/host.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Optional;

TEST(Plugins, RegisterTheirClassesWhenLoaded) {
    Host host{{.version = 2013.02, .plugins = {SAMPLE_PART}}};
    EXPECT_EQ(host.shared<int>("SamplePart", "ControlVersion"), 11);
    EXPECT_EQ(host.shared<double>("SamplePart", "HostVersion"), 2013.02);
    EXPECT_EQ(host.runtime().findClass("SamplePart")->plugin, SAMPLE_PART);
    EXPECT_THAT(host.runtime().plugins(), ElementsAre(SAMPLE_PART));
}

TEST(Plugins, OfAnOldHostHandOverTheOlderRecords) {
    Host host{{.version = 2009.05, .plugins = {SAMPLE_PART}}};
    EXPECT_EQ(host.shared<int>("SamplePart", "ControlVersion"), 9);
    const host::RawDefinition& raw = *host.runtime().findClass("SamplePart")->raw;
    EXPECT_EQ(raw.words.size(), 25u);
    EXPECT_EQ(raw.words[3], 16);
}

TEST(Plugins, ThatAreMissingAreAnError) {
    Host host{{.bare = true}};
    EXPECT_THAT(host.runtime().loadPlugin("/nowhere/part.so"),
                Optional(HasSubstr("/nowhere/part.so: cannot be loaded: ")));
    EXPECT_THAT(host.runtime().plugins(), testing::IsEmpty());
}

TEST(Plugins, ThatAreNoLibraryAreAnError) {
    const auto file = std::filesystem::temp_directory_path() / "no-library.so";
    std::ofstream(file) << "text";
    Host host{{.bare = true}};
    EXPECT_THAT(host.runtime().loadPlugin(file), Optional(HasSubstr("cannot be loaded")));
    std::filesystem::remove(file);
}

TEST(Plugins, WithoutAnEntryPointAreAnError) {
    Host host{{.bare = true}};
    EXPECT_EQ(host.runtime().loadPlugin(NO_ENTRY_PART),
              std::string(NO_ENTRY_PART) + ": is no plug-in: it has no REALPluginMain");
}

TEST(Plugins, WithoutAFolderAreNotSearchedForInTheSystem) {
    Host host{{.bare = true}};
    EXPECT_THAT(host.runtime().loadPlugin("libc.so.6"),
                Optional(HasSubstr("libc.so.6: cannot be loaded: ./libc.so.6")));
}

} // namespace
