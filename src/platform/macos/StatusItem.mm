#import <AppKit/AppKit.h>
#include <memory>
#include <utility>

#include "platform/StatusItemCalls.h"

/// Receives the clicks: actions go to Objective-C objects only.
@interface KorvantisStatusItemTarget : NSObject
- (instancetype)initWithAction:
    (std::function<void(std::optional<korvantis::StatusItemPoint>)>)action;
- (void)clicked:(id)sender;
@end

@implementation KorvantisStatusItemTarget {
  std::function<void(std::optional<korvantis::StatusItemPoint>)> _action;
}

- (instancetype)initWithAction:
    (std::function<void(std::optional<korvantis::StatusItemPoint>)>)action {
  self = [super init];
  if (self != nil) _action = std::move(action);
  return self;
}

- (void)clicked:(id)sender {
  NSStatusBarButton* const button = sender;
  const NSRect frame = [button.window convertRectToScreen:button.frame];
  const CGFloat top = NSMaxY(NSScreen.screens.firstObject.frame);
  _action(korvantis::StatusItemPoint{static_cast<int>(NSMidX(frame)),
                                     static_cast<int>(top - NSMinY(frame))});
}
@end

namespace korvantis {
namespace {

/// The item and the target, which the button does not hold.
struct ShownItem {
  NSStatusItem* item = nil;
  KorvantisStatusItemTarget* target = nil;
};

void addItem(ShownItem& shown, StatusItemDescription description) {
  shown.item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
  NSStatusBarButton* const button = shown.item.button;
  button.appearance = nil;
  NSImage* const image =
      [NSImage imageWithSystemSymbolName:@"chart.bar.xaxis.ascending"
                accessibilityDescription:@(description.accessibilityDescription.c_str())];
  image.template = YES;
  button.image = image;
  button.imagePosition = NSImageLeading;
  button.font = [NSFont monospacedDigitSystemFontOfSize:11.5 weight:NSFontWeightSemibold];
  shown.target = [[KorvantisStatusItemTarget alloc] initWithAction:std::move(description.action)];
  button.target = shown.target;
  button.action = @selector(clicked:);
}

}  // namespace

StatusItemCalls systemStatusItemCalls() {
  const auto shown = std::make_shared<ShownItem>();
  StatusItemCalls calls;
  calls.add = [shown](StatusItemDescription description) {
    addItem(*shown, std::move(description));
  };
  calls.setTitle = [shown](const std::string& title) {
    shown->item.button.appearance = nil;
    shown->item.button.title = @(title.c_str());
  };
  calls.isShown = [shown] { return shown->item != nil; };
  return calls;
}

}  // namespace korvantis
