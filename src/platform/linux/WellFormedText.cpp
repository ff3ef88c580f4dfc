#include "platform/linux/WellFormedText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iconv.h>
#include <string>

namespace korvantis {

namespace {

/// One conversion from UTF-8 to single code points.
class CodePointConverter {
 public:
  CodePointConverter() : descriptor(::iconv_open("UTF-32LE", "UTF-8")) {}
  CodePointConverter(const CodePointConverter&) = delete;
  CodePointConverter& operator=(const CodePointConverter&) = delete;
  ~CodePointConverter() {
    if (isOpen()) ::iconv_close(descriptor);
  }

  bool accepts(std::string_view bytes);

 private:
  // NOLINTNEXTLINE(performance-no-int-to-ptr): that is how iconv says that it failed.
  bool isOpen() const { return descriptor != reinterpret_cast<iconv_t>(-1); }

  iconv_t descriptor;
};

bool CodePointConverter::accepts(std::string_view bytes) {
  if (!isOpen()) return false;
  std::string input(bytes);
  char* from = input.data();
  std::size_t left = input.size();
  while (left > 0) {
    std::array<char, 1024> output;  // NOLINT: filled by iconv
    char* to = output.data();
    std::size_t room = output.size();
    const std::size_t result = ::iconv(descriptor, &from, &left, &to, &room);
    // A full output only means that there is more to do.
    if (result == static_cast<std::size_t>(-1) && errno != E2BIG) return false;
  }
  return true;
}

}  // namespace

bool isWellFormedText(std::string_view bytes) {
  const auto isPlain = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
  // Nearly all texts are plain and need no converter.
  return std::all_of(bytes.begin(), bytes.end(), isPlain) || CodePointConverter().accepts(bytes);
}

}  // namespace korvantis
