// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <string_view>

#include "framework/core/threads/StackCheck.h"
#include "plist/EntryReader.h"
#include "plist/plist.h"

namespace marrowbeck {

plist::plist(const Ref<FolderItem>& file, const Ref<FolderItem>& defaultFile) {
    plist::Load(file, defaultFile);
}

plist::plist(const Ref<FolderItem>& file) {
    plist::Load(file, Nil);
}

plist::~plist() = default;

void plist::Load(const Ref<FolderItem>& file, const Ref<FolderItem>& defaultFile) {
    root = New<plistDict>();
    savePath = file;
    Ref<FolderItem> source = file;
    if (!file->Exists() && defaultFile) source = defaultFile;
    if (!source->Exists()) {
        error = true;
        errorMessage = source->AbsolutePath() + " does not exist";
        beginDocument();
        return;
    }
    Ref<TextInputStream> stream = source->OpenAsTextFile();
    const String firstLine = stream->ReadLine();
    stream->Close();
    stream = Left(firstLine, 6) == "bplist" ? openAsText(source) : source->OpenAsTextFile();
    loadText(stream, firstLine);
    stream->Close();
}

/// By way of an XML copy beside the file. Where the conversion fails, the copy is as binary as the file.
Ref<TextInputStream> plist::openAsText(const Ref<FolderItem>& binary) {
    isBinary = true;
    org = binary;
    // A link of that name is not what is meant, and what it leads to is not ours to delete.
    savePath = binary->Parent()->TrueChild(binary->Name() + " temp");
    if (savePath->Exists()) savePath->Delete();
    // A folder with something in it would take the copy in, and no save could replace it.
    if (savePath->Directory()) return binary->OpenAsTextFile();
    const Ref<Shell> shell = New<Shell>();
    const bool copied = binary->CopyFileTo(savePath);
    if (copied) {
        shell->Execute("plutil -convert xml1 " + savePath->ShellPath());
        if (shell->ErrorCode() == 0) return savePath->OpenAsTextFile();
    }
    // A disk that is full, or may not be written, takes no copy; that makes no file unreadable.
    shell->Execute("plutil -convert xml1 -o - " + binary->ShellPath());
    if (shell->ErrorCode() == 0) return New<TextInputStream>(shell->Result());
    return (copied ? savePath : binary)->OpenAsTextFile();
}

void plist::loadText(const Ref<TextInputStream>& stream, String line) {
    const String start = "<dict>";
    while (!stream->EndOfFile() && line != start) {
        line = stream->ReadLine();
        headers.Append(line);
        LoopYield();
    }
    if (line == start) {
        root->Load(stream, "root", false, Nil, this, true);
        return;
    }
    error = true;
    errorMessage = "Not a plist file";
}

void plist::beginDocument() {
    headers.Append(R"(<?xml version="1.0" encoding="UTF-8"?>)");
    // The identifiers that version 1.0 of the format is published under; readers of other makers look for them.
    headers.Append(
        R"(<!DOCTYPE plist PUBLIC "-//Apple Computer//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">)");
    headers.Append(R"(<plist version="1.0">)");
    headers.Append("<dict>");
    root->Load(Nil, "root", false, Nil, this, false);
}

void plistDict::Load(const Ref<TextInputStream>& stream, const String& nodeName, bool asArray,
                     const BackReference<plistDict>& parentNode, const BackReference<plist>& document, bool read) {
    CheckStack();
    values = New<Dictionary>();
    types = New<Dictionary>();
    name = nodeName;
    parent = parentNode;
    rootClass = document;
    isArray = asArray;
    indexOf = -1;
    if (read) EntryReader(*this, stream).Read();
}

String plistDict::LStripNonPrintingChars(const String& text) {
    const std::string_view bytes = text.Bytes();
    const auto* const first =
        std::find_if(bytes.begin(), bytes.end(), [](char byte) { return static_cast<unsigned char>(byte) >= 32; });
    return text.Slice(static_cast<std::size_t>(first - bytes.begin()));
}

String plistDict::BracketsToCode(const String& text) {
    return ReplaceAll(ReplaceAll(text, "<", "&lt;"), ">", "&gt;");
}

String plistDict::CodeToBrackets(const String& text) {
    return ReplaceAll(ReplaceAll(text, "&lt;", "<"), "&gt;", ">");
}

}  // namespace marrowbeck
