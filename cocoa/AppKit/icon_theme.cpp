#include "cocoa/AppKit/icon_theme.h"

#include "cocoa/Carbon/file_bytes.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <sys/stat.h>

namespace cocoa::appkit {
namespace {

using Strings = std::vector<std::string>;

constexpr std::size_t largestIndex = 1 << 20;
constexpr std::size_t mostDirectories = 1024; // of one theme
constexpr std::size_t mostThemes = 32;        // in one line of inheritance
constexpr int largestSide = 1024;
constexpr std::string_view lastTheme = "hicolor";

Strings split(std::string_view text, char separator) {
    Strings parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0) parts.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view space = " \t\r";
    const std::size_t first = text.find_first_not_of(space);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(space) - first + 1);
}

/// A file of groups, each of keys and values.
class KeyFile {
public:
    /// Empty for a file that is not there.
    explicit KeyFile(const std::string& path) {
        const auto bytes = readFile(path, largestIndex);
        if (!bytes) return;
        std::string group;
        for (const std::string& line :
             split({reinterpret_cast<const char*>(bytes->data()), bytes->size()}, '\n')) {
            const std::string_view text = trimmed(line);
            if (text.empty() || text.front() == '#') continue;
            if (text.front() == '[')
                group = text.substr(1, text.find(']') - 1);
            else if (const std::size_t equals = text.find('='); equals != text.npos)
                groups_[group].emplace(trimmed(text.substr(0, equals)),
                                       trimmed(text.substr(equals + 1)));
        }
    }

    bool hasGroup(const std::string& group) const { return groups_.contains(group); }

    std::string text(const std::string& group, std::string_view key) const {
        const auto keys = groups_.find(group);
        if (keys == groups_.end()) return {};
        const auto value = keys->second.find(key);
        return value == keys->second.end() ? std::string() : value->second;
    }

    int number(const std::string& group, std::string_view key, int otherwise) const {
        const std::string value = text(group, key);
        int number = 0;
        const auto read = std::from_chars(value.data(), value.data() + value.size(), number);
        return read.ec == std::errc() ? std::clamp(number, 0, largestSide) : otherwise;
    }

private:
    std::map<std::string, std::map<std::string, std::string, std::less<>>> groups_;
};

/// A variable of the environment; empty when it is not set.
std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// The folder that a variable names, else one in the home folder; empty when there is neither.
std::string homeFolder(const char* variable, std::string_view inHome) {
    const std::string named = environment(variable);
    if (named.starts_with('/')) return named;
    const std::string home = environment("HOME");
    return home.empty() ? std::string() : home + std::string(inHome);
}

/// Where themes lie, in the order in which they are looked up.
Strings baseFolders() {
    Strings folders;
    if (const std::string home = environment("HOME"); !home.empty())
        folders.push_back(home + "/.icons");
    if (const std::string data = homeFolder("XDG_DATA_HOME", "/.local/share"); !data.empty())
        folders.push_back(data + "/icons");
    std::string shared = environment("XDG_DATA_DIRS");
    if (shared.empty()) shared = "/usr/local/share:/usr/share";
    for (const std::string& folder : split(shared, ':'))
        if (folder.starts_with('/')) folders.push_back(folder + "/icons");
    return folders;
}

/// A name that leads no further than the folder it stands in.
bool staysInside(std::string_view path) {
    if (path.empty() || path.front() == '/') return false;
    const Strings parts = split(path, '/');
    return std::find(parts.begin(), parts.end(), "..") == parts.end();
}

