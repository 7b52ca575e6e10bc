#include "host/language/functions.h"

#include "host/objects/value.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace host::language {
namespace {

bool isPlaceholder(char c) { return c == '#' || c == '0' || c == '.' || c == ','; }

/// One section of a pattern, taken apart.
struct Pattern {
    std::string prefix;
    std::string suffix;
    int wholeDigits = 0;     ///< shown at least
    int decimals = 0;        ///< shown at most
    int decimalsShown = 0;   ///< shown at least
    int exponentDigits = -1; ///< shown at least; -1 for plain notation
    char exponentLetter = 'E';
    bool exponentPlus = false;
    bool hasNumber = false;
    bool groups = false;
    bool percent = false;
    char sign = 0; ///< '+' or '-' where the pattern places the sign
};

class PatternReader {
public:
    explicit PatternReader(std::string_view text)
        : text_(text) {}

    Pattern read() {
        readLiteral(pattern_.prefix);
        readPlaceholders();
        readExponent();
        readLiteral(pattern_.suffix, true);
        return pattern_;
    }

private:
    bool atEnd() const { return position_ >= text_.size(); }

    void readLiteral(std::string& literal, bool toTheEnd = false) {
        for (; !atEnd(); ++position_) {
            const char c = text_[position_];
            if (isPlaceholder(c) && !toTheEnd) return;
            if (c == '\\' && position_ + 1 < text_.size()) {
                literal += text_[++position_];
            } else if ((c == '+' || c == '-') && !toTheEnd && pattern_.sign == 0) {
                pattern_.sign = c;
            } else {
                if (c == '%') pattern_.percent = true;
                literal += c;
            }
        }
    }

    void readPlaceholders() {
        bool behindPoint = false;
        for (; !atEnd() && isPlaceholder(text_[position_]); ++position_) {
            pattern_.hasNumber = true;
            const char c = text_[position_];
            if (c == ',') {
                pattern_.groups = true;
            } else if (c == '.') {
                if (behindPoint) return;
                behindPoint = true;
            } else if (behindPoint) {
                ++pattern_.decimals;
                if (c == '0') pattern_.decimalsShown = pattern_.decimals;
            } else if (c == '0' || pattern_.wholeDigits > 0) {
                ++pattern_.wholeDigits;
            }
        }
    }

    void readExponent() {
        if (position_ + 2 >= text_.size()) return;
        const char letter = text_[position_];
        const char sign = text_[position_ + 1];
        const char digit = text_[position_ + 2];
        if ((letter | 0x20) != 'e' || (sign != '+' && sign != '-') ||
            (digit != '0' && digit != '#'))
            return;
        pattern_.exponentLetter = letter;
        pattern_.exponentPlus = sign == '+';
        pattern_.exponentDigits = 0;
        for (position_ += 2; !atEnd() && (text_[position_] == '0' || text_[position_] == '#');
             ++position_)
            if (text_[position_] == '0') ++pattern_.exponentDigits;
    }

    std::string_view text_;
    std::size_t position_ = 0;
    Pattern pattern_;
};

/// The part of the pattern between semicolons for the number's sign; the first where there is none.
std::string_view sectionFor(double number, std::string_view pattern, bool& signIsShown) {
    const std::size_t wanted = number < 0 ? 1 : number == 0 ? 2 : 0;
    std::string_view rest = pattern;
    std::string_view first;
    for (std::size_t index = 0;; ++index) {
        std::size_t end = 0;
        while (end < rest.size() && rest[end] != ';')
            end += rest[end] == '\\' ? 2 : 1;
        end = std::min(end, rest.size());
        const std::string_view section = rest.substr(0, end);
        if (index == 0) first = section;
        if (index == wanted && (index == 0 || !section.empty())) {
            signIsShown = index == 1;
            return section;
        }
        if (end == rest.size()) return first;
        rest.remove_prefix(end + 1);
    }
}

std::string fixed(double number, int decimals) {
    const double scale = std::pow(10, decimals);
    // Halves go away from zero, as in Round; printf would go by the last binary digit.
    if (std::fabs(number) * scale < 4503599627370496.0) number = std::round(number * scale) / scale;
    std::string digits(
        static_cast<std::size_t>(std::snprintf(nullptr, 0, "%.*f", decimals, number)), '\0');
    std::snprintf(digits.data(), digits.size() + 1, "%.*f", decimals, number);
    return digits;
}

std::string grouped(const std::string& digits) {
    std::string result;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) result += ',';
        result += digits[i];
    }
    return result;
}

std::string digitsOf(double magnitude, const Pattern& pattern) {
    const std::string all = fixed(magnitude, std::min(pattern.decimals, 100));
    const std::size_t point = all.find('.');
    std::string whole = all.substr(0, point);
    std::string decimals = point == std::string::npos ? "" : all.substr(point + 1);
    while (!decimals.empty() && decimals.back() == '0' &&
           static_cast<int>(decimals.size()) > pattern.decimalsShown)
        decimals.pop_back();
    if (whole == "0") whole.clear();
    if (static_cast<int>(whole.size()) < pattern.wholeDigits)
        whole.insert(0, static_cast<std::size_t>(pattern.wholeDigits) - whole.size(), '0');
    if (pattern.groups) whole = grouped(whole);
    return decimals.empty() ? whole : whole + "." + decimals;
}

std::string exponentOf(int exponent, const Pattern& pattern) {
    std::string digits = std::to_string(std::abs(exponent));
    if (static_cast<int>(digits.size()) < pattern.exponentDigits)
        digits.insert(0, static_cast<std::size_t>(pattern.exponentDigits) - digits.size(), '0');
    const std::string sign = exponent < 0 ? "-" : pattern.exponentPlus ? "+" : "";
    return pattern.exponentLetter + sign + digits;
}

std::string scientific(double magnitude, const Pattern& pattern) {
    int exponent = 0;
    if (magnitude > 0) {
        exponent = static_cast<int>(std::floor(std::log10(magnitude)));
        double mantissa = magnitude / std::pow(10, exponent);
        // Rounding can carry the mantissa to 10.
        if (std::stod(fixed(mantissa, pattern.decimals)) >= 10) ++exponent;
        mantissa = magnitude / std::pow(10, exponent);
        magnitude = mantissa;
    }
    Pattern plain = pattern;
    plain.wholeDigits = std::max(plain.wholeDigits, 1);
    return digitsOf(magnitude, plain) + exponentOf(exponent, pattern);
}

} // namespace

std::string formatNumber(double number, std::string_view text) {
    if (!std::isfinite(number)) return Value(number).utf8();
    bool signIsShown = false;
    const Pattern pattern = PatternReader(sectionFor(number, text, signIsShown)).read();
    if (pattern.percent) number *= 100;
    const double magnitude = std::fabs(number);
    std::string digits;
    if (pattern.exponentDigits >= 0)
        digits = scientific(magnitude, pattern);
    else if (pattern.hasNumber)
        digits = digitsOf(magnitude, pattern);

    std::string sign;
    if (number < 0 && !signIsShown) sign = "-";
    if (number >= 0 && pattern.sign == '+') sign = "+";
    if (signIsShown && pattern.sign != 0) sign = pattern.sign;
    // What rounds to zero has no sign.
    const bool isZero = digits.find_first_of("123456789") == std::string::npos;
    if (sign == "-" && isZero && pattern.hasNumber && !signIsShown) sign.clear();
    return sign + pattern.prefix + digits + pattern.suffix;
}

} // namespace host::language
