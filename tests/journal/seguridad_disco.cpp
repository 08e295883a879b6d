// The power cut and the disk refusing at any moment of a posting, of the tools that change many
// lines, and of copies: what was acknowledged is there, and nothing is there by halves.
//
// With LIBRANO_SOAK eighty times as many cuts as it says, and every operation that can fail.

#include <QScopedValueRollback>

#include "company/indices.h"
#include "journal/integridad.h"
#include "journal/masivos.h"
#include "oficial/conciliacion.h"
#include "oficial/conversion.h"
#include "soporte/disco.h"
#include "soporte/estadolibros.h"
#include "soporte/libros.h"
#include "soporte/seguridad.h"
#include "transfer/copiaseguridad.h"
#include "transfer/mantenimiento.h"

namespace {

constexpr int kLineas = 90;

// Books being worked on. `guardado` tells that what was done so far is on the disk.
struct Tajo {
  DBEngine& motor;
  QString carpeta;
  std::function<void()> guardado;

  QString ruta(const QString& empresa) const {
    return rutaPrograma(carpeta) + u'\\' + empresa + "\\Conta.MDB";
  }
  std::unique_ptr<Database> abre(const QString& empresa) const {
    return motor.Workspaces(0).OpenDatabase(ruta(empresa));
  }
  void guarda() const {
    motor.flush();
    guardado();
  }
  // For the tools: saves every so many lines.
  Avance cada(int lineas) const {
    return [this, lineas](int linea, int) {
      if (linea > 0 && linea % lineas == 0) guarda();
    };
  }
};

void asienta(Database& empresa, int lineas, const std::function<void()>& trasCada) {
  const auto diario = empresa.OpenRecordset("SqlDiarioPrincipalBlanco");
  const auto contadores = empresa.OpenRecordset("Empresa");
  int asiento = 0;
  for (int i = 0; i < lineas; ++i) {
    if (i % 3 == 0) {
      asiento = tomaAsiento(*contadores);
      trasCada();
    }
    grabaApunte(*diario, *contadores,
                apunteDe(asiento, QDate(2024, 1 + i % 12, 1 + i % 28),
                         i % 2 ? "43000001" : "57200001", "Viejo", i % 3 ? -0.05 : 0.1));
    trasCada();
  }
}

struct Trabajo {
  const char* nombre;
  void (*hace)(const Tajo&);
  bool entero = false;  // a file is never left between two of its states, whatever fails
  void (*porPasos)(const Tajo&) = nullptr;  // the same, told of each saving that it doesn't tell

