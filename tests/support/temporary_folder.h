#pragma once

/// A folder of a test's own.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

/// Goes with the object, and with it all that is in it. Its path is canonical.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern =
            std::filesystem::canonical(std::filesystem::temp_directory_path()) / "test-XXXXXX";
        if (mkdtemp(pattern.data()))
            path_ = pattern;
        else
            ADD_FAILURE() << "no folder can be made at " << pattern;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path() const { return path_; }
    /// Of an item in the folder, which need not be there.
    std::string path(std::string_view name) const { return path_ / name; }

    /// Writes a file and returns its path.
    std::string file(std::string_view name, std::string_view content = "content") const {
        std::ofstream file(path(name), std::ios::binary);
        file << content << std::flush;
        EXPECT_TRUE(file.good()) << path(name);
        return path(name);
    }
    /// Makes a folder in this one and returns its path.
    std::string folder(std::string_view name) const {
        std::filesystem::create_directory(path(name));
        return path(name);
    }
    /// Of a file; empty when it is not there.
    std::string content(std::string_view name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path path_;
};
