// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdint>
#include <string_view>

#include "framework/ui/field/Clipboard.h"
#include "plist/EntryPrinter.h"
#include "plist/plist.h"

namespace marrowbeck {
namespace {

void addToClipboard(const String& text) {
    const auto clipboard = New<Clipboard>();
    clipboard->Text(clipboard->Text() + text);
}

/// Gathers the lines of one node, and tells of each key whether a search may know it.
class TextPrinter : public EntryPrinter {
  public:
    const String& Text() const { return text_; }

  protected:
    void Line(std::string_view line) override { text_ += String(line) + "\r"; }
    void AfterKey(plistDict& node, const String& key, const String& indent) override {
        Put({indent.Bytes(), node.searched->HasKey(key) ? "<search/>" : "<nosearch/>"});
    }
    void Below(plistDict& child, std::int32_t level) override { child.Dump(level); }

  private:
    String text_;
};

}  // namespace

void plistDict::Dump(std::int32_t level) {
    TextPrinter printer;
    printer.Print(*this, level);
    addToClipboard(printer.Text());
}

void plist::Dump() {
    String text;
    for (int i = 1; i <= headers.Ubound(); ++i) {
        text += headers(i) + "\r";
        LoopYield();
    }
    New<Clipboard>()->Text(text);
    root->Dump(1);
    addToClipboard(text + "</dict>\r</plist>\r");
}

}  // namespace marrowbeck