  friend void PrintTo(const Trabajo& trabajo, std::ostream* salida) { *salida << trabajo.nombre; }
};

void cambia(const Tajo& t, bool elimina) {
  cambiaDatos(*t.abre("Tienda"),
              {CampoCambio::Descripcion, "Viejo", "Nuevo", "01/01/2024", "30/06/2024", elimina},
              t.cada(40));
}

// A backup of a company of the same subcuentas with a longer journal, made before any fault.
const QString& archivoDeCopia() {
  static const QTemporaryDir carpeta;
  static const QString ruta = [] {
    Libros libros;
    asienta(*libros.abre(), kLineas + 3, [] {});
    libros.motor.flush();
    const QString archivo = rutaPrograma(carpeta.filePath("Tienda.Zip"));
    guardaCopia(libros.motor, libros.rutaEmpresa(), archivo);
    return archivo;
  }();
  return ruta;
}

void reindexaTienda(const Tajo& t) {
  const QString nuevo = t.ruta("Tienda").replace("Conta.MDB", "Conta2.MDB");
  const auto leida =
      reindexa(t.motor, {t.ruta("Tienda"), nuevo, 3, 8},
               {[](int) {}, [](int, int) {}, [](const ErrorEjecucion&) { return true; }});
  if (leida) t.motor.ReplaceDatabase(nuevo, t.ruta("Tienda"), *leida);
  t.motor.DeleteDatabase(nuevo);
}

// A statement is read, its lines accepted, and what isn't in the books posted.
void concilia(const Tajo& t) {
  const auto empresa = t.abre("Tienda");
  LecturaNorma43 leido;
  CuentaBanco& cuenta = leido.cuentas.emplace_back();
  cuenta.ccc = "99910025110000123456";
  cuenta.desde = QDate(2024, 1, 1);
  cuenta.hasta = QDate(2024, 12, 31);
  for (int mes = 1; mes <= 12; ++mes) {
    MovimientoBanco m;
    m.operacion = m.valor = QDate(2024, mes, mes);
    m.centimos = mes % 3 ? 10 : 7;
    cuenta.movimientos.push_back(m);
  }
  importaNorma43(t.motor, *empresa, leido);
  t.guardado();
  ponSubcuentaDeBanco(t.motor, *empresa, cuenta.ccc, "57200001");
  t.guardado();
  Conciliacion c = leeConciliacion(*empresa, cuenta.ccc);
  const std::vector<Pareja> parejas = empareja(c);
  EXPECT_GT(parejas.size(), 1u);
  aceptaParejas(t.motor, *empresa, c, parejas, {"X", QDate(2024, 12, 31)});
  t.guardado();
  asientaMovimientos(t.motor, *empresa, c, {{2, "43000001"}, {5, "43000001"}},
                     {"X", QDate(2024, 12, 31)});
  t.guardado();
}

// An asiento moves to another company: a line that is in neither is lost, so the copy is on the
// disk before the original goes.
void duplica(const Tajo& t, bool elimina) {
  EXPECT_TRUE(duplicaAsiento(t.motor, *t.abre("Tienda"), *t.abre("Otra"), {2, {}, 8, elimina}));
}

void trasladaPorPasos(const Tajo& t) {
  duplica(t, false);
  t.guarda();
  eliminaAsiento(*t.abre("Tienda"), 2, [](int, int) {});
}

void convierte(const Tajo& t) {
  const auto empresa = t.abre("Tienda");
  convierteA2007(t.motor, *empresa,
                 {Modelo2007::Pymes, proponeConversion(*empresa, Modelo2007::Pymes)}, {2024, 4, 1},
                 [&](int, int) { t.motor.breathe(); });
}

void renumera(const Tajo& t) {
  renumeraDiario(*t.abre("Tienda"), 1, t.cada(40));
}

void fechas(const Tajo& t) {
  unificaFechas(*t.abre("Tienda"), 2025, QDate(2025, 1, 1), t.cada(40));
}

// As in a long journal, whose indexes are put away meanwhile.
template <void (*hace)(const Tajo&)>
void sinIndices(const Tajo& t) {
  const QScopedValueRollback<int> siempre(IndicesAparte::desde, 1);
  hace(t);
}

constexpr Trabajo kTrabajos[] = {
    {"Asienta", [](const Tajo& t) { asienta(*t.abre("Tienda"), 4, [&] { t.guarda(); }); }},
    {"Renumera", renumera},
    {"RenumeraSinIndices", sinIndices<renumera>},
    {"Fechas", fechas},
    {"FechasSinIndices", sinIndices<fechas>},
    {"Cambia", [](const Tajo& t) { cambia(t, false); }},
    {"Elimina", [](const Tajo& t) { cambia(t, true); }},
    {"EliminaUno", [](const Tajo& t) { eliminaAsiento(*t.abre("Tienda"), 1, t.cada(2)); }},
    {"Traslada", [](const Tajo& t) { duplica(t, true); }, false, trasladaPorPasos},
    {"Concilia", concilia, true},
    {"Convierte", convierte, true},
    {"Copia", [](const Tajo& t) { t.motor.CopyDatabase(t.ruta("Tienda"), t.ruta("Copia")); }, true},
    {"CopiaEncima", [](const Tajo& t) { t.motor.CopyDatabase(t.ruta("Tienda"), t.ruta("Otra")); },
     true},
    {"Compacta",
     [](const Tajo& t) {
       t.motor.CompactDatabase(t.ruta("Tienda"), t.ruta("Copia"));
       t.guardado();
       t.motor.CopyDatabase(t.ruta("Copia"), t.ruta("Tienda"));
     },
     true},
    {"Restaura",
     [](const Tajo& t) { restauraCopia(t.motor, archivoDeCopia(), t.ruta("Tienda"), "Tienda"); },
     true},
    {"Reindexa", reindexaTienda, true},
    {"Repara",
     [](const Tajo& t) {
       reparaEmpresa(t.motor, t.ruta("Tienda"),
                     t.ruta("Tienda").replace("Conta.MDB", "Conta2.MDB"));
     },
     true},
};

class SeguridadDisco : public testing::TestWithParam<Trabajo> {
 protected:
  // The books before the work, made once: "Tienda" with a journal, "Otra" without, and a folder for
  // a copy.
  static const QString& antes() {
    static const QTemporaryDir carpeta;
    static const QString ruta = [] {
      Libros libros;
      libros.creaEmpresa(Libros::datosPorDefecto("Otra", 3, 8));
      altaSubcuentasTrimestre(*libros.abre());
      asienta(*libros.abre(), kLineas, [] {});
      libros.motor.flush();
      copia(rutaSistema(libros.dirDatos()), carpeta.path());
      return carpeta.path();
    }();
    return ruta;
  }
  static void copia(const QString& carpeta, const QString& otra) {
    QDir(otra).removeRecursively();
    for (const char* empresa : {"/Tienda", "/Otra", "/Copia"}) {
      QDir().mkpath(otra + empresa);
      QFile::copy(carpeta + empresa + "/Conta.MDB", otra + empresa + "/Conta.MDB");
    }
  }
  QString frescos() const {
    copia(antes(), libros_);
    return libros_;
  }

