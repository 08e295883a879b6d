#include "company/crearbase.h"

#include "company/alta.h"
#include "company/indices.h"
#include "company/sesionempresa.h"
#include "soporte/libros.h"
#include "soporte/otropuesto.h"
#include "start/creaini.h"

namespace {

QString tipo(const Field& campo, int digitosCuenta, int digitosSubcuenta) {
  static const QMap<FieldType, QString> kTipos = {{FieldType::Boolean, "boolean"},
                                                  {FieldType::Long, "long"},
                                                  {FieldType::Double, "double"},
                                                  {FieldType::Date, "date"}};
  if (campo.Type != FieldType::Text) return kTipos[campo.Type];
  if (campo.Size == digitosCuenta) return "text C";
  if (campo.Size == digitosSubcuenta) return "text S";
  return QString("text %1").arg(campo.Size);
}

TEST(CrearBase, ElEsquemaEsElDelContrato) {
  // Widths that no fixed field has, so that theirs can be told apart.
  constexpr int kCuenta = 7, kSubcuenta = 12;
  Libros libros;
  const QString ruta = libros.dirDatos() + "Ancha.MDB";
  CrearBase(libros.motor, ruta, kCuenta, kSubcuenta, 0);
  const auto base = libros.motor.Workspaces(0).OpenDatabase(ruta);
  QString texto;
  for (const QString& nombre : base->TableDefs()) {
    const TableDef tabla = base->tableDef(nombre);
    texto += nombre + (tabla.Indexes.empty() ? " (sin clave)\n" : "\n");
    for (const Field& campo : tabla.Fields) {
      texto += "  " + campo.Name + ' ' + tipo(campo, kCuenta, kSubcuenta);
      if (!campo.DefaultValue.isEmpty()) texto += " = " + campo.DefaultValue;
      texto += '\n';
      EXPECT_TRUE(campo.AllowZeroLength || campo.Type != FieldType::Text) << qPrintable(campo.Name);
    }
    for (const Index& indice : tabla.Indexes) {
      EXPECT_EQ(indice.Name, tabla.Fields.front().Name);
      EXPECT_EQ(indice.Fields, QStringList{indice.Name});
      EXPECT_TRUE(indice.Primary && indice.Unique);
    }
    EXPECT_LE(tabla.Indexes.size(), 1U);
  }
  EXPECT_EQ(texto.split('\n'), QString::fromUtf8(contenidoDe(rutaDato("esquema.txt"))).split('\n'));
}

TEST(CrearBase, FilasDeUnaEmpresaNuevaYDeUnaReconstruccion) {
  Libros libros;
  const QString ruta = libros.rutaEmpresa().replace("Conta", "Conta2");
  CrearBase(libros.motor, ruta, 3, 8, 0);
  EXPECT_ERROR(err::kBaseYaExiste, CrearBase(libros.motor, ruta, 3, 8, 0));
  const auto reconstruida = libros.motor.Workspaces(0).OpenDatabase(ruta);
  const std::tuple<const char*, int, int> casos[] = {
      {"Empresa", 1, 0}, {"Conceptos", 99, 0}, {"TiposIVA", 99, 0}, {"TipoRecibos", 198, 99},
      {"Nivel01", 7, 7}, {"Nivel02", 64, 64},  {"ActPas", 2, 2},    {"Subcuentas", 7, 0},
      {"Cuentas", 0, 0}, {"Diario", 0, 0},     {"RSIVA", 0, 0},     {"Recibos", 0, 0}};
  for (const auto& [tabla, nueva, rehecha] : casos) {
    EXPECT_EQ(libros.filas(tabla).size(), nueva) << tabla;
    EXPECT_EQ(reconstruida->OpenRecordset(tabla)->rowTotal(), rehecha) << tabla;
  }
  EXPECT_EQ(libros.filas("Nivel01").at(3), "4|Acreedores y deudores por operaciones de tráfico|2");
  EXPECT_EQ(libros.filas("Nivel02").at(28), "40|Proveedores|4");
  EXPECT_EQ(libros.filas("TiposIVA").at(4), "05|Super reducido C/R|4|0,5");
  EXPECT_EQ(libros.filas("TiposIVA").at(8), "09|-|0|0");
  EXPECT_EQ(libros.filas("Conceptos").last(), "99|-");
  EXPECT_EQ(libros.filas("Select Subcuenta, Cuenta, Descripcion, Nif from Subcuentas"),
            QStringList({"47700001|477|Iva repercutido|-", "47300001|473|R.E. en Iva repercutido|-",
                         "70000001|700|Ventas|-", "47200001|472|Iva soportado|-",
                         "47500001|475|R.E. en Iva soportado|-", "60000001|600|Compras|-",
                         "611|-|Regularización existencias|-"}));

  // All queries open on empty books, but for the one that names columns that no query has.
  const auto base = libros.abre();
  EXPECT_EQ(base->QueryDefs().size(), 20);
  for (const QString& consulta : base->QueryDefs())
    EXPECT_ERROR(consulta == "SqlAcumulados" ? err::kNombreDesconocido : 0,
                 base->OpenRecordset(consulta))
        << qPrintable(consulta);
  EXPECT_EQ(libros.filas("SqlSumaDiario"), QStringList{"-|-"});
}

// What keeps a creation from happening is said before anything is written.
TEST(CreaEmpresa, Reparos) {
  using Campo = QString DatosEmpresa::*;
  const struct {
    Campo campo;
    const char *valor, *aviso;
  } casos[] = {
      {&DatosEmpresa::NombreEmpresa, "a/b", "no puede llevar"},
      {&DatosEmpresa::NombreEmpresa, "¿Qué?", "no puede llevar"},
      {&DatosEmpresa::NombreEmpresa, "..", "no puede llevar"},
      {&DatosEmpresa::NombreEmpresa, "com1", "no puede llevar"},
      {&DatosEmpresa::NombreEmpresa, "AJENA", "Ya hay una carpeta"},
      {&DatosEmpresa::NombreEmpresa, "Tienda", ""},  // the catalogue has it and says so itself
      {&DatosEmpresa::NombreEmpresa, "D'Ors & Hijos, S.L.", ""},
      {&DatosEmpresa::Ano, "24", "cuatro cifras"},
      {&DatosEmpresa::Ano, "-,5", "cuatro cifras"},
      {&DatosEmpresa::MesInicio, "13", "de 1 a 12"},
      {&DatosEmpresa::Asiento, "", "1 o después"},
      {&DatosEmpresa::MayorN01, "", "nivel"},
      {&DatosEmpresa::SubCuN01, "3", "nivel"},
      {&DatosEmpresa::IVARCli, "4300", "tiene más dígitos"},
      {&DatosEmpresa::IVASRE, "475000001", "tiene más dígitos"},
      {&DatosEmpresa::IVARRE, "47700001", "Hay dos subcuentas con el código 47700001"},
  };
  Libros libros;
  QDir(rutaSistema(libros.dirDatos())).mkdir("Ajena");
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.valor);
    DatosEmpresa datos = Libros::datosPorDefecto("Nueva", 3, 8);
    datos.*caso.campo = caso.valor;
    const auto reparo = reparoDelAlta(libros.motor, libros.dirDatos(), datos);
    EXPECT_EQ(reparo.has_value(), *caso.aviso != 0);
    if (!reparo) continue;
    EXPECT_TRUE(reparo->texto.contains(caso.aviso)) << qPrintable(reparo->texto);
    EXPECT_TRUE(reparo->campo == caso.campo);
  }
}

