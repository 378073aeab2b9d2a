// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/App.h"
#include "app/Preferences.h"
#include "app/Window1.h"
#include "net/UpdateSite.h"
#include "tests/support/TemporaryFolder.h"

namespace marrowbeck::test {

/// The site that the update check of these tests asks.
extern UpdateSite theSite;

/// The program before its start, in a home in which nothing was ever saved.
class AppTest : public testing::Test {
  protected:
    AppTest() {
        framework::internal::SetAlertPresenter([this](const String& text) { messages.push_back(text.ToStd()); });
    }
    ~AppTest() override {
        framework::internal::SetAlertPresenter([](const String&) {});
    }

    /// Writes a preference file with these entries, without an update check unless they hold one.
    void remember(const std::string& entries) const {
        std::filesystem::create_directories(folder);
        const bool says = entries.find("autoupdate") != std::string::npos;
        std::ofstream(file, std::ios::binary) << "<plist version=\"1.0\">\n<dict>\n" + entries +
                                                     (says ? "" : "<key>autoupdate</key>\n<false/>\n") +
                                                     "</dict>\n</plist>\n";
    }
    std::string saved() const { return readFile(file); }

    std::string folder = SpecialFolder::ApplicationData()->AbsolutePath().ToStd() + "/Marrowbeck";
    std::string file = folder + "/com.kv2tqq.marrowbeck.preferences.plist";
    std::vector<std::string> messages;
};

}  // namespace marrowbeck::test
