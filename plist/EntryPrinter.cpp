// SPDX-License-Identifier: GPL-2.0-or-later
#include "plist/EntryPrinter.h"

#include "framework/core/threads/StackCheck.h"

namespace marrowbeck {

void EntryPrinter::Put(std::initializer_list<std::string_view> parts) {
    line_.clear();
    for (const std::string_view part : parts) line_ += part;
    Line(line_);
}

void EntryPrinter::Print(plistDict& node, std::int32_t level) {
    CheckStack();
    // Others run at the yields, and may take the node out.
    const Ref<plistDict> alive(&node);
    const String indent{std::string(static_cast<std::size_t>(level < 0 ? 0 : level), '\t')};
    for (int i = 0; i < node.types->Count(); ++i) {
        const String key = node.types->Key(i).StringValue();
        const String word = node.types->Value(key).StringValue();
        const bool isNode = IsContainer(word);
        // Asked for before the key is printed: a key with a type and no value ends the printing in front of it.
        String text;
        if (!isNode) text = node.BracketsToCode(node.values->Value(key).StringValue()).Converted(Encodings::UTF8);
        const std::string_view tabs = indent.Bytes();
        if (!node.isArray) {
            Put({tabs, "<key>", key.Converted(Encodings::UTF8).Bytes(), "</key>"});
            AfterKey(node, key, indent);
        }
        if (isNode) {
            printNodes(node, key, word, level, indent);
        } else if (word == "data") {
            Put({tabs, "<data>"});
            Put({tabs, text.Bytes()});
            Put({tabs, "</data>"});
        } else if (word == "boolean") {
            Put({tabs, text == "true" ? "<true/>" : "<false/>"});
        } else {
            const String tag = word.Converted(Encodings::UTF8);
            Put({tabs, "<", tag.Bytes(), ">", text.Bytes(), "</", tag.Bytes(), ">"});
        }
        LoopYield();
    }
}

/// Prints every node that goes by the key; there are several where a file has a key twice.
void EntryPrinter::printNodes(plistDict& node, const String& key, const String& word, std::int32_t level,
                              const String& indent) {
    const std::string_view tag = word == "array" ? "array" : "dict";
    // All are found before the first is printed, since those below may be taken out meanwhile too.
    std::vector<Ref<plistDict>> children;
    const Array<String>& names = node.childrenNames;
    for (int at = node.childIndex_.First(names, key); at > 0; at = node.childIndex_.Next(names, at)) {
        children.push_back(node.children(at));
    }
    for (const Ref<plistDict>& child : children) {
        if (child->count() < 1) {
            Put({indent.Bytes(), "<", tag, "/>"});
        } else {
            Put({indent.Bytes(), "<", tag, ">"});
            Below(*child, level + 1);
            Put({indent.Bytes(), "</", tag, ">"});
        }
        LoopYield();
    }
}

}  // namespace marrowbeck
