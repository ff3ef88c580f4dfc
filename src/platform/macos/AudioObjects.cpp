#include <CoreAudio/CoreAudio.h>
#include <CoreFoundation/CoreFoundation.h>
#include <vector>

#include "platform/AudioObjectCalls.h"

namespace korvantis {
namespace {

std::string textOf(CFStringRef text) {
  const CFIndex room =
      CFStringGetMaximumSizeForEncoding(CFStringGetLength(text), kCFStringEncodingUTF8) + 1;
  std::vector<char> bytes(static_cast<std::size_t>(room));
  return CFStringGetCString(text, bytes.data(), room, kCFStringEncodingUTF8) ? bytes.data() : "";
}

std::optional<std::string> copyText(std::uint32_t object,
                                    const AudioObjectPropertyAddress& address) {
  CFStringRef text = nullptr;
  UInt32 size = sizeof text;
  const OSStatus status = ::AudioObjectGetPropertyData(object, &address, 0, nullptr, &size, &text);
  if (status != 0 || text == nullptr) return std::nullopt;
  std::string bytes = textOf(text);
  CFRelease(text);
  return bytes;
}

}  // namespace

AudioObjectCalls systemAudioObjectCalls() {
  AudioObjectCalls calls;
  calls.AudioObjectGetPropertyDataSize =
      [](std::uint32_t object, const AudioObjectPropertyAddress& address, std::uint32_t* size) {
        return ::AudioObjectGetPropertyDataSize(object, &address, 0, nullptr, size);
      };
  calls.AudioObjectGetPropertyData = [](std::uint32_t object,
                                        const AudioObjectPropertyAddress& address,
                                        std::uint32_t* size, void* data) {
    return ::AudioObjectGetPropertyData(object, &address, 0, nullptr, size, data);
  };
  calls.AudioObjectSetPropertyData = [](std::uint32_t object,
                                        const AudioObjectPropertyAddress& address,
                                        std::uint32_t size, const void* data) {
    return ::AudioObjectSetPropertyData(object, &address, 0, nullptr, size, data);
  };
  calls.copyTextProperty = copyText;
  return calls;
}

}  // namespace korvantis
