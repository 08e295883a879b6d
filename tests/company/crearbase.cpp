#include "company/crearbase.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "company/consultas.h"
#include "company/sesionempresa.h"
#include "foundation/creaini.h"
#include "foundation/rutas.h"
#include "soporte/libros.h"

namespace {

int numeroDeError(const std::function<void()>& accion) {
  try {
    accion();
    return 0;
  } catch (const ErrorEjecucion& e) {
    return e.numero();
  }
}

QString tipo(const Field& campo, int digitosCuenta, int digitosSubcuenta) {
  switch (campo.Type) {
    case FieldType::Boolean:
      return QStringLiteral("boolean");
    case FieldType::Long:
      return QStringLiteral("long");
    case FieldType::Double:
      return QStringLiteral("double");
    case FieldType::Date:
      return QStringLiteral("date");
    case FieldType::Text:
      break;
  }
  if (campo.Size == digitosCuenta) return QStringLiteral("text C");
  if (campo.Size == digitosSubcuenta) return QStringLiteral("text S");
  return QStringLiteral("text %1").arg(campo.Size);
}

TEST(CrearBase, ElEsquemaEsElDelContrato) {
  // Widths that no fixed field has, so that theirs can be told apart.
  constexpr int kCuenta = 7, kSubcuenta = 12;
  Libros libros;
  const QString ruta = libros.dirDatos() + QStringLiteral("Ancha.MDB");
  CrearBase(libros.motor, ruta, kCuenta, kSubcuenta, 0);
  const auto base = libros.motor.Workspaces(0).OpenDatabase(ruta);
  QString texto;
  for (const QString& nombre : base->TableDefs()) {
    const TableDef tabla = base->tableDef(nombre);
    texto +=
        nombre + (tabla.Indexes.empty() ? QStringLiteral(" (sin clave)\n") : QStringLiteral("\n"));
    for (const Field& campo : tabla.Fields) {
      texto += QStringLiteral("  ") + campo.Name + u' ' + tipo(campo, kCuenta, kSubcuenta);
      if (!campo.DefaultValue.isEmpty()) texto += QStringLiteral(" = ") + campo.DefaultValue;
      texto += u'\n';
      if (campo.Type == FieldType::Text) {
        EXPECT_TRUE(campo.AllowZeroLength) << campo.Name.toStdString();
      }
    }
    for (const Index& indice : tabla.Indexes) {
      EXPECT_EQ(indice.Name, tabla.Fields.front().Name);
      EXPECT_EQ(indice.Fields, QStringList{indice.Name});
      EXPECT_TRUE(indice.Primary && indice.Unique);
    }
    EXPECT_LE(tabla.Indexes.size(), 1U);
  }
  QFile esquema(QStringLiteral(LIBRANO_DATOS "/esquema.txt"));
  ASSERT_TRUE(esquema.open(QIODevice::ReadOnly));
  EXPECT_EQ(texto.split(u'\n'), QString::fromUtf8(esquema.readAll()).split(u'\n'));
}

TEST(CrearBase, LasConsultasQuedanPalabraPorPalabra) {
  Libros libros;
  const auto base = libros.abre();
  EXPECT_EQ(base->QueryDefs().join(u' '),
            QStringLiteral(
                "SqlDiarioBuscaDescuadres SqlDiarioPrincipal SqlDiarioSaldosCuentasMeses "
                "SqlSumaDiario SqlSumaDiarioPorAsientos SqlDiarioPrincipalBlanco SqlSumasSaldosN1 "
                "SqlSumasSaldosN2 SqlSumasSaldosN3 SqlSumasSaldosN4 SqlIva SqlAcumulados "
                "SqlSubcuentas con saldo SqlSubcuentasSaldosCuentas SqlDiarioSaldosCuentasTotal "
                "SqlPerdidasyGanancias SqlBalance Sql347 SqlRecibos SqlRegularizaStock"));
  for (const Consulta& consulta : consultasDeEmpresa())
    EXPECT_EQ(base->queryDef(QString::fromUtf8(consulta.nombre)).Sql,
              QString::fromUtf8(consulta.texto));
}

TEST(CrearBase, TodasLasConsultasAbrenSobreUnaEmpresaVacia) {
  Libros libros;
  const auto base = libros.abre();
  for (const QString& consulta : base->QueryDefs()) {
    const int error = numeroDeError([&] { base->OpenRecordset(consulta); });
    // One of them names columns that no query has.
    const int esperado = consulta == QLatin1String("SqlAcumulados") ? err::kNombreDesconocido : 0;
    EXPECT_EQ(error, esperado) << consulta.toStdString();
  }
  EXPECT_EQ(libros.filas(QStringLiteral("SqlSumaDiario")), QStringList{QStringLiteral("-|-")});
}

TEST(CrearBase, FilasDeUnaEmpresaNueva) {
  Libros libros;
  const struct {
    const char* tabla;
    int filas;
  } cuentas[] = {{"Empresa", 1}, {"Conceptos", 99}, {"TiposIVA", 99}, {"TipoRecibos", 198},
                 {"Nivel01", 7}, {"Nivel02", 64},   {"ActPas", 2},    {"Subcuentas", 7},
                 {"Cuentas", 0}, {"Diario", 0},     {"RSIVA", 0},     {"Recibos", 0}};
  for (const auto& caso : cuentas)
    EXPECT_EQ(libros.filas(QLatin1String(caso.tabla)).size(), caso.filas) << caso.tabla;

  EXPECT_EQ(libros.filas(QStringLiteral("Nivel01")).at(3),
            QStringLiteral("4|Acreedores y deudores por operaciones de tráfico|2"));
  EXPECT_EQ(libros.filas(QStringLiteral("Nivel02")).at(28), QStringLiteral("40|Proveedores|4"));
  const QStringList tipos = libros.filas(QStringLiteral("TiposIVA"));
  EXPECT_EQ(tipos.at(4), QStringLiteral("05|Super reducido C/R|4|0,5"));
  EXPECT_EQ(tipos.at(8), QStringLiteral("09|-|0|0"));
  EXPECT_EQ(libros.filas(QStringLiteral("Conceptos")).last(), QStringLiteral("99|-"));
  EXPECT_EQ(
      libros.filas(QStringLiteral("Select Subcuenta, Cuenta, Descripcion, Nif from Subcuentas")),
      (QStringList{QStringLiteral("47700001|477|Iva repercutido|-"),
                   QStringLiteral("47300001|473|R.E. en Iva repercutido|-"),
                   QStringLiteral("70000001|700|Ventas|-"),
                   QStringLiteral("47200001|472|Iva soportado|-"),
                   QStringLiteral("47500001|475|R.E. en Iva soportado|-"),
                   QStringLiteral("60000001|600|Compras|-"),
                   QStringLiteral("611|-|Regularización existencias|-")}));
}

TEST(CrearBase, LaBaseDeUnaReconstruccionSoloLlevaLosNiveles) {
  Libros libros;
  const QString ruta =
      libros.rutaEmpresa().replace(QStringLiteral("Conta"), QStringLiteral("Conta2"));
  CrearBase(libros.motor, ruta, 3, 8, 0);
  const auto base = libros.motor.Workspaces(0).OpenDatabase(ruta);
  const struct {
    const char* tabla;
    int filas;
  } cuentas[] = {{"Empresa", 0},      {"Conceptos", 0}, {"TiposIVA", 0}, {"Subcuentas", 0},
                 {"TipoRecibos", 99}, {"Nivel02", 64},  {"ActPas", 2}};
  for (const auto& caso : cuentas)
    EXPECT_EQ(base->OpenRecordset(QLatin1String(caso.tabla))->rowTotal(), caso.filas) << caso.tabla;
  EXPECT_EQ(numeroDeError([&] { CrearBase(libros.motor, ruta, 3, 8, 0); }), err::kBaseYaExiste);
}

TEST(CrearBase, UnValorMaloSePierdeSoloEl) {
  Libros libros;
  DatosEmpresa datos = Libros::datosPorDefecto(QStringLiteral("Otra"), 4, 9);
  datos.Nif = QStringLiteral("B12345678");
  datos.NoModificar = QStringLiteral("no es fecha");
  datos.CP = QStringLiteral("280011");
  datos.Poblacion = QStringLiteral("Alcalá");
  datos.Controlar = true;
  libros.creaEmpresa(datos);
  EXPECT_EQ(libros.filas(QStringLiteral("Select IdCodigo, NombreEmpresa, Año, CP, Poblacion, Nif, "
                                        "MayorN01, SubCuN01, NoModificar, Asiento, Controlar, "
                                        "NLinDiario, NLinIVAR from Empresa"),
                         QStringLiteral("Otra")),
            QStringList{QStringLiteral("1|Otra|2024|-|Alcalá|-|4|9|-|1|Verdadero|0|0")});
}

TEST(CreaEmpresa, LoHechoAntesDeUnFalloSeQueda) {
  Libros libros;
  const auto catalogo = [&] {
    const auto base =
        libros.motor.Workspaces(0).OpenDatabase(libros.dirDatos() + QStringLiteral("Inicio.mdb"));
    return base->OpenRecordset(QStringLiteral("Empresas"))->rowTotal();
  };
  DatosEmpresa datos = Libros::datosPorDefecto(QStringLiteral("tienda"), 3, 8);
  EXPECT_EQ(numeroDeError([&] { libros.creaEmpresa(datos); }), err::kClaveDuplicada);
  EXPECT_EQ(catalogo(), 1);

  // Two accounts with one code: the file stays as far as it was built.
  datos = Libros::datosPorDefecto(QStringLiteral("Repetida"), 3, 8);
  datos.IVARRE = datos.IVARSub;
  EXPECT_EQ(numeroDeError([&] { libros.creaEmpresa(datos); }), err::kClaveDuplicada);
  EXPECT_EQ(catalogo(), 2);
  EXPECT_EQ(libros.filas(QStringLiteral("TiposIVA"), QStringLiteral("Repetida")).size(), 99);
  EXPECT_FALSE(
      libros.abre(QStringLiteral("Repetida"))->TableDefs().contains(QStringLiteral("RSIVA")));

  datos = Libros::datosPorDefecto(QStringLiteral("no/cabe"), 3, 8);
  EXPECT_EQ(numeroDeError([&] { libros.creaEmpresa(datos); }), err::kRutaNoEncontrada);
  EXPECT_EQ(catalogo(), 3);
}

TEST(CalculaCuentas, CuentasDeCadaAnchura) {
  const CuentasIVA ocho = CalculaCuentas(3, 8);
  EXPECT_EQ(ocho.IVASSub + u' ' + ocho.IVASPro + u' ' + ocho.IVASCom + u' ' + ocho.IVASRE,
            QStringLiteral("47200001 400 60000001 47500001"));
  EXPECT_EQ(ocho.IVARSub + u' ' + ocho.IVARCli + u' ' + ocho.IVARVen + u' ' + ocho.IVARRE,
            QStringLiteral("47700001 430 70000001 47300001"));
  EXPECT_EQ(CalculaCuentas(3, 4).IVASSub, QStringLiteral("4721"));
  EXPECT_EQ(CalculaCuentas(5, 12).IVARCli, QStringLiteral("43000"));
  EXPECT_EQ(CalculaCuentas(5, 12).IVARVen, QStringLiteral("700000000001"));
  EXPECT_EQ(numeroDeError([] { CalculaCuentas(3, 3); }), err::kLlamadaNoValida);
}

TEST(SesionEmpresa, UnNuloDejaLoQueHabia) {
  Libros libros;
  const auto base = libros.abre();
  const auto empresa = base->OpenRecordset(QStringLiteral("Select * from Empresa"));
  empresa->Edit();
  empresa->Fields(QStringLiteral("Gerente")) = Variant();
  empresa->Fields(QStringLiteral("MesInicio")) = Variant();
  empresa->Fields(QStringLiteral("Telefono")) = "";
  empresa->Fields(QStringLiteral("NoModificar")) = "31/12/2024";
  empresa->Update();

  Sesion sesion;
  sesion.GerenteEmpresa = QStringLiteral("de antes");
  sesion.TelefonoEmpresa = QStringLiteral("de antes");
  sesion.MesInicio = 7;
  leeEmpresa(*empresa, sesion);
  EXPECT_EQ(sesion.EmpresaActual, QStringLiteral("Tienda"));
  EXPECT_EQ(sesion.AnoActual, 2024);
  EXPECT_EQ(sesion.FechaCreacionEmpresa, QDate(2024, 1, 2));
  EXPECT_EQ(sesion.GerenteEmpresa, QStringLiteral("de antes"));
  EXPECT_EQ(sesion.TelefonoEmpresa, QString());
  EXPECT_EQ(sesion.MesInicio, 7);
  EXPECT_EQ(sesion.DigitosSubcuenta, 8);
  EXPECT_EQ(sesion.CuentaIVA1 + sesion.CuentaIVA2 + sesion.CuentaIVA3 + sesion.CuentaIVA4,
            QStringLiteral("47200001477000014750000147300001"));
  EXPECT_EQ(sesion.MascaraImporte, QStringLiteral("#,##0.00 ;-#,##0.00"));
  EXPECT_EQ(sesion.FechaNoModificar, QStringLiteral("31/12/2024"));
  EXPECT_TRUE(empresaCerrada(sesion));

  empresa->Edit();
  empresa->Fields(QStringLiteral("NoModificar")) = Variant();
  empresa->Update();
  leeEmpresa(*empresa, sesion);
  EXPECT_EQ(sesion.FechaNoModificar, QString());
  EXPECT_FALSE(empresaCerrada(sesion));
}

TEST(CrearInicio, UnCatalogoQueEstabaNoSeToca) {
  Libros libros;
  const QString ruta = libros.dirDatos() + QStringLiteral("Inicio.mdb");
  EXPECT_EQ(numeroDeError([&] { CrearInicio(libros.motor, ruta); }), err::kBaseYaExiste);
  const auto base = libros.motor.Workspaces(0).OpenDatabase(ruta);
  const auto usuarios =
      base->OpenRecordset(QStringLiteral("Select * from Usuarios order by nombre"));
  EXPECT_EQ(usuarios->Fields(0).text(), QStringLiteral("Administrador"));
  EXPECT_TRUE(usuarios->Fields(1).isNull());
  EXPECT_EQ(base->OpenRecordset(QStringLiteral("Empresas"))->Fields(0).text(),
            QStringLiteral("Tienda"));
  usuarios->Edit();
  EXPECT_EQ(numeroDeError([&] { usuarios->Fields(1) = "123456789"; }), err::kTextoDemasiadoLargo);
}

}  // namespace
