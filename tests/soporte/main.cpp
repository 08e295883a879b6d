// The one main of all test programs: an application without a display.
#include <gtest/gtest.h>

#include <QApplication>

#include "toolkit/tema.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  aplicarTema(app);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
