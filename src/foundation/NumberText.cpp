#include "foundation/NumberText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>

namespace TKL {

namespace {

__extension__ typedef unsigned __int128 uint128;

constexpr int MANTISSA_BITS = 52;
constexpr int MAX_DIGITS = 17;
constexpr int MAX_POWER = 19;  // the largest power of ten in 64 bits

constexpr auto POWERS = [] {
  std::array<std::uint64_t, MAX_POWER + 1> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = 10 * powers[i - 1];
  return powers;
}();

constexpr std::uint64_t power(int exponent) {
  return POWERS[static_cast<std::size_t>(exponent)];
}

/// digits 10^(exponent - precision + 1), with `precision` digits.
struct Decimal {
  std::uint64_t digits;
  int exponent;
};

/// mantissa 2^(-shift) 10^(power), rounded to the next whole number, from the middle to the even one.
std::uint64_t scaled(std::uint64_t mantissa, int shift, int powerOfTen) {
  std::uint64_t whole = 0;
  bool above = false, middle = false;
  if (powerOfTen >= 0) {
    const uint128 product = static_cast<uint128>(mantissa) * power(powerOfTen);
    const uint128 half = static_cast<uint128>(1) << (shift - 1);
    const uint128 rest = product & ((half << 1) - 1);
    whole = static_cast<std::uint64_t>(product >> shift);
    above = rest > half;
    middle = rest == half;
  } else {
    const std::uint64_t divisor = power(-powerOfTen), units = mantissa >> shift;
    const bool fraction = (units << shift) != mantissa;
    const std::uint64_t rest = units % divisor;
    whole = units / divisor;
    above = rest > divisor / 2 || (rest == divisor / 2 && fraction);
    middle = rest == divisor / 2 && !fraction;
  }
  return whole + (above || (middle && whole % 2 == 1) ? 1 : 0);
}

/// A number of which the short ways can take the digits: mantissa 2^(-shift), where all of the arithmetic is
/// exact.
struct Binary {
  std::uint64_t mantissa;
  int shift;
};

std::optional<Binary> parts(double value) {
  constexpr double SMALLEST = 1e-10;
  constexpr double LARGEST = 4503599627370496.0;  // 2^52: above, numbers have no fraction
  if (!(value >= SMALLEST && value < LARGEST)) return std::nullopt;
  constexpr int BIAS = 1023;
  constexpr std::uint64_t LEADING = std::uint64_t{1} << MANTISSA_BITS;
  const auto bits = std::bit_cast<std::uint64_t>(value);
  return Binary{(bits & (LEADING - 1)) | LEADING,
                MANTISSA_BITS + BIAS - static_cast<int>(bits >> MANTISSA_BITS)};
}

/// The leading digits of a positive number.
std::optional<Decimal> leadingDigits(double value, int precision) {
  const std::optional<Binary> binary = parts(value);
  if (!binary) return std::nullopt;
  constexpr int LOG_2 = 78913, SHIFT = 18;                            // log10(2) 2^18
  int exponent = ((MANTISSA_BITS - binary->shift) * LOG_2) >> SHIFT;  // or one more
  if (exponent < 0 ? value * static_cast<double>(power(-exponent - 1)) >= 1.0
                   : value >= static_cast<double>(power(exponent + 1)))
    ++exponent;
  if (precision - exponent > MAX_POWER) return std::nullopt;
  std::uint64_t digits = scaled(binary->mantissa, binary->shift, precision - 1 - exponent);
  if (digits < power(precision - 1)) {  // just below a power, which the comparison has rounded away
    --exponent;
    digits = scaled(binary->mantissa, binary->shift, precision - 1 - exponent);
  }
  if (digits >= power(precision)) {  // rounded up to the next power
    digits /= 10;
    ++exponent;
  }
  return Decimal{digits, exponent};
}

/// The decimal digits of a number, which has `count` of them.
void writeDigits(char* out, std::uint64_t number, int count) {
  static constexpr auto PAIRS = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
      pairs[2 * i] = static_cast<char>('0' + i / 10);
      pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
  }();
  for (; count > 1; number /= 100) {
    count -= 2;
    std::memcpy(out + count, &PAIRS[2 * (number % 100)], 2);
  }
  if (count > 0) *out = static_cast<char>('0' + number);
}

/// Text of `decimal` with the point, without trailing zeros; with an exponent where the number is small or
/// large. Copies are longer than they need to be, which spares the calls of copies of any length.
char* writeDecimal(char* out, Decimal decimal, int precision) {
  constexpr int SMALLEST_EXPONENT = -4;
  constexpr std::size_t ROOM = 24;
  char digits[2 * ROOM];
  writeDigits(digits, decimal.digits, precision);
  int count = precision;
  while (count > 1 && digits[count - 1] == '0') --count;
  if (decimal.exponent < SMALLEST_EXPONENT || decimal.exponent >= precision) {
    *out = digits[0];
    std::memcpy(out + 2, digits + 1, ROOM);
    out[1] = '.';
    out += count > 1 ? count + 1 : 1;
    *out++ = 'e';
    *out++ = decimal.exponent < 0 ? '-' : '+';
    const int size = std::abs(decimal.exponent);
    *out++ = static_cast<char>('0' + size / 10);
    *out++ = static_cast<char>('0' + size % 10);
    return out;
  }
  if (decimal.exponent < 0) {
    std::memcpy(out, "0.000", 5);
    out += 1 - decimal.exponent;
    std::memcpy(out, digits, ROOM);
    return out + count;
  }
  const int before = decimal.exponent + 1;
  std::memcpy(out, digits, ROOM);  // zeros in front of the point are among the digits
  if (count <= before) return out + before;
  out[before] = '.';
  std::memcpy(out + before + 1, digits + before, ROOM);
  return out + count + 1;
}

/// @return null for a number that the short way does not take
char* writeGeneral(char* out, double value, int precision) {
  if (std::signbit(value)) *out++ = '-';
  if (value == 0.0) {
    *out++ = '0';
    return out;
  }
  const int digits = std::max(precision, 1);
  if (digits > MAX_DIGITS) return nullptr;
  const std::optional<Decimal> decimal = leadingDigits(std::fabs(value), digits);
  return decimal ? writeDecimal(out, *decimal, digits) : nullptr;
}

/// @return null for a number that the short way does not take
char* writeFixed(char* out, double value, int decimals) {
  constexpr int MAX_DECIMALS = 15;
  constexpr double LARGEST_WHOLE = 1e18;
  if (decimals < 1 || decimals > MAX_DECIMALS) return nullptr;
  const double size = std::fabs(value);
  const std::uint64_t unit = power(decimals);
  if (!(size * static_cast<double>(unit) < LARGEST_WHOLE)) return nullptr;
  std::uint64_t digits = 0;
  if (size != 0.0) {
    const std::optional<Binary> binary = parts(size);
    if (!binary) return nullptr;
    digits = scaled(binary->mantissa, binary->shift, decimals);
  }
  if (std::signbit(value)) *out++ = '-';
  out = std::to_chars(out, out + MAX_NUMBER_TEXT, digits / unit).ptr;
  *out++ = '.';
  writeDigits(out, digits % unit, decimals);
  return out + decimals;
}

}  // namespace

char* writeNumber(char* out, double value, const NumberFormat& format) {
  char* end = nullptr;
  if (format.form == std::chars_format::general)
    end = writeGeneral(out, value, format.precision);
  else if (format.form == std::chars_format::fixed)
    end = writeFixed(out, value, format.precision);
  if (end != nullptr) return end;
  return std::to_chars(out, out + MAX_NUMBER_TEXT, value, format.form, format.precision).ptr;
}

}  // namespace TKL
