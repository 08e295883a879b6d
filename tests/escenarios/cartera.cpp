// The cartera over the quarter's books, by keys: recibos typed, looked for, changed, posted,
// printed and deleted.

#include "escenarios/herramientas.h"

namespace {

class CarteraDeEfectos : public DiarioDelTrimestre {
 protected:
  CarteraDeEfectos() {
    cambia("Select * from TipoRecibos", "Tipo", "Letra");
    recibo("10/05/2024", "43000001", "57200001", 100, "A", "Letra 7");
    recibo("15/04/2024", "40000001", "57200002", 250.5, "C", "Pagaré");
    recibo("20/05/2024", "43000002", "57200001", 75, "A", kLargo);
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
  const QStringList todos = {"Pagaré", "Letra 7", kLargo};
  lista([&](Teclado& d) {
    EXPECT_EQ(titulos(d), todos);
    EXPECT_FALSE(d.visible("CmdLocalizarTodos"));
    const struct {
      const char *boton, *pregunta;
      std::optional<QString> respuesta;
      QStringList quedan;
    } filtros[] = {
        {"CmdVencimiento", "Introduzca la fecha a localizar", "10/05/2024", {"Letra 7", kLargo}},
        {"CmdCliPro",
         "Introduzca el cliente/proveedor a localizar",
         "*s*",
         {"Letra 7", kLargo, "Pagaré"}},
        {"CmdTitulo", "Introduzca el Título a localizar", "letra*", {"Letra 7", kLargo}},
        {"CmdFactura", "Introduzca la factura a localizar", {}, {}},
        {"CmdTipo", "Introduzca el Tipo a localizar", "Letra", todos},
        {"CmdCajaBanco", "Introduzca el Caja/Banco a localizar", "57200002", {"Pagaré"}},
        {"CmdImporte", "Introduzca el Importe a localizar", "100", {"Letra 7", "Pagaré"}},
        {"CmdCA", "Introduzca el C ó A a localizar", "C", {"Pagaré"}},
    };
    for (const auto& filtro : filtros) {
      guion.esperaEntrada(filtro.pregunta, filtro.respuesta);
      d.pulsa(filtro.boton);
      QStringList quedan = titulos(d), esperan = filtro.quedan;
      for (QStringList* lista : {&quedan, &esperan}) lista->sort();
      EXPECT_EQ(quedan, esperan) << filtro.boton;
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
    // A quote breaks the statement, and what is no number the comparison: the list stays.
    const auto rota = [&](const char* boton, const char* pregunta, const char* texto, int error) {
      guion.esperaEntrada(pregunta, texto);
      guion.esperaMensaje(
          errorEnCaja(error, boton == QString("CmdImporte") ? "ciento" : "' order by Titulo"),
          "Librano");
      d.pulsa(boton);
      EXPECT_EQ(titulos(d), (QStringList{"Letra 7", kLargo}));
    };
    rota("CmdTitulo", "Introduzca el Título a localizar", "O'Donnell", 3075);
    rota("CmdImporte", "Introduzca el Importe a localizar", "ciento", 3061);
    // A row deleted leaves the filter as it was.
    guion.esperaPregunta("Desea eliminar el recibo seleccionado", true, "Elimina");
    d.pulsa("CmdElimina");
    EXPECT_EQ(titulos(d), QStringList(kLargo));
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
      EXPECT_EQ(r.textosDe({"LblSubcuenta", "TxtCA", "TxtTitulo"}),
                (QStringList{"Papelera del Norte, S.A.", "C", "Letra De su Fra.A-9"}));
      rellena(r, {{"TxtContrapartida", "572.1"}, {"TxtCA", "x"}, {"TxtImporte", "1234.5"}});
      EXPECT_EQ(r.textoDe("TxtCA"), "C");
      acepta(r);
    });
    d.tecla(Qt::Key_Plus);
    EXPECT_EQ(titulos(d), (QStringList{"Pagaré", "Letra De su Fra.A-9", "Letra 7", kLargo}));
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
      guion.esperaMensaje(errorEnCaja(3421, "--20,00") +
                              " El recibo no está entero en el diario: revise el asiento "
                              "121.",
                          "Librano");
      acepta(r);
      EXPECT_EQ(r.textoDe("TxtImporte"), "-20,00");
      r.escape();
    });
    d.pulsa("CmdContabiliza");
    anota(121, "30/04/2024", "Letra De su Fra.A-9", {{"57200001", -20}}, true);
    EXPECT_EQ(lee(), libro);
    guion.esperaDialogo("FrmRecibos", [&](Teclado& r) { acepta(r); });
    d.control<Rejilla>("Grid").mover(Rejilla::Primera);
    d.pulsa("CmdContabiliza");
    EXPECT_EQ(titulos(d), (QStringList{"Letra De su Fra.A-9", "Letra 7", kLargo}));
    d.escape();
  });
  anota(121, "15/04/2024", "Pagaré", {{"40000001", 250.5}, {"57200002", -250.5}});
  EXPECT_EQ(lee(), libro);
  EXPECT_EQ(t->textoDe("TxtTotalDescuadre"), "-20,00");
  EXPECT_EQ(filas("Select Asiento, NLinDiario from Empresa")[0], QStringList({"122", "315"}));
  EXPECT_EQ(filas("Select FacturaZuri, TipoFactura from Diario where NLinea=314")[0],
            QStringList({"Z1", "C"}));
}

