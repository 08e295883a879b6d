#include "foundation/menu/tablamenu.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QSet>

// The window is built from the table without further checks, so a slip in it would be a menu that
// nobody can reach or a button that does nothing.
TEST(TablaMenu, SeSostieneSola) {
  QSet<QString> vistos;
  for (const EntradaMenu& e : menuPrincipal()) {
    const QString control = e.control.toString();
    EXPECT_FALSE(vistos.contains(control)) << qPrintable(control);
    vistos.insert(control);
    if (!e.padre.isEmpty()) {
      const EntradaMenu* padre = entradaMenu(e.padre);
      ASSERT_NE(padre, nullptr) << qPrintable(control);
      EXPECT_LT(padre, &e) << qPrintable(control);
      EXPECT_EQ(padre->accion, AccionMenu::Menu) << qPrintable(control);
    }
    const bool conDestino = e.accion != AccionMenu::Menu && e.accion != AccionMenu::Rutina &&
                            e.accion != AccionMenu::Nada;
    EXPECT_EQ(conDestino, !e.destino.isEmpty()) << qPrintable(control);
    const bool conTexto = e.condicion != CondicionMenu::Ninguna;
    EXPECT_EQ(conTexto, !e.aviso.isEmpty() && !e.titulo.isEmpty()) << qPrintable(control);
  }
}

TEST(TablaMenu, CadaBotonRepiteUnaEntrada) {
  for (const BotonMenu& boton : botonesPrincipal()) {
    const QString control = boton.control.toString();
    EXPECT_TRUE(entradaMenu(boton.igualQue) || boton.igualQue == boton.control)
        << qPrintable(control);
    EXPECT_TRUE(QFile::exists(QStringLiteral(LIBRANO_FUENTES "/src/foundation/icons/") +
                              QFileInfo(boton.icono.toString()).fileName()))
        << qPrintable(control);
  }
}
