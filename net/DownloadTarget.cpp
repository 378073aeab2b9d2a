// SPDX-License-Identifier: GPL-2.0-or-later
#include "net/DownloadTarget.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "framework/core/text/Characters.h"

namespace marrowbeck {
namespace {

/// Whether a name may hold the character: it then looks like what it is, in one line.
bool isPlain(std::uint32_t code) {
    const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    const bool isLineEnd = code == 0x2028 || code == 0x2029;
    const bool isDirection = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return !isControl && !isLineEnd && !isDirection;
}

String fitName(const String& name) {
    std::string fit;
    for (std::string_view rest = name.Bytes(); !rest.empty();) {
        const Character character = ReadCharacter(rest, Encodings::UTF8);
        if (isPlain(character.code) && !(fit.empty() && character.code == '.')) fit += rest.substr(0, character.size);
        rest.remove_prefix(character.size);
        LoopYield();
    }
    return String(fit, name.Encoding());
}

/// An item in the folder whose name is like `name`, with a mark in front of its suffix, and that nothing has yet. The
/// mark is `word`, if that is not empty, and a number, of which a first one is left out.
Ref<FolderItem> freeItem(const Ref<FolderItem>& folder, const String& name, const String& word) {
    std::size_t dot = name.Bytes().rfind('.');
    // An archive in a compressed form has two.
    constexpr std::string_view kArchive = ".tar";
    if (dot != std::string_view::npos && name.Bytes().substr(0, dot).ends_with(kArchive)) dot -= kArchive.size();
    const String stem = name.Slice(0, dot);
    const String suffix = dot == std::string_view::npos ? String() : name.Slice(dot);
    Ref<FolderItem> item;
    for (int i = word.IsEmpty() ? 2 : 1; !item || item->Exists(); ++i) {
        const String number = i == 1 ? String() : Str(i);
        const String mark = word.IsEmpty() || number.IsEmpty() ? word + number : word + " " + number;
        item = folder->TrueChild(stem + " (" + mark + ")" + suffix);
        LoopYield();
    }
    return item;
}

}  // namespace

DownloadTarget::DownloadTarget(const String& name)
    : folder_(SpecialFolder::Desktop()), place_("on your Desktop"), name_(fitName(name)) {
    const Ref<FolderItem> home = SpecialFolder::Home();
    const auto isThere = [this, &home] { return folder_->Directory() && !folder_->IsSame(home); };
    const bool onDesktop = isThere();
    if (!onDesktop) {
        folder_ = SpecialFolder::Downloads();
        place_ = "in your download folder";
        if (!isThere()) {
            folder_ = home;
            place_ = "in your home folder";
        }
    }
    if (name_.IsEmpty()) return;

    const Ref<FolderItem> present = folder_->TrueChild(name_);
    if (!present->Exists()) {
        file_ = present;
    } else if (!onDesktop) {
        file_ = freeItem(folder_, name_, "");
        name_ = file_->Name();
    } else {
        // A folder stays what it is, and fails the download.
        const bool isFolder = folder_->Child(name_)->Directory();
        if (!isFolder) aside_ = freeItem(folder_, name_, "earlier");
        if (isFolder || present->MoveFileTo(aside_)) file_ = folder_->Child(name_);
        if (!file_) aside_ = Nil;
    }
}

DownloadTarget::~DownloadTarget() {
    if (aside_) aside_->MoveFileTo(file_);
}

void DownloadTarget::Complete(bool whole) {
    if (!aside_) return;
    if (whole) {
        aside_->Delete();
    } else {
        const Ref<FolderItem> beside = freeItem(folder_, name_, "");
        // What cannot be moved keeps the place, and the earlier file the name under which it was set aside.
        if (file_->MoveFileTo(beside) && aside_->MoveFileTo(file_)) {
            file_ = beside;
            name_ = beside->Name();
        }
    }
    aside_ = Nil;
}

}  // namespace marrowbeck
