#include "support/OutputFileReader.h"

#include <cstring>
#include <sstream>
#include <stdexcept>

namespace TKL {

namespace {

[[noreturn]] void refuse(const std::string& reason) {
  throw std::runtime_error("output file: " + reason);
}

/// Walks through the bytes of a binary file.
class Cursor {
 public:
  explicit Cursor(const std::string& bytes) : bytes_(bytes) {}

  std::string take(std::size_t count) {
    if (count > bytes_.size() - position_) refuse("ends too early");
    position_ += count;
    return bytes_.substr(position_ - count, count);
  }
  template <class Value>
  Value value() {  // the tests run on little-endian machines
    Value result{};
    std::memcpy(&result, take(sizeof(Value)).data(), sizeof(Value));
    return result;
  }
  std::string string() {
    const std::string text = take(value<std::uint32_t>());
    if (text.empty() || text.find('\0') != text.size() - 1) refuse("string without its NUL");
    return text.substr(0, text.size() - 1);
  }
  std::size_t position() const { return position_; }
  std::size_t left() const { return bytes_.size() - position_; }

 private:
  const std::string& bytes_;
  std::size_t position_ = 0;
};

std::size_t setBits(const std::string& bytes) {
  std::size_t count = 0;
  for (const char byte : bytes)
    for (int bit = 0; bit < 8; ++bit) count += static_cast<std::size_t>(byte >> bit & 1);
  return count;
}

std::vector<double> readWidths(Cursor& cursor) {
  std::vector<double> widths(cursor.value<std::uint32_t>());
  for (double& width : widths) width = cursor.value<double>();
  return widths;
}

std::vector<ReadOutputFile::Place> readPlaces(Cursor& cursor, bool sides, std::size_t& paddingBits) {
  std::vector<ReadOutputFile::Place> places(cursor.value<std::uint32_t>());
  for (auto& place : places) {
    place.number = cursor.value<std::uint32_t>();
    paddingBits += setBits(cursor.take(4));
    place.x = cursor.value<double>();
    place.y = cursor.value<double>();
    place.column = cursor.value<std::int32_t>();
    place.row = cursor.value<std::int32_t>();
    if (sides) {
      place.tag = cursor.value<std::uint8_t>();
      paddingBits += setBits(cursor.take(3));
    } else {
      place.tag = cursor.value<std::uint32_t>();
    }
    paddingBits += setBits(cursor.take(4));
  }
  return places;
}

void readBinaryGeometry(Cursor& cursor, ReadOutputFile& file) {
  file.materials.resize(cursor.value<std::uint32_t>());
  for (auto& material : file.materials) {
    material.number = cursor.value<std::int32_t>();
    file.paddingBits += setBits(cursor.take(4));
    material.name = cursor.string();
  }
  file.columns = readWidths(cursor);
  file.rows = readWidths(cursor);
  const std::vector<double> thickness = readWidths(cursor);
  if (thickness.size() != 1) refuse("one thickness expected");
  file.thickness = thickness[0];
  file.elements = readPlaces(cursor, false, file.paddingBits);
  file.sides = readPlaces(cursor, true, file.paddingBits);
}

ReadOutputFile readBinary(const std::string& bytes) {
  Cursor cursor(bytes);
  ReadOutputFile file;
  file.binary = true;
  const std::string magic = cursor.take(40);
  if (magic != std::string("# Velmora 5 Output file - binary 5.0") + std::string(4, '\0')) refuse("magic");
  const char* const types[] = {"FIELD", "FLUX"};
  const char* const spaces[] = {"SINGLE", "MEAN", "INTEGRAL", "UNKNOWN"};
  const char* const times[] = {"NONE", "MEAN", "INTEGRAL", "UNKNOWN"};
  file.type = types[cursor.value<std::uint32_t>() % 2];
  file.projectFile = cursor.string();
  file.created = std::to_string(cursor.value<std::uint32_t>());
  file.quantity = cursor.string();
  file.spaceType = spaces[cursor.value<std::uint32_t>() % 4];
  file.timeType = times[cursor.value<std::uint32_t>() % 4];
  file.valueUnit = cursor.string();
  file.timeUnit = cursor.string();
  const std::size_t geometrySize = cursor.value<std::uint32_t>();
  const std::size_t start = cursor.position();
  file.withGeometry = geometrySize > 0;
  if (file.withGeometry) readBinaryGeometry(cursor, file);
  if (cursor.position() - start != geometrySize) refuse("size of the geometry");
  file.numbers.resize(cursor.value<std::uint32_t>());
  for (long& number : file.numbers) number = cursor.value<std::int32_t>();
  if (cursor.string() != "HDR_END") refuse("end of the header");
  while (cursor.left() >= 8 * (file.numbers.size() + 1)) {
    ReadOutputFile::Record record;
    record.time = cursor.value<double>();
    for (std::size_t i = 0; i < file.numbers.size(); ++i) record.values.push_back(cursor.value<double>());
    file.records.push_back(record);
  }
  file.rest = cursor.left();
  return file;
}

std::vector<double> numbersIn(const std::string& line) {
  std::istringstream stream(line);
  std::vector<double> numbers;
  for (std::string word; stream >> word;) numbers.push_back(std::stod(word));
  return numbers;
}

/// Lines of a text file, one behind the other.
class Lines {
 public:
  explicit Lines(const std::string& text) : text_(text) {}