// A creation that fails leaves neither row nor folder. One that was killed leaves what the next one
// of its name takes over, wherever it stood.
TEST(CreaEmpresa, EnteraONada) {
  Libros libros;
  const QString carpeta = rutaSistema(libros.dirDatos());
  const auto empresas = [&] {
    libros.motor.flush();
    return preguntaFuera(carpeta + "Inicio.mdb", "SELECT count(*) FROM Empresas").toInt();
  };
  const auto carpetas = [&] {
    return QDir(carpeta).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
  };
  DatosEmpresa datos = Libros::datosPorDefecto("Nueva", 3, 8);
  datos.IVARRE = datos.IVARSub;
  EXPECT_ERROR(err::kClaveDuplicada, libros.creaEmpresa(datos));
  EXPECT_EQ(carpetas(), QStringList{"Tienda"});
  EXPECT_EQ(empresas(), 1);

  datos.IVARRE = "47300001";
  const QString obra = carpeta + ".alta-Nueva";
  haceFichero(obra + "/Conta.MDB", {});
  libros.creaEmpresa(datos);
  EXPECT_EQ(carpetas(), (QStringList{"Nueva", "Tienda"}));
  EXPECT_EQ(libros.filas("Subcuentas", "Nueva").size(), 7);
  EXPECT_ERROR(err::kClaveDuplicada, libros.creaEmpresa(datos));
  EXPECT_EQ(empresas(), 2);

  // Killed between the row and the name of the folder.
  QDir().rename(carpeta + "Nueva", obra);
  libros.creaEmpresa(datos);
  EXPECT_EQ(carpetas(), (QStringList{"Nueva", "Tienda"}));
  EXPECT_EQ(empresas(), 2);
}

