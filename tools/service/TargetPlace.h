// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "base/Descriptor.h"

namespace marrowbeck::tools {

/// Where a file lies that is to be written: its folder, held open, so that nobody can put another one in its place
/// meanwhile, and its name in there, under which there is no link.
///
/// Every link on the way and at the end is followed, but for those that somebody else may have laid to have a file of
/// the person's written over: a link must be the person's own, or lie in a folder into which only the person, or the
/// system's keeper, can lay one.
class TargetPlace {
  public:
    explicit TargetPlace(const std::string& path);

    const base::Descriptor& folder() const { return folder_; }
    /// Nothing needs to be there yet.
    const std::string& name() const { return name_; }
    /// Why the path leads to no such place, or to a folder; else empty.
    const std::string& error() const { return error_; }

  private:
    void walk(std::string path);
    /// The path that the link, an open one, leads to from its folder. Empty, with an error, when it is not followed.
    std::string follow(const base::Descriptor& link);
    void fail(int number);

    base::Descriptor folder_;
    std::string name_;
    std::string error_;
    int links_ = 0;
};

}  // namespace marrowbeck::tools
