// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <variant>

#include "framework/core/objects/Color.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"

namespace framework {

/// A value of one of several kinds, Nil by default. Made from any of them without ado, and read as any of them:
/// numbers, Booleans, colours and texts turn into each other; a text that says nothing of the kind asked for reads as
/// zero, false or black. An object turns into nothing else, and asking for that raises TypeMismatchException.
class Variant {
  public:
    enum class Kind : std::uint8_t { None, Boolean, Integer, Int64, Double, Color, String, Object };

    Variant() noexcept = default;
    Variant(std::nullptr_t) noexcept {}
    /// Whole numbers are kept exactly, in 32 bits where their type fits; those above 2^63 become a Double.
    template <std::integral T>
    Variant(T value) noexcept : value_(stored(value)) {}
    Variant(double value) noexcept : value_(value) {}
    Variant(Color value) noexcept : value_(value) {}
    Variant(String value) noexcept : value_(std::move(value)) {}
    Variant(const char* utf8) : value_(String(utf8)) {}
    /// A Nil reference makes a Nil Variant.
    template <class T>
    requires std::is_convertible_v<T*, Object*> Variant(const Ref<T>& object) {
        if (object) value_ = Ref<Object>(object);
    }
    /// No other pointer is meant: it would count as a Boolean.
    template <class T>
    Variant(T*) = delete;

    Kind GetKind() const noexcept { return static_cast<Kind>(value_.index()); }
    bool IsNil() const noexcept { return GetKind() == Kind::None; }

    /// Numbers as by Str, Booleans as "true" and "false", a colour as "&hRRGGBB", Nil as the empty text.
    String StringValue() const;
    /// A Double is cut towards zero and brought into range; true is 1; a text is read as by CDbl; a colour is 0xRRGGBB.
    std::int32_t IntegerValue() const;
    std::int64_t Int64Value() const;
    double DoubleValue() const;
    /// Numbers but zero are true; a text is true when it says "true" or is a number other than zero.
    bool BooleanValue() const;
    /// A number as 0xRRGGBB, a text as StringValue gives it.
    Color ColorValue() const;
    /// The object, or Nil when the value is Nil. All other kinds raise TypeMismatchException.
    Ref<Object> ObjectValue() const;

    /// Texts are equal without regard to case, numbers by their value whatever their kind, objects when they are the
    /// same one. Values that are not both texts, numbers, Booleans, colours or objects are never equal. A Double that
    /// is not a number equals itself, so that it can be found again as a key.
    friend bool operator==(const Variant& left, const Variant& right);

    /// A hash that stays the same between runs and versions, fit to be written down; that of a text is made from its
    /// exact bytes, so that texts which differ in case alone do not share it. Only an object's hash holds for one run.
    std::int32_t Hash() const;
    /// A hash that is the same for values that are equal, for use in tables.
    std::size_t KeyHash() const;

  private:
    using Storage = std::variant<std::monostate, bool, std::int32_t, std::int64_t, double, Color, String, Ref<Object>>;

    template <std::integral T>
    static Storage stored(T value) noexcept {
        if constexpr (std::is_same_v<T, bool>) {
            return value;
        } else if constexpr (std::is_signed_v<T> ? sizeof(T) <= 4 : sizeof(T) < 4) {
            return static_cast<std::int32_t>(value);
        } else if constexpr (std::is_signed_v<T> || sizeof(T) < 8) {
            return static_cast<std::int64_t>(value);
        } else {
            if (std::in_range<std::int64_t>(value)) return static_cast<std::int64_t>(value);
            return static_cast<double>(value);
        }
    }

    Storage value_;
};

/// Whether the value is kept as a number. A text is not, whatever it says.
bool IsNumeric(const Variant& value) noexcept;

}  // namespace framework
