// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "framework/core/files/BinaryStream.h"
#include "framework/core/files/TextInputStream.h"
#include "framework/core/files/TextOutputStream.h"
#include "tests/support/TemporaryFolder.h"

using namespace framework;

namespace {

class StreamTest : public testing::Test {
  protected:
    std::vector<std::string> linesOf(const std::string& content) {
        folder_.Put("file", content);
        const Ref<TextInputStream> stream = file_->OpenAsTextFile();
        std::vector<std::string> lines;
        while (!stream->EndOfFile()) lines.push_back(stream->ReadLine().ToStd());
        EXPECT_TRUE(stream->ReadLine().IsEmpty());
        return lines;
    }
    std::string content() { return file_->OpenAsTextFile()->ReadAll().ToStd(); }

    TemporaryFolder folder_;
    const Ref<FolderItem> file_ = folder_.Item()->Child("file");
};

using Lines = std::vector<std::string>;

}  // namespace

TEST_F(StreamTest, EveryLineEndEndsALine) {
    EXPECT_EQ(linesOf(""), Lines{});
    EXPECT_EQ(linesOf("a"), Lines{"a"});
    EXPECT_EQ(linesOf("a\nb\r\nc\rd"), (Lines{"a", "b", "c", "d"}));
    EXPECT_EQ(linesOf("\n\r\n\r\r\n\n"), (Lines{"", "", "", "", ""}));
    EXPECT_EQ(linesOf(std::string("a\0b\n\xFF", 5)), (Lines{std::string("a\0b", 3), "\xFF"}));
}

TEST_F(StreamTest, LineEndsMayStraddleTheBuffer) {
    for (std::size_t length = 65'530; length <= 65'540; ++length) {
        const std::string longLine(length, 'x');
        EXPECT_EQ(linesOf(longLine + "\r\nnext\r\n"), (Lines{longLine, "next"})) << length;
        EXPECT_EQ(linesOf(std::string(longLine).append("\r").append(longLine)), (Lines{longLine, longLine})) << length;
        EXPECT_EQ(linesOf(longLine + "\r"), Lines{longLine}) << length;
    }
}

TEST_F(StreamTest, ALineMayBeHugeAndTheRestIsReadAtOnce) {
    std::string huge;
    huge.resize(32'000'000, 'y');
    folder_.Put("file", huge + "\r\nrest\r\nof it\n");
    const Ref<TextInputStream> stream = file_->OpenAsTextFile();
    const String line = stream->ReadLine();
    EXPECT_TRUE(line.Bytes() == huge);
    EXPECT_EQ(line.Encoding(), Encodings::UTF8);
    EXPECT_EQ(stream->ReadAll().Bytes(), "rest\r\nof it\n");
    EXPECT_TRUE(stream->EndOfFile());
}

TEST_F(StreamTest, WhatIsWrittenIsInTheFile) {
    folder_.Put("file", std::string(100, '-'));
    {
        const Ref<TextOutputStream> stream = TextOutputStream::Create(file_);
        EXPECT_EQ(file_->Length(), 0U);
        stream->WriteLine("one");
        stream->Write(String(std::string_view("two\0\xFF", 5)));
        stream->WriteLine();
        EXPECT_TRUE(stream->Sync());
        EXPECT_EQ(file_->Length(), 10U);
        stream->Write(String(std::string(200'000, 'z')));
    }
    EXPECT_EQ(content(), std::string("one\ntwo\0\xFF\n", 10) + std::string(200'000, 'z')) << "dropping it closes it";
}

TEST_F(StreamTest, AFullDiskIsNoticed) {
    const Ref<FolderItem> full = GetFolderItem("/dev/full");
    const Ref<TextOutputStream> text = TextOutputStream::Create(full);
    ASSERT_TRUE(text);
    text->WriteLine("lost");
    EXPECT_FALSE(text->Failed()) << "it is still in the buffer";
    EXPECT_FALSE(text->Close());
    EXPECT_TRUE(text->Failed());
    EXPECT_FALSE(text->Close()) << "the answer stays";

    const Ref<TextOutputStream> synced = TextOutputStream::Create(full);
    synced->WriteLine("lost");
    EXPECT_FALSE(synced->Sync());

    const Ref<BinaryStream> binary = full->OpenAsBinaryFile(true);
    binary->Write("lost");
    EXPECT_TRUE(binary->Failed());
    EXPECT_FALSE(binary->Close());
}

TEST_F(StreamTest, BinaryStreamsReadAndWriteAtTheirPosition) {
    folder_.Put("file", "0123456789");
    const Ref<BinaryStream> stream = file_->OpenAsBinaryFile(true);
    EXPECT_EQ(stream->Length(), 10U);
    EXPECT_EQ(stream->Read(4).Bytes(), "0123");
    stream->Write("ab");
    EXPECT_EQ(stream->Position(), 6U);
    EXPECT_EQ(stream->Read(100, Encodings::UTF8).Bytes(), "6789");
    EXPECT_TRUE(stream->EndOfFile());
    EXPECT_TRUE(stream->Read(2'000'000'000).IsEmpty());
    EXPECT_TRUE(stream->Read(-1).IsEmpty());
    stream->Position(12);
    stream->Write("z");
    EXPECT_TRUE(stream->Close());
    EXPECT_EQ(content(), std::string("0123ab6789\0\0z", 13));

    const Ref<BinaryStream> reader = file_->OpenAsBinaryFile();
    reader->Write("no");
    EXPECT_TRUE(reader->Failed());
    EXPECT_EQ(reader->Length(), 13U);
}
