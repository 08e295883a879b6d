// The main window at other sizes: its own and that of the letters.

#include "journal/menuabierto.h"

namespace {

using FrmMenuTamano = MenuAbierto;

TEST_F(FrmMenuTamano, LaFilaEnCursoSigueALaVistaYLasLineasEnteras) {
  FrmMenu& forma = abreMenu();
  for (int i = 0; i < 40; ++i) linea("57000001", "1", {}, i == 0 ? "15/03/2003" : "");
  auto& grid = t->control<Rejilla>("GrdApuntes");
  const auto actual = [&] { return grid.visualRect(grid.currentIndex()); };
  ASSERT_EQ(grid.filaActual(), 39);
  for (const QSize& medida : {forma.minimumSizeHint(), QSize(1001, 707), QSize(1003, 713)}) {
    forma.showNormal();
    forma.resize(medida);
    reposar();
    EXPECT_TRUE(grid.viewport()->rect().contains(actual()));
    // The last line ends where the room for lines ends, and the first begins where it begins.
    EXPECT_EQ(actual().bottom() + 2, grid.viewport()->height()) << medida.height();
    EXPECT_EQ(grid.viewport()->height() % grid.rowHeight(0), 0) << medida.height();
  }
  // Where there isn't room for all, the calculator makes way for the journal and the entry line.
  EXPECT_LE(forma.minimumWidth(), 780);
  t->pulsa("CmdActivaPunteo");
  for (const int ancho : {forma.minimumWidth(), 1001}) {
    forma.resize(ancho, 590);
    reposar();
    EXPECT_EQ(forma.size(), QSize(ancho, 590));
    EXPECT_EQ(t->visible("Frame1"), ancho > 1000);
    for (const char* campo : {"CmdActivaPunteo", "CmdUltimo", "CmdCerrarPunteo", "TxtDebeHaber",
                              "TxtTotalDescuadre", "CmdLinDebe", "CmdImporte"}) {
      const QWidget& borde = t->control(campo);
      EXPECT_TRUE(borde.parentWidget()->rect().contains(borde.geometry())) << campo;
      EXPECT_LT(borde.mapTo(&forma, borde.rect().bottomRight()).x(), forma.width()) << campo;
    }
  }
  t->escribe("TxtAsiento", "1234567");
  const LetraAumentada doble(2);
  reposar();
  for (const int columna : {1, 2, 3})
    EXPECT_GT(grid.columnWidth(columna),
              grid.fontMetrics().horizontalAdvance(grid.texto(39, columna)))
        << columna;
  for (const char* campo : {"TxtAsiento", "TxtFecha", "TxtSubcuenta"}) {
    const auto& texto = t->control<QLineEdit>(campo);
    EXPECT_GT(texto.width(), texto.fontMetrics().horizontalAdvance(texto.text()) + 4) << campo;
  }
}

TEST_F(FrmMenuTamano, SaleMaximizadaHastaQueSeLeDaOtroTamano) {
  EXPECT_TRUE(abreMenu().isMaximized());
  t->forma().showNormal();
  t->forma().resize(0, 611);  // no wider than it must be
  reposar();
  const QSize suya = t->forma().size();
  cierra();
  FrmMenu& otra = abreMenu();
  EXPECT_FALSE(otra.isMaximized());
  EXPECT_EQ(otra.size(), suya);
  // Also when the program ends there.
  otra.showMaximized();
  reposar();
  guion.esperaPregunta("¿ Deseas salir de Librano ?", true);
  t->cierra();
  cierra();
  EXPECT_TRUE(abreMenu().isMaximized());
}

}  // namespace
