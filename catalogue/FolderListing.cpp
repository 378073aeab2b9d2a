// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/FolderListing.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <vector>

#include "app/ImageFormats.h"
#include "catalogue/ImageRow.h"
#include "catalogue/MetadataQueries.h"
#include "catalogue/ReadAhead.h"
#include "catalogue/RecordText.h"
#include "fileutil/PathItems.h"
#include "framework/core/files/Paths.h"

namespace marrowbeck {
namespace {

using namespace RowRecord;

/// The path is no column of the list, where it goes with the row unseen, but names alone are not enough for a program.
constexpr int kPath = kColumnCount;
constexpr const char* kNoSize = "0 x 0";

/// What the row of an image shows, and its path.
class PrintedRow : public ImageRow {
  public:
    explicit PrintedRow(const Ref<FolderItem>& item) : values_(std::vector<String>(kPath + 1)) {
        values_(kFilename) = item->Name();
        values_(kPath) = item->AbsolutePath();
    }

    const Array<String>& Values() const { return values_; }

  private:
    void Show(Column column, const String& text) override { values_(column) = text; }
    void Tell(Column, const String&) override {}
    void Keep(Tag, const String&) override {}
    void TellCamera(const String&) override {}
    String Ask(const String& path) override {
        const Ref<Shell> shell = New<Shell>();
        shell->Execute(MetadataQueries::kAll + path);
        return shell->ErrorCode() == 0 ? shell->Result() : String();
    }

    Array<String> values_;
};

Array<String> names() {
    Array<String> names;
    for (const char* heading : kHeadings) names.Append(Trim(heading));
    names.Append("Path");
    return names;
}

bool isImage(const String& type) {
    return !type.IsEmpty() && InStr(ImageFormats::All(), type + ";") > 0;
}

void tell(const String& path, const String& reason) {
    const String line = "marrowbeck: " + path + ": " + reason;
    std::fprintf(stderr, "%s\n", line.CString());
}

/// Why what is at the path may not be used so; empty when it may.
String refusalOf(const Ref<FolderItem>& item, int rights) {
    const int failure = item->AccessError(rights);
    return failure == 0 ? "" : std::strerror(failure);
}

class Listing {
  public:
    explicit Listing(FolderListing::Form form) : isJson_(form == FolderListing::Form::Json), names_(names()) {}

    void Begin() { write(isJson_ ? String("[") : RecordText::Csv(names_)); }
    void End() {
        if (isJson_) write(first_ ? "]\n" : "\n]\n");
    }
    int Status() const { return status_; }
    /// Whether anybody still takes what is written.
    bool IsTaken() const { return isTaken_; }

    /// The list is not whole.
    void Fail() { status_ = 1; }
    void Complain(const Ref<FolderItem>& item, const String& reason) {
        tell(item->AbsolutePath(), reason);
        Fail();
    }

    void Add(const Ref<FolderItem>& item) {
        PrintedRow row(item);
        try {
            row.Fill(item);
        } catch (const OutOfBoundsException&) {
            // There was no answer. The row stands as far as it got, as in the window.
        }
        const Array<String>& values = row.Values();
        const bool isRead = !values(kPixels).IsEmpty() && values(kPixels) != kNoSize;
        // Whatever was read could be.
        if (const String refusal = isRead ? String() : refusalOf(item, R_OK); !refusal.IsEmpty()) {
            Complain(item, refusal);
        } else if (values(kPixels).IsEmpty()) {
            Complain(item, "Nothing could be learned of it");
        } else if (values(kPixels) == kNoSize) {
            // The list is whole all the same: this is what there is to say of a damaged file, or of a drawing.
            tell(item->AbsolutePath(), "No picture could be read in it");
        }
        write(isJson_ ? (first_ ? "\n" : ",\n") + RecordText::Json(names_, values) : RecordText::Csv(values));
        first_ = false;
    }

  private:
    void write(const String& text) {
        if (!isTaken_) return;
        std::fwrite(text.CString(), 1, static_cast<std::size_t>(LenB(text)), stdout);
        if (std::fflush(stdout) == 0) return;
        // Who reads only the beginning, as head does, has no need to be told.
        if (errno != EPIPE)
            std::fprintf(stderr, "marrowbeck: the list could not be written: %s\n", std::strerror(errno));
        isTaken_ = false;
        Fail();
    }

    bool isJson_;
    Array<String> names_;
    bool first_ = true;
    bool isTaken_ = true;
    int status_ = 0;
};

void listFolder(const Ref<FolderItem>& folder, Listing& listing) {
    const int count = folder->Count();
    if (folder->CountError() != 0) listing.Complain(folder, std::strerror(folder->CountError()));
    const auto imageAt = [&](int i) {
        const Ref<FolderItem> item = folder->TrueItem(i);
        return item && isImage(item->Type()) ? item : Ref<FolderItem>();
    };
    ReadAhead ahead(
        [&](int i) {
            const Ref<FolderItem> item = imageAt(i);
            return item ? item->ShellPath() : String();
        },
        count, {MetadataQueries::kAll});
    for (int i = 1; i <= count && listing.IsTaken(); ++i) {
        ahead.Reached(i);
        if (const Ref<FolderItem> item = imageAt(i)) listing.Add(item);
    }
}

void listSubfolders(const Ref<FolderItem>& folder, Listing& listing) {
    const Ref<Shell> shell = New<Shell>();
    shell->Execute(MetadataQueries::kEveryFileIn + folder->ShellPath() + MetadataQueries::kImageTerm);
    if (shell->ErrorCode() == MetadataQueries::kIncomplete) {
        // The tool has told of each itself.
        listing.Fail();
    } else if (shell->ErrorCode() != 0) {
        return listing.Complain(folder, "Error code: " + Str(shell->ErrorCode()));
    }
    // Each path is ended by a NUL.
    const Array<String> paths = Split(shell->Result(), Chr(0));
    const int last = paths.Ubound() - 1;
    ReadAhead ahead([&paths](int i) { return String(Paths::EscapeForShell(paths(i).Bytes())); }, last,
                    {MetadataQueries::kAll});
    PathItems items(paths);
    for (int i = 0; i <= last && listing.IsTaken(); ++i) {
        ahead.Reached(i);
        if (const Ref<FolderItem> item = items.At(i)) listing.Add(item);
    }
}

}  // namespace

int FolderListing::Print() const {
    // What is left to be tidied up is, when nobody reads on.
    std::signal(SIGPIPE, SIG_IGN);
    Shell::TidyUpAtSignals();
    Listing listing(Shape);
    const Ref<FolderItem> folder = GetFolderItem(Folder);
    String refusal = folder ? refusalOf(folder, F_OK) : std::strerror(ENOENT);
    if (refusal.IsEmpty()) refusal = folder->Directory() ? refusalOf(folder, R_OK | X_OK) : std::strerror(ENOTDIR);
    if (!refusal.IsEmpty()) {
        tell(Folder, refusal);
        return 1;
    }
    Shell::PassErrorsOn();
    listing.Begin();
    Subfolders ? listSubfolders(folder, listing) : listFolder(folder, listing);
    listing.End();
    return listing.Status();
}

}  // namespace marrowbeck
