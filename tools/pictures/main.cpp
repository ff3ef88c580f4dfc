#include <QGuiApplication>
#include <QTemporaryDir>
#include <clocale>
#include <cstdio>

#include "pictures/PictureOptions.h"
#include "pictures/PictureTaker.h"

namespace {

QStringList wordsOf(int argumentCount, char** arguments) {
  QStringList words;
  for (int index = 0; index < argumentCount; ++index) {
    words += QString::fromLocal8Bit(arguments[index]);
  }
  return words;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  QString error;
  const auto options = korvantis::pictures::readOptions(wordsOf(argumentCount, arguments), error);
  if (!options) {
    std::fprintf(stderr, "%s\n", qPrintable(error));
    return 2;
  }
  // Before the application object, which reads them.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  qputenv("QT_SCALE_FACTOR", QByteArray::number(options->scale));
  const QGuiApplication application(argumentCount, arguments);
  static_cast<void>(std::setlocale(LC_NUMERIC, "C"));
  const QTemporaryDir bundles;
  if (!bundles.isValid()) return 1;
  korvantis::pictures::PictureTaker taker(*options, bundles.path().toStdString());
  return taker.takeAll() ? 0 : 1;
}
