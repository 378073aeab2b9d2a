// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Service.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <fstream>
#include <map>

#include "base/WriteAll.h"
#include "tests/tools/TestFiles.h"

namespace marrowbeck::tools {
namespace {

/// A tool that does as its file says.
class Obedient final : public Tool {
  public:
    Limits limits() const override { return {256U << 20, seconds, 1U << 20}; }
    bool keepsAnswers() const override { return keeps; }
    std::variant<Job, ToolResult> begin(const Arguments& arguments) const override {
        Job job{arguments.front(), "", [](std::optional<std::string_view> answer, const auto&) {
                    return ToolResult{std::string(answer.value_or("no sense")), {}, exitSuccess};
                }};
        return job;
    }
    std::optional<ToolResult> unopened(const std::string&, const FileNote& note) const override {
        return ToolResult{{}, note.error, 1};
    }
    bool isSound(const std::string&, std::string_view answer) const override { return answer != "lie"; }
    void warmUp() const override {}
    std::vector<std::string> dataFolders() const override { return {}; }
    std::optional<std::string> read(const std::string&, Content content) override {
        const std::string text(content.begin(), content.end());
        if (text == "crash" || isPoisoned_) raise(SIGSEGV);
        isPoisoned_ = text == "poison";
        if (text == "stray") say(base::framed(base::numberBytes(1000) + "\1stray"));
        if (text == "lie") return "lie";
        // The beginning of another answer behind that to the first question of a service.
        if (text == "lurk") say(base::framed(base::numberBytes(1) + "\1read lurk") + base::numberBytes(6));
        if (text == "wait" || text == "lurk") poll(nullptr, 0, -1);
        for (volatile bool hangs = text == "hang"; hangs;) continue;
        if (text == "eat") return std::string(std::size_t{1} << 30, 'x').substr(0, 1);
        if (text == "talk") return std::string(2U << 20, 'x');
        return "read " + text;
    }

    unsigned seconds = 5;
    bool keeps = true;

  private:
    static void say(const std::string& bytes) { ASSERT_TRUE(base::writeAll(3, bytes)); }

    bool isPoisoned_ = false;
};

class ServiceTest : public testing::Test {
  protected:
    void ask(std::uint32_t id, const std::string& path) { service.take({id, {path}}); }

    /// Works until the request is answered, and gives the output.
    std::string answer(std::uint32_t id) { return answer(service, id); }
    std::string answer(Service& asked, std::uint32_t id) {
        for (asked.work(); !replies.contains(id); asked.work()) {
            std::vector<pollfd> descriptors;
            asked.awaited(descriptors);
            poll(descriptors.data(), descriptors.size(), asked.patience());
        }
        return replies[id].output;
    }

    /// The processes that the service has now: those that are confined, or the one that opens files.
    static std::vector<pid_t> children(bool areReaders = true) {
        std::ifstream list("/proc/self/task/" + std::to_string(getpid()) + "/children");
        std::vector<pid_t> found{std::istream_iterator<pid_t>(list), {}};
        std::erase_if(found, [areReaders](pid_t child) {
            const std::string status = readFile("/proc/" + std::to_string(child) + "/status");
            return status.find("State:\tZ") != std::string::npos ||
                   (status.find("Seccomp:\t2\n") != std::string::npos) != areReaders;
        });
        return found;
    }