TEST(SesionEmpresa, UnNuloDejaLoQueHabia) {
  Libros libros;
  const auto base = libros.abre();
  const auto empresa = base->OpenRecordset("Select * from Empresa");
  for (const auto& [campo, valor] :
       Valores{{"Gerente", {}}, {"MesInicio", {}}, {"Telefono", ""}, {"NoModificar", "31/12/2024"}})
    libros.cambia("Empresa", campo, valor);
  Sesion sesion;
  sesion.GerenteEmpresa = "de antes";
  sesion.TelefonoEmpresa = "de antes";
  sesion.MesInicio = 7;
  leeEmpresa(*empresa, sesion);
  EXPECT_EQ(sesion.EmpresaActual, "Tienda");
  EXPECT_EQ(sesion.AnoActual, 2024);
  EXPECT_EQ(sesion.FechaCreacionEmpresa, QDate(2024, 1, 2));
  EXPECT_EQ(sesion.GerenteEmpresa, "de antes");
  EXPECT_EQ(sesion.TelefonoEmpresa, "");
  EXPECT_EQ(sesion.MesInicio, 7);
  EXPECT_EQ(sesion.DigitosSubcuenta, 8);
  EXPECT_EQ(sesion.CuentaIVA1 + sesion.CuentaIVA2 + sesion.CuentaIVA3 + sesion.CuentaIVA4,
            "47200001477000014750000147300001");
  EXPECT_EQ(sesion.FechaNoModificar, "31/12/2024");
  EXPECT_TRUE(empresaCerrada(sesion));

  // No limit is a value too.
  libros.cambia("Empresa", "NoModificar", {});
  leeEmpresa(*empresa, sesion);
  EXPECT_EQ(sesion.FechaNoModificar, "");
  EXPECT_FALSE(empresaCerrada(sesion));
}

