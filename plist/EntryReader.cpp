// SPDX-License-Identifier: GPL-2.0-or-later
#include "plist/EntryReader.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace marrowbeck {
namespace {

const String kKeyTag = "<key>";
const String kKeyEnd = "</key>";
const String kEmptyDict = "<dict/>";
const String kEndOfLine = "\r";

/// Goes through the parts of a line: it is cut between two tags that touch, but not in front of a closing one.
class Fragments {
  public:
    explicit Fragments(String line) : line_(std::move(line)) {}

    bool AtEnd() const { return atEnd_; }
    String Next() {
        const std::size_t start = end_;
        end_ = cutBehind(start);
        if (line_.Slice(start, end_ - start) == kKeyTag) {
            // What touches the tag of a key, up to its end, is a name that begins like a tag.
            const std::size_t end = cutBehind(end_);
            if (Right(line_.Slice(start, end - start), 6) == kKeyEnd) end_ = end;
        }
        atEnd_ = end_ == line_.ByteCount();
        return line_.Slice(start, end_ - start);
    }

  private:
    /// Where the part that has this byte ends.
    std::size_t cutBehind(std::size_t start) const {
        const std::string_view bytes = line_.Bytes();
        std::size_t cut = bytes.find("><", start);
        while (cut != std::string_view::npos && bytes.substr(cut + 2, 1) == "/") cut = bytes.find("><", cut + 2);
        return cut == std::string_view::npos ? bytes.size() : cut + 1;
    }

    String line_;
    std::size_t end_ = 0;
    bool atEnd_ = false;
};

/// The word, as one text for all entries that have it: a document has many entries and few words.
String shared(const String& word) {
    static const String kWords[] = {"string", "integer", "real", "date", "data", "dict", "array"};
    for (const String& known : kWords) {
        if (known.SameBytes(word)) return known;
    }
    return word;
}

/// The position of `find`. A tag may be as long as a file allows: what cannot be in a line, since a character has four
/// bytes at most, is not even prepared to be searched for in each.
int position(const String& line, const String& find) {
    return find.ByteCount() / 4 > line.ByteCount() ? 0 : InStr(line, find);
}

}  // namespace

EntryReader::EntryReader(plistDict& node, const Ref<TextInputStream>& stream)
    : node_(node), stream_(stream), endTag_(node.isArray ? "</array>" : "</dict>") {}

void EntryReader::Read() {
    while (!stream_->EndOfFile() && line_ != endTag_ && line_ != kEmptyDict) {
        if (node_.isArray && !inText_) {
            ++node_.indexOf;
            pendingKey_ = Str(node_.indexOf);
        }
        Fragments fragments(node_.LStripNonPrintingChars(stream_->ReadLine()));
        while (!fragments.AtEnd()) {
            line_ = fragments.Next();
            readFragment();
            LoopYield();
        }
        LoopYield();
    }
}

void EntryReader::readFragment() {
    if (Left(line_, 5) == kKeyTag) {
        // The line itself stays whole: a key may read as the tag that ends this node.
        pendingKey_ = Mid(line_, 6);
        if (Right(pendingKey_, 6) == kKeyEnd) pendingKey_ = Left(pendingKey_, Len(pendingKey_) - 6);
        return;
    }
    if (line_ == endTag_) return;
    if (inText_ && line_ != closingTag_) {
        readText();
        return;
    }
    if (readTag() && IsContainer(pendingType_)) readNode();
}

/// One more line of a value.
void EntryReader::readText() {
    const int end = position(line_, closingTag_);
    if (end > 0) {
        line_ = Left(line_, end - 1);
        inText_ = false;
    }
    text_ += node_.CodeToBrackets(line_);
    if (tag_ != "data") text_ += kEndOfLine;
    if (!inText_) storeText();
}

/// False when there is no tag.
bool EntryReader::readTag() {
    const int end = InStr(line_, ">");
    if (end == 0) return false;
    tag_ = Left(line_, end - 1);
    if (Left(tag_, 1) == "<") tag_ = Mid(tag_, 2);
    closingTag_ = "</" + tag_ + ">";
    if (tag_ == "false/") {
        storeBoolean("false");
    } else if (tag_ == "true/") {
        storeBoolean("true");
    } else if (tag_ == "/key" || (Left(tag_, 1) == "/" && Mid(tag_, 2) == pendingType_)) {
        inText_ = false;
        storeText();
        text_ = {};
    } else {
        readOpeningTag();
    }
    return true;
}

void EntryReader::readOpeningTag() {
    selfClosed_ = Right(tag_, 1) == "/";
    pendingType_ = shared(selfClosed_ ? Left(tag_, Len(tag_) - 1) : tag_);
    node_.types->Value(pendingKey_, pendingType_);
    if (IsContainer(pendingType_) || pendingType_ == "dict/") return;

    line_ = Mid(line_, InStr(line_, ">") + 1);
    const int end = InStr(line_, "</" + pendingType_);
    if (end > 0) {
        text_ = Left(line_, end - 1);
        storeText();
        return;
    }
    inText_ = true;
    if (InStr(line_, ">") > 0) {
        text_ = {};
        return;
    }
    text_ = node_.CodeToBrackets(line_);
    if (pendingType_ != "data") text_ += kEndOfLine;
}

void EntryReader::readNode() {
    const bool isArray = pendingType_ == "array";
    const auto child = New<plistDict>();
    node_.children.Append(child);
    node_.childrenNames.Append(pendingKey_);
    child->Load(stream_, pendingKey_, isArray, &node_, node_.rootClass, !selfClosed_);
    // Or else this node would end here, taking the line for an end of its own.
    if (!isArray && selfClosed_) line_ = {};
}

void EntryReader::storeBoolean(const String& text) {
    static const String kBoolean = "boolean";
    node_.types->Value(pendingKey_, kBoolean);
    node_.values->Value(pendingKey_, text);
    pendingType_ = kBoolean;
}

void EntryReader::storeText() {
    node_.values->Value(pendingKey_, node_.CodeToBrackets(text_));
}

}  // namespace marrowbeck
