#include "platform/macos/PropertyListFile.h"

#include "platform/macos/FoundationValues.h"

namespace korvantis {

std::optional<PropertyMap> readPropertyListFile(const std::string& path) {
  const OwnedFoundationValue location(CFURLCreateFromFileSystemRepresentation(
      kCFAllocatorDefault, reinterpret_cast<const UInt8*>(path.data()),
      static_cast<CFIndex>(path.size()), false));
  if (!location) return std::nullopt;
  CFReadStreamRef const stream =
      CFReadStreamCreateWithFile(kCFAllocatorDefault, static_cast<CFURLRef>(location.get()));
  const OwnedFoundationValue streamOwner(stream);
  if (stream == nullptr || !CFReadStreamOpen(stream)) return std::nullopt;
  const OwnedFoundationValue list(CFPropertyListCreateWithStream(
      kCFAllocatorDefault, stream, 0, kCFPropertyListImmutable, nullptr, nullptr));
  CFReadStreamClose(stream);
  if (!list || CFGetTypeID(list.get()) != CFDictionaryGetTypeID()) return std::nullopt;
  return propertyMapOf(static_cast<CFDictionaryRef>(list.get()));
}

}  // namespace korvantis
