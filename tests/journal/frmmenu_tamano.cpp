// The main window at other sizes: its own and that of the letters.
#include "journal/menuabierto.h"

namespace {

using FrmMenuTamano = MenuAbierto;

TEST_F(FrmMenuTamano, TheCurrentRowStaysInSightAndTheDatesWhole) {
  FrmMenu& forma = abreMenu();
  for (int i = 0; i < 40; ++i) linea("57000001", "1", {}, i == 0 ? "15/03/2003" : "");
  auto& grid = t->control<Rejilla>("GrdApuntes");
  const auto actual = [&] { return grid.visualRect(grid.currentIndex()); };
  ASSERT_EQ(grid.filaActual(), 39);
  forma.resize(forma.minimumSizeHint());
  reposar();
  EXPECT_TRUE(grid.viewport()->rect().contains(actual()));
  const LetraAumentada doble(2);
  reposar();
  for (const int columna : {1, 2, 3})
    EXPECT_GT(grid.columnWidth(columna),
              grid.fontMetrics().horizontalAdvance(grid.texto(39, columna)))
        << columna;
}

}  // namespace