  // What the books hold before a work that nothing disturbs, at each saving, and at its end.
  QStringList estados() const {
    QStringList todos{contenidoDeLibros(frescos())};
    // The files are in use, so it is a copy of them that is looked at.
    const auto anota = [&] {
      copia(libros_, otros_);
      todos << contenidoDeLibros(otros_);
    };
    DBEngine motor;
    (GetParam().porPasos ? GetParam().porPasos : GetParam().hace)({motor, libros_, anota});
    motor.flush();
    anota();
    return todos;
  }

  // Files that no work should leave behind.
  static QStringList restos(const QString& carpeta) {
    QStringList sobran;
    QDirIterator it(carpeta, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
      if (const QString ruta = it.next(); !ruta.endsWith(".MDB")) sobran << ruta;
    return sobran;
  }

  const int veces_ = qEnvironmentVariableIntValue("LIBRANO_SOAK");
  QRandomGenerator azar_{semilla(2024)};
  QTemporaryDir carpeta_;
  const QString libros_ = carpeta_.filePath("libros");
  const QString otros_ = carpeta_.filePath("otros");
};

// The totals of each company as the program reads them.
QStringList totales(DBEngine& motor, const QString& carpeta) {
  QStringList todos;
  for (const char* empresa : {"Tienda", "Otra", "Copia"}) {
    const Tajo tajo{motor, carpeta, {}};
    if (!QFile::exists(rutaSistema(tajo.ruta(empresa)))) continue;
    const auto base = tajo.abre(empresa);
    for (const char* fuente : {"SqlSumaDiario", "Select Count(*), Sum(Importe) from Diario",
                               "Select Asiento, NLinDiario from Empresa"}) {
      const auto fila = base->OpenRecordset(fuente);
      todos << fila->Fields(0).display() << fila->Fields(1).display();
    }
  }
  return todos;
}

TEST_P(SeguridadDisco, QueSeVayaLaLuz) {
  const QStringList estados = this->estados();
  Disco disco;
  frescos();
  disco.graba(libros_);
  {
    DBEngine motor;
    GetParam().hace({motor, libros_, [&] { disco.marca(); }});
    motor.flush();
    disco.marca();
  }
  disco.para();
  ASSERT_GT(disco.sucesos(), 0);
  const int cortes = veces_ ? 80 * veces_ : 16;
  for (int vez = 0; vez < cortes; ++vez) {
    const int corte = vez == 0 ? disco.sucesos() : azar_.bounded(disco.sucesos());
    constexpr Disco::Pendiente kModos[] = {Disco::Pendiente::AlAzar, Disco::Pendiente::SePierde,
                                           Disco::Pendiente::AlAzar, Disco::Pendiente::SeEscribe};
    const int modo = azar_.bounded(4);
    SCOPED_TRACE(testing::Message()
                 << "event " << corte << " of " << disco.sucesos() << ", mode " << modo);
    disco.trasElCorte(corte, kModos[modo], azar_, otros_);
    {
      DBEngine motor;
      totales(motor, otros_);
    }
    EXPECT_EQ(quejasDeLibros(otros_), "");
    const int guardado = disco.marcas(corte);
    const QString queda = contenidoDeLibros(otros_);
    const QStringList admitidos = estados.mid(guardado, GetParam().porPasos ? 3 : 2);
    EXPECT_TRUE(admitidos.contains(queda)) << "saved " << guardado << '\n' << qPrintable(queda);
  }
  cuenta(cortes, "cortes de luz");
}

// Does the work on a disk that fails, and lets it be saved once the disk is well: how often it said
// that it was saved, and the totals that it showed at the end.
std::pair<int, QStringList> trabajaConFallos(Disco& disco, const QString& carpeta,
                                             const Trabajo& trabajo) {
  DBEngine motor;
  motor.setLockTimeout(4);
  int guardado = 0;
  // What is lost when a file closes can't be raised any more: it is told.
  bool perdido = false;
  QObject::connect(&motor, &DBEngine::commitFailed, [&] { perdido = true; });
  try {
    trabajo.hace({motor, carpeta, [&] { ++guardado; }});
    motor.flush();
    if (!perdido) ++guardado;
  } catch (const ErrorEjecucion& e) {
    EXPECT_FALSE(e.descripcion().isEmpty()) << e.numero();
  }
  disco.sana();
  motor.flush();
  return {guardado, totales(motor, carpeta)};
}

TEST_P(SeguridadDisco, QueSeNiegueUnaOperacion) {
  const QStringList estados = this->estados();
  const QStringList lineas = estados.join(u'\n').split(u'\n');
  const QStringList definitivas = estados.back().split(u'\n');
  Disco disco;
  const auto falla = [&](Disco::Operacion operacion, int n, bool siempre) {
    SCOPED_TRACE(testing::Message() << "operation " << static_cast<int>(operacion) << ", " << n
                                    << (siempre ? " and all others" : ""));
    frescos();
    disco.falla(operacion, n, siempre);
    const auto [guardado, vistos] = trabajaConFallos(disco, libros_, GetParam());
    EXPECT_EQ(quejasDeLibros(libros_), "");
    EXPECT_EQ(restos(libros_), QStringList());
    const QString queda = contenidoDeLibros(libros_);
    EXPECT_TRUE(!GetParam().entero || estados.mid(guardado).contains(queda)) << qPrintable(queda);
    // A line that moves is always in one of the two companies.
    if (GetParam().porPasos) {
      EXPECT_GE(queda.count("|Viejo|"), estados.front().count("|Viejo|")) << qPrintable(queda);
    }
    // Each line is as it was at some saving, and what was saved for good is there.
    const QStringList quedan = queda.split(u'\n');
    for (const QString& linea : quedan) EXPECT_TRUE(lineas.contains(linea)) << qPrintable(linea);
    for (const QString& linea : estados[guardado].split(u'\n'))
      EXPECT_TRUE(quedan.contains(linea) || !definitivas.contains(linea)) << qPrintable(linea);
    // What the program showed is what the files hold.
    DBEngine otro;
    EXPECT_EQ(totales(otro, libros_), vistos);
  };
  for (const auto operacion :
       {Disco::Operacion::Leer, Disco::Operacion::Escribir, Disco::Operacion::Llenar,
        Disco::Operacion::Sincronizar, Disco::Operacion::Bloquear}) {
    for (const bool siempre : {false, true}) {
      // The first of each kind, a few others, and every one in a long run.
      int n = 1, fallos = 0;
      for (;; ++fallos) {
        falla(operacion, n, siempre);
        if (!disco.haFallado()) break;
        n += veces_ ? 1 : 2 + 2 * n + azar_.bounded(3);
      }
      EXPECT_GT(fallos, 0);
      cuenta(fallos, siempre ? "fallos del disco para siempre" : "fallos del disco de una vez");
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, SeguridadDisco, testing::ValuesIn(kTrabajos),
                         [](const auto& info) { return std::string(info.param.nombre); });

}  // namespace
