// What a recibo writes, in the cartera and when it is posted.
#include "cartera/recibos.h"

#include <gtest/gtest.h>

#include "engine/datacontrol.h"
#include "journal/apunte.h"
#include "soporte/errores.h"
#include "soporte/libros.h"
#include "soporte/textos.h"

namespace {

class Cartera : public testing::Test, protected Libros {
 protected:
  Cartera() {
    recibos.setDatabaseName(rutaEmpresa());
    diario.bind(rutaEmpresa(), "Select * from SqlDiarioPrincipalBlanco order by nasiento");
    empresa.bind(rutaEmpresa(), "Select * from Empresa");
    altaRecibo(recibos, kRecibo);
  }
  AsientoGrabado contabiliza(const QString& titulo, const QString& CA, const QString& importe) {
    recibos.setRecordSource("Recibos");
    recibos.Refresh();
    recibos.Edit();
    recibos.Fields("FraZuri") = "Z-9";
    recibos.Update();
    AsientoGrabado grabado;
    contabilizaRecibo({.Vencimiento = "15/06/2024",
                       .Subcuenta = "40000001",
                       .Titulo = titulo,
                       .Banco = "57200001",
                       .CA = CA,
                       .Importe = importe},
                      "#,##0.00 ;-#,##0.00", {recibos, diario, empresa}, grabado);
    return grabado;
  }
  QString contadores() { return filas("Select Asiento, NLinDiario from Empresa").first(); }

  const Recibo kRecibo = {.Vencimiento = "15/06/2024",
                          .Subcuenta = "40000001",
                          .Titulo = QString(100, 't'),
                          .Factura = "F'1\"",
                          .Tipo = "Letra",
                          .Banco = "57200001",
                          .CA = "C",
                          .Importe = 0.1 + 0.2,
                          .FraZuri = {}};
  DataControl recibos{motor};
  DataControl diario{motor};
  DataControl empresa{motor};
};

TEST_F(Cartera, CadaLadoConSusDosLineas) {
  const struct {
    const char* CA;
    const char* importe;
    QStringList lineas;
  } casos[] = {
      {"C",
       "1.234,50 ",
       {"1|15/06/2024|40000001|D|1234,5|Letra|Z-9|C|-|-",
        "1|15/06/2024|57200001|H|-1234,5|Letra|Z-9|C|-|-"}},
      {"A",
       "5",
       {"2|15/06/2024|57200001|D|5|Letra|Z-9|A|-|-", "2|15/06/2024|40000001|H|-5|Letra|Z-9|A|-|-"}},
      {"x",
       "0",
       {"3|15/06/2024|57200001|D|0|Letra|Z-9|x|-|-", "3|15/06/2024|40000001|H|0|Letra|Z-9|x|-|-"}},
  };
  int asiento = 1;
  for (const auto& caso : casos) {
    contabiliza("Letra", caso.CA, caso.importe);
    EXPECT_EQ(filas("Select NAsiento, Fecha, Subcuenta, DH, Importe, Descripcion, FacturaZuri, "
                    "TipoFactura, ApunteIVA, ApunteCartera from Diario where NAsiento=" +
                    QString::number(asiento) + " order by NLinea"),
              caso.lineas);
    EXPECT_EQ(contadores(), QString("%1|%2").arg(asiento + 1).arg(asiento * 2));
    EXPECT_TRUE(filas("Recibos").isEmpty());
    altaRecibo(recibos, kRecibo);
    ++asiento;
  }
}

TEST_F(Cartera, UnFalloDejaLoAnteriorYElRecibo) {
  const struct {
    QString titulo;
    const char* importe;
    int error;
    int lineas;
  } casos[] = {
      {QString(51, 'x'), "5", 3163, 0}, {"Letra", "", 3421, 0}, {"Letra", "-5,00", 3421, 1}};
  for (const auto& caso : casos) {
    EXPECT_EQ(numeroDeError([&] { contabiliza(caso.titulo, "C", caso.importe); }), caso.error);
    EXPECT_EQ(filas("Diario").size(), caso.lineas);
    EXPECT_EQ(contadores(), QString("1|%1").arg(caso.lineas));
    EXPECT_EQ(filas("Recibos").size(), 1);
  }
}

// Of equal recibos one is as good as the other; one that differs in anything isn't touched.
TEST_F(Cartera, ElReciboSeEncuentraPorTodosSusCampos) {
  altaRecibo(recibos, kRecibo);
  recibos.MoveLast();
  const Recibo escrito = leeRecibo(recibos.Recordset());
  Recibo otro = kRecibo;
  otro.Importe = 0.3;  // not 0,1 + 0,2
  altaRecibo(recibos, otro);

  situaEn(recibos, escrito);
  otro.Importe = 7;
  cambiaRecibo(recibos, otro);
  situaEn(recibos, escrito);
  recibos.Delete();
  EXPECT_EQ(numeroDeError([&] { situaEn(recibos, escrito); }), 3167);
  EXPECT_EQ(filas("Select Importe from Recibos order by Importe"), QStringList({"0,3", "7"}));
}

}  // namespace
