#include <QGuiApplication>
#include <clocale>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

int main(int argumentCount, char** arguments) {
  // Without a display; fonts need an application object.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argumentCount, arguments);
  const QGuiApplication application(argumentCount, arguments);
  static_cast<void>(std::setlocale(LC_NUMERIC, "C"));
  return RUN_ALL_TESTS();
}