// What is edited in the grid of kinds is what the combo offers; the rows without a text aren't.
TEST_F(CarteraDeEfectos, LosTiposSeEscribenYSeEligen) {
  lista([&](Teclado& d) {
    EXPECT_FALSE(d.control<Rejilla>("Grid").horizontalScrollBar()->isVisible());
    guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
      const auto& tipo = r.control<QComboBox>("TxtTipo");
      EXPECT_EQ(tipo.count(), 1);
      guion.esperaDialogo("FrmRecibosTipos", [](Teclado& tipos) {
        EXPECT_EQ(tipos.forma().windowTitle(), "Tipos de recibo");
        auto& grid = tipos.control<Rejilla>("DBGrid1");
        EXPECT_EQ(grid.filas(), 198);
        tipos.enfoca("DBGrid1");
        for (const Qt::Key tecla : {Qt::Key_Down, Qt::Key_Right, Qt::Key_F2}) tipos.tecla(tecla);
        tipos.teclea("Pagaré");
        tipos.tecla(Qt::Key_Down);
        EXPECT_EQ(grid.texto(1, 1), "Pagaré");
        tipos.escape();
      });
      r.pulsa("CmdTipos");
      ASSERT_EQ(tipo.count(), 2);
      r.enfoca("TxtFactura");
      r.intro();
      EXPECT_EQ(r.enfocado(), "TxtTipo");
      r.tecla(Qt::Key_Down);
      r.tecla(Qt::Key_Down);
      EXPECT_EQ(r.textoDe("TxtTipo"), "Pagaré");
      r.intro();
      EXPECT_EQ(r.textoDe("TxtTitulo"), "Pagaré");
      // Left by the mouse, a code that isn't there asks nothing.
      r.enfoca("TxtCuenta");
      r.teclea("43000099");
      r.pulsa("CmdCancelar");
    });
    d.pulsa("CmdAltas");
    d.escape();
  });
  EXPECT_EQ(filas("Recibos").size(), 3u);
}

TEST_F(CarteraDeEfectos, LoQueOtroPuestoSeLlevaSeDice) {
  const QString eliminado = errorEnCaja(3167);
  const auto ejecuta = [&](const QString& sql) {
    OtroPuesto(rutaSistema(ctx.sesion.rutaEmpresa())).ejecuta(sql);
  };
  lista([&](Teclado& d) {
    QStringList quedan = titulos(d);
    for (const char* boton : {"CmdModifica", "CmdContabiliza"}) {
      guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
        ejecuta("DELETE FROM Recibos WHERE Titulo='" + quedan.takeFirst() + "';");
        guion.esperaMensaje(eliminado, "Librano");
        acepta(r);
        EXPECT_FALSE(r.textoDe("TxtTitulo").isEmpty());
        r.escape();
      });
      d.control<Rejilla>("Grid").mover(Rejilla::Primera);
      d.pulsa(boton);
      EXPECT_EQ(titulos(d), quedan) << boton;
    }
    // Asked about one recibo, no other is deleted in its place.
    guion.esperaPregunta("Desea eliminar el recibo seleccionado", true, "Elimina",
                         [&] { ejecuta("UPDATE Recibos SET Importe=76;"); });
    guion.esperaMensaje(eliminado, "Librano");
    d.pulsa("CmdElimina");
    EXPECT_EQ(d.control<Rejilla>("Grid").texto(0, 6), "76,00 ");
    d.escape();
  });
  comprueba();
}

TEST_F(CarteraDeEfectos, UnaAceptacionQueFallaSePuedeRepetir) {
  lista([&](Teclado& d) {
    guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
      rellena(r, {{"TxtImporte", "99"}});
      fallaAlAceptar(r, "TxtImporte", "99");
      acepta(r);
    });
    d.pulsa("CmdModifica");
    EXPECT_EQ(d.control<Rejilla>("Grid").texto(0, 6), "99,00 ");
    guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
      fallaAlAceptar(r, "TxtTitulo", "Pagaré");
      acepta(r);
    });
    d.pulsa("CmdContabiliza");
    EXPECT_EQ(titulos(d), (QStringList{"Letra 7", kLargo}));
    // A title that no line of the journal can hold: nothing is written, and it may be cut.
    guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
      guion.esperaMensaje(errorEnCaja(3163, kLargo), "Librano");
      acepta(r);
      EXPECT_EQ(lee().size(), 314u);
      EXPECT_EQ(valor("Select Asiento from Empresa"), "122");
      r.escape();
    });
    d.control<Rejilla>("Grid").mover(Rejilla::Ultima);
    d.pulsa("CmdContabiliza");
    // Under a mask whose letters no number has, what is shown goes back as it came.
    const QScopedValueRollback<QString> mascara(ctx.sesion.MascaraImporte, "#,##0.00 \"Drs\"");
    for (const auto& [visto, escrito, importe] :
         {std::tuple("75,00 Drs", "", "75"), {"75,00 Drs", "1234.5", "1234,5"}}) {
      guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
        EXPECT_EQ(r.textoDe("TxtImporte"), visto);
        if (*escrito) rellena(r, {{"TxtImporte", escrito}});
        acepta(r);
      });
      d.pulsa("CmdModifica");
      EXPECT_EQ(valor("Select Importe from Recibos where CA='A' and Factura='F-1' and Subcuenta="
                      "'43000002'"),
                importe);
    }
    d.escape();
  });
  anota(121, "15/04/2024", "Pagaré", {{"40000001", 99}, {"57200002", -99}});
  comprueba();
}

}  // namespace
