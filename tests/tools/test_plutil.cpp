// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/plutil/plutil.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>

#include "tests/support/ForkedProcess.h"
#include "tests/tools/TestFiles.h"

namespace marrowbeck::tools {
namespace {

const std::string document =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n\t<key>a</key>\n\t<string>b &amp; "
    "c</string>\n\t<key>n</key>\n\t<array>\n\t\t<integer>1</integer>\n\t\t<dict/>\n\t</array>\n</dict>\n</plist>\n";

ToolResult convert(const std::string& form, const std::string& path) {
    return plutil({"-convert", form, path});
}

/// A binary property list of these objects, each at most 255 bytes into the file, the first of which is the top one.
std::string binary(const std::vector<std::string>& objects) {
    std::string file = "bplist00";
    std::string table;
    for (const std::string& object : objects) {
        table += {static_cast<char>(file.size() >> 8), static_cast<char>(file.size() & 0xFF)};
        file += object;
    }
    const auto number = [](std::uint64_t value) {
        std::string bytes(8, '\0');
        for (size_t i = 0; i < 8; ++i) bytes[7 - i] = static_cast<char>(value >> 8 * i & 0xFF);
        return bytes;
    };
    const size_t tableStart = file.size();
    return file + table + std::string(6, '\0') + "\x02\x01" + number(objects.size()) + number(0) + number(tableStart);
}

std::string array(std::initializer_list<int> references) {
    std::string object(1, static_cast<char>(0xA0 + references.size()));
    for (const int reference : references) object += static_cast<char>(reference);
    return object;
}

TEST(Plutil, ConvertsThereAndBackInPlace) {
    const TemporaryFolder folder;
    const std::string path = folder.Put("-odd 'name\n.plist", document);
    ::chmod(path.c_str(), 0640);
    EXPECT_EQ(convert("binary1", path).status, exitSuccess);
    EXPECT_TRUE(readFile(path).starts_with("bplist00"));
    EXPECT_EQ(convert("binary1", path).status, exitSuccess);
    EXPECT_EQ(convert("xml1", path).status, exitSuccess);
    const std::string text = readFile(path);
    EXPECT_NE(text.find("\n<dict>\n\t<key>a</key>\n\t<string>b &amp; c</string>\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\n\t\t<dict/>\n"), std::string::npos);
    struct stat status {};
    ::stat(path.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0640U);

    const std::string link = folder.Path("link");
    std::filesystem::create_symlink(path, link);
    EXPECT_EQ(plutil({"-convert", "binary1", "--", link}).status, exitSuccess);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_TRUE(readFile(path).starts_with("bplist00"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 2);
}

TEST(Plutil, ReadsNothingWhereNobodyCanBeConfined) {
    const TemporaryFolder folder;
    const std::string path = folder.Put("a.plist", document);
    EXPECT_TRUE(test::InForkedProcess(
        [&path] { return test::RefuseCall(SYS_capset, EPERM) && convert("binary1", path).status == exitFailure; }));
    EXPECT_EQ(readFile(path), document);
}

TEST(Plutil, RefusesWhatItDoesNotKnow) {
    for (const Arguments& arguments : {Arguments{},
                                       {"-lint", "x"},
                                       {"-convert", "json", "x"},
                                       {"-convert", "xml1"},
                                       {"-convert", "xml1", "-x"},
                                       {"-convert", "xml1", "a", "b"}}) {
        EXPECT_EQ(plutil(arguments).status, exitUsage);
    }
    const ToolResult missing = convert("xml1", "/none/such");
    EXPECT_EQ(missing.status, exitFailure);
    EXPECT_EQ(missing.error, "plutil: /none/such: No such file or directory\n");
}

TEST(Plutil, AFileThatMakesNoSenseStaysAsItIs) {
    std::string cut = binary({array({1}), std::string(1, '\x09')});
    cut.resize(cut.size() - 3);
    std::string deepText = "<plist>";
    for (int i = 0; i < 100'000; ++i) deepText += "<array>";
    std::vector<std::string> deep;
    for (int i = 0; i < 255; ++i) deep.push_back(array({i + 1}));
    deep.push_back(array({0}));
    // 14^8 values in some hundred bytes.
    std::vector<std::string> wide(8, array({0}));
    for (int i = 0; i < 8; ++i) {
        const int next = i + 1;
        wide[static_cast<size_t>(i)] =
            array({next, next, next, next, next, next, next, next, next, next, next, next, next, next});
    }
    wide.emplace_back(1, '\x09');
    const struct {
        std::string file;
        const char* reason;
    } cases[] = {
        {"", "Not a property list"},
        {"hello", "Not a property list"},
        {"<plist><dict><key>a</key>", "Not a property list"},
        {deepText, "Nested too deeply"},
        {"bplist00", "Damaged property list"},
        {cut, "Damaged property list"},
        {binary({array({0})}), "Damaged property list"},
        {binary({array({1}), array({0})}), "Damaged property list"},
        {binary({array({9})}), "Damaged property list"},
        {binary({std::string("\x4F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 10)}), "Damaged property list"},
        {binary({"\xDF\x14\xFF\xFF\xFF\xFF"}), "Damaged property list"},
        {binary(deep), "Damaged property list"},
        {binary(wide), "Too many values"},
    };
    const TemporaryFolder folder;
    for (const auto& [file, reason] : cases) {
        const std::string path = folder.Put("file", file);
        const ToolResult result = convert("xml1", path);
        EXPECT_EQ(result.status, exitFailure);
        EXPECT_EQ(result.error, "plutil: " + path + ": " + reason + "\n") << file.substr(0, 40);
        EXPECT_EQ(readFile(path), file);
    }
}

}  // namespace
}  // namespace marrowbeck::tools
