// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/Format.h"

#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "framework/core/text/Decimal.h"

namespace framework {
namespace {

enum class Part { Literal, IntegerPlace, DecimalPlace, Point, Minus, Plus, Exponent };

struct Token {
    Part part;
    char byte;
};

/// What one section of a mask asks for.
struct Shape {
    std::vector<Token> tokens;
    // The places on each side of the point, and how many digits at least stand there.
    int integerPlaces = 0;
    std::size_t integerDigits = 0;
    int decimalPlaces = 0;
    std::size_t decimalDigits = 0;
    std::size_t exponentDigits = 0;
    bool exponentPlus = false;
    bool grouped = false;
    bool percent = false;
    bool hasPoint = false;
    bool hasSign = false;
    bool hasExponent = false;

    bool hasPlaces() const { return integerPlaces + decimalPlaces > 0; }
};

bool isPlace(char byte) {
    return byte == '#' || byte == '0';
}

bool isSign(char byte) {
    return byte == '-' || byte == '+';
}

void readPlace(Shape& shape, char byte) {
    if (shape.hasPoint) {
        ++shape.decimalPlaces;
        if (byte == '0') shape.decimalDigits = static_cast<std::size_t>(shape.decimalPlaces);
    } else {
        ++shape.integerPlaces;
        if (byte == '0' || shape.integerDigits > 0) ++shape.integerDigits;
    }
    shape.tokens.push_back({shape.hasPoint ? Part::DecimalPlace : Part::IntegerPlace, byte});
}

/// Reads what follows an "e". Gives the number of bytes used up: 0 when this is no exponent but a letter.
std::size_t readExponent(Shape& shape, std::string_view rest) {
    std::size_t used = !rest.empty() && isSign(rest[0]) ? 1 : 0;
    if (shape.hasExponent || shape.integerPlaces == 0 || used >= rest.size() || !isPlace(rest[used])) return 0;
    shape.hasExponent = true;
    shape.exponentPlus = rest[0] == '+';
    for (; used < rest.size() && isPlace(rest[used]); ++used) {
        if (rest[used] == '0' || shape.exponentDigits > 0) ++shape.exponentDigits;
    }
    return used;
}

Shape readShape(std::string_view section) {
    Shape shape;
    for (std::size_t i = 0; i < section.size(); ++i) {
        const char byte = section[i];
        if (isPlace(byte)) {
            readPlace(shape, byte);
        } else if (byte == '.' && !shape.hasPoint) {
            shape.hasPoint = true;
            shape.tokens.push_back({Part::Point, byte});
        } else if (byte == ',' && !shape.hasPoint && shape.integerPlaces > 0) {
            shape.grouped = true;
        } else if (isSign(byte)) {
            shape.hasSign = true;
            shape.tokens.push_back({byte == '-' ? Part::Minus : Part::Plus, byte});
        } else if (byte == '\\' && i + 1 < section.size()) {
            shape.tokens.push_back({Part::Literal, section[++i]});
        } else if (const std::size_t used =
                       byte == 'e' || byte == 'E' ? readExponent(shape, section.substr(i + 1)) : 0) {
            shape.tokens.push_back({Part::Exponent, byte});
            i += used;
        } else {
            if (byte == '%') shape.percent = true;
            shape.tokens.push_back({Part::Literal, byte});
        }
    }
    return shape;
}

/// The sections of a mask, cut at each semicolon that no backslash stands before.
std::vector<std::string_view> sectionsOf(std::string_view mask) {
    std::vector<std::string_view> sections;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < mask.size(); ++i) {
        if (mask[i] == '\\') {
            ++i;
        } else if (mask[i] == ';') {
            sections.push_back(mask.substr(begin, i - begin));
            begin = i + 1;
        }
    }
    sections.push_back(mask.substr(begin));
    return sections;
}

/// A number as a shape shows it: rounded, and its power of ten taken out where the shape prints that by itself.
struct Figures {
    std::string integer;
    std::string decimals;
    int power = 0;
    bool zero = false;
};

Figures figuresOf(const Shape& shape, double size) {
    Figures figures;
    Decimal decimal(size);
    if (shape.percent) decimal.SetPoint(decimal.Point() + 2);
    decimal.Keep((shape.hasExponent ? 1 : decimal.Point()) + shape.decimalPlaces);
    figures.zero = decimal.IsZero();
    if (shape.hasExponent && !figures.zero) {
        figures.power = decimal.Point() - 1;
        decimal.SetPoint(1);
    }
    figures.integer = decimal.IntegerDigits();
    figures.decimals = decimal.DecimalDigits();
    if (figures.decimals.size() < shape.decimalDigits) figures.decimals.resize(shape.decimalDigits, '0');
    // A number that the mask shows no digit of would be lost.
    const bool invisible = figures.integer.empty() && figures.decimals.empty() && shape.hasPlaces();
    const std::size_t wanted = invisible && shape.integerDigits == 0 ? 1 : shape.integerDigits;
    if (figures.integer.size() < wanted) figures.integer.insert(0, wanted - figures.integer.size(), '0');
    return figures;
}

/// The digits of the place that has `right` places to its right; the first place takes all that stand before it too.
void writeIntegerPlace(std::string& text, const std::string& digits, std::size_t right, bool first, bool grouped) {
    if (right >= digits.size()) return;
    const std::size_t end = digits.size() - right;
    for (std::size_t i = first ? 0 : end - 1; i < end; ++i) {
        text.push_back(digits[i]);
        const std::size_t following = digits.size() - i - 1;
        if (grouped && following > 0 && following % 3 == 0) text.push_back(',');
    }
}

void writeExponent(std::string& text, const Shape& shape, char letter, int power) {
    text.push_back(letter);
    if (power < 0) text.push_back('-');
    if (power >= 0 && shape.exponentPlus) text.push_back('+');
    const std::string digits = std::to_string(std::abs(power));
    if (digits.size() < shape.exponentDigits) text.append(shape.exponentDigits - digits.size(), '0');
    text.append(digits);
}

std::string write(const Shape& shape, const Figures& figures, bool negative) {
    std::string text;
    if (negative && !shape.hasSign && shape.hasPlaces()) text.push_back('-');
    std::size_t integerPlacesLeft = static_cast<std::size_t>(shape.integerPlaces);
    std::size_t decimalsDone = 0;
    for (const Token& token : shape.tokens) {
        switch (token.part) {
            case Part::IntegerPlace: {
                const bool first = integerPlacesLeft == static_cast<std::size_t>(shape.integerPlaces);
                writeIntegerPlace(text, figures.integer, --integerPlacesLeft, first, shape.grouped);
                break;
            }
            case Part::Point:
                // Digits before the point that the mask has no place for are not lost either.
                if (shape.integerPlaces == 0) text.append(figures.integer);
                if (!figures.decimals.empty()) text.push_back('.');
                break;
            case Part::DecimalPlace:
                if (decimalsDone < figures.decimals.size()) text.push_back(figures.decimals[decimalsDone++]);
                break;
            case Part::Minus:
                if (negative) text.push_back('-');
                break;
            case Part::Plus:
                text.push_back(negative ? '-' : '+');
                break;
            case Part::Exponent:
                writeExponent(text, shape, token.byte, figures.power);
                break;
            case Part::Literal:
                text.push_back(token.byte);
                break;
        }
    }
    return text;
}

}  // namespace

String Format(double number, const String& mask) {
    if (std::isnan(number)) return "nan";
    if (std::isinf(number)) return number < 0 ? "-inf" : "inf";
    const String readable = mask.Converted(Encodings::UTF8);
    const std::vector<std::string_view> sections = sectionsOf(readable.Bytes());
    const bool ownNegative = number < 0 && sections.size() > 1 && !sections[1].empty();
    Shape shape = readShape(sections[ownNegative ? 1 : 0]);
    Figures figures = figuresOf(shape, std::fabs(number));
    if (figures.zero && (ownNegative || (sections.size() > 2 && !sections[2].empty()))) {
        shape = readShape(sections[sections.size() > 2 && !sections[2].empty() ? 2 : 0]);
        figures = figuresOf(shape, 0);
    }
    return String(write(shape, figures, number < 0 && !ownNegative && !figures.zero));
}

}  // namespace framework
