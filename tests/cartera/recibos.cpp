// How a recibo, which has no key, is found among the others.
#include "cartera/recibos.h"

#include "soporte/libros.h"

namespace {

class Cartera : public testing::Test, protected Libros {
 protected:
  Cartera() {
    recibos.setDatabaseName(rutaEmpresa());
    altaRecibo(recibos, kRecibo);
  }
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
};

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
  EXPECT_ERROR(3167, situaEn(recibos, escrito));
  EXPECT_EQ(filas("Select Importe from Recibos order by Importe"), QStringList({"0,3", "7"}));
}

}  // namespace
