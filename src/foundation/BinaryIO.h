#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace TKL {

/// Reads a 32-bit unsigned length and that many 8-byte doubles. A failure leaves `values` as it was.
/// @throws Exception "Error reading from input stream!", "Vector length exceeds given maximum!"
void read_vector_binary(std::istream& stream, std::vector<double>& values, std::uint32_t maxSize);

/// Reads a 32-bit unsigned length and that many bytes. A failure leaves `text` as it was.
/// @throws Exception "Error reading from input stream!", "String length exceeds given maximum!"
void read_string_binary(std::istream& stream, std::string& text, std::uint32_t maxSize);

/// Writes what `read_vector_binary` reads.
void write_vector_binary(std::ostream& stream, const std::vector<double>& values);

/// Writes what `read_string_binary` reads.
void write_string_binary(std::ostream& stream, const std::string& text);

}  // namespace TKL
