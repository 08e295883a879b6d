// The journal on show: moving in it, and acting on the line it stands on by the mouse.
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>

#include "journal/menuabierto.h"
#include "journal/registro.h"

namespace {

struct DiarioAbierto : MenuAbierto {
  DiarioAbierto() {
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

TEST(FrmMenuDiario, MovesByItsButtonsAndMarksTheAsientoItStandsOn) {
  const struct {
    const char* boton;
    int fila;
    const char* debe;
  } pasos[] = {{"CmdPrimero", 0, "100,00 "},   {"CmdAnterior", 0, "100,00 "},
               {"CmdSiguiente", 1, "100,00 "}, {"CmdUltimo", 2, "30,00 "},
               {"CmdSiguiente", 2, "30,00 "},  {"CmdAnterior", 1, "100,00 "}};
  DiarioAbierto e;
  for (const auto& paso : pasos) e.t->pulsa(paso.boton);  // there is nowhere to go yet
  e.guion.esperaMensaje("Debe seleccionar un apunte de la lista de apuntes", "Error");
  e.t->pulsa("CmdModificaApunte");
  EXPECT_EQ(e.t->enfocado(), "GrdApuntes");
  e.t->tecla(Qt::Key_F5);
  e.tecleaTres();
  for (const auto& paso : pasos) {
    e.t->pulsa(paso.boton);
    EXPECT_EQ(e.rejilla().filaActual(), paso.fila) << paso.boton;
    EXPECT_EQ(e.totales("Marcado").constFirst(), paso.debe) << paso.boton;
  }
  EXPECT_EQ(e.rejilla().texto(1, 5), "");
  EXPECT_EQ(e.rejilla().texto(1, 6), "-100,00");
}

TEST(FrmMenuDiario, ActsByTheRightButtonAndOnWhatIsDroppedOnItsButtons) {
  DiarioAbierto e;
  e.tecleaTres();
  auto& lienzo = *e.rejilla().viewport();
  const QPoint sitio(20, 20);
  QContextMenuEvent derecho(QContextMenuEvent::Mouse, sitio, lienzo.mapToGlobal(sitio));
  QApplication::sendEvent(&lienzo, &derecho);
  auto& edicion = e.t->control<QMenu>("MnuEdicion");
  EXPECT_TRUE(edicion.isVisible());
  edicion.close();

  for (const auto& [boton, forma] :
       {std::pair("CmdModificaApunte", "FrmPartida"), {"CmdEliminarApunte", "FrmEliminaAsiento"}}) {
    e.guion.esperaDialogo(forma, [](Teclado& d) { d.cierra(); });
    e.t->suelta(boton, {});
  }
  e.guion.esperaPregunta("Esta a punto de eliminar una partida del diario, ¿ Desea continuar ?",
                         true, "Eliminar");
  e.t->suelta("CmdEliminarPartida", {});
  // The asiento that was nearly deleted is still on show, standing on its last line.
  EXPECT_EQ(e.totales("Total"), QStringList({"130,00 ", "0,00 ", "130,00 "}));
}

}  // namespace
