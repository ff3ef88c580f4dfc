#include "core/OstrelFormat.h"

#include <cstdlib>

#include "core/FixedDecimals.h"

namespace korvantis::OstrelFormat {

namespace {

constexpr std::uint64_t kilobyte = 1024;
constexpr std::uint64_t megabyte = 1024 * kilobyte;
constexpr std::uint64_t gigabyte = 1024 * megabyte;

constexpr std::uint64_t minute = 60;
constexpr std::uint64_t hour = 60 * minute;
constexpr std::uint64_t day = 24 * hour;

/// `value` in units of `unit`, rounded to `decimals` digits.
std::string inUnits(double value, std::uint64_t unit, int decimals) {
  return fixedDecimals(value / static_cast<double>(unit), decimals);
}

/// `seconds` without its fraction; negative ones count as none.
std::uint64_t wholeSeconds(double seconds) {
  constexpr double firstTooLarge = 9223372036854775808.0;
  // Written so that a value that is no number ends here too.
  if (!(seconds >= -firstTooLarge && seconds < firstTooLarge)) std::abort();
  return seconds < 0 ? 0 : static_cast<std::uint64_t>(seconds);
}

}  // namespace

std::string bytes(std::uint64_t count) {
  const auto value = static_cast<double>(count);
  if (count >= gigabyte) return inUnits(value, gigabyte, 1) + " GB";
  if (count >= megabyte) return inUnits(value, megabyte, 0) + " MB";
  if (count >= kilobyte) return inUnits(value, kilobyte, 0) + " KB";
  return std::to_string(count) + " B";
}

std::string rate(double bytesPerSecond) {
  if (bytesPerSecond >= static_cast<double>(gigabyte)) {
    return inUnits(bytesPerSecond, gigabyte, 1) + " GB/s";
  }
  if (bytesPerSecond >= static_cast<double>(megabyte)) {
    return inUnits(bytesPerSecond, megabyte, 1) + " MB/s";
  }
  if (bytesPerSecond >= static_cast<double>(kilobyte)) {
    return inUnits(bytesPerSecond, kilobyte, 0) + " KB/s";
  }
  if (bytesPerSecond >= 1) return fixedDecimals(bytesPerSecond, 0) + " B/s";
  return "0 B/s";
}

std::string duration(double seconds) {
  const std::uint64_t whole = wholeSeconds(seconds);
  if (whole >= day) {
    return std::to_string(whole / day) + "d " + std::to_string(whole % day / hour) + "h";
  }
  if (whole >= hour) {
    return std::to_string(whole / hour) + "h " + std::to_string(whole % hour / minute) + "m";
  }
  if (whole >= minute) return std::to_string(whole / minute) + "m";
  return std::to_string(whole) + "s";
}

}  // namespace korvantis::OstrelFormat
