// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "tools/mime/MimeTypes.h"

namespace marrowbeck::tools {

/// Which files are wanted, by their names and contents. All functions may be called by any thread.
class WantedTypes {
  public:
    enum class Verdict : unsigned char { no, yes, contentTells };

    /// Files of one type, such as "image/jpeg"; of every image type for an empty one.
    explicit WantedTypes(std::string_view type) : type_(type) {}

    /// What the names tell, one verdict each.
    std::vector<Verdict> byName(const std::vector<std::string_view>& names);
    Verdict byName(std::string_view name) { return byName(std::vector{name}).front(); }

    /// For a name that does not tell by itself, with the first bytes of the content or, where there are none to be had,
    /// with nothing.
    bool isWanted(std::string_view name, const std::string& content);

  private:
    bool fits(const std::string& type);

    const std::string type_;
    std::mutex mutex_;
    MimeTypes types_;
};

}  // namespace marrowbeck::tools
