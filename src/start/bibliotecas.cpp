#include "start/bibliotecas.h"

#include <xlsxwriter.h>

#include "engine/version.h"

QList<Biblioteca> bibliotecas() {
  return {
      {QStringLiteral("Qt"), QString::fromLatin1(qVersion()),
       QStringLiteral("Pantallas, impresión y textos"), QStringLiteral("LGPL 3")},
      {QStringLiteral("SQLite"), versionDelMotor(), QStringLiteral("Ficheros de las empresas"),
       QStringLiteral("Dominio público")},
      {QStringLiteral("SimpleIni"), QStringLiteral(LIBRANO_SIMPLEINI),
       QStringLiteral("Fichero de configuración"), QStringLiteral("MIT")},
      {QStringLiteral("libxlsxwriter"), QStringLiteral(LXW_VERSION),
       QStringLiteral("Hojas de cálculo"), QStringLiteral("BSD de 2 cláusulas")},
      {QStringLiteral("libzip"), QStringLiteral(LIBRANO_LIBZIP),
       QStringLiteral("Copias de seguridad"), QStringLiteral("BSD de 3 cláusulas")},
      {QStringLiteral("Shapelib"), QStringLiteral(LIBRANO_SHAPELIB),
       QStringLiteral("Tablas DBF importadas"), QStringLiteral("MIT")},
      {QStringLiteral("DejaVu"), QString(), QStringLiteral("Letra de los libros impresos"),
       QStringLiteral("Bitstream Vera")},
  };
}
