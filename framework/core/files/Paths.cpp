// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/Paths.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>

#include "base/Paths.h"
#include "framework/core/files/Disk.h"
#include "framework/core/text/Characters.h"

namespace framework::Paths {

namespace {

constexpr std::string_view kScheme = "file:";

bool isLetterOrDigit(char byte) {
    const char lower = FoldAscii(byte);
    return (lower >= 'a' && lower <= 'z') || (byte >= '0' && byte <= '9');
}

bool sameFolded(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return FoldAscii(a) == FoldAscii(b); });
}

/// File managers of other desktops put the machine's own name into what they hand over.
bool isThisMachine(std::string_view host) {
    if (host.empty() || sameFolded(host, "localhost")) return true;
    std::array<char, HOST_NAME_MAX + 1> own{};
    return ::gethostname(own.data(), own.size() - 1) == 0 && sameFolded(host, own.data());
}

int hexDigit(char byte) {
    const char lower = FoldAscii(byte);
    if (byte >= '0' && byte <= '9') return byte - '0';
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace

std::string Absolute(std::string_view path) {
    return base::absolutePath(path);
}

std::string Normalise(std::string_view path) {
    return internal::Disk::Users().Clean(path);
}

std::string_view LastPart(std::string_view path) {
    return base::lastPart(path);
}

std::string_view EnclosingFolder(std::string_view path) {
    return base::enclosingFolder(path);
}

std::string Join(std::string_view folder, std::string_view name) {
    return base::joined(folder, name);
}

std::string EscapeForShell(std::string_view path) {
    constexpr std::string_view kHarmless = "_-./,+:@%";
    std::string word;
    word.reserve(path.size() + 8);
    for (const char byte : path) {
        if (byte == '\n') {
            word += "'\n'";  // behind a backslash a line end would vanish
            continue;
        }
        const bool ascii = static_cast<unsigned char>(byte) < 0x80;
        if (ascii && !isLetterOrDigit(byte) && kHarmless.find(byte) == std::string_view::npos) word += '\\';
        word += byte;
    }
    return word;
}

std::string ToUrl(std::string_view path) {
    constexpr std::string_view kPlain = "-._~/:";
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string url("file://");
    for (const char byte : path) {
        if (isLetterOrDigit(byte) || kPlain.find(byte) != std::string_view::npos) {
            url += byte;
        } else {
            const auto value = static_cast<unsigned char>(byte);
            url += {'%', kHex[value >> 4U], kHex[value & 15U]};
        }
    }
    return url;
}

bool IsUrl(std::string_view text) {
    return sameFolded(text.substr(0, kScheme.size()), kScheme);
}

std::optional<std::string> FromUrl(std::string_view url) {
    if (!IsUrl(url)) return std::nullopt;
    url.remove_prefix(kScheme.size());
    if (url.starts_with("//")) {
        url.remove_prefix(2);
        const std::size_t hostEnd = std::min(url.find('/'), url.size());
        if (!isThisMachine(url.substr(0, hostEnd))) return std::nullopt;
        url.remove_prefix(hostEnd);
    }
    if (!url.starts_with('/')) return std::nullopt;
    std::string path;
    for (std::size_t i = 0; i < url.size(); ++i) {
        const int high = url[i] == '%' && i + 2 < url.size() ? hexDigit(url[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(url[i + 2]) : -1;
        if (low >= 0) {
            path += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            path += url[i];
        }
    }
    if (path.find('\0') != std::string::npos) return std::nullopt;
    return path;
}

String ForDisplay(std::string_view name) {
    constexpr std::uint32_t kReplacement = 0xFFFD;
    constexpr std::uint32_t kControlPictures = 0x2400;
    constexpr std::uint32_t kDeletePicture = 0x2421;
    std::string shown;
    while (!name.empty()) {
        const Character character = ReadCharacter(name, Encodings::UTF8);
        name.remove_prefix(character.size);
        std::uint32_t code = character.code;
        if (code < 0x20) code += kControlPictures;
        if (code == 0x7F) code = kDeletePicture;
        if ((code >= 0x80 && code < 0xA0) || (code >= 0xD800 && code < 0xE000)) code = kReplacement;
        AppendCharacter(shown, code, Encodings::UTF8);
    }
    return String(shown);
}

}  // namespace framework::Paths
