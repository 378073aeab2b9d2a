// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/SpecialFolder.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "framework/core/files/Paths.h"
#include "framework/core/files/TextInputStream.h"

namespace framework::SpecialFolder {

namespace {

/// The folder that a variable of the environment names; empty when it is not set or, against the rules, not absolute.
std::string fromEnvironment(const char* variable) {
    const char* path = std::getenv(variable);
    return path && path[0] == '/' ? path : "";
}

std::string home() {
    std::string path = fromEnvironment("HOME");
    if (!path.empty()) return path;
    const passwd* user = ::getpwuid(::getuid());
    return user ? user->pw_dir : "/";
}

std::string inHome(const char* variable, std::string_view standard) {
    const std::string path = fromEnvironment(variable);
    return path.empty() ? Paths::Join(home(), standard) : path;
}

/// What stands in quotes at the start of `text`, with the backslashes of the shell undone.
std::string unquote(std::string_view text) {
    std::string plain;
    if (!text.starts_with('"')) return plain;
    for (std::size_t i = 1; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) ++i;
        plain += text[i];
    }
    return plain;
}

/// The setting `key` of the desktop's user folders. Its value is absolute or starts with "$HOME/".
String userFolder(std::string_view key, std::string_view standard) {
    constexpr std::string_view kHome = "$HOME";
    std::string path = Paths::Join(home(), standard);
    const std::string settings = inHome("XDG_CONFIG_HOME", ".config") + "/user-dirs.dirs";
    const Ref<TextInputStream> stream = FolderItem::Own(String(settings))->OpenAsTextFile();
    while (stream && !stream->EndOfFile()) {
        const String line = stream->ReadLine();
        std::string_view text = line.Bytes();
        text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
        if (!text.starts_with(key) || !text.substr(key.size()).starts_with('=')) continue;
        const std::string value = unquote(text.substr(key.size() + 1));
        if (value == kHome || value.starts_with("$HOME/")) path = home() + value.substr(kHome.size());
        if (value.starts_with('/')) path = value;
    }
    return String(path);
}

}  // namespace

Ref<FolderItem> ApplicationData() {
    return FolderItem::Own(String(inHome("XDG_DATA_HOME", ".local/share")));
}

Ref<FolderItem> Home() {
    return FolderItem::Own(String(home()));
}

Ref<FolderItem> Desktop() {
    return FolderItem::Own(userFolder("XDG_DESKTOP_DIR", "Desktop"));
}

Ref<FolderItem> Downloads() {
    return FolderItem::Own(userFolder("XDG_DOWNLOAD_DIR", "Downloads"));
}

Ref<FolderItem> Pictures() {
    return GetFolderItem(String(Paths::ToUrl(userFolder("XDG_PICTURES_DIR", "Pictures").Bytes())));
}

Ref<FolderItem> Temporary() {
    const std::string path = fromEnvironment("TMPDIR");
    return FolderItem::Own(String(path.empty() ? "/tmp" : path));
}

}  // namespace framework::SpecialFolder