bool isRegularFile(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// The sides that the icons of a directory may be shown with.
struct Sides {
    int size = 0;
    int least = 0;
    int most = 0;
};

class Theme {
public:
    /// Not installed when no base folder has its index.
    Theme(const Strings& folders, const std::string& name) {
        if (!staysInside(name) || name.find('/') != name.npos) return;
        for (const std::string& folder : folders) {
            folders_.push_back(folder + "/" + name);
            if (index_) continue;
            KeyFile index(folders_.back() + "/index.theme");
            if (index.hasGroup(group_)) index_ = std::move(index);
        }
    }

    bool isInstalled() const { return index_.has_value(); }
    bool isForUsers() const {
        return index_ && index_->text(group_, "Hidden") != "true" &&
               !index_->text(group_, "Directories").empty();
    }
    Strings parents() const {
        return index_ ? split(index_->text(group_, "Inherits"), ',') : Strings();
    }

    std::vector<IconFile> find(std::string_view icon) const {
        std::vector<IconFile> files;
        if (!index_) return files;
        Strings directories = split(index_->text(group_, "Directories"), ',');
        if (directories.size() > mostDirectories) directories.resize(mostDirectories);
        for (const std::string& directory : directories)
            if (const auto sides = sidesOf(std::string(trimmed(directory))))
                addFiles(std::string(trimmed(directory)), icon, *sides, files);
        return files;
    }

private:
    /// Nothing for a directory that is none, or one for screens of another density.
    std::optional<Sides> sidesOf(const std::string& directory) const {
        if (!staysInside(directory)) return std::nullopt;
        const int size = index_->number(directory, "Size", 0);
        if (size <= 0 || index_->number(directory, "Scale", 1) != 1) return std::nullopt;
        const std::string type = index_->text(directory, "Type");
        if (type == "Fixed") return Sides{size, size, size};
        if (type == "Scalable")
            return Sides{size, index_->number(directory, "MinSize", size),
                         index_->number(directory, "MaxSize", size)};
        const int threshold = index_->number(directory, "Threshold", 2);
        return Sides{size, size - threshold, size + threshold};
    }

    void addFiles(const std::string& directory, std::string_view icon, const Sides& sides,
                  std::vector<IconFile>& files) const {
        for (const std::string& folder : folders_) {
            for (const bool isDrawing : {false, true}) {
                const std::string path = folder + "/" + directory + "/" + std::string(icon) +
                                         (isDrawing ? ".svg" : ".png");
                if (isRegularFile(path))
                    files.push_back({path, isDrawing, sides.size, sides.least, sides.most});
            }
        }
    }

    static constexpr const char* group_ = "Icon Theme";
    Strings folders_; ///< the theme's, one in each base folder
    std::optional<KeyFile> index_;
};

/// Which theme the user has chosen, as desktops write it down; empty for none.
std::string chosenTheme() {
    const std::string own = homeFolder("XDG_CONFIG_HOME", "/.config");
    for (const std::string& folder : {own, std::string("/etc")})
        for (const char* toolkit : {"/gtk-4.0", "/gtk-3.0"}) {
            const KeyFile settings(folder + toolkit + "/settings.ini");
            const std::string name = settings.text("Settings", "gtk-icon-theme-name");
            if (!name.empty()) return name;
        }
    return {};
}

/// All that is installed, in the order of the alphabet.
Strings installedThemes(const Strings& folders) {
    std::set<std::string> names;
    for (const std::string& folder : folders) {
        std::error_code error;
        std::filesystem::directory_iterator entry(folder, error);
        for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
            names.insert(entry->path().filename().string());
    }
    return {names.begin(), names.end()};
}

/// The user's choice, else the theme that most machines have, else any that is meant for users.
std::string firstTheme(const Strings& folders) {
    for (const std::string& name : {chosenTheme(), std::string("Adwaita")})
        if (Theme(folders, name).isInstalled()) return name;
    for (const std::string& name : installedThemes(folders))
        if (name != lastTheme && Theme(folders, name).isForUsers()) return name;
    return std::string(lastTheme);
}

/// Goes through a theme and those that it inherits from, each once, until one has the icon.
class Lookup {
public:
    explicit Lookup(std::string_view icon)
        : icon_(icon) {}

    std::vector<IconFile> find() {
        auto files = findIn(firstTheme(folders_));
        return files.empty() ? findIn(std::string(lastTheme)) : files;
    }

private:
    std::vector<IconFile> findIn(const std::string& name) {
        if (seen_.size() >= mostThemes || !seen_.insert(name).second) return {};
        const Theme theme(folders_, name);
        auto files = theme.find(icon_);
        if (!files.empty()) return files;
        for (const std::string& parent : theme.parents()) {
            const std::string parentName(trimmed(parent));
            // Every line of inheritance ends with it; it must not hide a sibling's icon.
            if (parentName == lastTheme) continue;
            files = findIn(parentName);
            if (!files.empty()) return files;
        }
        return {};
    }

    std::string_view icon_;
    Strings folders_ = baseFolders();
    std::set<std::string> seen_;
};

} // namespace

std::vector<IconFile> findIcon(std::string_view name) {
    if (name.empty() || name.find('/') != name.npos) return {};
    return Lookup(name).find();
}

} // namespace cocoa::appkit
