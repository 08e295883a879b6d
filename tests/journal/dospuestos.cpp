// Two stations that post to one company at the same time.

#include "soporte/libros.h"

namespace {

// What the other station does, in a process of its own.
TEST(OrdenDiario, AsientaEnOtroPuesto) {
  const QString ruta = qEnvironmentVariable("LIBRANO_FICHERO");
  if (ruta.isEmpty()) GTEST_SKIP() << "sólo la corren otras pruebas, en otro proceso";
  DBEngine motor;
  DataControl diario(motor), empresa(motor);
  diario.bind(ruta, "Select * from SqlDiarioPrincipalBlanco order by nasiento");
  empresa.bind(ruta, "Select * from Empresa");
  const int lineas = qEnvironmentVariableIntValue("LIBRANO_LINEAS");
  for (int i = 0; i < lineas; ++i) {
    const Apunte apunte = apunteDe(qEnvironmentVariableIntValue("LIBRANO_ASIENTO"), "15/02/2024",
                                   "57000001", "Cobro", 0.1);
    // The other station never rests: told that the file is locked, one tries again.
    for (bool grabado = false; !grabado;) {
      try {
        grabaApunte(diario, empresa, apunte);
        grabado = true;
      } catch (const ErrorEjecucion& e) {
        ASSERT_EQ(e.numero(), err::kRegistroBloqueado);
      }
    }
    motor.flush();
  }
}

TEST(SeguridadDiario, DosPuestosNoPierdenLineasNiDoblanNumeros) {
  const int lineas = qEnvironmentVariableIsSet("LIBRANO_SOAK") ? 3000 : 40;
  Libros libros;
  libros.motor.flush();
  QProcess puestos[2];
  for (int i = 0; i < 2; ++i) {
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert("LIBRANO_FICHERO", libros.rutaEmpresa());
    entorno.insert("LIBRANO_LINEAS", QString::number(lineas));
    entorno.insert("LIBRANO_ASIENTO", QString::number(i + 1));
    puestos[i].setProcessEnvironment(entorno);
    puestos[i].start(QCoreApplication::applicationFilePath(), {"--gtest_filter=OrdenDiario.*"});
  }
  for (QProcess& puesto : puestos) {
    ASSERT_TRUE(puesto.waitForFinished(-1));
    EXPECT_EQ(puesto.exitCode(), 0) << puesto.readAllStandardOutput().constData();
  }
  const QString todas = QString::number(2 * lineas);
  EXPECT_EQ(libros.filas("Select Count(NLinea), Max(NLinea) from Diario"),
            QStringList{todas + '|' + QString::number(2 * lineas - 1)});
  EXPECT_EQ(libros.filas("Select NLinDiario from Empresa"), QStringList{todas});
  const QString suma = Variant(lineas * 0.1).text();
  EXPECT_EQ(libros.filas("Select NAsiento, SumaDeDebe from SqlSumaDiarioPorAsientos"),
            (QStringList{"1|" + suma, "2|" + suma}));
}

}  // namespace
