#include "model/integers.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace notewick {
namespace {

constexpr std::int64_t MOST_DIGITS = std::numeric_limits<std::int64_t>::digits10 + 1;

/// A larger one moves the point beyond the ends of any text all the same.
constexpr std::int64_t LARGEST_EXPONENT = std::int64_t{1} << 62;

std::int64_t exponentIn(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  std::int64_t exponent = text.starts_with('-') ? -LARGEST_EXPONENT : LARGEST_EXPONENT;
  std::from_chars(text.data(), text.data() + text.size(), exponent);
  return std::clamp(exponent, -LARGEST_EXPONENT, LARGEST_EXPONENT);
}

/// A number without its sign: its digits up to the last that is not zero, and the count
/// of zeros that follow before the point. A count below zero means digits behind the point.
struct Decimal {
  std::string digits;
  std::int64_t zeros = 0;
};

Decimal decimalIn(std::string_view text) {
  const auto mantissa = text.substr(0, text.find_first_of("eE"));
  const auto point = std::min(mantissa.find('.'), mantissa.size());
  Decimal decimal{std::string(mantissa.substr(0, point)), 0};
  if (mantissa.size() < text.size()) decimal.zeros = exponentIn(text.substr(mantissa.size() + 1));
  if (point < mantissa.size()) decimal.digits += mantissa.substr(point + 1);
  decimal.zeros -= static_cast<std::int64_t>(decimal.digits.size() - point);
  const auto end = decimal.digits.find_last_not_of('0') + 1;
  decimal.zeros += static_cast<std::int64_t>(decimal.digits.size() - end);
  decimal.digits.erase(end);
  return decimal;
}

}  // namespace

std::optional<std::int64_t> wholeNumberIn(std::string_view number) {
  const bool negative = number.starts_with('-');
  const auto [digits, zeros] = decimalIn(number.substr(negative ? 1 : 0));
  if (digits.empty()) return 0;
  if (zeros < 0 || zeros > MOST_DIGITS) return std::nullopt;
  const auto text = (negative ? "-" : "") + digits + std::string(std::size_t(zeros), '0');
  std::int64_t value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  return read.ec == std::errc() ? std::optional(value) : std::nullopt;
}

}  // namespace notewick
