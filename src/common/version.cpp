#include "common/version.h"

QString versionDelPrograma() {
  return QStringLiteral(LIBRANO_VERSION);
}

int anoDelPrograma() {
  return LIBRANO_YEAR;
}
