#include "platform/linux/PropertyListFile.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <locale.h>
#include <memory>
#include <plist/plist.h>
#include <string_view>
#include <sys/stat.h>
#include <type_traits>
#include <unistd.h>
#include <utility>

#include "platform/linux/BinaryPropertyListGuard.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/WellFormedText.h"

namespace korvantis {

namespace {

constexpr std::size_t mostFileBytes = std::size_t{4} << 20U;
constexpr std::size_t bytesPerRead = 65536;
constexpr std::size_t mostContainers = 10000;
constexpr int mostLevels = 128;

/// Where the dates of property lists begin (the start of 2001), in seconds since 1970.
constexpr double referenceDate = 978307200;

using Node = std::unique_ptr<std::remove_pointer_t<plist_t>, decltype(&plist_free)>;
using Allocated = std::unique_ptr<void, decltype(&std::free)>;

/// Makes the calling thread read numbers with a point, whatever the locale of the program:
/// the library reads them as the locale has them.
class PointLocale {
 public:
  PointLocale() : plain(::newlocale(LC_ALL_MASK, "C", nullptr)), previous(::uselocale(plain)) {}
  PointLocale(const PointLocale&) = delete;
  PointLocale& operator=(const PointLocale&) = delete;
  ~PointLocale() {
    ::uselocale(previous);
    if (plain != nullptr) ::freelocale(plain);
  }

