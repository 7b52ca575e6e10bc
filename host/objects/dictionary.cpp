#include "host/objects/dictionary.h"

#include "host/objects/array.h"
#include "host/objects/date.h"
#include "host/objects/host_classes.h"

#include <cmath>

namespace host {

namespace {

Dictionary& dictionaryOf(REALobjectStruct* self) { return *stateOf<Dictionary>(self); }

std::string described(const Value& key) {
    if (key.kind() == Kind::String) return '"' + key.utf8() + '"';
    if (key.kind() != Kind::Object) return key.utf8();
    return key.type().name();
}

[[noreturn]] void raiseNoKey(const Value& key) {
    raise("KeyNotFoundException", "The Dictionary has no key " + described(key) + ".");
}

Value value(REALobjectStruct* self, std::span<Value> arguments) {
    const Value* const found = dictionaryOf(self).find(arguments[0]);
    if (!found) raiseNoKey(arguments[0]);
    return *found;
}

Value setValue(REALobjectStruct* self, std::span<Value> arguments) {
    dictionaryOf(self).set(arguments[0], std::move(arguments[1]));
    return {};
}

Value key(REALobjectStruct* self, std::span<Value> arguments) {
    Dictionary& dictionary = dictionaryOf(self);
    const std::int64_t index = arguments[0].toInt64();
    const auto count = static_cast<std::int64_t>(dictionary.count());
    if (index < 0 || index >= count)
        raise("OutOfBoundsException", "The index is " + std::to_string(index) +
                                          ", but the Dictionary has " + std::to_string(count) +
                                          " entries.");
    return dictionary.keyAt(static_cast<std::size_t>(index));
}

Value lookup(REALobjectStruct* self, std::span<Value> arguments) {
    const Value* const found = dictionaryOf(self).find(arguments[0]);
    return found ? *found : arguments[1];
}

Value remove(REALobjectStruct* self, std::span<Value> arguments) {
    if (!dictionaryOf(self).remove(arguments[0])) raiseNoKey(arguments[0]);
    return {};
}

using EntryPart = const Value& (Dictionary::*)(std::size_t);

template <EntryPart part>
Value listed(REALobjectStruct* self, std::span<Value>) {
    Dictionary& dictionary = dictionaryOf(self);
    ObjectRef list = newArray(Kind::Variant);
    Array& array = *stateOf<Array>(list);
    array.elements.reserve(dictionary.count());
    for (std::size_t i = 0; i < dictionary.count(); ++i)
        array.elements.push_back((dictionary.*part)(i));
    return list;
}

} // namespace

DictionaryKey::DictionaryKey(const Value& value) {
    switch (value.kind()) {
    case Kind::Int32:
    case Kind::UInt32:
    case Kind::Int64:
        sort_ = Sort::Number;
        identity_ = value.toInt64();
        break;
    case Kind::UInt64:
    case Kind::Single:
    case Kind::Double:
    case Kind::Currency:
        setNumber(value);
        break;
    case Kind::Boolean:
        sort_ = Sort::Boolean;
        identity_ = std::int64_t{value.toBoolean()};
        break;
    case Kind::Color:
        sort_ = Sort::Color;
        identity_ = value.toInt64();
        break;
    case Kind::String:
        sort_ = Sort::Text;
        identity_ = foldedCase(value.utf8());
        break;
    case Kind::Pointer:
        sort_ = Sort::Pointer;
        identity_ = value.toInt64();
        break;
    default:
        if (const auto* const date = stateOf<Date>(value.object())) {
            sort_ = Sort::Date;
            identity_ = date->totalSeconds();
        } else {
            sort_ = Sort::Object;
            identity_ = static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(value.object()));
        }
    }
}

void DictionaryKey::setNumber(const Value& value) {
    // The powers of two that are just too large for the two integers.
    constexpr double signedEnd = 0x1p63;
    constexpr double unsignedEnd = 0x1p64;
    sort_ = Sort::Number;
    const std::uint64_t* const large = value.get<std::uint64_t>();
    const double number = value.toDouble();
    if (large && *large >> 63)
        identity_ = *large;
    else if (large)
        identity_ = static_cast<std::int64_t>(*large);
    else if (std::isnan(number))
        sort_ = Sort::NotANumber;
    else if (number != std::floor(number) || number < -signedEnd || number >= unsignedEnd)
        identity_ = number;
    else if (number >= signedEnd)
        identity_ = static_cast<std::uint64_t>(number);
    else
        identity_ = static_cast<std::int64_t>(number);
}

std::size_t DictionaryKey::hash() const {
    constexpr std::size_t sorts = 16;
    return std::hash<decltype(identity_)>()(identity_) * sorts + static_cast<std::size_t>(sort_);
}

const Value* Dictionary::find(const Value& key) const {
    const auto found = places_.find(DictionaryKey(key));
    return found == places_.end() ? nullptr : &entries_[found->second].value;
}

// A value that goes may run a destructor, which may look at this dictionary or change it: so it
// goes when all is in order again.

void Dictionary::set(const Value& key, Value value) {
    const auto [place, isNew] = places_.try_emplace(DictionaryKey(key), entries_.size());
    if (isNew)
        entries_.push_back({key, std::move(value), &*place});
    else
        std::swap(entries_[place->second].value, value);
}

bool Dictionary::remove(const Value& key) {
    const auto found = places_.find(DictionaryKey(key));
    if (found == places_.end()) return false;
    const Entry removed = std::exchange(entries_[found->second], Entry{});
    places_.erase(found);
    while (!entries_.empty() && !entries_.back().place)
        entries_.pop_back();
    return true;
}

void Dictionary::clear() {
    const std::vector<Entry> removed = std::exchange(entries_, {});
    places_.clear();
}

const Value& Dictionary::keyAt(std::size_t index) {
    closeGaps();
    return entries_[index].key;
}

const Value& Dictionary::valueAt(std::size_t index) {
    closeGaps();
    return entries_[index].value;
}

void Dictionary::closeGaps() {
    if (entries_.size() == places_.size()) return;
    std::erase_if(entries_, [](const Entry& entry) { return !entry.place; });
    for (std::size_t i = 0; i < entries_.size(); ++i)
        entries_[i].place->second = i;
}

void defineDictionary(Runtime& runtime) {
    Class& type = defineClass(runtime, "Dictionary");
    type.makeState = [] { return std::make_unique<Dictionary>(); };
    type.addProperty("Count", Type::integer(), [](REALobjectStruct* self) -> Value {
        return static_cast<REALword>(dictionaryOf(self).count());
    });
    type.addMethod("Value(key As Variant) As Variant", value);
    type.addMethod("Value(key As Variant, Assigns _value As Variant)", setValue);
    type.addMethod("Key(index As Integer) As Variant", key);
    type.addMethod("HasKey(key As Variant) As Boolean",
                   [](REALobjectStruct* self, std::span<Value> arguments) -> Value {
                       return dictionaryOf(self).find(arguments[0]) != nullptr;
                   });
    type.addMethod("Lookup(key As Variant, defaultValue As Variant) As Variant", lookup);
    type.addMethod("Remove(key As Variant)", remove);
    type.addMethod("Clear()", [](REALobjectStruct* self, std::span<Value>) -> Value {
        dictionaryOf(self).clear();
        return {};
    });
    type.addMethod("Keys() As Variant()", listed<&Dictionary::keyAt>);
    type.addMethod("Values() As Variant()", listed<&Dictionary::valueAt>);
}

} // namespace host
