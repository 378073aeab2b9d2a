// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/FileNote.h"

#include "base/Frames.h"

namespace marrowbeck::tools {

namespace {

enum Mark : std::uint32_t { isThere = 1, isForbidden = 2 };

}  // namespace

std::string bytesOf(const FileNote& note) {
    const std::uint32_t marks = (note.file ? isThere : 0U) | (note.isForbidden ? isForbidden : 0U);
    std::string bytes = base::numberBytes(note.id) + base::numberBytes(note.reader) + base::numberBytes(marks);
    if (note.file) base::appendIdentity(bytes, *note.file);
    return bytes + note.error;
}

std::optional<FileNote> fileNoteFrom(std::string_view body) {
    const auto id = base::takeNumber(body);
    const auto reader = base::takeNumber(body);
    const auto marks = base::takeNumber(body);
    if (!marks) return std::nullopt;
    FileNote note{*id, *reader, std::nullopt, (*marks & isForbidden) != 0, {}};
    if ((*marks & isThere) != 0) {
        note.file = base::takeIdentity(body);
        if (!note.file) return std::nullopt;
    }
    note.error = body;
    return note;
}

}  // namespace marrowbeck::tools
