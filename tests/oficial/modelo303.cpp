// The 303 of made-up registers: what each row makes, the result, what is carried, the file.
#include "oficial/modelo303.h"

#include "oficial/librosregistro.h"
#include "soporte/libros.h"

namespace {

class Modelo303 : public testing::Test, protected Libros {
 protected:
  Modelo303() {
    tercero("43000001", "Cliente", "A28123453", "");
    tercero("43000002", "Sin número", "", "");
    tercero("43000003", "Kunde", "DE123456789", "Alemania");
    tercero("43000004", "Customer", "99-1234567", "Estados Unidos");
    tercero("40000001", "Proveedor", "B46554432", "");
  }
  void tercero(const QString& codigo, const QString& nombre, const QString& nif,
               const QString& pais) {
    inserta("Subcuentas", subcuentaDe(codigo, nombre, {{"Nif", nif}, {"Pais", pais}}));
  }
  // A row as its screen stores it: those of sales with their sign turned.
  QString factura(QChar libro, const QString& quien, QDate dia, double base, double tipo,
                  double recargo = 0, const QString& contra = {}) {
    const QString codigo = libro + QString::number(++ultima).rightJustified(10, '0');
    const int signo = libro == 'R' ? -1 : 1;
    const double iva = base * tipo / 100, re = base * recargo / 100;
    inserta("RSIVA", {{"Codigo", codigo},
                      {"CliPro", quien},
                      {"Factura", "F" + QString::number(ultima)},
                      {"Base", signo * base},
                      {"IVA", signo * iva},
                      {"Recargo", signo * re},
                      {"PorcenIVA", tipo},
                      {"PorcenREC", recargo},
                      {"Neto", signo * (base + iva + re)},
                      {"TipoIVA", "03"},
                      {"Asiento", ultima},
                      {"CtaIVA", libro == 'R' ? "47700000" : "47200000"},
                      {"CtaRE", libro == 'R' ? "47700000" : "47200000"},
                      {"CtaCon", contra.isEmpty() ? "70000000" : contra},
                      {"FechaC", dia},
                      {"Fecha", dia}});
    return codigo;
  }
  // An acquisition: two rows of the same asiento without base nor third party.
  QString adquisicion(QDate dia, double cuota) {
    const QString codigo = factura('S', "47200000", dia, 0, 21, 0, "47700000");
    factura('R', "47700000", dia, 0, 21, 0, "47200000");
    for (const auto& [libro, importe] : {std::pair('S', cuota), {'R', -cuota}})
      cambia(QString("Select * from RSIVA where IVA=0 and CliPro=CtaIVA and Codigo Like '%1*'")
                 .arg(libro),
             "IVA", importe);
    return codigo;
  }
  void escribe(const QString& codigo, const QString& campo, const QString& valor) {
    for (LineaRegistro& l : leeRegistros(*empresa, {}))
      if (l.codigo == codigo) escribeDato(*empresa, l, campo, valor);
  }
  // The casillas with something, as "07=100000 09=21000".
  static QString importes(const Hoja303& hoja) {
    QStringList lista;
    for (const Casilla303& c : hoja.casillas())
      if (!c.porcentaje && hoja.valor(c.numero) != 0)
        lista += c.numero + '=' + QString::number(hoja.valor(c.numero));
    return lista.join(' ');
  }

