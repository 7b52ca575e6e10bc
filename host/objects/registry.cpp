#include "host/objects/registry.h"

#include "host/objects/control.h"
#include "host/objects/runtime.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace host {

namespace {

/// The dead that are remembered.
constexpr std::size_t maximumGraves = 65536;
/// Zero bytes behind every text, for readers of 8-, 16- and 32-bit units.
constexpr std::size_t terminatorSize = 4;
/// What a dead object's data is filled with.
constexpr int deadByte = 0xDD;

std::string excerpt(const REALstringStruct* string) {
    constexpr std::size_t longest = 40;
    const std::string_view bytes = bytesOf(string);
    std::string text = "String \"";
    for (const char c : bytes.substr(0, longest))
        text += c >= 0x20 && c < 0x7F ? c : '?';
    return text + (bytes.size() > longest ? "...\"" : "\"");
}

std::string counted(int references) {
    return std::to_string(references) + (references == 1 ? " reference" : " references");
}

} // namespace

Registry::Registry() = default;

Registry::~Registry() {
    for (auto& [pointer, record] : records_) {
        void* const memory = const_cast<void*>(pointer);
        if (record.kind == Kind::String) {
            std::free(static_cast<REALstringStruct*>(memory)->buffer);
        } else {
            Control* const control = controlOf(static_cast<REALobjectStruct*>(memory));
            delete control;
        }
        std::free(memory);
    }
    for (const auto& [buffer, origin] : buffers_)
        std::free(buffer);
}

void Registry::enter(const void* pointer, Kind kind, const Class* type) {
    records_[pointer] = {kind, true, ownDepth_ > 0, type, Activity::current(), ++serial_};
}

REALstringStruct* Registry::makeString(std::string_view bytes, std::uint32_t encoding) {
    if (bytes.empty() || bytes.size() > std::numeric_limits<std::int32_t>::max() - 64)
        return nullptr;
    auto* const string = static_cast<REALstringStruct*>(std::calloc(1, sizeof(REALstringStruct)));
    const std::size_t size = 1 + bytes.size() + terminatorSize;
    auto* const buffer = static_cast<char*>(std::malloc(size));
    if (!string || !buffer) {
        std::free(string);
        std::free(buffer);
        return nullptr;
    }
    buffer[0] = static_cast<char>(std::min<std::size_t>(bytes.size(), 255));
    std::memcpy(buffer + 1, bytes.data(), bytes.size());
    std::memset(buffer + 1 + bytes.size(), 0, terminatorSize);
    string->useCount = 1;
    string->buffer = buffer;
    string->bufferSize = static_cast<REALword>(size);
    string->length = static_cast<std::int32_t>(bytes.size());
    string->encoding = encoding;
    enter(string, Kind::String, nullptr);
    ++liveStrings_;
    return string;
}

REALobjectStruct* Registry::allocate(const Class& type) {
    auto* const object = static_cast<REALobjectStruct*>(
        std::calloc(1, std::max(type.instanceSize(), sizeof(REALobjectStruct))));
    if (!object) return nullptr;
    auto* const control = new Control;
    control->type = &type;
    for (const Class* maker = &type; maker && !control->state; maker = maker->superclass())
        if (maker->makeState) control->state = maker->makeState();
    setControl(object, control);
    enter(object, Kind::Object, &type);
    return object;
}

void Registry::retain(REALstringStruct* string) {
    if (find(string).alive) ++string->useCount;
}

void Registry::release(REALstringStruct* string) {
    const auto found = records_.find(string);
    if (found == records_.end() || !found->second.alive) {
        Runtime::current().reportMisuse("a String was released more often than it was locked");
        return;
    }
    if (--string->useCount > 0) return;
    std::free(std::exchange(string->buffer, nullptr));
    --liveStrings_;
    bury(string, found->second);
}

void Registry::retain(REALobjectStruct* object) {
    if (find(object).alive) ++controlOf(object)->references;
}

void Registry::release(REALobjectStruct* object) {
    const auto found = records_.find(object);
    if (found == records_.end() || !found->second.alive) {
        Runtime::current().reportMisuse("an object was released more often than it was locked: " +
                                        describe(object));
        return;
    }
    Control* const control = controlOf(object);
    if (--control->references > 0 || control->destroying) return;
    destroy(object);
}