  bool atEnd() const { return text_.find('\n', position_) == std::string::npos; }
  std::string next() {
    if (atEnd()) refuse("ends too early");
    const std::size_t end = text_.find('\n', position_);
    const std::string line = text_.substr(position_, end - position_);
    position_ = end + 1;
    return line;
  }
  void expect(const std::string& line) {
    if (next() != line) refuse("'" + line + "' expected");
  }
  std::string valueOf(std::string key) {
    key.resize(13, ' ');
    const std::string line = next();
    if (line.compare(0, 18, "# " + key + " = ") != 0) refuse("key " + key);
    return line.substr(18);
  }
  std::size_t left() const { return text_.size() - position_; }

 private:
  const std::string& text_;
  std::size_t position_ = 0;
};

std::vector<ReadOutputFile::Place> readPlaceRows(Lines& lines) {
  std::vector<ReadOutputFile::Place> places;
  for (std::string line = lines.next(); !line.empty(); line = lines.next()) {
    const std::vector<double> row = numbersIn(line);
    if (row.size() != 6) refuse("six columns expected");
    places.push_back({static_cast<long>(row[0]), row[1], row[2], static_cast<int>(row[3]),
                      static_cast<int>(row[4]), static_cast<long>(row[5])});
  }
  return places;
}

void readTextGeometry(Lines& lines, ReadOutputFile& file) {
  for (std::string line = lines.next(); !line.empty(); line = lines.next()) {
    std::istringstream row(line);
    ReadOutputFile::Material material;
    row >> material.number >> material.colour >> std::ws;
    std::getline(row, material.name);
    file.materials.push_back(material);
  }
  lines.expect("TABLE  GRID");
  file.columns = numbersIn(lines.next());
  file.rows = numbersIn(lines.next());
  file.thickness = std::stod(lines.next());
  lines.expect("");
  lines.expect("TABLE  ELEMENT_GEOMETRY");
  file.elements = readPlaceRows(lines);
  lines.expect("TABLE  SIDES_GEOMETRY");
  file.sides = readPlaceRows(lines);
}

ReadOutputFile readText(const std::string& text) {
  Lines lines(text);
  ReadOutputFile file;
  lines.expect("# Velmora 5 Output file");
  file.type = lines.valueOf("TYPE");
  file.projectFile = lines.valueOf("PROJECT_FILE");
  file.created = lines.valueOf("CREATED");
  file.quantity = lines.valueOf("QUANTITY");
  file.spaceType = lines.valueOf("SPACE_TYPE");
  file.timeType = lines.valueOf("TIME_TYPE");
  file.valueUnit = lines.valueOf("VALUE_UNIT");
  file.timeUnit = lines.valueOf("TIME_UNIT");
  lines.expect("");
  std::string line = lines.next();
  if (line == "TABLE  MATERIALS") {
    file.withGeometry = true;
    readTextGeometry(lines, file);
    line = lines.next();
  }
  const std::string key = file.type == "FIELD" ? "ELEMENTS = " : "SIDES = ";
  if (line.compare(0, key.size(), key) != 0) refuse(key);
  const std::string list = line.substr(key.size());
  if (file.withGeometry)
    for (const double number : numbersIn(list)) file.numbers.push_back(static_cast<long>(number));
  else if (list != "0")
    refuse("0 expected");
  lines.expect("");
  if (!file.withGeometry) lines.expect("");
  while (!lines.atEnd()) {
    const std::vector<double> row = numbersIn(lines.next());
    if (row.empty()) refuse("empty record");
    file.records.push_back({row[0], {row.begin() + 1, row.end()}});
  }
  file.rest = lines.left();
  return file;
}

}  // namespace

ReadOutputFile readOutputFile(const std::string& bytes) {
  return bytes.compare(0, 32, "# Velmora 5 Output file - binary") == 0 ? readBinary(bytes) : readText(bytes);
}

}  // namespace TKL