 private:
  locale_t plain;
  locale_t previous;
};

/// The whole of a regular file of modest size.
std::optional<std::string> readRegularFile(const std::string& path) {
  // Not blocking: a pipe of that name would keep the caller waiting for a writer.
  const FileDescriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)};
  struct stat status {};
  if (!file || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  std::string bytes;
  std::size_t length = 0;
  while (length <= mostFileBytes) {
    if (length == bytes.size()) bytes.resize(length + bytesPerRead);
    const ssize_t got = ::read(file.number(), bytes.data() + length, bytes.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return std::nullopt;
    if (got == 0) {
      bytes.resize(length);
      return bytes;
    }
    length += static_cast<std::size_t>(got);
  }
  return std::nullopt;
}

std::size_t occurrences(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != text.npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

/// Whether a list in XML form is whole and can't be nested deeper than any stack bears: the
/// library frees its tree by recursion. Counting what is opened, instead of following the
/// nesting, can't be misled by comments and quotes.
bool isModestXml(std::string_view text) {
  // The library is content without the last tag; such a file was cut off while being written.
  if (text.find("<plist") != text.npos && text.find("</plist") == text.npos) return false;
  return occurrences(text, "<array") + occurrences(text, "<dict") <= mostContainers;
}

Node parsed(std::string_view bytes) {
  constexpr std::string_view binaryMark = "bplist00";
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  plist_t node = nullptr;
  if (bytes.starts_with(binaryMark)) {
    if (isModestBinaryPropertyList(bytes)) {
      ::plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    }
  } else {
    if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
    if (!bytes.empty() && isModestXml(bytes)) {
      ::plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    }
  }
  return Node(node, ::plist_free);
}

/// Turns the library's tree into values of ours.
class Conversion {
 public:
  /// The value of a node; absent when it has no form of ours.
  std::optional<PropertyValue> value(plist_t node, int level);

  /// The entries of a map node.
  PropertyMap map(plist_t node, int level);

  /// True once anything was met that no intact file holds.
  bool isDamaged = false;

 private:
  PropertyValue::List list(plist_t node, int level);
  std::string checkedText(std::string_view text);
};

PropertyValue wholeNumber(plist_t node) {
  std::uint64_t bits = 0;
  ::plist_get_uint_val(node, &bits);
  // The library hands out -1 and 2^64-1 as the same bits, but remembers which it was: only the
  // signed one equals a number made of those bits.
  const Node signedNumber(::plist_new_uint(bits), ::plist_free);
  const bool isSigned = ::plist_compare_node_value(node, signedNumber.get()) != 0;
  if (isSigned || bits <= std::uint64_t{std::numeric_limits<std::int64_t>::max()}) {
    return {static_cast<std::int64_t>(bits)};
  }
  return {static_cast<double>(bits)};
}

std::optional<PropertyValue> date(plist_t node) {
  std::int32_t seconds = 0;
  std::int32_t microseconds = 0;
  ::plist_get_date_val(node, &seconds, &microseconds);
  // What a date outside 32 bits of seconds ends as, by processor.
  if (seconds == std::numeric_limits<std::int32_t>::min() ||
      seconds == std::numeric_limits<std::int32_t>::max()) {
    return std::nullopt;
  }
  // The fraction comes without the sign of the whole.
  const double fraction = std::copysign(microseconds / 1e6, seconds);
  return PropertyValue{referenceDate + seconds + fraction};
}

PropertyValue data(plist_t node) {
  std::uint64_t length = 0;
  const char* bytes = ::plist_get_data_ptr(node, &length);
  return {bytes == nullptr ? PropertyValue::Bytes() : PropertyValue::Bytes(bytes, bytes + length)};
}

std::string Conversion::checkedText(std::string_view text) {
  if (isWellFormedText(text)) return std::string(text);
  isDamaged = true;
  return {};
}

PropertyValue::List Conversion::list(plist_t node, int level) {
  PropertyValue::List entries;
  plist_array_iter made = nullptr;
  ::plist_array_new_iter(node, &made);
  const Allocated iterator(made, std::free);
  plist_t entry = nullptr;
  ::plist_array_next_item(node, made, &entry);
  while (entry != nullptr && !isDamaged) {
    if (auto converted = value(entry, level + 1)) entries.push_back(std::move(*converted));
    ::plist_array_next_item(node, made, &entry);
  }
  return entries;
}

PropertyMap Conversion::map(plist_t node, int level) {
  PropertyMap entries;
  plist_dict_iter made = nullptr;
  ::plist_dict_new_iter(node, &made);
  const Allocated iterator(made, std::free);
  while (!isDamaged) {
    char* key = nullptr;
    plist_t entry = nullptr;
    ::plist_dict_next_item(node, made, &key, &entry);
    const Allocated keyOwner(key, std::free);
    if (key == nullptr || entry == nullptr) break;
    auto converted = value(entry, level + 1);
    if (converted) entries.insert_or_assign(checkedText(key), std::move(*converted));
  }
  return entries;
}

std::optional<PropertyValue> Conversion::value(plist_t node, int level) {
  if (level > mostLevels) {
    isDamaged = true;
    return std::nullopt;
  }
  switch (::plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      std::uint8_t flag = 0;
      ::plist_get_bool_val(node, &flag);
      return PropertyValue{flag != 0};
    }
    case PLIST_UINT: return wholeNumber(node);
    case PLIST_REAL: {
      double number = 0;
      ::plist_get_real_val(node, &number);
      return PropertyValue{number};
    }
    case PLIST_STRING: {
      const char* text = ::plist_get_string_ptr(node, nullptr);
      return PropertyValue{checkedText(text == nullptr ? "" : text)};
    }
    case PLIST_DATE: return date(node);
    case PLIST_DATA: return data(node);
    case PLIST_ARRAY: return PropertyValue{list(node, level)};
    case PLIST_DICT: return PropertyValue{map(node, level)};
    default: return std::nullopt;
  }
}

}  // namespace

std::optional<PropertyMap> readPropertyListFile(const std::string& path) {
  const auto bytes = readRegularFile(path);
  if (!bytes) return std::nullopt;
  const PointLocale pointLocale;
  const Node root = parsed(*bytes);
  if (!root || ::plist_get_node_type(root.get()) != PLIST_DICT) return std::nullopt;
  Conversion conversion;
  auto map = conversion.map(root.get(), 1);
  if (conversion.isDamaged) return std::nullopt;
  return map;
}

}  // namespace korvantis
