#include <QtQuickTest/quicktest.h>
#include <cstdio>

#include "ui/ScreenFixture.h"

int main(int argumentCount, char** arguments) {
  // Without a display, and drawn as on a machine without a graphics processor.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  korvantis::ScreenTestSetup setup;
  const int result = quick_test_main_with_setup(argumentCount, arguments, "screens",
                                                QUICK_TEST_SOURCE_DIR, &setup);
  if (setup.complaints() == 0) return result;
  std::fprintf(stderr, "The screens complained %d times; see the warnings above.\n",
               setup.complaints());
  return 1;
}
