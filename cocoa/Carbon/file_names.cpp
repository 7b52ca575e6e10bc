#include "cocoa/Carbon/file_names.h"

#include "cocoa/CoreFoundation/retained.h"
#include "cocoa/CoreFoundation/text_encoding.h"

#include <CoreFoundation/CFString.h>

#include <dirent.h>
#include <memory>
#include <span>
#include <sys/stat.h>
#include <utility>

namespace cocoa {
namespace {

std::span<const std::uint8_t> asBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::u16string normalized(std::u16string_view text, CFStringNormalizationForm form) {
    const auto string = Retained<CFStringRef>::adopt(CFStringCreateWithCharacters(
        nullptr, reinterpret_cast<const UniChar*>(text.data()), static_cast<CFIndex>(text.size())));
    const auto copy =
        Retained<CFMutableStringRef>::adopt(CFStringCreateMutableCopy(nullptr, 0, string.get()));
    CFStringNormalize(copy.get(), form);
    std::u16string units(static_cast<std::size_t>(CFStringGetLength(copy.get())), u'\0');
    CFStringGetCharacters(copy.get(), CFRangeMake(0, CFStringGetLength(copy.get())),
                          reinterpret_cast<UniChar*>(units.data()));
    return units;
}

void exchangeSeparators(std::u16string& name) {
    for (char16_t& unit : name)
        if (unit == u'/')
            unit = u':';
        else if (unit == u':')
            unit = u'/';
}

std::optional<std::string> encoded(std::u16string_view text, CFStringEncoding encoding) {
    std::string bytes;
    while (!text.empty()) {
        const ReadCharacter read = readCharacter(text);
        const EncodedCharacter character = encodeCharacter(read.character, encoding);
        if (!character.count) return std::nullopt;
        bytes.append(reinterpret_cast<const char*>(character.bytes.data()), character.count);
        text.remove_prefix(read.units);
    }
    return bytes;
}

/// The length of the valid UTF-8 character that the text starts with; 0 when there is none.
std::size_t validCharacter(std::string_view text) {
    for (std::size_t length = 1; length <= 4 && length <= text.size(); ++length)
        if (decodeText(asBytes(text.substr(0, length)), kCFStringEncodingUTF8, false))
            return length;
    return 0;
}

std::u16string decodedWithEscapes(std::string_view fileName) {
    constexpr std::u16string_view digits = u"0123456789ABCDEF";
    std::u16string units;
    while (!fileName.empty()) {
        if (const std::size_t length = validCharacter(fileName)) {
            units += *decodeText(asBytes(fileName.substr(0, length)), kCFStringEncodingUTF8, false);
            fileName.remove_prefix(length);
            continue;
        }
        const auto byte = static_cast<std::uint8_t>(fileName[0]);
        units += {u'%', digits[byte >> 4], digits[byte & 15]};
        fileName.remove_prefix(1);
    }
    return units;
}

bool exists(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

} // namespace

std::u16string carbonName(std::string_view fileName) {
    const auto decoded = decodeText(asBytes(fileName), kCFStringEncodingUTF8, false);
    std::u16string name =
        normalized(decoded ? *decoded : decodedWithEscapes(fileName), kCFStringNormalizationFormD);
    exchangeSeparators(name);
    return name;
}

std::optional<std::string> findItem(const std::string& folder, std::u16string_view name) {
    std::u16string onDisk(name);
    exchangeSeparators(onDisk);
    if (onDisk.empty() || onDisk == u"." || onDisk == u".." ||
        onDisk.find_first_of(std::u16string_view(u"/\0", 2)) != std::u16string::npos)
        return std::nullopt;

    for (const std::u16string& candidate : {onDisk, normalized(onDisk, kCFStringNormalizationFormC),
                                            normalized(onDisk, kCFStringNormalizationFormD)}) {
        const auto leaf = encoded(candidate, kCFStringEncodingUTF8);
        if (leaf && !leaf->empty() && exists(joinPath(folder, *leaf)))
            return joinPath(folder, *leaf);
    }

    const std::u16string wanted = normalized(name, kCFStringNormalizationFormD);
    const std::unique_ptr<DIR, CloseFolder> listing(opendir(folder.c_str()));
    if (!listing) return std::nullopt;
    while (const dirent* const entry = readdir(listing.get()))
        if (carbonName(entry->d_name) == wanted) return joinPath(folder, entry->d_name);
    return std::nullopt;
}

std::optional<std::string> macRomanName(std::u16string_view name) {
    return encoded(normalized(name, kCFStringNormalizationFormC), kCFStringEncodingMacRoman);
}

std::u16string fromMacRoman(std::string_view name) {
    return decodeText(asBytes(name), kCFStringEncodingMacRoman, false).value_or(u"");
}

SplitPath splitPath(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {".", path};
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

std::string joinPath(const std::string& folder, std::string_view leaf) {
    std::string path = folder;
    if (!path.ends_with('/')) path.push_back('/');
    path += leaf;
    return path;
}

} // namespace cocoa
