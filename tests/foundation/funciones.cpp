#include "foundation/funciones.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "foundation/data/errorejecucion.h"
#include "foundation/rutas.h"

namespace {

TEST(NormalizaFecha, CompletaLoTecleado) {
  const QDate hoy(2026, 3, 9);
  const struct {
    const char* tecleado;
    int ano;
    const char* esperado;
  } casos[] = {
      {"15", 2003, "15/03/2003"},
      {"1502", 2003, "15/02/2003"},
      {"15-02", 2003, "15/02/2003"},
      {"15x02", 2003, "15/02/2003"},
      {"150299", 2003, "15/02/2099"},
      {"150203", 1999, "15/02/1903"},
      {"15/02/2003", 2001, "15/02/2003"},
      {"1/2/2003", 2001, "01/02/2003"},
      {"2902", 2004, "29/02/2004"},
      {"15/02/03", 2003, "15/02/2003"},
      // What is no date is today, also of another year.
      {"2902", 2003, "09/03/2026"},
      {"3002", 2003, "09/03/2026"},
      {"", 2003, "09/03/2026"},
      {"5", 2003, "09/03/2026"},
      {"123", 2003, "09/03/2026"},
      {"32", 2003, "09/03/2026"},
      {"1-2-03", 2003, "09/03/2026"},
      {"mañana mismo", 2003, "09/03/2026"},
  };
  for (const auto& caso : casos) {
    EXPECT_EQ(NormalizaFecha(QString::fromUtf8(caso.tecleado), caso.ano, hoy),
              QLatin1String(caso.esperado))
        << caso.tecleado << " en " << caso.ano;
  }
}

TEST(ExpandeCodigo, RellenaElPunto) {
  const struct {
    const char* texto;
    const char* esperado;
  } casos[] = {
      {"43.7", "430000007"},        {"4.1", "400000001"},
      {"43.", "430000000"},         {".7", "000000007"},
      {"430000007", "430000007"},   {"4300.00007", "430000007"},
      {"4.1.2", "4000001.2"},       {"", ""},
      {"4300000071", "4300000071"},
  };
  for (const auto& caso : casos)
    EXPECT_EQ(ExpandeCodigo(QLatin1String(caso.texto), 9).toStdString(), caso.esperado);
}

TEST(ExpandeCodigo, UnCodigoDemasiadoLargoEsError) {
  try {
    ExpandeCodigo(QStringLiteral("43000.00007"), 9);
    FAIL();
  } catch (const ErrorEjecucion& e) {
    EXPECT_EQ(e.numero(), err::kLlamadaNoValida);
  }
}

TEST(Separadores, BarraComaYPunto) {
  EXPECT_EQ(AjustaBarra(QStringLiteral("\\datos")), QStringLiteral("\\datos\\"));
  EXPECT_EQ(AjustaBarra(QStringLiteral("\\datos\\")), QStringLiteral("\\datos\\"));
  EXPECT_EQ(AjustaBarra({}), QStringLiteral("\\"));
  EXPECT_EQ(ComaAPunto(QStringLiteral("1,5,2")), QStringLiteral("1.5.2"));
  EXPECT_EQ(PuntoAComa(QStringLiteral("1.5.2")), QStringLiteral("1,5,2"));
}

TEST(RegistraError, UnaLineaPorError) {
  QTemporaryDir dir;
  const QString carpeta = rutaPrograma(dir.path());
  RegistraError(carpeta, 3022, QStringLiteral("Ya existe\nel año"),
                QStringLiteral("CmdAceptar_Click - FrmEmpresas"));
  RegistraError(carpeta + u'\\', 94, QStringLiteral("Nulo"), QStringLiteral("Otro"));
  QFile registro(dir.filePath(QStringLiteral("Errores.txt")));
  ASSERT_TRUE(registro.open(QIODevice::ReadOnly));
  EXPECT_EQ(QString::fromUtf8(registro.readAll()),
            QStringLiteral("Error n - 3022 - Ya existe el año - Producido en "
                           "CmdAceptar_Click - FrmEmpresas\r\n"
                           "Error n - 94 - Nulo - Producido en Otro\r\n"));
  EXPECT_THROW(RegistraError(carpeta + QStringLiteral("\\no existe"), 1, {}, {}), ErrorEjecucion);
}

}  // namespace
