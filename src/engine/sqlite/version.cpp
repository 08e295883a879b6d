#include "engine/version.h"

#include <sqlite3.h>

QString versionDelMotor() {
  return QString::fromLatin1(sqlite3_libversion());
}
