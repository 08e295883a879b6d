// Company files that a failing disk or a bad transfer has damaged: each opens or is refused with a
// message, and what a repair declares sound is sound.
//
// LIBRANO_SOAK damages eighty times as many files as it says.

#include "company/consultas.h"
#include "soporte/estadolibros.h"
#include "soporte/libros.h"
#include "soporte/seguridad.h"

namespace {

constexpr int kPagina = 4096;

// Damages a file as disks and wires do: bits, bytes, sectors and pages, anywhere or where the
// file's own definitions stand, and the end cut off.
QByteArray danado(QByteArray fichero, QRandomGenerator& azar) {
  const auto lugar = [&](int tamano) {
    const auto ultimo = static_cast<int>(fichero.size()) - tamano;
    return azar.bounded(3) == 0 ? azar.bounded(2 * kPagina) : azar.bounded(ultimo);
  };
  for (int golpes = 1 + azar.bounded(4); golpes > 0; --golpes) {
    const int donde = lugar(kPagina);
    switch (azar.bounded(6)) {
      case 0:
        fichero[donde] = static_cast<char>(fichero[donde] ^ (1 << azar.bounded(8)));
        break;
      case 1:
        fichero[donde] = static_cast<char>(azar.bounded(256));
        break;
      case 2:
        fichero.replace(donde / 512 * 512, 512, QByteArray(512, azar.bounded(2) ? '\0' : '\xff'));
        break;
      case 3:
        fichero.replace(donde / kPagina * kPagina, kPagina,
                        fichero.mid(lugar(kPagina) / kPagina * kPagina, kPagina));
        break;
      case 4:
        for (int i = 0; i < 16; ++i) fichero[donde + i] = static_cast<char>(azar.bounded(256));
        break;
      default:
        if (azar.bounded(4) == 0) fichero.truncate(std::max(kPagina, donde));
    }
    if (fichero.size() <= 3 * kPagina) break;
  }
  return fichero;
}

// What a session does with a company, up to its first failure.
void usa(DBEngine& motor, const QString& ruta) {
  const auto empresa = motor.Workspaces(0).OpenDatabase(ruta);
  const auto contadores = empresa->OpenRecordset("Select * from Empresa");
  const auto diario =
      empresa->OpenRecordset("Select * from SqlDiarioPrincipalBlanco order by nasiento");
  for (; !diario->Eof(); diario->MoveNext())
    for (int i = 0; i < diario->FieldCount(); ++i) diario->Fields(i).display();
  grabaApunte(*diario, *contadores, apunteDe(1, "15/02/2024", "57200001", "Cobro", 3));
  motor.flush();
}

void consulta(DBEngine& motor, const QString& ruta, const QString& nombre) {
  const auto filas = motor.Workspaces(0).OpenDatabase(ruta)->OpenRecordset(nombre);
  for (; !filas->Eof(); filas->MoveNext())
    for (int i = 0; i < filas->FieldCount(); ++i) filas->Fields(i).display();
}

TEST(SeguridadDanos, UnFicheroDanadoSeAbreOSeRechaza) {
  Libros libros;
  libros.asientaTrimestre();
  libros.motor.flush();
  QFile original(rutaSistema(libros.rutaEmpresa()));
  ASSERT_TRUE(original.open(QIODevice::ReadOnly));
  const QByteArray sano = original.readAll();

  const int veces = qEnvironmentVariableIntValue("LIBRANO_SOAK");
  const quint32 primera = semilla(2024);
  const quint32 ficheros = veces ? 80U * static_cast<quint32>(veces) : 24U;
  int abiertos = 0, rechazados = 0;
  for (quint32 vez = 0; vez < ficheros; ++vez) {
    SCOPED_TRACE(testing::Message() << "seed " << primera + vez);
    QRandomGenerator azar(primera + vez);
    const QTemporaryDir carpeta;
    const QString ruta = carpeta.filePath("Conta.MDB");
    QFile fichero(ruta);
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
    fichero.write(danado(sano, azar));
    fichero.close();
    // Each step is tried whatever became of the one before.
    const auto prueba = [](const auto& paso) {
      try {
        paso();
        return true;
      } catch (const ErrorEjecucion& e) {
        EXPECT_FALSE(e.descripcion().isEmpty()) << e.numero();
        return false;
      }
    };
    bool reparado = false;
    {
      DBEngine motor;
      ++(prueba([&] { usa(motor, ruta); }) ? abiertos : rechazados);
      for (const Consulta& suya : consultasDeEmpresa())
        prueba([&] { consulta(motor, ruta, QString::fromUtf8(suya.nombre)); });
      reparado = prueba([&] { motor.RepairDatabase(ruta); });
    }
    if (!reparado) continue;
    // A damaged counter can't be told from a good one.
    const QString quejas = quejasDeLibros(carpeta.path());
    EXPECT_TRUE(quejas.isEmpty() || quejas.contains("contador")) << qPrintable(quejas);
  }
  cuenta(abiertos, "ficheros dañados que se abren");
  cuenta(rechazados, "ficheros dañados que se rechazan");
  EXPECT_GT(abiertos, 0);
  EXPECT_GT(rechazados, 0);
}

}  // namespace
