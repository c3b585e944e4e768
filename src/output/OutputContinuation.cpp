#include "output/OutputContinuation.h"

#include <array>
#include <bit>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Exception.h"
#include "foundation/StringUtilities.h"
#include "output/OutputFiles.h"
#include "output/OutputRecord.h"
#include "output/Velmora5OutputData.h"

namespace VELMORA {

namespace {

const char* const CUT_ID = "[VelOutputs::cutRecordsAfter]";

[[noreturn]] void failToContinue(const VelOutputFile& file, const std::string& reason) {
  throw TKL::Exception("Cannot continue output file '" + file.path.absolutePath().str() + "': " + reason,
                       CUT_ID);
}

/// What is not read must not be cut.
[[noreturn]] void failToRead(const VelOutputFile& file) {
  failToContinue(file, errno != 0 ? TKL::systemErrorText(errno) : "it cannot be read!");
}

/// A file of other columns must be left as it is, for its records would all count as damaged.
[[noreturn]] void failForOtherEntries(const VelOutputFile& file) {
  failToContinue(file, "it was written for other elements or sides!");
}

/// Numbers of the elements or sides of a record, in their order.
std::vector<std::uint32_t> numbersOfEntries(const VelOutputFile& file) {
  std::vector<std::uint32_t> numbers;
  if (file.format->type == VelOutputFormat::T_FIELD)
    for (const Element* element : file.elements)
      numbers.push_back(static_cast<std::uint32_t>(element->number));
  else
    for (const Side* side : file.sides) numbers.push_back(static_cast<std::uint32_t>(side->number));
  return numbers;
}

/// The last line but one of the header of a text file.
std::string lineOfNumbers(const VelOutputFile& file) {
  std::string line = file.format->type == VelOutputFormat::T_FIELD ? "ELEMENTS = " : "SIDES = ";
  const std::vector<std::uint32_t> numbers = numbersOfEntries(file);
  if (file.format->spaceType != VelOutputFormat::S_SINGLE || numbers.size() < 2) return line + '0';
  for (const std::uint32_t number : numbers) line += std::to_string(number) + ' ';
  return line;
}

/// Reads a line with its line feed; false at the end of the file and for a line without one.
bool completeLine(std::istream& stream, std::string& line) {
  return std::getline(stream, line) && !stream.eof();
}

/// Time and number of values of a record.
struct TextRecord {
  double time = 0.0;
  std::size_t nValues = 0;
};

bool readTextRecord(std::string_view line, TextRecord& record) {
  if (line.find('\0') != std::string_view::npos) return false;
  constexpr std::string_view BLANKS = " \t";
  std::size_t nWords = 0;
  for (std::size_t start = line.find_first_not_of(BLANKS); start != std::string_view::npos; ++nWords) {
    const std::size_t end = std::min(line.find_first_of(BLANKS, start), line.size());
    double value = 0.0;
    if (std::from_chars(line.data() + start, line.data() + end, value).ptr != line.data() + end) return false;
    if (nWords == 0) record.time = value;
    start = line.find_first_not_of(BLANKS, end);
  }
  record.nValues = nWords - 1;
  return nWords > 0;
}

/// Moves the stream behind the header of a text file. A file without a header, as a restart without the old
/// file makes it, begins with its records.
void skipTextHeader(std::istream& stream, const VelOutputFile& file) {
  std::string line;
  if (stream.peek() != '#') return;
  while (completeLine(stream, line)) {
    if (!line.starts_with("ELEMENTS = ") && !line.starts_with("SIDES = ")) continue;
    const bool fits = line == lineOfNumbers(file);
    // an empty line follows, and a second one where there is no geometry
    if (!completeLine(stream, line) || !line.empty()) break;
    if (!fits) failForOtherEntries(file);
    return;
  }
  failToContinue(file, "its header is not complete!");
}

/// Where the records that stay end in the file, and how many they are.
struct KeptRecords {
  std::uint64_t end = 0;
  std::size_t count = 0;
};

KeptRecords keptTextRecords(std::istream& stream, const VelOutputFile& file, const ContinuationPoint& point) {
  skipTextHeader(stream, file);
  const bool single = file.format->spaceType == VelOutputFormat::S_SINGLE;
  const std::size_t nEntries =
      file.format->type == VelOutputFormat::T_FIELD ? file.elements.size() : file.sides.size();
  const double limit = timeAsShown(file, point.t);
  std::size_t alike = 0;
  KeptRecords kept{.end = static_cast<std::uint64_t>(stream.tellg()), .count = 0};
  TextRecord record;
  for (std::string line; completeLine(stream, line); kept.end += line.size() + 1) {
    if (line.empty()) continue;
    if (!readTextRecord(line, record) || record.nValues != (single ? nEntries : 1)) break;
    if (record.time > limit || (record.time == limit && ++alike > point.shownAlike)) break;
    ++kept.count;
  }
  return kept;
}

/// Reads the little-endian numbers of a binary file.
class BinaryInput {
 public:
  explicit BinaryInput(std::istream& stream) : stream_(stream) {}

