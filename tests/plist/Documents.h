// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <fstream>
#include <string>

#include "plist/plist.h"
#include "tests/support/TemporaryFolder.h"

namespace marrowbeck::test {

inline void writeFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string head() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist>\n<plist version=\"1.0\">\n<dict>\n";
}

/// A folder with documents in it, and the staging file through which they are saved.
class Documents {
  public:
    Documents() { plist::StagingFile(folder.Item()->Child("staging")); }

    std::string Path(const std::string& name = "doc.plist") const { return folder.Path(name); }
    Ref<FolderItem> Item(const std::string& name = "doc.plist") const { return folder.Item()->Child(String(name)); }
    Ref<plist> Open(const std::string& name = "doc.plist") const { return New<plist>(Item(name)); }
    /// A document of these lines between its header and its end.
    Ref<plist> Of(const std::string& entries, const std::string& name = "doc.plist") const {
        writeFile(Path(name), head() + entries + "</dict>\n</plist>\n");
        return Open(name);
    }
    std::string Text(const std::string& name = "doc.plist") const { return readFile(Path(name)); }
    /// What stands between the header and the end of the file.
    std::string Entries(const std::string& name = "doc.plist") const {
        const std::string text = Text(name);
        const std::size_t start = text.find("<dict>\n") + 7;
        return text.substr(start, text.rfind("</dict>\n</plist>\n") - start);
    }

    TemporaryFolder folder;
};

/// All of a node as one line: keys, type words and texts, nodes in braces or brackets.
inline std::string outline(const Ref<plistDict>& node) {
    std::string text;
    for (int i = 0; i < node->count(); ++i) {
        const String key = node->types->Key(i).StringValue();
        const String word = node->GetType(key);
        text += (text.empty() ? "" : " ") + key.ToStd() + "=";
        if (IsContainer(word)) {
            const bool array = word == "array";
            text += (array ? "[" : "{") + outline(node->child(key)) + (array ? "]" : "}");
        } else {
            text += word.ToStd() + ":" + node->values->Lookup(key, "(none)").StringValue().ToStd();
        }
    }
    return text;
}

}  // namespace marrowbeck::test
