// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <filesystem>
#include <iterator>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace marrowbeck::tools {

/// The path of one of the pictures beside the tests.
inline std::string picture(const std::string& name) {
    return MARROWBECK_TEST_PICTURES "/" + name;
}

/// How much a folder holds, hidden files too.
inline size_t entriesIn(const std::string& folder) {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

}  // namespace marrowbeck::tools
