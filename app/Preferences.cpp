// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/Preferences.h"

#include "app/OwnFiles.h"
#include "fileutil/FileReplace.h"
#include "framework/framework.h"

namespace marrowbeck {
namespace {

struct Properties {
    Ref<plist> prefs;
    Ref<FolderItem> PreferenceFile;
    Ref<FolderItem> TempFile;
};

Properties& properties() {
    static Properties theProperties;
    return theProperties;
}

Ref<FolderItem> linkOrProgramFolder() {
    return SpecialFolder::ApplicationData()->TrueChild("Marrowbeck");
}

Ref<FolderItem> programFolder() {
    return SpecialFolder::ApplicationData()->Child("Marrowbeck");
}

Ref<FolderItem> tempFolder() {
    return programFolder()->TrueChild("temp");
}

/// Nil for a file that is no property list or cannot be read at all.
Ref<plist> read(const Ref<FolderItem>& file) {
    try {
        Ref<plist> document = New<plist>(file);
        if (!document->error || !file->Exists()) return document;
        document->Cleanup();
        return Nil;
    } catch (const RuntimeException&) {
        return Nil;
    }
}

/// Deletes what a tool that died in the middle of a conversion left of it.
void deleteHalfConverted(const Ref<FolderItem>& folder) {
    for (int i = folder->Count(); i >= 1; --i) {
        const Ref<FolderItem> item = folder->TrueItem(i);
        if (item && IsHalfMadeName(item->Name()) && !item->Directory()) item->Delete();
        LoopYield();
    }
}

/// Empties a folder that is somebody's, and in which other files may lie, of what is ours.
void deleteOwnFilesFrom(const Ref<FolderItem>& folder) {
    for (int i = folder->Count(); i >= 1; --i) {
        const Ref<FolderItem> item = folder->TrueItem(i);
        if (item && !item->Directory() && IsOwnFile(item)) item->Delete();
        LoopYield();
    }
}

bool rename(const Ref<FolderItem>& from, const Ref<FolderItem>& to) {
    try {
        FileReplace::Rename(from, to);
        return true;
    } catch (const FileReplaceException&) {
        return false;
    }
}

/// A name beside that of the file which nothing has yet.
Ref<FolderItem> asideOf(const Ref<FolderItem>& file) {
    const Ref<FolderItem> folder = file->Parent();
    Ref<FolderItem> aside = folder->TrueChild(file->Name() + " unreadable");
    for (int i = 2; aside->Exists(); ++i) aside = folder->TrueChild(file->Name() + " unreadable " + Str(i));
    return aside;
}

/// An empty document in the place of one that cannot be read. The old file keeps what it holds, under another name.
Ref<plist> startAnew(const Ref<FolderItem>& file) {
    const Ref<FolderItem> aside = asideOf(file);
    const bool moved = rename(file, aside);
    MsgBox("The preferences could not be read, and Marrowbeck starts without them." +
           (moved ? " The old file was kept as " + aside->AbsolutePath() + "." : String()));
    // A file that does not even let itself be moved is left alone.
    return New<plist>(moved ? file : aside);
}

}  // namespace

const Ref<plist>& Preferences::prefs() {
    return properties().prefs;
}

const Ref<FolderItem>& Preferences::PreferenceFile() {
    return properties().PreferenceFile;
}

const Ref<FolderItem>& Preferences::TempFile() {
    return properties().TempFile;
}

void Preferences::LoadPreferences() {
    CreateFolder(programFolder());
    CreateFolder(tempFolder());
    CreateFolder(ThumbnailsFolder());
    // Earlier versions left them open to who may look into a home. A folder of the person's own choice, to which a link
    // leads, is left as it is.
    for (const Ref<FolderItem>& folder : {linkOrProgramFolder(), tempFolder(), ThumbnailsFolder()}) {
        folder->CloseToOthers();
    }
    deleteFilesFromFolder(tempFolder());
    deleteHalfConverted(programFolder());
    Properties& module = properties();
    module.TempFile = tempFolder()->Child(kPreferencesName + String(".temp") + generateRandomString() + ".plist");
    plist::StagingFile(module.TempFile);
    module.PreferenceFile = programFolder()->Child(kPreferencesName + String(".plist"));
    module.prefs = read(module.PreferenceFile);
    if (!module.prefs) module.prefs = startAnew(module.PreferenceFile);
}

void Preferences::SavePreferences() {
    try {
        prefs()->Save();
    } catch (FileReplaceException& failure) {
        const int reason = prefs()->systemError != 0 ? prefs()->systemError : failure.ErrorNumber();
        failure.Explanation("The preferences could not be saved to " + PreferenceFile()->AbsolutePath() + ": " +
                            System::FileErrorReason(reason) + ". What was saved before is still there.");
        throw;
    }
    deleteFilesFromFolder(tempFolder());
    PreferenceFile()->MacCreator("ttxt");
    PreferenceFile()->MacType("TEXT");
}

String Preferences::generateRandomString() {
    String text;
    for (int i = 0; i < 4; ++i) text = text + Str(Rnd() * 9.0);
    return text;
}

Ref<FolderItem> Preferences::ThumbnailsFolder() {
    return programFolder()->TrueChild("thumbnails");
}

void Preferences::CreateFolder(const Ref<FolderItem>& folder) {
    if (!folder || folder->Exists()) return;
    CreateFolder(folder->Parent());
    folder->CreateAsFolder(0700);
}

void Preferences::deleteFilesFromFolder(const Ref<FolderItem>& folder) {
    CheckStack();
    // A person moved it elsewhere, and keeps other files there perhaps.
    if (!folder->Directory()) return deleteOwnFilesFrom(FolderItem::Own(folder->AbsolutePath()));
    // From the end, since deleting shifts what follows.
    for (int i = folder->Count(); i >= 1; --i) {
        if (const Ref<FolderItem> item = folder->TrueItem(i)) {
            if (item->Directory()) deleteFilesFromFolder(item);
            item->Delete();
        }
        LoopYield();
    }
}

}  // namespace marrowbeck
