// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/Variant.h"

#include <bit>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <string_view>

#include "framework/core/objects/Exceptions.h"
#include "framework/core/text/Numbers.h"

namespace framework {
namespace {

using Kind = Variant::Kind;

std::uint32_t packed(Color color) {
    return static_cast<std::uint32_t>(color.Red) << 16 | static_cast<std::uint32_t>(color.Green) << 8 | color.Blue;
}

Color unpacked(std::int64_t rgb) {
    const auto part = [rgb](int shift) { return static_cast<int>(rgb >> shift & 0xFF); };
    return RGB(part(16), part(8), part(0));
}

/// 2^63, the first number above those of 64 bits with a sign.
constexpr double kInt64End = 9223372036854775808.0;

std::int64_t toInt64(double number) {
    if (std::isnan(number)) return 0;
    if (number >= kInt64End) return std::numeric_limits<std::int64_t>::max();
    if (number < -kInt64End) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(number);
}

std::int32_t toInt32(std::int64_t number) {
    return ToInteger(static_cast<double>(number));
}

[[noreturn]] void raiseMismatch(const char* wanted) {
    throw TypeMismatchException(String("An object was read as ") + wanted + ".");
}

/// Gathers bytes into a hash that does not depend on the machine's run or the library's version: FNV-1a in 64 bits.
class StableHash {
  public:
    void Add(std::string_view bytes) noexcept {
        for (const char byte : bytes) hash_ = (hash_ ^ static_cast<std::uint8_t>(byte)) * 0x100000001B3ULL;
    }
    void Add(std::uint64_t number) noexcept {
        for (int shift = 0; shift < 64; shift += 8) hash_ = (hash_ ^ (number >> shift & 0xFF)) * 0x100000001B3ULL;
    }
    std::uint64_t Value() const noexcept { return hash_; }

  private:
    std::uint64_t hash_ = 0xCBF29CE484222325ULL;
};

/// Whether a Double has the value of a whole number of 64 bits. Such a one is hashed like it, since they are equal.
bool isInt64(double number) noexcept {
    return number >= -kInt64End && number < kInt64End && std::trunc(number) == number;
}

/// Whole numbers as they are; Doubles that are none by their bits.
std::uint64_t hashableNumber(const Variant& value) {
    if (value.GetKind() != Kind::Double) return static_cast<std::uint64_t>(value.Int64Value());
    const double number = value.DoubleValue();
    if (std::isnan(number)) return std::bit_cast<std::uint64_t>(std::numeric_limits<double>::quiet_NaN());
    if (!isInt64(number)) return std::bit_cast<std::uint64_t>(number);
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(number));
}

bool equalNumbers(const Variant& left, const Variant& right) {
    const bool leftIsDouble = left.GetKind() == Kind::Double;
    const bool rightIsDouble = right.GetKind() == Kind::Double;
    if (!leftIsDouble && !rightIsDouble) return left.Int64Value() == right.Int64Value();
    if (leftIsDouble && rightIsDouble) {
        const double a = left.DoubleValue();
        const double b = right.DoubleValue();
        return a == b || (std::isnan(a) && std::isnan(b));
    }
    // One way or the other a conversion could lose digits; so the Double must be a whole number first.
    const double number = leftIsDouble ? left.DoubleValue() : right.DoubleValue();
    const std::int64_t whole = leftIsDouble ? right.Int64Value() : left.Int64Value();
    return isInt64(number) && static_cast<std::int64_t>(number) == whole;
}

}  // namespace

String Variant::StringValue() const {
    switch (GetKind()) {
        case Kind::None:
            return {};
        case Kind::Boolean:
            return std::get<bool>(value_) ? "true" : "false";
        case Kind::Integer:
            return Str(std::get<std::int32_t>(value_));
        case Kind::Int64:
            return Str(std::get<std::int64_t>(value_));
        case Kind::Double:
            return Str(std::get<double>(value_));
        case Kind::Color: {
            char text[16];
            std::snprintf(text, sizeof text, "&h%06X", packed(std::get<Color>(value_)));
            return text;
        }
        case Kind::String:
            return std::get<String>(value_);
        case Kind::Object:
            break;
    }
    raiseMismatch("a text");
}

std::int32_t Variant::IntegerValue() const {
    return GetKind() == Kind::Integer ? std::get<std::int32_t>(value_) : toInt32(Int64Value());
}

std::int64_t Variant::Int64Value() const {
    switch (GetKind()) {
        case Kind::Integer:
            return std::get<std::int32_t>(value_);
        case Kind::Int64:
            return std::get<std::int64_t>(value_);
        default:
            return toInt64(DoubleValue());
    }
}

double Variant::DoubleValue() const {
    switch (GetKind()) {
        case Kind::None:
            return 0;
        case Kind::Boolean:
            return std::get<bool>(value_) ? 1 : 0;
        case Kind::Integer:
            return std::get<std::int32_t>(value_);
        case Kind::Int64:
            return static_cast<double>(std::get<std::int64_t>(value_));
        case Kind::Double:
            return std::get<double>(value_);
        case Kind::Color:
            return packed(std::get<Color>(value_));
        case Kind::String:
            return CDbl(std::get<String>(value_));
        case Kind::Object:
            break;
    }
    raiseMismatch("a number");
}

bool Variant::BooleanValue() const {
    if (GetKind() == Kind::String && std::get<String>(value_) == "true") return true;
    return DoubleValue() != 0;
}

Color Variant::ColorValue() const {
    return GetKind() == Kind::Color ? std::get<Color>(value_) : unpacked(Int64Value());
}

Ref<Object> Variant::ObjectValue() const {
    if (IsNil()) return Nil;
    if (GetKind() != Kind::Object) throw TypeMismatchException("A plain value was read as an object.");
    return std::get<Ref<Object>>(value_);
}

bool operator==(const Variant& left, const Variant& right) {
    if (IsNumeric(left) && IsNumeric(right)) return equalNumbers(left, right);
    return left.GetKind() != Kind::Double && left.value_ == right.value_;
}

std::int32_t Variant::Hash() const {
    StableHash hash;
    if (GetKind() == Kind::String) {
        hash.Add(std::get<String>(value_).Bytes());
    } else {
        hash.Add(KeyHash());
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(hash.Value() ^ hash.Value() >> 32));
}

std::size_t Variant::KeyHash() const {
    StableHash hash;
    // Numbers of all kinds share a mark, since they can be equal.
    hash.Add(static_cast<std::uint64_t>(IsNumeric(*this) ? Kind::Integer : GetKind()));
    switch (GetKind()) {
        case Kind::None:
            break;
        case Kind::Integer:
        case Kind::Int64:
        case Kind::Double:
            hash.Add(hashableNumber(*this));
            break;
        case Kind::Boolean:
        case Kind::Color:
            hash.Add(static_cast<std::uint64_t>(Int64Value()));
            break;
        case Kind::String:
            return std::get<String>(value_).Hash();
        case Kind::Object:
            hash.Add(reinterpret_cast<std::uintptr_t>(std::get<Ref<Object>>(value_).Get()));
            break;
    }
    return hash.Value();
}

bool IsNumeric(const Variant& value) noexcept {
    return value.GetKind() == Kind::Integer || value.GetKind() == Kind::Int64 || value.GetKind() == Kind::Double;
}

}  // namespace framework
