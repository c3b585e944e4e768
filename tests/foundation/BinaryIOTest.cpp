#include "foundation/BinaryIO.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/Thrown.h"

namespace TKL {
namespace {

std::string length(std::uint32_t value) {
  return {reinterpret_cast<const char*>(&value), sizeof(value)};
}

TEST(BinaryVector, comesBackUnchanged) {
  const std::vector<double> values = {1.5, -2.0, 1e300};
  std::stringstream stream;
  write_vector_binary(stream, values);
  EXPECT_EQ(stream.str().size(), 4U + 3U * 8U);
  std::vector<double> read;
  read_vector_binary(stream, read, 3);
  EXPECT_EQ(read, values);
}

TEST(BinaryVector, longerThanOneChunk_comesBackUnchanged) {
  const std::vector<double> values(100000, 0.25);
  std::stringstream stream;
  write_vector_binary(stream, values);
  std::vector<double> read;
  read_vector_binary(stream, read, 100000);
  EXPECT_EQ(read, values);
}

TEST(BinaryVector, lengthZero_isEmpty) {
  std::istringstream stream(length(0));
  std::vector<double> read = {1};
  read_vector_binary(stream, read, 0);
  EXPECT_TRUE(read.empty());
}

TEST(BinaryVector, lengthAboveMaximum_fails) {
  std::istringstream stream(length(4) + std::string(32, '\0'));
  std::vector<double> read;
  EXPECT_EQ(thrownBy([&] { read_vector_binary(stream, read, 3); }),
            (Thrown{"Vector length exceeds given maximum!", "[read_vector_binary]"}));
}

TEST(BinaryVector, lengthWithoutData_failsWithoutReservingIt) {
  // 4294967295 doubles would be 32 GiB.
  std::istringstream stream(length(0xFFFFFFFF) + "abc");
  std::vector<double> read = {7};
  EXPECT_EQ(thrownBy([&] { read_vector_binary(stream, read, 0xFFFFFFFF); }),
            (Thrown{"Error reading from input stream!", "[read_vector_binary]"}));
  EXPECT_EQ(read, std::vector<double>{7});
}

TEST(BinaryVector, truncatedLength_fails) {
  std::istringstream stream("abc");
  std::vector<double> read;
  EXPECT_EQ(thrownBy([&] { read_vector_binary(stream, read, 10); }).text, "Error reading from input stream!");
}

TEST(BinaryString, comesBackUnchanged) {
  std::stringstream stream;
  write_string_binary(stream, "a\nb");
  EXPECT_EQ(stream.str(), length(3) + "a\nb");
  std::string read;
  read_string_binary(stream, read, 3);
  EXPECT_EQ(read, "a\nb");
}

TEST(BinaryString, lengthAboveMaximum_fails) {
  std::istringstream stream(length(4) + "abcd");
  std::string read;
  EXPECT_EQ(thrownBy([&] { read_string_binary(stream, read, 3); }),
            (Thrown{"String length exceeds given maximum!", "[read_string_binary]"}));
}

TEST(BinaryString, truncated_fails) {
  std::istringstream stream(length(4) + "abc");
  std::string read = "old";
  EXPECT_EQ(thrownBy([&] { read_string_binary(stream, read, 10); }),
            (Thrown{"Error reading from input stream!", "[read_string_binary]"}));
  EXPECT_EQ(read, "old");
}

}  // namespace
}  // namespace TKL