// A file as an earlier version left it: without some indexes, and with others. It gets those of a
// new one when it is opened, once, and unless somebody is in the way.
TEST(CrearBase, UnFicheroAntiguoTomaLosIndicesDeUnoNuevo) {
  Libros libros;
  const QString ruta = libros.dirDatos() + "Vieja.MDB", sistema = rutaSistema(ruta);
  CrearBase(libros.motor, ruta, 3, 8, 0);
  const auto pregunta = [&](const QString& sql) { return preguntaFuera(sistema, sql); };
  const QString cuales =
      "SELECT sql FROM sqlite_schema WHERE type = 'index' AND sql NOT NULL ORDER BY sql";
  const QString nuevos = pregunta(cuales);
  EXPECT_EQ(nuevos.count("librano_Diario_"), 5);
  EXPECT_EQ(pregunta("DROP INDEX librano_RSIVA_Asiento; DROP INDEX librano_Diario_Importe; "
                     "DROP INDEX librano_Diario_Punteo_NAsiento; "
                     "CREATE INDEX librano_Diario_Punteo_NAsiento ON Diario(Punteo, NAsiento); "
                     "CREATE INDEX librano_Diario_Fecha ON Diario(Fecha)"),
            "");
  const QString viejos = pregunta(cuales);
  {
    OtroPuesto otra(sistema, "BEGIN IMMEDIATE;");
    cuidaIndices(libros.motor, ruta);
    libros.motor.flush();
    EXPECT_EQ(pregunta(cuales), viejos);
  }
  cuidaIndices(libros.motor, ruta);
  libros.motor.flush();
  EXPECT_EQ(pregunta(cuales), nuevos);
  cuidaIndices(libros.motor, ruta);
  EXPECT_FALSE(libros.motor.pending());
  // The few lines with a mark are found by their index.
  EXPECT_TRUE(pregunta("EXPLAIN QUERY PLAN SELECT rowid FROM Diario WHERE Punteo = ?1 "
                       "ORDER BY NAsiento, rowid")
                  .contains("librano_Diario_Punteo_NAsiento"));
  cuidaIndices(libros.motor, ruta + "x");  // what isn't there is told by who opens it
}

// Indexes that wouldn't pay stay; those that go come back, with the lines written meanwhile, also
// where the work was broken off.
TEST(IndicesAparte, FaltanMientrasSeEscribeCasiTodoElDiario) {
  Libros libros;
  const QString ruta = libros.dirDatos() + "Grande.MDB", sistema = rutaSistema(ruta);
  CrearBase(libros.motor, ruta, 3, 8, 0);
  preguntaFuera(sistema,
                "WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 12000) INSERT INTO "
                "Diario(NLinea, NAsiento, Fecha) SELECT i, i, '2024-01-01' FROM n");
  const auto empresa = libros.motor.Workspaces(0).OpenDatabase(ruta);
  const auto hay = [&] {
    libros.motor.flush();
    return preguntaFuera(sistema,
                         "SELECT group_concat(substr(name, 16)) FROM (SELECT name FROM "
                         "sqlite_schema WHERE name LIKE 'librano_Diario_%' ORDER BY name)");
  };
  const QString todos = hay();
  EXPECT_EQ(todos.split(',').size(), 5);
  {
    const IndicesAparte pocas(*empresa, 11'999);
    EXPECT_EQ(hay(), todos);
  }
  {
    IndicesAparte aparte(*empresa, 12'000);
    EXPECT_EQ(hay(), "");
    aparte.repone();
    EXPECT_EQ(hay(), todos);
  }
  const auto seRompe = [&] {
    const IndicesAparte aparte(*empresa, 12'000, {"Fecha"});
    EXPECT_EQ(hay(), "Importe,NAsiento,Punteo_NAsiento");
    const auto diario = empresa->OpenRecordset("Diario");
    corrige(*diario, {{"Fecha", QDate(2024, 6, 15)}});
    diario->Edit();
    diario->Fields("NAsiento") = "nada";
  };
  EXPECT_EQ(numeroDeError(seRompe), err::kConversionDeDatos);
  EXPECT_EQ(hay(), todos);
  EXPECT_EQ(preguntaFuera(sistema, "SELECT NLinea FROM Diario WHERE Fecha > '2024-06-01'"), "1");
  EXPECT_EQ(preguntaFuera(sistema, "PRAGMA integrity_check"), "ok");
}

}  // namespace