void Registry::destroy(REALobjectStruct* object) {
    Control* const control = controlOf(object);
    control->destroying = true;
    const Class& type = *control->type;
    for (const Class* owner = &type; owner; owner = owner->superclass())
        if (owner->destructor) owner->destructor(object);
    if (control->references != 0)
        Runtime::current().reportMisuse("the destructor of " + type.name() +
                                        " left the object with " + counted(control->references));
    std::unique_ptr<State> state = std::move(control->state);
    delete control;
    setControl(object, nullptr);
    std::memset(object + 1, deadByte,
                std::max(type.instanceSize(), sizeof(REALobjectStruct)) - sizeof(REALobjectStruct));
    bury(object, records_.at(object));
    if (state) dispose(std::move(state));
}

void Registry::dispose(std::unique_ptr<State> state) {
    unheld_.push_back(std::move(state));
    if (isDisposing_) return;
    isDisposing_ = true;
    while (!unheld_.empty()) {
        const std::unique_ptr<State> next = std::move(unheld_.back());
        unheld_.pop_back();
    }
    isDisposing_ = false;
}

void Registry::bury(const void* pointer, Record& record) {
    record.alive = false;
    graves_.push_back(pointer);
    if (graves_.size() <= maximumGraves) return;
    records_.erase(graves_.front());
    std::free(const_cast<void*>(graves_.front()));
    graves_.pop_front();
}

Registry::Entry Registry::find(const void* pointer) const {
    const auto found = records_.find(pointer);
    if (found == records_.end()) return {};
    const Record& record = found->second;
    return {record.kind, record.alive, record.type, record.origin};
}

std::string Registry::describe(const void* pointer) const {
    if (!pointer) return "Nil";
    const Entry entry = find(pointer);
    if (entry.kind == Kind::Unknown) return "neither an object nor a string of this host";
    std::string text = entry.kind == Kind::String ? "String" : entry.type->name();
    if (!entry.alive) text += " already released";
    return text;
}

int Registry::references(const void* pointer) const {
    const Entry entry = find(pointer);
    if (!entry.alive) return 0;
    if (entry.kind == Kind::String)
        return static_cast<int>(static_cast<const REALstringStruct*>(pointer)->useCount);
    return controlOf(static_cast<const REALobjectStruct*>(pointer))->references;
}

std::size_t Registry::liveObjects() const {
    return static_cast<std::size_t>(std::ranges::count_if(records_, [](const auto& entry) {
        return entry.second.alive && entry.second.kind == Kind::Object;
    }));
}

std::size_t Registry::liveObjects(std::string_view className) const {
    return static_cast<std::size_t>(std::ranges::count_if(records_, [&](const auto& entry) {
        return entry.second.alive && entry.second.kind == Kind::Object &&
               sameName(entry.second.type->name(), className);
    }));
}

std::vector<std::string> Registry::leaks() const {
    std::vector<std::pair<std::size_t, std::string>> found;
    for (const auto& [pointer, record] : records_) {
        if (!record.alive || record.isHostOwned) continue;
        std::string sentence = record.kind == Kind::String
                                   ? excerpt(static_cast<const REALstringStruct*>(pointer))
                                   : record.type->name();
        if (!record.origin.empty()) sentence += ", made by " + std::string(record.origin) + ",";
        found.emplace_back(record.serial, sentence + " still has " + counted(references(pointer)));
    }
    std::ranges::sort(found);
    std::vector<std::string> sentences;
    for (auto& [serial, sentence] : found)
        sentences.push_back(std::move(sentence));
    for (const auto& [buffer, origin] : buffers_)
        sentences.push_back("String data handed out by " + std::string(origin) +
                            " was not disposed of");
    return sentences;
}

void* Registry::makeBuffer(std::string_view bytes, bool owed) {
    auto* const buffer = static_cast<char*>(std::malloc(bytes.size() + terminatorSize));
    if (!buffer) return nullptr;
    std::memcpy(buffer, bytes.data(), bytes.size());
    std::memset(buffer + bytes.size(), 0, terminatorSize);
    if (owed) buffers_[buffer] = Activity::current();
    return buffer;
}

bool Registry::freeBuffer(void* buffer) {
    if (buffers_.erase(buffer) == 0) return false;
    std::free(buffer);
    return true;
}

} // namespace host
