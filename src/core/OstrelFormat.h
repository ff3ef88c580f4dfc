#pragma once

#include <cstdint>
#include <string>

/// The words for byte counts, byte rates and durations on every screen. Units are binary: 1 KB
/// is 1024 bytes. No locale is consulted and the decimal point is always a point. Any thread.
namespace korvantis::OstrelFormat {

/// A byte count, such as "1.5 GB" or "12 MB". There is no step above gigabytes.
std::string bytes(std::uint64_t count);

/// A rate in bytes per second, such as "1.5 MB/s". Below 1, negative or no number: "0 B/s".
std::string rate(double bytesPerSecond);

/// A duration in seconds, cut to its two leading units, such as "3d 4h" or "42s". A value that
/// is not finite or does not fit a signed 64-bit integer is a programming error and aborts.
std::string duration(double seconds);

}  // namespace korvantis::OstrelFormat
