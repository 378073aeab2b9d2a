// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/String.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "framework/core/text/Characters.h"

namespace framework {

/// Count, label and length, with the bytes and a NUL directly behind in the same block.
struct String::Rep {
    static constexpr std::size_t kUnknown = std::numeric_limits<std::size_t>::max();

    std::uint32_t references = 1;
    TextEncoding encoding;
    bool ascii = true;
    std::size_t size = 0;
    std::size_t capacity = 0;
    std::size_t length = kUnknown;
    // The character last asked for by index and where it begins.
    std::uint32_t seenCharacter = 0;
    std::uint32_t seenOffset = 0;

    char* bytes() noexcept { return reinterpret_cast<char*>(this + 1); }
    std::string_view view() noexcept { return {bytes(), size}; }

    void forgetCounts() noexcept {
        length = kUnknown;
        seenCharacter = 0;
        seenOffset = 0;
    }
    void see(std::size_t character, std::size_t offset) noexcept {
        if (offset > std::numeric_limits<std::uint32_t>::max()) return;
        seenCharacter = static_cast<std::uint32_t>(character);
        seenOffset = static_cast<std::uint32_t>(offset);
    }
};

String::Rep* String::make(std::size_t size, std::size_t capacity) {
    auto* rep = new (::operator new(sizeof(Rep) + capacity + 1)) Rep;
    rep->size = size;
    rep->capacity = capacity;
    rep->bytes()[size] = '\0';
    return rep;
}

void String::release(Rep* rep) noexcept {
    if (rep && --rep->references == 0) {
        rep->~Rep();
        ::operator delete(rep);
    }
}

String::String(const char* utf8) : String(std::string_view(utf8), Encodings::UTF8) {}

String::String(std::string_view bytes, TextEncoding encoding) {
    if (bytes.empty()) return;
    rep_ = make(bytes.size(), bytes.size());
    std::memcpy(rep_->bytes(), bytes.data(), bytes.size());
    rep_->encoding = encoding;
    rep_->ascii = encoding != Encodings::UTF16 && framework::IsAscii(bytes);
}

String::String(const String& other) noexcept : rep_(other.rep_) {
    if (rep_) ++rep_->references;
}

String::String(String&& other) noexcept : rep_(std::exchange(other.rep_, nullptr)) {}

String::~String() {
    release(rep_);
}

String& String::operator=(const String& other) noexcept {
    String copy(other);
    std::swap(rep_, copy.rep_);
    return *this;
}

String& String::operator=(String&& other) noexcept {
    std::swap(rep_, other.rep_);
    return *this;
}

std::string_view String::Bytes() const noexcept {
    return rep_ ? rep_->view() : std::string_view();
}

const char* String::CString() const noexcept {
    return rep_ ? rep_->bytes() : "";
}

bool String::IsAscii() const noexcept {
    return !rep_ || rep_->ascii;
}

TextEncoding String::Encoding() const noexcept {
    return rep_ ? rep_->encoding : Encodings::UTF8;
}

bool String::IsSingleByte() const noexcept {
    return IsAscii() || Encoding() == Encodings::Undefined || Encoding() == Encodings::WindowsLatin1;
}

std::size_t String::Length() const noexcept {
    if (!rep_) return 0;
    if (rep_->length == Rep::kUnknown) {
        rep_->length = IsSingleByte() ? rep_->size : CountCharacters(rep_->view(), rep_->encoding);
    }
    return rep_->length;
}

std::size_t String::OffsetOf(std::size_t character) const noexcept {
    const std::string_view bytes = Bytes();
    if (IsSingleByte()) return std::min(character, bytes.size());
    const bool goOn = character >= rep_->seenCharacter;
    std::size_t at = goOn ? rep_->seenCharacter : 0;
    std::size_t offset = goOn ? rep_->seenOffset : 0;
    for (; at < character && offset < bytes.size(); ++at) {
        offset += ReadCharacter(bytes.substr(offset), rep_->encoding).size;
    }
    rep_->see(at, offset);
    return offset;
}

std::size_t String::CharactersBefore(std::size_t offset) const noexcept {
    const std::string_view bytes = Bytes();
    if (IsSingleByte()) return std::min(offset, bytes.size());
    const bool goOn = offset >= rep_->seenOffset;
    std::size_t count = goOn ? rep_->seenCharacter : 0;
    std::size_t at = goOn ? rep_->seenOffset : 0;
    for (; at < offset && at < bytes.size(); ++count) {
        at += ReadCharacter(bytes.substr(at), rep_->encoding).size;
    }
    rep_->see(count, at);
    return count;
}

String String::Slice(std::size_t offset, std::size_t count) const {
    const std::string_view bytes = Bytes();
    if (offset == 0 && count >= bytes.size()) return *this;
    if (offset >= bytes.size()) return {};
    return String(bytes.substr(offset, count), rep_->encoding);
}

String String::Labelled(TextEncoding encoding) const {
    if (!rep_ || rep_->encoding == encoding) return *this;
    return String(Bytes(), encoding);
}

String String::Converted(TextEncoding encoding) const {
    const TextEncoding source = ComparedAs(Encoding());
    if (encoding == Encodings::Undefined || encoding == source) return Labelled(encoding);
    if (IsAscii() && encoding != Encodings::UTF16) return Labelled(encoding);
    std::string converted;
    converted.reserve(ByteCount());
    for (std::string_view rest = Bytes(); !rest.empty();) {
        const Character character = ReadCharacter(rest, source);
        rest.remove_prefix(character.size);
        AppendCharacter(converted, character.code, encoding);
    }
    return String(converted, encoding);
}

namespace {

/// The label of two texts in one: that of the one that needs it, and none when they contradict each other.
TextEncoding joinedEncoding(const String& left, const String& right) {
    if (left.IsEmpty() || left.Encoding() == right.Encoding()) return right.Encoding();
    if (right.IsEmpty()) return left.Encoding();
    // ASCII is the same bytes in all encodings but UTF-16, of which no text counts as ASCII.
    if (right.IsAscii() && left.Encoding() != Encodings::UTF16) return left.Encoding();
    if (left.IsAscii() && right.Encoding() != Encodings::UTF16) return right.Encoding();
    return Encodings::Undefined;
}

/// Whether two texts can only be joined after bringing them to one encoding.
bool needConversion(const String& left, const String& right) {
    return left.Encoding() != Encodings::Undefined && right.Encoding() != Encodings::Undefined &&
           joinedEncoding(left, right) == Encodings::Undefined;
}

}  // namespace

String& String::operator+=(const String& other) {
    if (other.IsEmpty()) return *this;
    if (IsEmpty()) return *this = other;
    if (needConversion(*this, other)) return *this = *this + other;
    const TextEncoding encoding = joinedEncoding(*this, other);
    const bool ascii = IsAscii() && other.IsAscii();
    const std::size_t added = other.ByteCount();
    const std::size_t size = rep_->size + added;
    if (rep_->references > 1 || rep_->capacity < size) {
        Rep* grown = make(rep_->size, std::max(size, rep_->size + rep_->size / 2));
        std::memcpy(grown->bytes(), rep_->bytes(), rep_->size);
        // `other` may be this very text, whose bytes must outlive the copy below.
        const String old(std::move(*this));
        rep_ = grown;
        const String& source = &other == this ? old : other;
        std::memcpy(rep_->bytes() + rep_->size, source.CString(), added);
    } else {
        std::memmove(rep_->bytes() + rep_->size, other.CString(), added);
    }
    rep_->size = size;
    rep_->bytes()[size] = '\0';
    rep_->encoding = encoding;
    rep_->ascii = ascii;
    rep_->forgetCounts();
    return *this;
}

String operator+(const String& left, const String& right) {
    if (left.IsEmpty()) return right;
    if (right.IsEmpty()) return left;
    if (needConversion(left, right)) return left.Converted(Encodings::UTF8) + right.Converted(Encodings::UTF8);
    String joined;
    joined.rep_ = String::make(left.ByteCount() + right.ByteCount(), left.ByteCount() + right.ByteCount());
    std::memcpy(joined.rep_->bytes(), left.CString(), left.ByteCount());
    std::memcpy(joined.rep_->bytes() + left.ByteCount(), right.CString(), right.ByteCount());
    joined.rep_->encoding = joinedEncoding(left, right);
    joined.rep_->ascii = left.IsAscii() && right.IsAscii();
    return joined;
}

namespace {

/// Goes through the folded code points of a text.
class FoldedCharacters {
  public:
    explicit FoldedCharacters(const String& text) : bytes_(text.Bytes()), encoding_(ComparedAs(text.Encoding())) {}

