#include "platform/linux/BinaryPropertyListGuard.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace korvantis {

namespace {

constexpr std::size_t headerSize = 8;
constexpr std::size_t trailerSize = 32;
constexpr int mostLevels = 128;
constexpr std::uint64_t mostBytes = std::uint64_t{64} << 20U;
/// About what one unfolded value costs beside its own bytes.
constexpr std::uint64_t bytesPerValue = 128;
constexpr std::uint64_t mostObjects = mostBytes / bytesPerValue;

/// What the upper half of an object's first byte says.
enum ObjectKind : unsigned {
  dataObject = 0x4,
  textObject = 0x5,
  wideTextObject = 0x6,
  listObject = 0xA,
  setObject = 0xC,
  mapObject = 0xD
};

/// The lower half of a first byte when the count of members stands behind it.
constexpr unsigned countFollows = 0xF;

/// The first bytes of an object.
struct ObjectHead {
  unsigned kind = 0;
  /// Bytes, characters, entries or pairs.
  std::uint64_t count = 0;
  /// Where they begin.
  std::size_t position = 0;
};

/// Adds up what the objects of one file weigh, each once.
class ObjectScale {
 public:
  explicit ObjectScale(std::string_view file) : bytes(file) {}

  bool isModest();

 private:
  /// 0 while not weighed; no object weighs nothing.
  struct Weighed {
    std::uint64_t bytes = 0;
    int levels = 0;
  };

  bool readTrailer();
  std::optional<std::uint64_t> number(std::uint64_t position, unsigned size) const;
  std::optional<ObjectHead> head(std::uint64_t object) const;
  std::optional<Weighed> weigh(std::uint64_t object, int level);
  std::optional<Weighed> weighMembers(const ObjectHead& head, int level);

  std::string_view bytes;
  std::vector<Weighed> weights;
  std::uint64_t rootObject = 0;
  std::uint64_t offsetTable = 0;
  unsigned offsetSize = 0;
  unsigned referenceSize = 0;
};

/// The big-endian number of `size` bytes at `position`.
std::optional<std::uint64_t> ObjectScale::number(std::uint64_t position, unsigned size) const {
  if (size < 1 || size > 8 || position > bytes.size() || bytes.size() - position < size) {
    return std::nullopt;
  }
  std::uint64_t value = 0;
  for (const char byte : bytes.substr(position, size)) {
    value = value << 8U | static_cast<unsigned char>(byte);
  }
  return value;
}

bool ObjectScale::readTrailer() {
  if (bytes.size() < headerSize + trailerSize) return false;
  const std::size_t trailer = bytes.size() - trailerSize;
  const std::uint64_t objectCount = number(trailer + 8, 8).value_or(0);
  offsetSize = static_cast<unsigned char>(bytes[trailer + 6]);
  referenceSize = static_cast<unsigned char>(bytes[trailer + 7]);
  rootObject = number(trailer + 16, 8).value_or(0);
  offsetTable = number(trailer + 24, 8).value_or(0);
  if (objectCount > mostObjects || rootObject >= objectCount) return false;
  weights.resize(objectCount);
  return offsetTable >= headerSize && offsetTable < trailer;
}

std::optional<ObjectHead> ObjectScale::head(std::uint64_t object) const {
  const auto offset = number(offsetTable + object * offsetSize, offsetSize);
  if (!offset || *offset < headerSize || *offset >= offsetTable) return std::nullopt;
  const unsigned marker = static_cast<unsigned char>(bytes[*offset]);
  ObjectHead head{.kind = marker >> 4U, .count = marker & 0xFU, .position = *offset + 1};
  if (head.count != countFollows) return head;
  const auto sizeMarker = number(head.position, 1);
  if (!sizeMarker || *sizeMarker >> 4U != 1 || (*sizeMarker & 0xFU) > 3) return std::nullopt;
  const unsigned size = 1U << (*sizeMarker & 0xFU);
  const auto count = number(head.position + 1, size);
  if (!count) return std::nullopt;
  return ObjectHead{.kind = head.kind, .count = *count, .position = head.position + 1 + size};
}

std::optional<ObjectScale::Weighed> ObjectScale::weighMembers(const ObjectHead& head, int level) {
  const std::uint64_t references = head.kind == mapObject ? head.count * 2 : head.count;
  Weighed sum{.bytes = bytesPerValue, .levels = 1};
  for (std::uint64_t index = 0; index < references; ++index) {
    const auto member = number(head.position + index * referenceSize, referenceSize);
    const auto weighed = member ? weigh(*member, level + 1) : std::nullopt;
    if (!weighed) return std::nullopt;
    sum.bytes += weighed->bytes;
    sum.levels = std::max(sum.levels, weighed->levels + 1);
    // Checked at every member, so that the sum can't run over.
    if (sum.bytes > mostBytes || sum.levels > mostLevels) return std::nullopt;
  }
  return sum;
}

/// What an object weighs with all that it holds; absent when that is too much or damaged. An
/// object that holds itself runs into the limit of levels.
std::optional<ObjectScale::Weighed> ObjectScale::weigh(std::uint64_t object, int level) {
  if (object >= weights.size() || level > mostLevels) return std::nullopt;
  if (weights[object].bytes > 0) return weights[object];
  const auto head = this->head(object);
  if (!head) return std::nullopt;
  Weighed weighed{.bytes = bytesPerValue, .levels = 1};
  switch (head->kind) {
    case dataObject:
    case textObject:
    case wideTextObject:
      if (head->count > bytes.size()) return std::nullopt;
      // A wide character has up to four bytes once unfolded.
      weighed.bytes += head->kind == wideTextObject ? head->count * 4 : head->count;
      break;
    case listObject:
    case setObject:
    case mapObject: {
      if (head->count > bytes.size()) return std::nullopt;
      const auto members = weighMembers(*head, level);
      if (!members) return std::nullopt;
      weighed = *members;
      break;
    }
    default: break;
  }
  weights[object] = weighed;
  return weighed;
}

bool ObjectScale::isModest() {
  if (!readTrailer()) return false;
  const auto whole = weigh(rootObject, 1);
  return whole && whole->bytes <= mostBytes;
}

}  // namespace

bool isModestBinaryPropertyList(std::string_view bytes) {
  return ObjectScale(bytes).isModest();
}

}  // namespace korvantis
