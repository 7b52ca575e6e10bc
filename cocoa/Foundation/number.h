#pragma once

/// Cocoa's numbers. Foundation forgets which type a number was made of when its value fits another;
/// Cocoa's numbers keep it, and callers tell Booleans, integers and fractions apart by it.

#import <Foundation/Foundation.h>

#include <type_traits>

namespace cocoa {

/// A value of any number type, without loss.
class WideNumber {
public:
    WideNumber() = default;

    template <typename Source>
    explicit WideNumber(Source value) {
        if constexpr (std::is_floating_point_v<Source>) {
            kind_ = Kind::Fraction;
            fraction_ = value;
        } else if constexpr (std::is_signed_v<Source>) {
            kind_ = Kind::Signed;
            signed_ = value;
        } else {
            kind_ = Kind::Unsigned;
            unsigned_ = value;
        }
    }

    /// The value as a C cast gives it, except that fractions out of 64 bits go to their limits, and
    /// what is no number gives the integer 0.
    template <typename Target>
    Target as() const {
        switch (kind_) {
        case Kind::Signed:
            return static_cast<Target>(signed_);
        case Kind::Unsigned:
            return static_cast<Target>(unsigned_);
        case Kind::Fraction:
            break;
        }
        if constexpr (std::is_floating_point_v<Target>)
            return static_cast<Target>(fraction_);
        else if constexpr (std::is_same_v<Target, unsigned long long>)
            return cutUnsigned();
        else
            return static_cast<Target>(cutSigned());
    }

    bool isZero() const { return kind_ == Kind::Fraction ? fraction_ == 0 : unsigned_ == 0; }
    bool isFraction() const { return kind_ == Kind::Fraction; }
    bool isUnsigned() const { return kind_ == Kind::Unsigned; }

private:
    enum class Kind { Signed, Unsigned, Fraction };

    long long cutSigned() const;
    unsigned long long cutUnsigned() const;

    Kind kind_ = Kind::Signed;
    union {
        long long signed_ = 0;
        unsigned long long unsigned_;
        double fraction_;
    };
};

} // namespace cocoa

/// What the methods of NSNumber that make numbers answer here.
@interface CocoaNumber : NSNumber {
@private
    cocoa::WideNumber value;
    const char* type;
}
/// The one number of true or of false; its type is that of a char.
+ (NSNumber*)boolean:(BOOL)value;
/// A new number; nil for a type that is not a number's.
+ (NSNumber*)newNumberWithBytes:(const void*)bytes objCType:(const char*)code;
/// One of the two that +boolean: answers.
- (BOOL)isBoolean;
@end
