// The journal on show: marks, changes, deletions, asientos out of balance, the Ayudante.
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>

#include "journal/menuabierto.h"
#include "journal/registro.h"

namespace {

const QString kFecha = QStringLiteral("02/01/2003");

struct DiarioAbierto : MenuAbierto {
  DiarioAbierto() {
    abreMenu();
    linea("57000001", QStringLiteral("100"), {}, kFecha);
    linea("43000001", {}, QStringLiteral("100"));
    linea("57000001", QStringLiteral("30"), {}, kFecha);
  }
  int lineas() const { return static_cast<int>(filas("Select NLinea from Diario").size()); }
};

TEST(FrmMenuDiario, MovesByItsButtonsAndMarksTheAsientoItStandsOn) {
  DiarioAbierto e;
  const auto& rejilla = e.t->control<Rejilla>("GrdApuntes");
  const struct {
    const char* boton;
    int fila;
    const char* debe;
  } pasos[] = {{"CmdPrimero", 0, "100,00 "},   {"CmdAnterior", 0, "100,00 "},
               {"CmdSiguiente", 1, "100,00 "}, {"CmdUltimo", 2, "30,00 "},
               {"CmdSiguiente", 2, "30,00 "},  {"CmdAnterior", 1, "100,00 "}};
  for (const auto& paso : pasos) {
    e.t->pulsa(paso.boton);
    EXPECT_EQ(rejilla.filaActual(), paso.fila) << paso.boton;
    EXPECT_EQ(e.totales("Marcado").constFirst(), paso.debe) << paso.boton;
  }
  EXPECT_EQ(rejilla.texto(1, 5), "");
  EXPECT_EQ(rejilla.texto(1, 6), "-100,00");
}

TEST(FrmMenuDiario, OffersItsMenuUnderTheRightButton) {
  DiarioAbierto e;
  auto& lienzo = *e.t->control<Rejilla>("GrdApuntes").viewport();
  const QPoint sitio(20, 20);
  QContextMenuEvent derecho(QContextMenuEvent::Mouse, sitio, lienzo.mapToGlobal(sitio));
  QApplication::sendEvent(&lienzo, &derecho);
  auto& edicion = e.t->control<QMenu>("MnuEdicion");
  EXPECT_TRUE(edicion.isVisible());
  edicion.close();
}

TEST(FrmMenuDiario, TicksLinesOff) {
  DiarioAbierto e;
  const QString marcas = QStringLiteral("Select Punteo from Diario order by NLinea");
  e.t->dobleClic("GrdApuntes");
  EXPECT_EQ(e.filas(marcas), (std::vector<QStringList>{{""}, {""}, {""}}));
  // The space bar marks with the frame closed too.
  e.t->pulsa("CmdPrimero");
  e.t->enfoca("GrdApuntes");
  e.t->tecla(Qt::Key_Space);
  EXPECT_EQ(e.filas(marcas), (std::vector<QStringList>{{"X"}, {""}, {""}}));
  // Another mark clears; it doesn't replace.
  e.t->pulsa("CmdActivaPunteo");
  e.t->enfoca("OptPunteo_7");
  e.t->tecla(Qt::Key_Space);
  e.t->enfoca("GrdApuntes");
  e.t->tecla(Qt::Key_Space);
  EXPECT_EQ(e.filas(marcas), (std::vector<QStringList>{{""}, {""}, {""}}));
  e.t->tecla(Qt::Key_Space);
  EXPECT_EQ(e.filas(marcas), (std::vector<QStringList>{{"*"}, {""}, {""}}));
  e.t->pulsa("CmdCerrarPunteo");
  EXPECT_FALSE(e.t->visible("FrmPunteo"));
}

TEST(FrmMenuDiario, DeletesALineOnlyWhenAnswered) {
  DiarioAbierto e;
  const QString borrar =
      QStringLiteral("Esta a punto de eliminar una partida del diario, ¿ Desea continuar ?");
  e.guion.esperaPregunta(borrar, false, QStringLiteral("Eliminar"));
  e.t->pulsa("CmdEliminarPartida");
  EXPECT_EQ(e.lineas(), 3);
  e.guion.esperaPregunta(borrar, true);
  e.t->suelta("CmdEliminarPartida", {});
  EXPECT_EQ(e.lineas(), 2);
  EXPECT_EQ(e.totales("Total"), QStringList({"100,00 ", "-100,00", "0,00 "}));
  // Also a mark that is there but empty says that an invoice wrote the line.
  e.cambia(QStringLiteral("Select * from Diario where NLinea=0"), QStringLiteral("ApunteIVA"), "");
  e.t->pulsa("CmdRecargar");
  e.t->pulsa("CmdPrimero");
  e.guion.esperaMensaje(
      QStringLiteral("Usted no puede eliminar una partida creada por un apunte de IVA"),
      QStringLiteral("Error"));
  e.t->pulsa("CmdEliminarPartida");
  EXPECT_EQ(e.lineas(), 2);
}

TEST(FrmMenuDiario, SaysWhichLinesCanNotBeChangedHere) {
  DiarioAbierto e;
  e.cambia(QStringLiteral("Select * from Diario where NLinea=0"), QStringLiteral("TipoFactura"),
           "I");
  e.ctx.sesion.FechaNoModificar = QStringLiteral("15/03/2003");
  e.t->pulsa("CmdRecargar");
  e.guion.esperaMensaje(
      QStringLiteral("Usted no puede modificar ningún apunte anterior a la fecha 15/03/2003"),
      QStringLiteral("Error"));
  e.t->enfoca("GrdApuntes");
  e.t->intro();
  e.t->pulsa("CmdPrimero");
  e.guion.esperaMensaje(QStringLiteral("No puede modificar una partida creada con IVA "
                                       "intracomunitario, elimine la partida y cree una nueva"),
                        QStringLiteral("Partida intracomunitaria"));
  e.t->pulsa("CmdModificaApunte");
}

TEST(FrmMenuDiario, ChangesLocatesAndDeletesThroughItsDialogs) {
  MenuAbierto e;
  registraJournal(*e.formularios);
  e.abreMenu();
  for (const char* importe : {"100", "30"}) {
    e.linea("57000001", QString::fromLatin1(importe), {}, kFecha);
    e.linea("43000001", {}, QString::fromLatin1(importe));
  }
  const auto& rejilla = e.t->control<Rejilla>("GrdApuntes");
  e.guion.esperaDialogo(QStringLiteral("FrmPartida"), [](Teclado& partida) {
    EXPECT_EQ(partida.textoDe("TxtConcepto"), "Apunte");
    partida.escribe("TxtDebeHaber", QStringLiteral("20"));
    partida.pulsa("CmdAceptar");
  });
  e.t->enfoca("GrdApuntes");
  e.t->intro();
  EXPECT_EQ(e.totales("Total"), QStringList({"130,00 ", "-120,00", "10,00 "}));

  e.guion.esperaDialogo(QStringLiteral("FrmBusSub"), [](Teclado& busca) {
    busca.escribe("TxtSubcuenta", QStringLiteral("57.1"));
    busca.pulsa("CmdAceptar");
  });
  e.t->pulsa("CmdCodigo");
  EXPECT_EQ(rejilla.filas(), 2);

  // The asiento that may go is on show while its dialog asks.
  e.guion.esperaDialogo(QStringLiteral("FrmEliminaAsiento"), [&rejilla](Teclado& elimina) {
    EXPECT_EQ(rejilla.filas(), 2);
    EXPECT_EQ(rejilla.texto(1, 1), "43000001");
    elimina.cierra();
  });
  e.t->pulsa("CmdEliminarApunte");

  e.guion.esperaDialogo(QStringLiteral("FrmCalendario"), [](Teclado& dias) { dias.cierra(); });
  e.t->pulsa("CmdLinFecha");
  EXPECT_EQ(e.t->enfocado(), "TxtFecha");
}

TEST(FrmMenuDiario, ShowsTheAsientosOutOfBalanceOneByOne) {
  DiarioAbierto e;
  e.linea("43000001", {}, QStringLiteral("30.004"));
  e.linea("57000001", QStringLiteral("30"), {}, kFecha);
  e.linea("57000001", QStringLiteral("7"), {}, kFecha);
  const auto& rejilla = e.t->control<Rejilla>("GrdApuntes");
  const QString hallado =
      QStringLiteral("Asiento %1 descuadrado, ¿desea seguir viendo asientos descuadrados?");
  const QString titulo = QStringLiteral("Descuadre localizado");
  // Less than the mask's last decimal is square: the second asiento isn't reported.
  e.guion.esperaPregunta(hallado.arg(3), true, titulo);
  e.guion.esperaPregunta(hallado.arg(4), true, titulo);
  e.guion.esperaMensaje(QStringLiteral("Fín de la busqueda de asientos descuadrados"),
                        QStringLiteral("Fín"));
  e.t->pulsa("CmdDescuadres");
  EXPECT_EQ(rejilla.texto(0, 3), "4");
  e.guion.esperaPregunta(hallado.arg(3), false);
  e.t->tecla(Qt::Key_F8);
  EXPECT_EQ(rejilla.texto(0, 3), "3");
  EXPECT_FALSE(e.t->visible("Bar"));
}

TEST(FrmMenuDiario, CalculatesBesideTheEntryLine) {
  DiarioAbierto e;
  const struct {
    const char* importe;
    QList<const char*> teclas;
    const char* resultado;
  } casos[] = {
      {"", {"CmdNumeros_1", "CmdNumeros_0", "CmdNumeros_10", "CmdNumeros_5", "CmdSuma"}, "10,5"},
      {"100", {"CmdNumeros_3", "CmdResta"}, "97"},
      {"1200.5", {"CmdNumeros_2", "CmdMultiplica"}, "2401"},
      {"0,00 ", {"CmdNumeros_7", "CmdMultiplica"}, "7"},
      {"7", {"CmdNumeros_2", "CmdDivide"}, "3,5"},
      {"7", {"CmdNumeros_2", "CmdC", "CmdNumeros_1", "CmdSuma"}, "8"},
      {"7", {"CmdNumeros_2", "CmdCE"}, "0,00 "},
  };
  for (const auto& caso : casos) {
    e.t->control<QLineEdit>("TxtDebeHaber").setText(QString(caso.importe).replace(u'.', u','));
    for (const char* tecla : caso.teclas) e.t->pulsa(tecla);
    EXPECT_EQ(e.t->textoDe("TxtDebeHaber"), caso.resultado);
    EXPECT_EQ(e.t->textoDe("TxtCalImp"), "0");
    EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
  }
  // The result is posted as it stands by the buttons.
  e.t->control<QLineEdit>("TxtDebeHaber").setText(QStringLiteral("3,5"));
  e.t->pulsa("CmdLinHaber");
  EXPECT_EQ(e.valor("Select Importe from Diario where NLinea=3"), "-3,5");
  e.guion.esperaMensaje(
      QStringLiteral("Error 11: ") + ErrorEjecucion(err::kDivisionPorCero).descripcion(),
      QStringLiteral("Librano"));
  e.t->pulsa("CmdDivide");
}

}  // namespace