    TemporaryFolder folder;
    Obedient tool;
    std::map<std::uint32_t, ToolResult> replies;
    Service::Reply keep = [this](base::Answer answer) { replies[answer.id] = std::move(answer.result); };
    Service service{tool, 1, keep};
};

TEST_F(ServiceTest, AReaderThatFailsIsReplacedAndItsFileMakesNoSense) {
    tool.seconds = 0;
    for (const char* const harm : {"crash", "hang", "eat", "talk", "lie", "stray"}) {
#ifdef __SANITIZE_ADDRESS__
        if (std::string(harm) == "eat") continue;  // there is no limit of memory under the sanitizer
#endif
        replies.clear();
        ask(1, folder.Put("harm", harm));
        ask(2, folder.Put("good", "good"));
        EXPECT_EQ(answer(1), "no sense") << harm;
        EXPECT_EQ(answer(2), "read good") << harm;
    }
    ask(3, folder.Put("one", "one"));
    EXPECT_EQ(answer(3), "read one");
    // Ended from outside, with nothing in hand.
    kill(children().at(0), SIGKILL);
    ask(4, folder.Put("other", "other"));
    EXPECT_EQ(answer(4), "read other");
}

TEST_F(ServiceTest, WhatAFileHasDoneToAReaderHarmsNoFileAfterIt) {
    for (const char* const harm : {"lurk", "poison"}) {
        replies.clear();
        Service fresh(tool, 1, keep);
        fresh.take({1, {folder.Put("harm", harm)}});
        EXPECT_EQ(answer(fresh, 1), "read " + std::string(harm));
        fresh.take({2, {folder.Put("good", "good")}});
        EXPECT_EQ(answer(fresh, 2), "read good") << harm;
    }
}

TEST_F(ServiceTest, AReaderHasNoTimeBetweenFilesAndMakesWayForANewOne) {
    tool.keeps = false;
    const std::string path = folder.Put("a", "a");
    ask(1, path);
    answer(1);
    const pid_t reader = children().front();
    while (readFile("/proc/" + std::to_string(reader) + "/stat").find(") T ") == std::string::npos) {
        poll(nullptr, 0, 1);
        service.work();
    }
    for (std::uint32_t id = 2; id <= Service::mostAnswers; ++id) {
        ask(id, path);
        EXPECT_EQ(answer(id), "read a");
        if (id == 2) {
            EXPECT_EQ(children(), std::vector{reader});
        }
    }
    while (!children().empty()) poll(nullptr, 0, 1);
}

TEST_F(ServiceTest, WhatWasReadIsKnownUntilTheFileChanges) {
    const std::string path = folder.Put("a", "old");
    ask(1, path);
    ask(2, folder.Put("b", "other"));
    EXPECT_EQ(answer(1), "read old");
    answer(2);
    kill(children().at(0), SIGKILL);
    while (!children().empty()) poll(nullptr, 0, 1);
    ask(3, path);
    EXPECT_EQ(answer(3), "read old");
    EXPECT_TRUE(children().empty());

    folder.Put("new", "new");
    std::filesystem::rename(folder.Path("new"), path);
    ask(4, folder.Path("b"));
    ask(5, path);
    EXPECT_EQ(answer(5), "read new");
    // Two questions at a time are one look into the file.
    folder.Put("c", "hang");
    ask(6, folder.Path("c"));
    ask(7, folder.Path("b"));
    folder.Put("a", "newest");
    ask(8, path);
    ask(9, path);
    service.take({6, {}});
    EXPECT_EQ(answer(8), "read newest");
    EXPECT_TRUE(replies.contains(9));
}

TEST_F(ServiceTest, AFileThatHoldsItsReaderHoldsNoOther) {
    Service two(tool, 2, keep);
    for (std::uint32_t id = 1; id <= 20; ++id) {
        const std::string name = std::to_string(id);
        two.take({id, {folder.Put(name, id == 1 ? "wait" : name)}});
    }
    for (std::uint32_t id = 2; id <= 20; ++id) EXPECT_EQ(answer(two, id), "read " + std::to_string(id));
    EXPECT_FALSE(replies.contains(1));
}

TEST_F(ServiceTest, WhoeverDoesNotOpenAFileIsReplacedAndTheFileInTheEndMakesNoSense) {
    const std::string path = folder.Put("a", "a");
    ask(1, path);
    answer(1);
    folder.Put("a", "other");
    kill(children(false).at(0), SIGSTOP);
    ask(2, path);
    service.work();
    kill(children(false).at(0), SIGKILL);
    EXPECT_EQ(answer(2), "read other");

    Service impatient(tool, 1, keep, std::chrono::milliseconds(0));
    const pid_t first = children(false).at(0);
    impatient.take({3, {path}});
    impatient.work();
    for (const pid_t child : children(false)) kill(child, child == first ? SIGCONT : SIGSTOP);
    answer(impatient, 3);
    impatient.take({4, {path}});
    EXPECT_EQ(answer(impatient, 4), "no sense");
}

TEST_F(ServiceTest, WhatNobodyWantsAnyMoreStopsItsReader) {
    ask(1, folder.Put("hang", "hang"));
    ask(2, folder.Put("a", "a"));
    ask(3, folder.Put("b", "b"));
    service.take({1, {}});
    service.take({2, {}});
    EXPECT_EQ(answer(3), "read b");
    EXPECT_FALSE(replies.contains(1) || replies.contains(2));
}

}  // namespace
}  // namespace marrowbeck::tools
