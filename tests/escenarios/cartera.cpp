// The cartera over the quarter's books, by keys: recibos typed, looked for, changed, posted,
// printed and deleted.
#include "escenarios/herramientas.h"
#include "soporte/libroimpreso.h"

namespace {

using Campos = std::vector<std::pair<const char*, QString>>;

class CarteraDeEfectos : public DiarioDelTrimestre {
 protected:
  CarteraDeEfectos() {
    ponPlantillas(ctx);
    cambia("Select * from TipoRecibos", "Tipo", "Letra");
    recibo("10/05/2024", "43000001", "57200001", 100, "A", "Letra 7");
    recibo("15/04/2024", "40000001", "57200002", 250.5, "C", "Pagaré");
    recibo("20/05/2024", "43000002", "57200001", 75, "A", "Letra 8");
  }
  void recibo(const QString& vence, const QString& subcuenta, const QString& banco, double importe,
              const QString& ca, const QString& titulo) {
    inserta("Recibos", {{"Vencimiento", vence},
                        {"Subcuenta", subcuenta},
                        {"Titulo", titulo},
                        {"Factura", "F-1"},
                        {"Tipo", "Letra"},
                        {"Banco", banco},
                        {"Importe", importe},
                        {"CA", ca},
                        {"FraZuri", "Z1"}});
  }
  void lista(std::function<void(Teclado&)> paso) {
    guion.esperaDialogo("FrmRecibosLista", std::move(paso));
    t->pulsa("CmdRecibo");
  }
  static QStringList titulos(Teclado& d) {
    QStringList todos;
    auto& grid = d.control<Rejilla>("Grid").alDia();
    for (int fila = 0; fila < grid.filas(); ++fila) todos << grid.texto(fila, 2);
    return todos;
  }
};

TEST_F(CarteraDeEfectos, CadaFiltroYTodos) {
  const QStringList todos = {"Pagaré", "Letra 7", "Letra 8"};
  lista([&](Teclado& d) {
    EXPECT_EQ(titulos(d), todos);
    EXPECT_FALSE(d.visible("CmdLocalizarTodos"));
    const struct {
      const char* boton;
      const char* pregunta;
      std::optional<QString> respuesta;
      QStringList quedan;
    } filtros[] = {
        {"CmdVencimiento", "Introduzca la fecha a localizar", "10/05/2024", {"Letra 7", "Letra 8"}},
        {"CmdCliPro",
         "Introduzca el cliente/proveedor a localizar",
         "*s*",
         {"Letra 7", "Letra 8", "Pagaré"}},
        {"CmdTitulo", "Introduzca el Título a localizar", "letra*", {"Letra 7", "Letra 8"}},
        {"CmdFactura", "Introduzca la factura a localizar", {}, {}},
        {"CmdTipo", "Introduzca el Tipo a localizar", "Letra", todos},
        {"CmdCajaBanco", "Introduzca el Caja/Banco a localizar", "57200002", {"Pagaré"}},
        {"CmdImporte", "Introduzca el Importe a localizar", "100", {"Letra 7", "Pagaré"}},
        {"CmdCA", "Introduzca el C ó A a localizar", "C", {"Pagaré"}},
    };
    for (const auto& filtro : filtros) {
      guion.esperaEntrada(filtro.pregunta, filtro.respuesta);
      d.pulsa(filtro.boton);
      const QStringList quedan = titulos(d);
      EXPECT_EQ(QSet<QString>(quedan.begin(), quedan.end()),
                QSet<QString>(filtro.quedan.begin(), filtro.quedan.end()))
          << filtro.boton;
      d.pulsa("CmdLocalizarTodos");
      EXPECT_FALSE(d.visible("CmdLocalizarTodos"));
      EXPECT_EQ(titulos(d), todos);
    }
    // What is no date leaves the list alone.
    guion.esperaEntrada("Introduzca la fecha a localizar", "ayer");
    d.pulsa("CmdVencimiento");
    EXPECT_FALSE(d.visible("CmdLocalizarTodos"));
    guion.esperaEntrada("Introduzca el Título a localizar", "Letra*");
    d.pulsa("CmdTitulo");
    // A row deleted leaves the filter as it was.
    guion.esperaPregunta("Desea eliminar el recibo seleccionado", true, "Elimina");
    d.pulsa("CmdElimina");
    EXPECT_EQ(titulos(d), QStringList("Letra 8"));
    guion.esperaEntrada("Introduzca el C ó A a localizar", "Z");
    d.pulsa("CmdCA");
    for (const char* boton : {"CmdModifica", "CmdContabiliza", "CmdElimina"}) {
      guion.esperaMensaje("No hay ningun registro seleccionado", "Error");
      d.pulsa(boton);
    }
    d.escape();
  });
  EXPECT_EQ(filas("Recibos").size(), 2u);
}

TEST_F(CarteraDeEfectos, UnReciboDesdeElAltaHastaElDiario) {
  lista([&](Teclado& d) {
    guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
      EXPECT_EQ(r.forma().windowTitle(), "Recibos");
      guion.esperaMensaje("No ha rellenado todos los campos", "Error");
      r.pulsa("CmdAceptar");
      rellena(r, {{"TxtFechaVencimiento", "3004"},
                  {"TxtCuenta", "40.3"},
                  {"TxtFactura", "A-9"},
                  {"TxtTipo", "Letra"}});
      r.intro();
      EXPECT_EQ(r.textoDe("LblSubcuenta"), "Papelera del Norte, S.A.");
      EXPECT_EQ(r.textoDe("TxtCA"), "C");
      EXPECT_EQ(r.textoDe("TxtTitulo"), "Letra De su Fra.A-9");
      rellena(r, {{"TxtContrapartida", "572.1"}, {"TxtCA", "x"}, {"TxtImporte", "1234.5"}});
      EXPECT_EQ(r.textoDe("TxtCA"), "C");
      acepta(r);
    });
    d.tecla(Qt::Key_Plus);
    EXPECT_EQ(titulos(d), (QStringList{"Pagaré", "Letra De su Fra.A-9", "Letra 7", "Letra 8"}));
    EXPECT_EQ(d.control<Rejilla>("Grid").filaActual(), 1);
    // Changed, its side is derived anew.
    guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
      EXPECT_EQ(r.textoDe("TxtImporte"), "1.234,50 ");
      rellena(r, {{"TxtCuenta", "41000001"}, {"TxtImporte", "-20"}});
      EXPECT_EQ(r.textoDe("TxtCA"), "A");
      acepta(r);
    });
    d.tecla(Qt::Key_Return);
    // A negative one fails at its second line: the first stays, and so does the dialog.
    guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
      EXPECT_EQ(r.forma().windowTitle(), "Contabiliza recibo en diario");
      guion.esperaMensaje("Error 3421: " + descripcionDeError(3421) +
                              ": --20,00 El recibo no está entero en el diario: revise el asiento "
                              "121.",
                          "Librano");
      acepta(r);
      EXPECT_EQ(r.textoDe("TxtImporte"), "-20,00");
      r.escape();
    });
    d.pulsa("CmdContabiliza");
    libro[312] = {121, "30/04/2024", "57200001", "Letra De su Fra.A-9", -20, true};
    EXPECT_EQ(lee(), libro);
    guion.esperaDialogo("FrmRecibos", [&](Teclado& r) { acepta(r); });
    d.control<Rejilla>("Grid").mover(Rejilla::Primera);
    d.pulsa("CmdContabiliza");
    EXPECT_EQ(titulos(d), (QStringList{"Letra De su Fra.A-9", "Letra 7", "Letra 8"}));
    d.escape();
  });
  libro[313] = {121, "15/04/2024", "40000001", "Pagaré", 250.5};
  libro[314] = {121, "15/04/2024", "57200002", "Pagaré", -250.5};
  EXPECT_EQ(lee(), libro);
  EXPECT_EQ(t->textoDe("TxtTotalDescuadre"), "-20,00");
  EXPECT_EQ(filas("Select Asiento, NLinDiario from Empresa")[0], QStringList({"122", "315"}));
  EXPECT_EQ(filas("Select FacturaZuri, TipoFactura from Diario where NLinea=314")[0],
            QStringList({"Z1", "C"}));
}

