#pragma once

/// Every string and object that the host ever handed out, alive or dead: the place where misuse is
/// noticed. The memory of the dead is kept aside for a while, so that a stale pointer is known as
/// one instead of meeting its successor.

#include "host/objects/object.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace host {

class Registry {
public:
    Registry();
    ~Registry();
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    enum class Kind { Unknown, String, Object };
    struct Entry {
        Kind kind = Kind::Unknown;
        bool alive = false;
        const Class* type = nullptr; ///< of an object
        std::string_view origin;     ///< the service or member that made it
    };

    /// A string with one reference; null for no bytes or when there is no memory.
    REALstringStruct* makeString(std::string_view bytes, std::uint32_t encoding);
    /// A zeroed object with one reference, no constructor run; null when there is no memory.
    REALobjectStruct* allocate(const Class& type);

    void retain(REALstringStruct* string);
    void release(REALstringStruct* string);
    void retain(REALobjectStruct* object);
    /// The last reference runs the destructors.
    void release(REALobjectStruct* object);

    Entry find(const void* pointer) const;
    /// "MemoryBlock", "MemoryBlock already released", "String", "no object of this host", "Nil":
    /// what a message says of a pointer.
    std::string describe(const void* pointer) const;
    int references(const void* pointer) const; ///< 0 for the dead and the unknown

    std::size_t liveStrings() const { return liveStrings_; }
    std::size_t liveObjects() const;
    std::size_t liveObjects(std::string_view className) const; ///< of exactly this class
    /// A sentence for each string and object that is still alive and not the host's own.
    std::vector<std::string> leaks() const;

    /// What is made while one of these lives is the host's own and never counts as leaked:
    /// constants, default values.
    class HostOwned {
    public:
        explicit HostOwned(Registry& registry)
            : registry_(registry) {
            ++registry_.ownDepth_;
        }
        ~HostOwned() { --registry_.ownDepth_; }
        HostOwned(const HostOwned&) = delete;
        HostOwned& operator=(const HostOwned&) = delete;

    private:
        Registry& registry_;
    };

    /// Bytes for a REALstringData from `malloc`, followed by four zero bytes; null when there is no
    /// memory. Unless the host takes them back (`owed`), whoever holds them frees them.
    void* makeBuffer(std::string_view bytes, bool owed);
    /// False when the buffer is none that is owed.
    bool freeBuffer(void* buffer);

private:
    struct Record {
        Kind kind = Kind::Unknown;
        bool alive = true;
        bool isHostOwned = false;
        const Class* type = nullptr;
        std::string_view origin;
        std::size_t serial = 0;
    };
    void enter(const void* pointer, Kind kind, const Class* type);
    void bury(const void* pointer, Record& record);
    void destroy(REALobjectStruct* object);
    /// Objects that nothing but a dead object's state held die one after the other, not within
    /// each other: a chain of them may be longer than the stack is deep.
    void dispose(std::unique_ptr<State> state);

    std::unordered_map<const void*, Record> records_;
    std::deque<const void*> graves_;
    std::unordered_map<void*, std::string_view> buffers_;
    std::vector<std::unique_ptr<State>> unheld_; ///< of the dead, yet to be destroyed
    bool isDisposing_ = false;
    std::size_t liveStrings_ = 0;
    std::size_t serial_ = 0;
    int ownDepth_ = 0;
};

} // namespace host
