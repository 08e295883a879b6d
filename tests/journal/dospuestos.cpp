// Two stations that post to one company at the same time.

#include "engine/estacion.h"
#include "soporte/libros.h"
#include "soporte/seguridad.h"

namespace {

// What the other station does, in a process of its own.
TEST(Orden, AsientaEnOtroPuesto) {
  const QStringList orden = qEnvironmentVariable("LIBRANO_ORDEN").split(' ');
  if (orden[0] != "asienta") GTEST_SKIP() << "sólo la corren otras pruebas, en otro proceso";
  const QString ruta = qEnvironmentVariable("LIBRANO_FICHERO");
  DBEngine motor;
  DataControl diario(motor), empresa(motor);
  diario.bind(ruta, "Select * from SqlDiarioPrincipalBlanco order by nasiento");
  empresa.bind(ruta, "Select * from Empresa");
  const Apunte apunte = apunteDe(orden[1].toInt(), "15/02/2024", "57000001", "Cobro", 0.1);
  for (int i = 0; i < orden[2].toInt(); ++i) {
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
  Estacion puestos[2] = {Estacion(libros.rutaEmpresa()), Estacion(libros.rutaEmpresa())};
  for (int i = 0; i < 2; ++i) puestos[i].empieza(QString("asienta %1 %2").arg(i + 1).arg(lineas));
  for (Estacion& puesto : puestos) EXPECT_EQ(puesto.acaba(), 0);
  cuenta(2 * lineas, "líneas entre dos puestos");
  const QString todas = QString::number(2 * lineas);
  EXPECT_EQ(libros.filas("Select Count(NLinea), Max(NLinea) from Diario"),
            QStringList{todas + '|' + QString::number(2 * lineas - 1)});
  EXPECT_EQ(libros.filas("Select NLinDiario from Empresa"), QStringList{todas});
  const QString suma = Variant(lineas * 0.1).text();
  EXPECT_EQ(libros.filas("Select NAsiento, SumaDeDebe from SqlSumaDiarioPorAsientos"),
            (QStringList{"1|" + suma, "2|" + suma}));
}

}  // namespace