    bool AtEnd() const { return bytes_.empty(); }
    std::uint32_t Next() {
        const Character character = ReadCharacter(bytes_, encoding_);
        bytes_.remove_prefix(character.size);
        return FoldCase(character.code);
    }

  private:
    std::string_view bytes_;
    TextEncoding encoding_;
};

std::weak_ordering compareAscii(std::string_view left, std::string_view right) noexcept {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        const char a = FoldAscii(left[i]);
        const char b = FoldAscii(right[i]);
        if (a != b) return a <=> b;
    }
    return left.size() <=> right.size();
}

}  // namespace

bool operator==(const String& left, const String& right) noexcept {
    if (left.rep_ == right.rep_) return true;
    if (left.IsAscii() && right.IsAscii()) {
        return left.ByteCount() == right.ByteCount() && std::is_eq(compareAscii(left.Bytes(), right.Bytes()));
    }
    if (left.Encoding() == right.Encoding() && left.SameBytes(right)) return true;
    return std::is_eq(left <=> right);
}

std::weak_ordering operator<=>(const String& left, const String& right) noexcept {
    if (left.IsAscii() && right.IsAscii()) return compareAscii(left.Bytes(), right.Bytes());
    FoldedCharacters a(left);
    FoldedCharacters b(right);
    while (!a.AtEnd() && !b.AtEnd()) {
        const std::uint32_t codeA = a.Next();
        const std::uint32_t codeB = b.Next();
        if (codeA != codeB) return codeA <=> codeB;
    }
    if (a.AtEnd() && b.AtEnd()) return std::weak_ordering::equivalent;
    return a.AtEnd() ? std::weak_ordering::less : std::weak_ordering::greater;
}

std::size_t String::Hash() const noexcept {
    std::uint64_t hash = 0xCBF29CE484222325ULL;  // FNV-1a, 64 bits
    const auto mix = [&hash](std::uint32_t code) { hash = (hash ^ code) * 0x100000001B3ULL; };
    if (IsAscii()) {
        for (const char byte : Bytes()) mix(static_cast<std::uint8_t>(FoldAscii(byte)));
    } else {
        for (FoldedCharacters characters(*this); !characters.AtEnd();) mix(characters.Next());
    }
    return hash;
}

String TextEncoding::Chr(std::uint32_t code) const {
    constexpr std::uint32_t kReplacement = 0xFFFD;
    const bool valid = code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    std::string bytes;
    if (*this == Encodings::Undefined && code <= 0xFF) {
        bytes.push_back(static_cast<char>(code));
    } else {
        AppendCharacter(bytes, valid ? code : kReplacement, *this);
    }
    return String(bytes, *this);
}

}  // namespace framework
