// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "framework/core/files/FolderItem.h"

inline std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A folder of a test's own, removed with all that is in it. Its path has no links on the way.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        const char* base = std::getenv("TMPDIR");
        std::string pattern = std::filesystem::canonical(base ? base : "/tmp").string() + "/marrowbeck-XXXXXX";
        if (!::mkdtemp(pattern.data())) std::abort();
        path_ = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& Path() const { return path_; }
    std::string Path(std::string_view name) const { return path_ + "/" + std::string(name); }
    /// Makes a file of that name and content, and the folders on its way; its path.
    std::string Put(std::string_view name, std::string_view content = {}) const {
        const std::string path = Path(name);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    framework::Ref<framework::FolderItem> Item() const {
        return framework::New<framework::FolderItem>(framework::String(path_));
    }

  private:
    std::string path_;
};
