#include <QGuiApplication>
#include <clocale>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

int main(int argumentCount, char** arguments) {
  // Without a display, and drawn as on a machine without a graphics processor.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  testing::InitGoogleMock(&argumentCount, arguments);
  const QGuiApplication application(argumentCount, arguments);
  static_cast<void>(std::setlocale(LC_NUMERIC, "C"));
  return RUN_ALL_TESTS();
}
