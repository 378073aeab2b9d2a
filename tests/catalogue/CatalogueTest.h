// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/App.h"
#include "app/Window1.h"
#include "tests/support/EventLoop.h"

namespace marrowbeck::test {

/// The program with its real window, and in the place of its tools scripts that answer what a test has written down.
/// Messages are collected instead of shown.
class CatalogueTest : public testing::Test {
  protected:
    CatalogueTest();
    ~CatalogueTest() override;

    /// A file with some bytes in the folder of pictures; its path.
    std::string addFile(const std::string& name, std::size_t size = 100);
    /// The same for an ordinary image.
    std::string addImage(const std::string& name, const std::string& width = "4000",
                         const std::string& height = "3000");
    /// What mdls answers for the file at `path`: to the question on the image, and to that on the camera.
    static void answer(const std::string& path, const std::vector<std::string>& fields);
    static void answerCamera(const std::string& path, const std::vector<std::string>& fields);
    /// What mdfind prints, each path ended by a NUL, and its exit status.
    void found(const std::vector<std::string>& paths, int status = 0) const;
    /// A script in the place of one of the tools.
    void replaceTool(const std::string& name, const std::string& script) const;
    static void useRealTools();
    /// From now on the disk answers for HANG when it is asked for RELEASE: see SlowLook.cpp. Of the other tools those
    /// that are named stay open.
    void useSlowDisk(std::vector<std::string> resident = {}) const;
    /// What was asked of that disk since the last time, a line a question.
    static std::string asked();

    /// Searches the folder of pictures, or another one, to the end of the search thread.
    void search();
    void search(const std::string& folder);
    void runToEnd();

    /// The command lines that the tools were given since the last time, with blanks between the words.
    std::vector<std::string> commands();
    /// The cells of column 0.
    std::vector<std::string> names() const;
    std::string cell(int row, int column) const;
    std::string helpTag(int row, int column) const;

    /// Eleven fields of an ordinary 8 bit JPEG without EXIF data; single ones can be changed.
    static std::vector<std::string> plainFields(const std::string& width = "4000", const std::string& height = "3000");

    Ref<Window1> window;
    std::string root;
    std::string pictures;
    std::vector<std::string> messages;
};

}  // namespace marrowbeck::test