  std::uint64_t number(std::size_t nBytes) {
    std::array<char, 8> bytes{};
    stream_.read(bytes.data(), static_cast<std::streamsize>(nBytes));
    std::uint64_t value = 0;
    for (std::size_t i = nBytes; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
  }
  void skip(std::uint64_t nBytes) { stream_.seekg(static_cast<std::streamoff>(nBytes), std::ios::cur); }
  void skipString() { skip(number(4)); }
  std::string string() {
    std::string text;
    const std::uint64_t length = number(4);
    for (std::uint64_t i = 0; i < length && stream_; ++i) text.push_back(static_cast<char>(stream_.get()));
    return text;
  }
  bool good() const { return static_cast<bool>(stream_); }

 private:
  std::istream& stream_;
};

/// Moves the stream behind the header of a binary file and gives the number of values of a record.
std::uint64_t skipBinaryHeader(std::istream& stream, const VelOutputFile& file) {
  constexpr std::uint64_t MAGIC_AND_TYPE = 44;
  constexpr std::uint64_t CREATED = 4;
  constexpr std::uint64_t SPACE_AND_TIME_TYPE = 8;
  BinaryInput input(stream);
  input.skip(MAGIC_AND_TYPE);
  input.skipString();  // project file
  input.skip(CREATED);
  input.skipString();  // quantity
  input.skip(SPACE_AND_TIME_TYPE);
  input.skipString();           // value unit
  input.skipString();           // time unit
  input.skip(input.number(4));  // geometry
  const std::uint64_t nNumbers = input.number(4);
  const std::vector<std::uint32_t> expected = numbersOfEntries(file);
  bool fits = nNumbers == expected.size();
  for (std::uint64_t i = 0; i < nNumbers && input.good(); ++i) {
    const std::uint64_t number = input.number(4);
    fits = fits && number == expected[i];
  }
  if (input.string() != std::string("HDR_END") + '\0' || !input.good())
    failToContinue(file, "its header is not complete!");
  if (!fits) failForOtherEntries(file);
  return nNumbers;
}

KeptRecords keptBinaryRecords(std::istream& stream, std::uint64_t size, const VelOutputFile& file,
                              const ContinuationPoint& point) {
  std::uint64_t nValues = file.format->type == VelOutputFormat::T_FIELD ? file.elements.size()  //
                                                                        : file.sides.size();
  if (stream.peek() == '#') nValues = skipBinaryHeader(stream, file);
  const std::uint64_t recordSize = 8 * (nValues + 1);
  const double limit = timeInUnit(point.t, *file.format);
  KeptRecords kept{.end = static_cast<std::uint64_t>(stream.tellg()), .count = 0};
  BinaryInput input(stream);
  while (kept.end + recordSize <= size) {
    const auto time = std::bit_cast<double>(input.number(8));
    if (!input.good()) failToRead(file);
    if (!(time <= limit)) break;
    kept.end += recordSize;
    ++kept.count;
    input.skip(recordSize - 8);
  }
  return kept;
}

}  // namespace

ContinuedFile cutRecordsAfter(const VelOutputFile& file, const ContinuationPoint& point) {
  const std::string path = file.path.str();
  std::error_code error;
  const std::uint64_t size = std::filesystem::file_size(path, error);
  if (error) failToContinue(file, error.message());
  if (size == 0) return {};
  errno = 0;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) failToRead(file);
  const KeptRecords kept = writesBinary(file) ? keptBinaryRecords(stream, size, file, point)
                                              : keptTextRecords(stream, file, point);
  if (stream.bad()) failToRead(file);
  stream.close();
  if (kept.end >= size) return {.records = kept.count, .cut = 0};
  std::filesystem::resize_file(path, kept.end, error);
  if (error) failToContinue(file, error.message());
  return {.records = kept.count, .cut = size - kept.end};
}

double timeAsShown(const VelOutputFile& file, double t) {
  const std::string text = TKL::val2string(timeInUnit(t, *file.format));
  double shown = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), shown);
  return shown;
}

}  // namespace VELMORA
