#include "foundation/FileReader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <string>
#include <thread>

#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace TKL {
namespace {

using Lines = std::vector<std::string>;

/// A file that is removed after the test.
class FileReaderTest : public testing::Test {
 protected:
  void SetUp() override {
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    path = testing::TempDir() + "/FileReaderTest_" + name + "_" + std::to_string(getpid());
  }
  void TearDown() override { unlink(path.c_str()); }
  void write(const std::string& text) const { std::ofstream(path, std::ios::binary) << text; }
  Lines read(std::size_t blockSize = 4096, std::size_t offset = 0) const {
    Lines lines;
    FileReader(path, blockSize).readAll(lines, offset);
    return lines;
  }

  std::string path;
};

TEST_F(FileReaderTest, valid_onlyForFilesThatCanBeOpened) {
  EXPECT_FALSE(FileReader(path).valid());
  write("");
  EXPECT_TRUE(FileReader(path).valid());
  EXPECT_FALSE(FileReader(testing::TempDir()).valid());
  EXPECT_FALSE(FileReader(Path()).valid());
}

TEST_F(FileReaderTest, endlessDevice_cannotBeOpened) {
  EXPECT_FALSE(FileReader("/dev/zero").valid());
  Lines lines;
  EXPECT_EQ(thrownBy([&] { FileReader("/dev/zero").readAll(lines); }),
            (Thrown{"Cannot open input file: /dev/zero", "[FileReader::readFirst]"}));
}

TEST_F(FileReaderTest, lines_areCutAtLineFeedsOnly) {
  write("a\r\n\nb\n");
  EXPECT_EQ(read(), (Lines{"a\r", "", "b"}));
}

TEST_F(FileReaderTest, lastLineWithoutLineFeed_isALine) {
  write("a\nb");
  EXPECT_EQ(read(), (Lines{"a", "b"}));
}

TEST_F(FileReaderTest, emptyFile_hasNoLine) {
  write("");
  EXPECT_TRUE(read().empty());
}

TEST_F(FileReaderTest, blockSize_doesNotMatter) {
  write("first line\nsecond\n\nlast");
  const Lines expected = {"first line", "second", "", "last"};
  for (const std::size_t blockSize : {0, 1, 2, 7, 11, 12, 100}) {
    EXPECT_EQ(read(blockSize), expected) << blockSize;
  }
}

TEST_F(FileReaderTest, offset_isSkipped) {
  write("abc\ndef");
  EXPECT_EQ(read(4096, 2), (Lines{"c", "def"}));
}

TEST_F(FileReaderTest, lines_areAppended) {
  write("b\n");
  Lines lines = {"a"};
  FileReader(path).readAll(lines);
  EXPECT_EQ(lines, (Lines{"a", "b"}));
}

TEST_F(FileReaderTest, tenMegabytesWithoutLineFeed_areOneLine) {
  write(std::string(10000000, 'x'));
  EXPECT_EQ(read().at(0).size(), 10000000U);
}

TEST_F(FileReaderTest, missingFile_fails) {
  EXPECT_EQ(thrownBy([&] { read(); }),
            (Thrown{"Cannot open input file: " + path, "[FileReader::readFirst]"}));
}

TEST_F(FileReaderTest, offsetBehindTheEnd_fails) {
  write("abc");
  EXPECT_EQ(thrownBy([&] { read(4096, 4); }),
            (Thrown{"Error reading 4 first bytes of file: " + path, "[FileReader::readFirst]"}));
}

TEST_F(FileReaderTest, offsetAtTheEnd_warns) {
  write("abc");
  const MessageCapture capture;
  EXPECT_TRUE(read(4096, 3).empty());
  EXPECT_TRUE(capture.has("No further content after reading 3 first bytes of file: " + path, MSG_WARNING,
                          "[FileReader::readFirst]", 2));
}

TEST_F(FileReaderTest, missingProcessor_fails) {
  write("abc");
  EXPECT_EQ(thrownBy([&] { FileReader(path).readAll(nullptr); }),
            (Thrown{"Data processor not valid", "[FileReader::readFunct]"}));
}

TEST_F(FileReaderTest, readError_fails) {
  // The first page of a process is never mapped, so reading it is an input error.
  const FileReader reader("/proc/self/mem");
  if (!reader.valid()) {
    GTEST_SKIP() << "no file here that fails on reading";
  }
  Lines lines;
  EXPECT_EQ(thrownBy([&] { reader.readAll(lines); }),
            (Thrown{"Invalid input stream state", "[FileReader::readFunct]"}));
}

TEST_F(FileReaderTest, streamWithoutPosition_fails) {
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  std::thread writer([&] { write("a\n"); });
  Lines lines;
  EXPECT_EQ(thrownBy([&] { FileReader(path).readAll(lines); }),
            (Thrown{"Wrong position in stream after reading lines from file.", "[FileReader::readFirst]"}));
  writer.join();
}

TEST_F(FileReaderTest, firstBytes_areRead) {
  write("abcdef");
  std::string buffer;
  FileReader(path).firstBytes(4, buffer);
  EXPECT_EQ(buffer, "abcd");
}

TEST_F(FileReaderTest, firstBytesOfMissingFile_fails) {
  std::string buffer;
  EXPECT_EQ(thrownBy([&] { FileReader(path).firstBytes(4, buffer); }),
            (Thrown{"Invalid file path or error opening file for reading.", "[FileReader::firstBytes]"}));
}

TEST_F(FileReaderTest, firstBytesOfShortFile_failsAndKeepsTheBuffer) {
  write("abc");
  std::string buffer = "old";
  EXPECT_EQ(thrownBy([&] { FileReader(path).firstBytes(4, buffer); }),
            (Thrown{"Error reading requested number of bytes from file.", "[FileReader::firstBytes]"}));
  EXPECT_EQ(buffer, "old");
}

TEST(DetectEncoding, everyMark) {
  const std::pair<std::string, int> MARKS[] = {
      {"EFBBBF41", 0},  {"FEFF4142", 1},  {"FEFE4142", 2}, {"0000FEFF", 3}, {"FFFE0000", 4},
      {"2B2F7638", 5},  {"2B2F7639", 5},  {"2B2F762B", 5}, {"2B2F762F", 5}, {"F7644C41", 6},
      {"DD736673", 7},  {"0EFEFF41", 8},  {"FBEE2800", 9}, {"FBEE28FE", 9}, {"FBEE28FF", 10},
      {"84319533", 11}, {"41424344", 12}, {"2B2F7640", 12}};
  for (const auto& [digits, encoding] : MARKS) {
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
      bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    EXPECT_EQ(FileReader::detectEncoding(bytes), encoding) << digits;
  }
}

TEST(DetectEncoding, littleEndianMarkOfSixteenBits_isNone) {
  EXPECT_EQ(FileReader::detectEncoding("\xFF\xFE"
                                       "AB"),
            FileReader::E_NONE);
}

TEST(DetectEncoding, fewerThanFourBytes_areNone) {
  EXPECT_EQ(FileReader::detectEncoding("\xEF\xBB\xBF"), FileReader::E_NONE);
  EXPECT_EQ(FileReader::detectEncoding(""), FileReader::E_NONE);
}

}  // namespace
}  // namespace TKL