  std::unique_ptr<Database> empresa = abre();
  int ultima = 0;
};

TEST_F(Modelo303, CadaFilaVaASuCasilla) {
  const QDate dia(2024, 2, 10);
  for (const QStringList& f : leeCsv("filas303.csv")) {
    SCOPED_TRACE(f.join(';').toStdString());
    const QString codigo = f[0] == "A"
                               ? adquisicion(dia, f[3].toDouble())
                               : factura(f[0] == "V" ? 'R' : 'S', f[1], dia, f[2].toDouble(),
                                         f[3].toDouble(), f[4].toDouble(), f[5]);
    if (!f[6].isEmpty()) escribe(codigo, f[6].section('=', 0, 0), f[6].section('=', 1));
    EXPECT_EQ(importes(Hoja303(*empresa, {2024, "1T"})), f[7]);
    const auto filas = empresa->OpenRecordset("RSIVA");
    for (; !filas->Eof(); filas->MoveNext()) filas->Delete();
  }
}

TEST_F(Modelo303, LoEscritoCuentaYLoNegativoPasaAlSiguiente) {
  factura('R', "43000001", QDate(2024, 2, 10), 1000, 21);
  factura('S', "40000001", QDate(2024, 2, 11), 2000, 21, 0, "60000000");
  factura('R', "43000001", QDate(2024, 5, 10), 500, 21);
  Hoja303 primero(*empresa, {2024, "1T"});
  EXPECT_EQ(primero.resultado(), -21000);
  EXPECT_EQ(primero.tipoPropuesto(false), "C");
  // Computed casillas can't be typed, nor those without sign below zero.
  EXPECT_ERROR(err::kLlamadaNoValida, primero.escribe(*empresa, "27", 1));
  EXPECT_ERROR(err::kLlamadaNoValida, primero.escribe(*empresa, "110", -1));
  primero.escribe(*empresa, "43", -1000);
  primero.escribe(*empresa, "29", 40000);
  EXPECT_EQ(Hoja303(*empresa, {2024, "1T"}).resultado(), 21000 - 40000 + 1000);
  primero.escribe(*empresa, "29", std::nullopt);
  EXPECT_EQ(Hoja303(*empresa, {2024, "1T"}).resultado(), -20000);
  // Until it is filed nothing is carried.
  EXPECT_EQ(Hoja303(*empresa, {2024, "2T"}).valor("110"), 0);
  primero.presenta(*empresa, "C");
  Hoja303 segundo(*empresa, {2024, "2T"});
  EXPECT_EQ(importes(segundo),
            "07=50000 09=10500 27=10500 46=10500 64=10500 66=10500 110=20000 78=10500 87=9500");
  EXPECT_EQ(segundo.tipoPropuesto(false), "N");
  segundo.presenta(*empresa, "N");
  segundo.presenta(*empresa, "N");
  EXPECT_EQ(Hoja303(*empresa, {2024, "3T"}).valor("110"), 9500);
  primero.presenta(*empresa, "D");
  EXPECT_EQ(Hoja303(*empresa, {2024, "2T"}).valor("110"), 0);
}

TEST_F(Modelo303, LosDatosEscritosSiguenASuFacturaAlRenumerar) {
  const QString codigo = factura('S', "40000001", QDate(2024, 2, 11), 2000, 21, 0, "60000000");
  const QString otro = factura('S', "40000001", QDate(2024, 2, 12), 100, 21, 0, "60000000");
  escribe(codigo, "BienInversion", "S");
  EXPECT_ERROR(err::kConversionDeDatos, escribe(codigo, "TipoFactura", "DV"));
  EXPECT_ERROR(err::kConversionDeDatos, escribe(codigo, "Exenta", "E1"));
  // The two change their codes; a third loses its invoice.
  for (const auto& [antes, despues] :
       {std::pair{codigo, QString("S9")}, {otro, codigo}, {QString("S9"), otro}}) {
    cambia("Select * from RSIVA where Codigo='" + antes + "'", "Codigo", despues);
  }
  int perdidos = -1;
  for (const LineaRegistro& l : leeRegistros(*empresa, {}, &perdidos))
    EXPECT_EQ(l.bienInversion, l.codigo == otro) << l.codigo.toStdString();
  EXPECT_EQ(perdidos, 0);
  // What is typed now for the one that took its code touches nothing of it.
  escribe(codigo, "Retencion", "S");
  for (const LineaRegistro& l : leeRegistros(*empresa, {}))
    EXPECT_EQ(l.bienInversion, l.codigo == otro) << l.codigo.toStdString();
  escribe(otro, "BienInversion", "");
  for (const LineaRegistro& l : leeRegistros(*empresa, {})) EXPECT_FALSE(l.bienInversion);
}

TEST_F(Modelo303, ElFicheroLlevaCadaImporteEnSuSitio) {
  factura('R', "43000001", QDate(2024, 11, 10), 1000, 7.5);
  factura('R', "43000001", QDate(2024, 11, 11), -200.5, 21);
  factura('R', "43000001", QDate(2024, 11, 12), 100, 4, 0.5);
  const ValoresFijos datos = {{"NIF", "B46554432"},
                              {"Apellidos y nombre o razón social", "Tienda, S.L."},
                              {"Tipo de declaración", "I"}};
  for (const QStringList& f : leeCsv("trozos303.csv")) {
    SCOPED_TRACE(f.join(';').toStdString());
    const QByteArray hecho =
        fichero303(Hoja303(*empresa, {f[1].toInt(), f[0]}), datos, f[2] == "1");
    ASSERT_EQ(hecho.size(), f[3].toInt());
    const QByteArray marca = ("T3030" + f[1] + f[0] + "0000>").toLatin1();
    EXPECT_TRUE(hecho.startsWith('<' + marca + "<AUX>"));
    EXPECT_TRUE(hecho.endsWith("</T303DID00></" + marca));
    EXPECT_EQ(hecho.mid(328 + f[4].toInt() - 1, f[5].size()), f[5].toLatin1());
  }
  EXPECT_ERROR(err::kLlamadaNoValida, fichero303(Hoja303(*empresa, {2023, "1T"}), datos, false));
}

// A place that can't be written is told, and nothing half written stays.
TEST_F(Modelo303, LosFicherosSeEscribenEnterosONoSeEscriben) {
  factura('R', "43000001", QDate(2024, 2, 10), 1000, 21);
  const QTemporaryDir carpeta;
  const QString ocupado = carpeta.path() + "/ocupado";
  ASSERT_TRUE(QDir(carpeta.path()).mkdir("ocupado"));
  const LibrosRegistro registro(*empresa, 2024, "1T");
  const Declarante declarante(*empresa);
  for (const QString& ruta : {ocupado, carpeta.path() + "/no/esta"}) {
    EXPECT_ERROR(err::kErrorDeRuta, escribeFichero(ruta, "x"));
    EXPECT_ERROR(err::kErrorDeRuta, registro.escribe(ruta, declarante, LibrosDe::Iva));
  }
  EXPECT_EQ(QDir(carpeta.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
            QStringList("ocupado"));
}

}  // namespace
