#include <QGuiApplication>
#include <clocale>
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string_view>

#include "ui/ScreenTexts.h"

namespace {

/// For a test that wants them from a program in another environment: each with a zero behind it.
int printScreenTexts() {
  for (const QString& text : korvantis::screenTexts()) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()) + 1, stdout);
  }
  return 0;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  // Without a display; fonts need an application object.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argumentCount, arguments);
  const QGuiApplication application(argumentCount, arguments);
  static_cast<void>(std::setlocale(LC_NUMERIC, "C"));
  if (argumentCount == 2 && std::string_view(arguments[1]) == "--screen-texts") {
    return printScreenTexts();
  }
  return RUN_ALL_TESTS();
}
