// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <memory>
#include <random>

#include "framework/core/files/FolderItem.h"
#include "framework/core/files/Paths.h"
#include "tests/support/TemporaryFolder.h"

using namespace framework;

namespace {

/// Names of random bytes, with those that mean something to shells, URLs and XML more often than the rest.
class RandomNames {
  public:
    std::string Next() {
        static constexpr std::string_view kTelling = "\n\r\t '\"\\$`*?[]{}()<>|&;#!~%:=^-.+@\x01\x7F";
        std::string name;
        const int length = std::uniform_int_distribution<>(1, 40)(random_);
        while (static_cast<int>(name.size()) < length) {
            const auto byte = static_cast<char>(std::uniform_int_distribution<>(1, 255)(random_));
            const auto telling = kTelling[std::uniform_int_distribution<std::size_t>(0, kTelling.size() - 1)(random_)];
            const char next = random_() % 2 ? byte : telling;
            if (next != '/') name += next;
        }
        return name == "." || name == ".." ? "..." : name;
    }

  private:
    std::mt19937 random_{20'240'607};
};

/// What `shell` makes of the words of a command line, each ended by NUL.
std::string wordsOf(const std::string& shell, const TemporaryFolder& folder, const std::string& words) {
    const std::string script = folder.Path("script");
    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(script.c_str(), "wb"), std::fclose);
    std::fprintf(file.get(), "printf '%%s\\0' ");
    std::fwrite(words.data(), 1, words.size(), file.get());
    file.reset();
    std::unique_ptr<FILE, int (*)(FILE*)> output(::popen((shell + " " + script).c_str(), "r"), ::pclose);
    std::string result;
    char buffer[4096];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, output.get())) result.append(buffer, count);
    return result;
}

Ref<FolderItem> itemAt(const std::string& path) {
    return New<FolderItem>(String("/none"))->TrueChild(String(path));
}

}  // namespace

TEST(PathTexts, AShellReadsAShellPathAsTheOneWord) {
    const TemporaryFolder folder;
    RandomNames random;
    for (int round = 0; round < 20; ++round) {
        std::string line;
        std::string expected;
        for (int i = 0; i < 100; ++i) {
            const std::string name = random.Next();
            const std::string word = itemAt(name)->ShellPath().ToStd();
            // The last part by itself, behind a prefix, is escaped too.
            line.append(word).append(" dir/12").append(word, word.rfind('/') + 1).append(" ");
            expected.append("/none/").append(name).append(1, '\0').append("dir/12").append(name).append(1, '\0');
        }
        for (const char* const shell : {"sh", "bash"}) ASSERT_EQ(wordsOf(shell, folder, line), expected) << shell;
    }
}

TEST(PathTexts, SaveInfoMakesTheItemAgain) {
    RandomNames random;
    for (int i = 0; i < 5000; ++i) {
        const Ref<FolderItem> item = itemAt(random.Next());
        const String saved = item->GetSaveInfo(Nil, 0);
        for (const char byte : saved.Bytes()) {
            ASSERT_TRUE(byte > ' ' && byte < 0x7F && byte != '<' && byte != '>' && byte != '&') << saved.CString();
        }
        ASSERT_TRUE(GetFolderItem(saved, 0)->AbsolutePath().SameBytes(item->AbsolutePath())) << saved.CString();
        ASSERT_TRUE(New<FolderItem>(saved, 0)->AbsolutePath().SameBytes(item->AbsolutePath()));
    }
}

TEST(PathTexts, UrlsEscapeAllButPlainBytesAndColons) {
    EXPECT_EQ(itemAt("a b#%?&:c~\xE4\n")->URLPath().Bytes(), "file:///none/a%20b%23%25%3F%26:c~%E4%0A");
    EXPECT_EQ(GetFolderItem("/")->URLPath().Bytes(), "file:///");
    std::array<char, 256> host{};
    ASSERT_EQ(gethostname(host.data(), host.size() - 1), 0);
    for (const std::string& place :
         {std::string(), std::string("//"), std::string("//localhost"), "//" + std::string(host.data())}) {
        EXPECT_EQ(Paths::FromUrl("file:" + place + "/a%2zb%41%0A%E9%"), "/a%2zbA\n\xE9%") << place;
    }
    EXPECT_EQ(Paths::FromUrl("FILE:///a"), "/a");
    for (const char* const other :
         {"file:///a%00b", "file://elsewhere.example/a", "file:a", "file://", "/a", "http:///a"}) {
        EXPECT_FALSE(Paths::FromUrl(other)) << other;
    }
    EXPECT_FALSE(GetFolderItem("file:///a%00b"));
}

TEST(PathTexts, DisplayNamesHideNothing) {
    EXPECT_EQ(itemAt("a\nb\x7F\xFFz\xC2\x85")->DisplayName().Bytes(), "a\u240Ab\u2421\uFFFDz\uFFFD");
    EXPECT_EQ(itemAt("gr\xC3\xBC\xC3\x9F")->DisplayName().Bytes(), "gr\xC3\xBC\xC3\x9F");
}
