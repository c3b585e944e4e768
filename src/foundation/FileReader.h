#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Path.h"

namespace TKL {

/// Receives the lines of a file in order.
class AbstractFileReaderDataProcessor {
 public:
  virtual ~AbstractFileReaderDataProcessor() = default;
  /// One line without its line feed.
  virtual void processLine(const std::string& line) = 0;
};

/// Collects the lines.
class FileReaderDataProcessorLinesVector : public AbstractFileReaderDataProcessor {
 public:
  void processLine(const std::string& line) override { lines.push_back(line); }

  std::vector<std::string> lines;
};

/// Reads a text file line by line, in blocks.
class FileReader {
 public:
  /// What the first bytes of a file say about its encoding.
  enum encoding_t {
    E_UTF8 = 0,
    E_UTF16BE = 1,
    E_UTF16LE = 2,
    E_UTF32BE = 3,
    E_UTF32LE = 4,
    E_UTF7 = 5,
    E_UTF1 = 6,
    E_UTFEBCDIC = 7,
    E_SCSU = 8,
    E_BOCU1 = 9,
    E_BOCU1_END = 10,
    E_GB18030 = 11,
    E_NONE = 12
  };

  explicit FileReader(Path file, std::size_t blockSize = 4096);

  /// Whether the file can be opened for reading.
  bool valid() const;

  /// Reads the first `count` bytes into `buffer`.
  /// @throws Exception "Invalid file path or error opening file for reading.",
  ///                   "Error reading requested number of bytes from file."
  void firstBytes(std::size_t count, std::string& buffer) const;

  /// Skips `offset` bytes and hands each line to the processor, or appends it to `lines`. Lines end with a
  /// line feed, which is cut; a carriage return in front of it stays.
  /// @throws Exception "Cannot open input file: %1", "Error reading %1 first bytes of file: %2" and others
  void readAll(AbstractFileReaderDataProcessor* processor, std::size_t offset = 0) const;
  void readAll(std::vector<std::string>& lines, std::size_t offset = 0) const;

  /// Looks for a byte order mark in the first four bytes; fewer than four count as none.
  static encoding_t detectEncoding(std::string_view bytes);

 private:
  Path file_;
  std::size_t blockSize_;
};

}  // namespace TKL
