// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "plist/plistDict.h"

namespace marrowbeck {

/// Reads the entries of one node, line by line, up to its closing tag or the end of the text. Knows no syntax error:
/// what it does not expect it takes for a type, or drops.
class EntryReader {
  public:
    EntryReader(plistDict& node, const Ref<TextInputStream>& stream);
    void Read();

  private:
    void readFragment();
    void readText();
    bool readTag();
    void readOpeningTag();
    void readNode();
    void storeBoolean(const String& text);
    void storeText();

    plistDict& node_;
    const Ref<TextInputStream>& stream_;
    const String endTag_;
    /// What is being read: a line, or the part of one from one tag to the next.
    String line_;
    String pendingKey_;
    String pendingType_;
    /// The word of the last tag, and what closes it.
    String tag_;
    String closingTag_;
    /// What has come so far of a value of several lines, and whether more is to come.
    String text_;
    bool inText_ = false;
    bool selfClosed_ = false;
};

}  // namespace marrowbeck
