// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/CommandLine.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

#include "app/Configuration.h"
#include "app/FolderListing.h"
#include "app/Startup.h"

namespace marrowbeck {
namespace {

constexpr int kWrongUse = 2;

constexpr const char* kHelp =
    "Usage: marrowbeck [FOLDER]\n"
    "       marrowbeck --list FOLDER [--subfolders] [--format csv|json]\n"
    "\n"
    "Takes stock of the images in a folder: what they measure, what they weigh, and\n"
    "what is written in them. FOLDER is opened in the window; if Marrowbeck is running\n"
    "already, in the window that is open.\n"
    "\n"
    "  --list FOLDER   print the list, a record an image, and open no window\n"
    "  --subfolders    with --list: also the images of all folders in FOLDER\n"
    "  --format FORM   with --list: csv (the default) or json\n"
    "  --help          tell this\n"
    "  --version       tell the version\n"
    "\n"
    "Options go in any order, before FOLDER or behind it, and --list=FOLDER is the same\n"
    "as --list FOLDER. What comes after -- is a folder, whatever it begins with.\n";

/// The toolkit's own options that are of use: which display the window opens on, by what way, and what a session
/// manager starts the program again with. Each has its value in the next word and may be written with two dashes.
constexpr std::string_view kToolkitOptions[] = {"-platform", "-display", "-session"};

bool isToolkitOption(std::string_view word) {
    if (word.starts_with("--")) word.remove_prefix(1);
    return std::find(std::begin(kToolkitOptions), std::end(kToolkitOptions), word) != std::end(kToolkitOptions);
}

int refuse(const std::string& why) {
    std::fprintf(stderr, "marrowbeck: %s; see marrowbeck --help\n", why.c_str());
    return kWrongUse;
}

/// Goes through the words of a command line. An option's value is in the same word, behind a "=", or in the next one.
class Words {
  public:
    Words(int count, char** words) : count_(count), words_(words) {}

    /// Takes the next word; False at the end.
    bool Next() {
        if (++at_ >= count_) return false;
        const std::string_view word = words_[at_];
        isOption_ = !optionsEnded_ && word.starts_with('-');
        const std::size_t equals = isOption_ && word.starts_with("--") ? word.find('=') : std::string_view::npos;
        name_ = word.substr(0, equals);
        value_.reset();
        if (equals != std::string_view::npos) value_ = word.substr(equals + 1);
        if (isOption_ && word == "--") {
            optionsEnded_ = true;
            return Next();
        }
        return true;
    }
    bool IsOption() const { return isOption_; }
    /// The option's name, or the word as it is.
    std::string Name() const { return std::string(name_); }
    bool Is(std::string_view option) const { return isOption_ && name_ == option; }
    bool HasOwnValue() const { return value_.has_value(); }
    /// The option's value; nothing where the words end before it.
    std::optional<std::string> TakeValue() {
        if (!value_ && at_ + 1 < count_) value_ = words_[++at_];
        return value_ ? std::optional<std::string>(*value_) : std::nullopt;
    }

  private:
    int count_;
    char** words_;
    int at_ = 0;
    bool optionsEnded_ = false;
    bool isOption_ = false;
    std::string_view name_;
    std::optional<std::string_view> value_;
};

}  // namespace

std::optional<int> AnswerCommandLine(int argc, char** argv) {
    FolderListing listing;
    bool lists = false;
    std::string onlyForList;
    std::string onlyForWindow;
    for (Words words(argc, argv); words.Next();) {
        const std::string word = words.Name();
        if (!words.IsOption()) {
            onlyForWindow = word;
        } else if (isToolkitOption(word)) {
            if (words.HasOwnValue() || !words.TakeValue()) return refuse(word + " has its value in the next word");
            onlyForWindow = word;
        } else if (words.Is("--list")) {
            if (lists) return refuse("one folder is listed at a time");
            const auto folder = words.TakeValue();
            if (!folder) return refuse("--list needs a folder");
            listing.Folder = String(*folder);
            lists = true;
        } else if (words.Is("--format")) {
            const std::string form = words.TakeValue().value_or("");
            if (form != "csv" && form != "json") return refuse("--format is csv or json");
            listing.Shape = form == "json" ? FolderListing::Form::Json : FolderListing::Form::Csv;
            onlyForList = word;
        } else if (words.HasOwnValue() && (words.Is("--subfolders") || words.Is("--help") || words.Is("--version"))) {
            return refuse(word + " takes no value");
        } else if (words.Is("--subfolders")) {
            listing.Subfolders = true;
            onlyForList = word;
        } else if (words.Is("--help") || words.Is("-h")) {
            std::fputs(kHelp, stdout);
            return 0;
        } else if (words.Is("--version")) {
            std::printf("marrowbeck %d.%d.%d\n", Configuration::kMajorVersion, Configuration::kMinorVersion,
                        Configuration::kBugVersion);
            return 0;
        } else {
            return refuse(word + " is no option");
        }
    }
    if (!lists) {
        if (!onlyForList.empty()) return refuse(onlyForList + " goes with --list");
        return std::nullopt;
    }
    if (!onlyForWindow.empty()) {
        return refuse("--list goes with --subfolders and --format, not with " + onlyForWindow);
    }
    _InitTools();
    _InitFileTypes();
    return listing.Print();
}

}  // namespace marrowbeck
