// The journal on show: moving in it, and acting on the line it stands on by the mouse.

#include "journal/menuabierto.h"

namespace {

class FrmMenuDiario : public MenuAbierto {
 protected:
  FrmMenuDiario() {
    registraJournal(*formularios);
    abreMenu();
  }
  void tecleaTres() {
    linea("57000001", "100", {}, "02/01/2003");
    linea("43000001", {}, "100");
    linea("57000001", "30", {}, "02/01/2003");
  }
  const Rejilla& rejilla() const { return t->control<Rejilla>("GrdApuntes"); }
};

TEST_F(FrmMenuDiario, SeMueveConSusBotonesYMarcaElAsientoEnQueEsta) {
  const std::tuple<const char*, int, const char*> pasos[] = {
      {"CmdPrimero", 0, "100,00 "}, {"CmdAnterior", 0, "100,00 "}, {"CmdSiguiente", 1, "100,00 "},
      {"CmdUltimo", 2, "30,00 "},   {"CmdSiguiente", 2, "30,00 "}, {"CmdAnterior", 1, "100,00 "}};
  for (const auto& [boton, fila, debe] : pasos) t->pulsa(boton);  // there is nowhere to go yet
  guion.esperaMensaje("Debe seleccionar un apunte de la lista de apuntes", "Error");
  t->pulsa("CmdModificaApunte");
  EXPECT_EQ(t->enfocado(), "GrdApuntes");
  t->tecla(Qt::Key_F5);
  tecleaTres();
  for (const auto& [boton, fila, debe] : pasos) {
    t->pulsa(boton);
    EXPECT_EQ(rejilla().filaActual(), fila) << boton;
    EXPECT_EQ(totales("Marcado").constFirst(), debe) << boton;
  }
  EXPECT_EQ(rejilla().texto(1, 5), "");
  EXPECT_EQ(rejilla().texto(1, 6), "-100,00");
}

TEST_F(FrmMenuDiario, ActuaConElBotonDerechoYConLoQueSeSueltaEnSusBotones) {
  tecleaTres();
  auto& lienzo = *rejilla().viewport();
  const QPoint sitio(20, 20);
  QContextMenuEvent derecho(QContextMenuEvent::Mouse, sitio, lienzo.mapToGlobal(sitio));
  QApplication::sendEvent(&lienzo, &derecho);
  auto& edicion = t->control<QMenu>("MnuEdicion");
  EXPECT_TRUE(edicion.isVisible());
  edicion.close();

  for (const auto& [boton, forma] :
       {std::pair("CmdModificaApunte", "FrmPartida"), {"CmdEliminarApunte", "FrmEliminaAsiento"}}) {
    guion.esperaDialogo(forma, [](Teclado& d) { d.cierra(); });
    t->suelta(boton, {});
  }
  guion.esperaPregunta("Esta a punto de eliminar una partida del diario, ¿ Desea continuar ?", true,
                       "Eliminar");
  t->suelta("CmdEliminarPartida", {});
  // The asiento that was nearly deleted is still on show; of its lines none is current now.
  EXPECT_EQ(totales("Total"), QStringList({"130,00 ", "0,00 ", "130,00 "}));
  EXPECT_EQ(rejilla().filaActual(), -1);
  EXPECT_EQ(t->textoDe("LblFilaMarcado"), "Marcado");
  for (const char* boton : {"CmdModificaApunte", "CmdEliminarPartida"}) {
    guion.esperaMensaje("Debe seleccionar un apunte de la lista de apuntes", "Error");
    t->pulsa(boton);
  }
  t->pulsa("CmdAnterior");
  EXPECT_EQ(totales("Marcado"), QStringList({"100,00 ", "0,00 ", "100,00 "}));
}

}  // namespace
