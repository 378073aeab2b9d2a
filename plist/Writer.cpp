// SPDX-License-Identifier: GPL-2.0-or-later
#include <cerrno>
#include <cstdint>
#include <string_view>

#include "fileutil/FileReplace.h"
#include "plist/EntryPrinter.h"
#include "plist/plist.h"

namespace marrowbeck {
namespace {

class FilePrinter : public EntryPrinter {
  public:
    explicit FilePrinter(const Ref<TextOutputStream>& stream) : stream_(stream) {}

  protected:
    void Line(std::string_view line) override { stream_->WriteLine(String(line)); }
    void Below(plistDict& child, std::int32_t level) override { child.Write(stream_, level); }

  private:
    Ref<TextOutputStream> stream_;
};

Ref<FolderItem>& stagingFile() {
    static Ref<FolderItem> file;
    return file;
}

}  // namespace

const Ref<FolderItem>& plist::StagingFile() {
    return stagingFile();
}

void plist::StagingFile(const Ref<FolderItem>& file) {
    stagingFile() = file;
}

void plistDict::Write(const Ref<TextOutputStream>& stream, std::int32_t level) {
    FilePrinter(stream).Print(*this, level);
}

void plist::writeDocument(const Ref<TextOutputStream>& stream) {
    for (int i = 1; i <= headers.Ubound(); ++i) {
        stream->WriteLine(headers(i));
        LoopYield();
    }
    root->Write(stream, 1);
    stream->WriteLine("</dict>");
    stream->WriteLine("</plist>");
}

void plist::Save(bool cleanup) {
    systemError = 0;
    // What a document holds is its owner's; the file that it replaces says who else may read it.
    if (const auto stream = TextOutputStream::CreatePrivate(StagingFile())) {
        writeDocument(stream);
        if (!stream->Close()) {
            systemError = stream->ErrorNumber();
            // Half a document must not take the place of a whole one. Without its source the replacement below fails
            // as it does where the staging file could not even be made.
            error = true;
            errorMessage = "Could not write file for saving";
            StagingFile()->Delete();
        }
    } else {
        systemError = errno;
        error = true;
        errorMessage = "Could not open file for saving";
    }
    FileReplace::Replace(StagingFile(), savePath);
    if (isBinary) convertToBinary();
    if (cleanup) Cleanup();
}

void plist::Save() {
    Save(false);
}

void plist::convertToBinary() {
    New<Shell>()->Execute("plutil -convert binary1 " + savePath->ShellPath());
    // By a rename, so that there is a file at every moment.
    FileReplace::ReplaceByCopy(savePath, org);
}

void plist::Cleanup() {
    if (isBinary) savePath->Delete();
}

void plist::SaveAsInvisible(const Ref<FolderItem>& /*file*/, bool cleanup) {
    if (const auto stream = TextOutputStream::Create(savePath)) {
        writeDocument(stream);
        savePath->Visible(false);
    } else {
        error = true;
        errorMessage = "Could not open file for saving";
    }
    if (isBinary) {
        convertToBinary();
        org->Visible(false);
    }
    if (cleanup) Cleanup();
}

void plist::SaveAsInvisible(const Ref<FolderItem>& file) {
    SaveAsInvisible(file, false);
}

}  // namespace marrowbeck
