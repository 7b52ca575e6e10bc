#pragma once

/// Calls every member of every class and tells what each answers, to compare hosts that lack a
/// service with one that lacks none.

#include "plugin/classes/support/images.h"

#include <map>

/// By the member's name: text in quotes, a number, the class of an object, "nil", "-" for no
/// result; an array tells whether it has elements. A raised exception stands behind it.
using Answers = std::map<std::string, std::string>;

class Sweep {
public:
    explicit Sweep(Host& host);
    ~Sweep();

    Answers run();

private:
    host::Value keep(const std::string& name, const host::Value& value);
    host::Value shared(const std::string& method, auto... arguments) {
        return keep(method, host_.shared("NSImageZNT", method, arguments...));
    }
    host::Value call(const host::ObjectRef& object, const std::string& method, auto... arguments) {
        return keep(method, host_.call(object, method, arguments...));
    }
    void get(const host::ObjectRef& object, const std::string& property);
    void set_and_get(const host::ObjectRef& object, const char* property, const host::Value& value);

    void ask_constructors();
    void ask_factories();
    void ask_type_lists();
    void ask_properties();
    void ask_results();
    void ask_representations();

    Host& host_;
    Answers answers_;
    /// Made by Cocoa itself, so that they are there on every host: 4 by 3 pixels, one bitmap.
    host::ObjectRef image_;
    host::ObjectRef bitmap_;
    const std::string file_;
};
