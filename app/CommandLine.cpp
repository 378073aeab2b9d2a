// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/CommandLine.h"

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
    "  --version       tell the version\n";

int refuse(const std::string& why) {
    std::fprintf(stderr, "marrowbeck: %s; see marrowbeck --help\n", why.c_str());
    return kWrongUse;
}

/// Prints the list that the arguments ask for; `list` is the first of them that says so.
int printList(int argc, char** argv, int list) {
    FolderListing listing;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--list") {
            if (i != list) return refuse("one folder is listed at a time");
            if (++i == argc) return refuse("--list needs a folder");
            listing.Folder = argv[i];
        } else if (argument == "--subfolders") {
            listing.Subfolders = true;
        } else if (argument == "--format") {
            const std::string_view form = ++i < argc ? argv[i] : "";
            if (form != "csv" && form != "json") return refuse("--format is csv or json");
            listing.Shape = form == "json" ? FolderListing::Form::Json : FolderListing::Form::Csv;
        } else {
            return refuse("--list goes with --subfolders and --format, not with " + std::string(argument));
        }
    }
    _InitTools();
    _InitFileTypes();
    return listing.Print();
}

}  // namespace

std::optional<int> AnswerCommandLine(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--") break;
        if (argument == "--help" || argument == "-h") {
            std::fputs(kHelp, stdout);
            return 0;
        }
        if (argument == "--version") {
            std::printf("marrowbeck %d.%d.%d\n", Configuration::kMajorVersion, Configuration::kMinorVersion,
                        Configuration::kBugVersion);
            return 0;
        }
        if (argument == "--list") return printList(argc, argv, i);
    }
    return std::nullopt;
}

}  // namespace marrowbeck
