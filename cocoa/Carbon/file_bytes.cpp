#include "cocoa/Carbon/file_bytes.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cocoa {
namespace {

class OpenFile {
public:
    /// Does not wait for a writer where the path is one of a pipe.
    explicit OpenFile(const std::string& path)
        : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (descriptor_ >= 0) close(descriptor_);
    }

    /// Nothing unless it is a regular file.
    std::optional<std::uint64_t> size() const {
        struct stat status;
        if (descriptor_ < 0 || fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return static_cast<std::uint64_t>(status.st_size);
    }

    /// As many bytes as there are, at most `count`; nothing when reading fails.
    std::optional<std::size_t> read(std::uint8_t* bytes, std::size_t count) const {
        std::size_t done = 0;
        while (done < count) {
            const ssize_t got = ::read(descriptor_, bytes + done, count - done);
            if (got < 0 && errno == EINTR) continue;
            if (got < 0) return std::nullopt;
            if (got == 0) break;
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

private:
    int descriptor_;
};

} // namespace

std::optional<std::vector<std::uint8_t>> readFile(const std::string& path, std::size_t most) {
    const OpenFile file(path);
    const auto size = file.size();
    if (!size || *size > most) return std::nullopt;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(*size));
    const auto got = file.read(bytes.data(), bytes.size());
    if (!got) return std::nullopt;
    bytes.resize(*got); // cut while it was read
    return bytes;
}

} // namespace cocoa
