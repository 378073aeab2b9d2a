// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace marrowbeck::tools {

/// The path of one of the pictures beside the tests.
inline std::string picture(const std::string& name) {
    return MARROWBECK_TEST_PICTURES "/" + name;
}

inline std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// How much a folder holds, hidden files too.
inline size_t entriesIn(const std::string& folder) {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

/// A folder that is removed with all it holds.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "marrowbeck-tools.XXXXXX";
        path_ = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }

    /// Writes a file, and the folders on its way; returns its path.
    std::string write(const std::string& name, const std::string& content = {}) const {
        const std::filesystem::path file = path_ + "/" + name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

  private:
    std::string path_;
};

}  // namespace marrowbeck::tools