TEST_F(CarteraDeEfectos, ElListadoPorMeses) {
  lista([&](Teclado& d) {
    guion.esperaDialogo("FrmRecibosImpresos", [&](Teclado& i) {
      EXPECT_EQ(i.textoDe("TxtDesde"), "01/01/2024");
      rellena(i, {{"TxtHasta", "150524"}});
      i.pulsa("CmdAceptar");
      const LibroImpreso libro = leeVista(guion);
      EXPECT_EQ(libro.titulo, "Listado de diario");
      activar(i.forma());
      const auto hay = [&](const QString& comienzo) { return libro.linea(comienzo); };
      EXPECT_EQ(hay("Desde"), "Desde : 01/01/2024 ~ Hasta : 15/05/2024");
      EXPECT_EQ(hay("15/04"), "15/04/2024 Suministros Ebro, S.L. Pagaré F-1 Caja Rural c/c 250,50");
      EXPECT_EQ(hay("Total mes 4"), "Total mes 4/2024 250,50 0,00");
      EXPECT_EQ(hay("Total mes 5"), "Total mes 5/2024 0,00 100,00");
      EXPECT_EQ(hay("Total recibos"), "Total recibos 250,50 100,00");
      EXPECT_EQ(hay("20/05"), QString());
      i.escape();
    });
    d.pulsa("CmdImpresos");
    d.escape();
  });
}

}  // namespace
