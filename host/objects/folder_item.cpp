#include "host/objects/folder_item.h"

#include "host/objects/host_classes.h"
#include "host/objects/memory_block.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <limits>
#include <system_error>

namespace host {

namespace {

namespace fs = std::filesystem;

FolderItem& itemOf(REALobjectStruct* self) { return *stateOf<FolderItem>(self); }

[[noreturn]] void raiseIO(std::string_view action, const fs::path& path,
                          const std::error_code& error) {
    raise("IOException", std::string(action) + " " + path.string() + ": " + error.message() + ".",
          error.value());
}

[[noreturn]] void raiseLastError(std::string_view action, const fs::path& path) {
    raiseIO(action, path, {errno ? errno : EIO, std::generic_category()});
}

std::vector<std::string> readNames(const fs::path& folder) {
    std::vector<std::string> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        found.push_back(entry->path().filename().string());
    std::ranges::sort(found);
    return found;
}

const std::vector<std::string>& namesIn(FolderItem& item) { return item.contents.names(item.path); }

/// The child of the one-based index.
Value item(REALobjectStruct* self, std::span<Value> arguments) {
    FolderItem& folder = itemOf(self);
    const std::vector<std::string>& names = namesIn(folder);
    const std::int64_t index = arguments[0].toInt64();
    if (index < 1 || index > static_cast<std::int64_t>(names.size()))
        raise("OutOfBoundsException", "Item " + std::to_string(index) + " is not among the " +
                                          std::to_string(names.size()) + " of this folder.");
    return newFolderItem(folder.path / names[static_cast<std::size_t>(index - 1)]);
}

Value child(REALobjectStruct* self, std::span<Value> arguments) {
    const std::string name = arguments[0].utf8();
    if (name.empty() || name.find('/') != std::string::npos)
        raise("InvalidArgumentException", "\"" + name + "\" is not the name of an item.");
    return newFolderItem(itemOf(self).path / name);
}

Value readAll(REALobjectStruct* self, std::span<Value>) {
    const fs::path& path = itemOf(self).path;
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) raiseIO("Cannot read", path, error);
    if (size > std::numeric_limits<std::int32_t>::max())
        raise("OutOfMemoryException", "The file is larger than a MemoryBlock can be.");
    ObjectRef object = newMemoryBlock(static_cast<std::int64_t>(size));
    if (!object) raise("OutOfMemoryException", "There is no memory for the file.");
    auto& bytes = stateOf<MemoryBlock>(object)->bytes;
    std::ifstream file(path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size)))
        raiseLastError("Cannot read", path);
    return object;
}

Value writeAll(REALobjectStruct* self, std::span<Value> arguments) {
    const auto* const block = stateOf<MemoryBlock>(arguments[0].object());
    if (!block) raise("NilObjectException", "There is nothing to write.");
    const fs::path& path = itemOf(self).path;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(block->view().data(), static_cast<std::streamsize>(block->view().size()));
    file.close();
    if (!file) raiseLastError("Cannot write", path);
    return {};
}

/// Deletes a file or an empty folder.
Value remove(REALobjectStruct* self, std::span<Value>) {
    std::error_code error;
    if (!fs::remove(itemOf(self).path, error))
        raiseIO("Cannot delete", itemOf(self).path,
                error ? error : std::make_error_code(std::errc::no_such_file_or_directory));
    return {};
}

Value createAsFolder(REALobjectStruct* self, std::span<Value>) {
    std::error_code error;
    fs::create_directory(itemOf(self).path, error);
    if (error) raiseIO("Cannot create", itemOf(self).path, error);
    return {};
}

Value exists(REALobjectStruct* self) {
    std::error_code error;
    return fs::exists(itemOf(self).path, error);
}

Value length(REALobjectStruct* self) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(itemOf(self).path, error);
    return error ? std::int64_t{0} : static_cast<std::int64_t>(size);
}

Value isDirectory(REALobjectStruct* self) {
    std::error_code error;
    return fs::is_directory(itemOf(self).path, error);
}

/// Nil for the root.
Value parent(REALobjectStruct* self) {
    const fs::path& path = itemOf(self).path;
    return path.has_relative_path() ? newFolderItem(path.parent_path()) : ObjectRef();
}

} // namespace

const std::vector<std::string>& FolderContents::names(const fs::path& folder) {
    // File systems tell the time of a change in steps of up to two seconds: a folder that changed
    // less than that ago may change again without showing it.
    constexpr auto coarsestStep = std::chrono::milliseconds(2500);
    std::error_code error;
    const Time changed = fs::last_write_time(folder, error);
    if (!error && isSettled_ && changed == changed_) return names_;
    isSettled_ = !error && Time::clock::now() - changed > coarsestStep;
    changed_ = changed;
    names_ = readNames(folder);
    return names_;
}

ObjectRef newFolderItem(const fs::path& path) {
    ObjectRef object = Runtime::current().newInstance("FolderItem");
    if (auto* const made = stateOf<FolderItem>(object)) {
        std::error_code error;
        fs::path absolute = fs::absolute(path.empty() ? fs::path(".") : path, error);
        absolute = absolute.lexically_normal();
        made->path = absolute.has_filename() || !absolute.has_relative_path()
                         ? absolute
                         : absolute.parent_path();
    }
    return object;
}

void defineFolderItem(Runtime& runtime) {
    Class& type = defineClass(runtime, "FolderItem");
    type.makeState = [] { return std::make_unique<FolderItem>(); };
    type.addMethod("Constructor(path As String = \"\")",
                   [](REALobjectStruct* self, std::span<Value> arguments) -> Value {
                       const ObjectRef item = newFolderItem(arguments[0].utf8());
                       itemOf(self).path = itemOf(item.get()).path;
                       return {};
                   });
    type.addProperty("Name", Kind::String, [](REALobjectStruct* self) -> Value {
        return itemOf(self).path.filename().string();
    });
    type.addProperty("NativePath", Kind::String,
                     [](REALobjectStruct* self) -> Value { return itemOf(self).path.string(); });
    type.addProperty("Exists", Kind::Boolean, exists);
    type.addProperty("Length", Kind::Int64, length);
    type.addProperty("Directory", Kind::Boolean, isDirectory);
    type.addProperty("Parent", Type::object("FolderItem"), parent);
    type.addProperty("Count", Type::integer(), [](REALobjectStruct* self) -> Value {
        return static_cast<REALword>(namesIn(itemOf(self)).size());
    });
    type.addMethod("Child(name As String) As FolderItem", child);
    type.addMethod("Item(index As Integer) As FolderItem", item);
    type.addMethod("TrueItem(index As Integer) As FolderItem", item);
    type.addMethod("ReadAll() As MemoryBlock", readAll);
    type.addMethod("WriteAll(data As MemoryBlock)", writeAll);
    type.addMethod("Delete()", remove);
    type.addMethod("CreateAsFolder()", createAsFolder);
}

} // namespace host
