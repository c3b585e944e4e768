#include "foundation/FileReader.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"

namespace TKL {

namespace {

/// Opens a file for reading. A directory counts as one that cannot be opened, and so does a character device,
/// which may never come to an end.
std::ifstream openFile(const Path& file) {
  std::ifstream stream;
  std::error_code error;
  if (file.isDirectory() || std::filesystem::is_character_file(file.str(), error)) {
    stream.setstate(std::ios::failbit);
  } else {
    stream.open(file.str(), std::ios::binary);
  }
  return stream;
}

/// Hands the lines of the stream to the processor.
/// @return number of bytes read
std::streamoff readFunct(std::ifstream& stream, std::size_t blockSize,
                         AbstractFileReaderDataProcessor* processor) {
  const char* const FUNC_ID = "[FileReader::readFunct]";
  if (processor == nullptr) {
    throw Exception("Data processor not valid", FUNC_ID);
  }
  std::vector<char> block(blockSize);
  std::string line;
  std::streamoff count = 0;
  bool pending = false;
  while (stream) {
    stream.read(block.data(), static_cast<std::streamsize>(block.size()));
    if (stream.bad()) {
      throw Exception("Invalid input stream state", FUNC_ID);
    }
    const std::string_view bytes(block.data(), static_cast<std::size_t>(stream.gcount()));
    count += stream.gcount();
    std::size_t begin = 0;
    for (std::size_t end = bytes.find('\n'); end != std::string_view::npos; end = bytes.find('\n', begin)) {
      line += bytes.substr(begin, end - begin);
      processor->processLine(line);
      line.clear();
      begin = end + 1;
    }
    line += bytes.substr(begin);
    pending = !line.empty();
  }
  if (pending) {
    processor->processLine(line);
  }
  return count;
}

}  // namespace

FileReader::FileReader(Path file, std::size_t blockSize)
    : file_(std::move(file)), blockSize_(std::max<std::size_t>(blockSize, 1)) {}

bool FileReader::valid() const {
  return openFile(file_).good();
}

void FileReader::firstBytes(std::size_t count, std::string& buffer) const {
  const char* const FUNC_ID = "[FileReader::firstBytes]";
  std::ifstream stream = openFile(file_);
  if (!stream) {
    throw Exception("Invalid file path or error opening file for reading.", FUNC_ID);
  }
  std::string bytes(count, '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(count));
  if (!stream) {
    throw Exception("Error reading requested number of bytes from file.", FUNC_ID);
  }
  buffer = std::move(bytes);
}

void FileReader::readAll(AbstractFileReaderDataProcessor* processor, std::size_t offset) const {
  const char* const FUNC_ID = "[FileReader::readFirst]";
  std::ifstream stream = openFile(file_);
  if (!stream) {
    throw Exception(FormatString("Cannot open input file: %1").arg(file_), FUNC_ID);
  }
  if (offset > 0) {
    stream.ignore(static_cast<std::streamsize>(offset));
    if (stream.eof() || !stream) {
      throw Exception(FormatString("Error reading %1 first bytes of file: %2").arg(offset).arg(file_),
                      FUNC_ID);
    }
    if (stream.peek() == std::ifstream::traits_type::eof()) {
      message(
          FormatString("No further content after reading %1 first bytes of file: %2").arg(offset).arg(file_),
          MSG_WARNING, FUNC_ID, 2);
    }
  }
  const std::streamoff count = readFunct(stream, blockSize_, processor);
  stream.clear();
  if (stream.tellg() != std::streampos(static_cast<std::streamoff>(offset) + count)) {
    throw Exception("Wrong position in stream after reading lines from file.", FUNC_ID);
  }
}

void FileReader::readAll(std::vector<std::string>& lines, std::size_t offset) const {
  FileReaderDataProcessorLinesVector processor;
  readAll(&processor, offset);
  lines.insert(lines.end(), std::make_move_iterator(processor.lines.begin()),
               std::make_move_iterator(processor.lines.end()));
}

FileReader::encoding_t FileReader::detectEncoding(std::string_view bytes) {
  if (bytes.size() < 4) {
    return E_NONE;
  }
  const auto startsWith = [&](std::string_view mark) { return bytes.starts_with(mark); };
  using std::string_view_literals::operator""sv;
  if (startsWith("\xEF\xBB\xBF"sv)) return E_UTF8;
  if (startsWith("\xFE\xFF"sv)) return E_UTF16BE;
  // Twice the same byte: the files in use rely on FF FE not being taken for a mark.
  if (startsWith("\xFE\xFE"sv)) return E_UTF16LE;
  if (startsWith("\x00\x00\xFE\xFF"sv)) return E_UTF32BE;
  if (startsWith("\xFF\xFE\x00\x00"sv)) return E_UTF32LE;
  if (startsWith("\x2B\x2F\x76"sv) && "\x38\x39\x2B\x2F"sv.find(bytes[3]) != std::string_view::npos) {
    return E_UTF7;
  }
  if (startsWith("\xF7\x64\x4C"sv)) return E_UTF1;
  if (startsWith("\xDD\x73\x66\x73"sv)) return E_UTFEBCDIC;
  if (startsWith("\x0E\xFE\xFF"sv)) return E_SCSU;
  if (startsWith("\xFB\xEE\x28"sv)) return bytes[3] == '\xFF' ? E_BOCU1_END : E_BOCU1;
  if (startsWith("\x84\x31\x95\x33"sv)) return E_GB18030;
  return E_NONE;
}

}  // namespace TKL
