#pragma once

/// The C structures and constants in which the audio operations answer. On macOS they are the
/// system's own; elsewhere the same layouts are declared here. The assertions hold on both.

#include <cstddef>
#include <cstdint>

#if defined(__APPLE__)

#include <CoreAudio/CoreAudio.h>

#else

/// A four-character code: "dev#" is the number of its four bytes, the first one highest.
constexpr std::uint32_t audioFourCharCode(const char (&text)[5]) {
  std::uint32_t code = 0;
  for (int index = 0; index < 4; ++index)
    code = code << 8U | static_cast<unsigned char>(text[index]);
  return code;
}

struct AudioObjectPropertyAddress {
  std::uint32_t mSelector;
  std::uint32_t mScope;
  std::uint32_t mElement;
};

struct AudioBuffer {
  std::uint32_t mNumberChannels;
  std::uint32_t mDataByteSize;
  void* mData;
};

struct AudioBufferList {
  std::uint32_t mNumberBuffers;
  AudioBuffer mBuffers[1];
};

inline constexpr std::uint32_t kAudioObjectSystemObject = 1;
inline constexpr std::uint32_t kAudioHardwarePropertyDevices = audioFourCharCode("dev#");
inline constexpr std::uint32_t kAudioHardwarePropertyDefaultOutputDevice =
    audioFourCharCode("dOut");
inline constexpr std::uint32_t kAudioHardwarePropertyDefaultInputDevice = audioFourCharCode("dIn ");
inline constexpr std::uint32_t kAudioObjectPropertyName = audioFourCharCode("lnam");
inline constexpr std::uint32_t kAudioDevicePropertyStreamConfiguration = audioFourCharCode("slay");
inline constexpr std::uint32_t kAudioObjectPropertyScopeGlobal = audioFourCharCode("glob");
inline constexpr std::uint32_t kAudioObjectPropertyScopeOutput = audioFourCharCode("outp");
inline constexpr std::uint32_t kAudioObjectPropertyScopeInput = audioFourCharCode("inpt");
inline constexpr std::int32_t kAudioHardwareBadObjectError =
    static_cast<std::int32_t>(audioFourCharCode("!obj"));
inline constexpr std::int32_t kAudioHardwareBadDeviceError =
    static_cast<std::int32_t>(audioFourCharCode("!dev"));
inline constexpr std::int32_t kAudioHardwareBadPropertySizeError =
    static_cast<std::int32_t>(audioFourCharCode("!siz"));
inline constexpr std::int32_t kAudioHardwareUnknownPropertyError =
    static_cast<std::int32_t>(audioFourCharCode("who?"));
inline constexpr std::int32_t kAudioHardwareNotRunningError =
    static_cast<std::int32_t>(audioFourCharCode("stop"));

#endif

static_assert(sizeof(AudioObjectPropertyAddress) == 12);
static_assert(sizeof(AudioBuffer) == 16);
static_assert(offsetof(AudioBufferList, mBuffers) == 8);
static_assert(sizeof(AudioBufferList) == 24);
