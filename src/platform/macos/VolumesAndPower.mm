#include "platform/macos/VolumesAndPower.h"

#import <Foundation/Foundation.h>
#include <IOKit/ps/IOPowerSources.h>
#include <IOKit/pwr_mgt/IOPMLib.h>

#include "platform/macos/FoundationValues.h"

namespace korvantis {
namespace {

NSArray<NSURLResourceKey>* volumeKeys() {
  return @[
    NSURLVolumeNameKey, NSURLVolumeTotalCapacityKey,
    NSURLVolumeAvailableCapacityForImportantUsageKey, NSURLVolumeAvailableCapacityKey,
    NSURLVolumeIsInternalKey, NSURLVolumeIsRemovableKey, NSURLVolumeIsBrowsableKey
  ];
}

std::optional<bool> flagOf(NSNumber* number) {
  return number == nil ? std::nullopt : std::optional(number.boolValue == YES);
}

std::optional<std::int64_t> bytesOf(NSNumber* number) {
  return number == nil ? std::nullopt : std::optional<std::int64_t>(number.longLongValue);
}

std::optional<VolumeResourceValues> resourceValues(const std::string& path) {
  @autoreleasepool {
    NSString* const text = [NSString stringWithUTF8String:path.c_str()];
    if (text == nil) return std::nullopt;
    NSURL* const url = [NSURL fileURLWithPath:text isDirectory:YES];
    NSDictionary<NSURLResourceKey, id>* const found = [url resourceValuesForKeys:volumeKeys()
                                                                           error:nil];
    if (found == nil) return std::nullopt;
    VolumeResourceValues values;
    values.totalCapacity = bytesOf(found[NSURLVolumeTotalCapacityKey]);
    values.availableCapacityForImportantUsage =
        bytesOf(found[NSURLVolumeAvailableCapacityForImportantUsageKey]);
    values.availableCapacity = bytesOf(found[NSURLVolumeAvailableCapacityKey]);
    NSString* const name = found[NSURLVolumeNameKey];
    if (name != nil) values.name = name.UTF8String;
    values.isInternal = flagOf(found[NSURLVolumeIsInternalKey]);
    values.isRemovable = flagOf(found[NSURLVolumeIsRemovableKey]);
    return values;
  }
}

std::optional<std::vector<std::string>> mountedVolumePaths() {
  @autoreleasepool {
    NSArray<NSURL*>* const urls = [NSFileManager.defaultManager
        mountedVolumeURLsIncludingResourceValuesForKeys:volumeKeys()
                                                options:NSVolumeEnumerationSkipHiddenVolumes];
    if (urls == nil) return std::nullopt;
    std::vector<std::string> paths;
    for (NSURL* url in urls) paths.emplace_back(url.path.UTF8String ?: "");
    return paths;
  }
}

std::optional<std::vector<std::optional<PropertyMap>>> powerSources() {
  const OwnedFoundationValue snapshot(IOPSCopyPowerSourcesInfo());
  if (!snapshot) return std::nullopt;
  const OwnedFoundationValue list(IOPSCopyPowerSourcesList(snapshot.get()));
  if (!list) return std::nullopt;
  const auto array = static_cast<CFArrayRef>(list.get());
  std::vector<std::optional<PropertyMap>> descriptions;
  for (CFIndex index = 0; index < CFArrayGetCount(array); ++index) {
    const CFDictionaryRef description =
        IOPSGetPowerSourceDescription(snapshot.get(), CFArrayGetValueAtIndex(array, index));
    descriptions.push_back(description == nullptr ? std::nullopt
                                                  : std::optional(propertyMapOf(description)));
  }
  return descriptions;
}

std::optional<std::map<std::int32_t, std::vector<PropertyMap>>> assertionsByProcess() {
  CFDictionaryRef copied = nullptr;
  if (::IOPMCopyAssertionsByProcess(&copied) != kIOReturnSuccess || copied == nullptr) {
    return std::nullopt;
  }
  @autoreleasepool {
    NSDictionary<NSNumber*, NSArray*>* const byProcess = CFBridgingRelease(copied);
    std::map<std::int32_t, std::vector<PropertyMap>> assertions;
    for (NSNumber* pid in byProcess) {
      for (id assertion in byProcess[pid]) {
        if (![assertion isKindOfClass:NSDictionary.class]) continue;
        assertions[pid.intValue].push_back(propertyMapOf((__bridge CFDictionaryRef)assertion));
      }
    }
    return assertions;
  }
}

}  // namespace

VolumeCalls systemVolumeCalls() {
  return VolumeCalls{resourceValues, mountedVolumePaths};
}

PowerCalls systemPowerCalls() {
  return PowerCalls{powerSources, assertionsByProcess};
}

}  // namespace korvantis
