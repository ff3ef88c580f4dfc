#import <AppKit/AppKit.h>

#include "platform/IconCalls.h"

namespace korvantis {
namespace {

/// Enough for 24 points on every screen.
constexpr NSInteger pixels = 96;

NSString* textOf(const std::string& text) {
  return [NSString stringWithUTF8String:text.c_str()];
}

bool fileExists(const std::string& path) {
  @autoreleasepool {
    NSString* const text = textOf(path);
    return text != nil && [NSFileManager.defaultManager fileExistsAtPath:text];
  }
}

NSData* pictureOf(NSImage* icon) {
  NSBitmapImageRep* const bitmap =
      [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                              pixelsWide:pixels
                                              pixelsHigh:pixels
                                           bitsPerSample:8
                                         samplesPerPixel:4
                                                hasAlpha:YES
                                                isPlanar:NO
                                          colorSpaceName:NSCalibratedRGBColorSpace
                                             bytesPerRow:0
                                            bitsPerPixel:0];
  [NSGraphicsContext saveGraphicsState];
  NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
  [icon drawInRect:NSMakeRect(0, 0, pixels, pixels)];
  [NSGraphicsContext restoreGraphicsState];
  return [bitmap representationUsingType:NSBitmapImageFileTypePNG properties:@{}];
}

std::optional<std::string> iconForFile(const std::string& path) {
  @autoreleasepool {
    NSString* const text = textOf(path);
    if (text == nil) return std::nullopt;
    NSData* const data = pictureOf([NSWorkspace.sharedWorkspace iconForFile:text]);
    if (data == nil) return std::nullopt;
    return std::string(static_cast<const char*>(data.bytes), data.length);
  }
}

}  // namespace

IconCalls systemIconCalls() {
  return {fileExists, iconForFile};
}

}  // namespace korvantis
