#import <Foundation/Foundation.h>

#include "platform/FileManagerCalls.h"

namespace korvantis {
namespace {

NSString* textOf(const std::string& path) {
  return [NSString stringWithUTF8String:path.c_str()] ?: @"";
}

std::string bytesOf(NSString* text) {
  return text == nil ? "" : text.fileSystemRepresentation;
}

std::vector<std::string> directories(NSSearchPathDirectory kind) {
  std::vector<std::string> paths;
  @autoreleasepool {
    for (NSURL* url in [NSFileManager.defaultManager URLsForDirectory:kind
                                                            inDomains:NSUserDomainMask]) {
      paths.push_back(bytesOf(url.path));
    }
  }
  return paths;
}

std::optional<DirectoryEnumerator> enumerator(const std::string& path) {
  @autoreleasepool {
    NSDirectoryEnumerator* const walk =
        [NSFileManager.defaultManager enumeratorAtPath:textOf(path)];
    if (walk == nil) return std::nullopt;
    return [walk]() -> std::optional<std::string> {
      @autoreleasepool {
        NSString* const next = [walk nextObject];
        if (next == nil) return std::nullopt;
        return bytesOf(next);
      }
    };
  }
}

std::optional<std::uint64_t> sizeOfItem(const std::string& path) {
  @autoreleasepool {
    NSDictionary* const facts = [NSFileManager.defaultManager attributesOfItemAtPath:textOf(path)
                                                                               error:nil];
    NSString* const type = facts[NSFileType];
    NSNumber* const size = facts[NSFileSize];
    const bool hasSize =
        [type isEqualToString:NSFileTypeRegular] || [type isEqualToString:NSFileTypeSymbolicLink];
    if (!hasSize || size == nil) return std::nullopt;
    return size.unsignedLongLongValue;
  }
}

bool createFolder(const std::string& path) {
  @autoreleasepool {
    return [NSFileManager.defaultManager createDirectoryAtPath:textOf(path)
                                   withIntermediateDirectories:YES
                                                    attributes:@{
                                                      NSFilePosixPermissions : @0700
                                                    }
                                                         error:nil] == YES;
  }
}

bool writeWhole(const std::string& path, std::string_view bytes) {
  @autoreleasepool {
    NSData* const data = [NSData dataWithBytesNoCopy:const_cast<char*>(bytes.data())
                                              length:bytes.size()
                                        freeWhenDone:NO];
    return [data writeToFile:textOf(path) options:NSDataWritingAtomic error:nil] == YES;
  }
}

}  // namespace

FileManagerCalls systemFileManagerCalls() {
  FileManagerCalls calls;
  calls.homeDirectoryForCurrentUser = [] {
    return bytesOf(NSFileManager.defaultManager.homeDirectoryForCurrentUser.path);
  };
  calls.fileExistsAtPath = [](const std::string& path) {
    return [NSFileManager.defaultManager fileExistsAtPath:textOf(path)] == YES;
  };
  calls.enumeratorAtPath = enumerator;
  calls.fileSize = sizeOfItem;
  calls.applicationSupportDirectories = [] { return directories(NSApplicationSupportDirectory); };
  calls.downloadsDirectories = [] { return directories(NSDownloadsDirectory); };
  calls.temporaryDirectory = [] { return bytesOf(NSTemporaryDirectory()); };
  calls.createDirectory = createFolder;
  calls.writeAtomically = writeWhole;
  return calls;
}

}  // namespace korvantis
