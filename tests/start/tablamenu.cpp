#include "start/menu/tablamenu.h"

#include "soporte/prueba.h"

// The window is built from the table without further checks, so a slip in it would be a menu that
// nobody can reach or a button that does nothing.
TEST(TablaMenu, SeSostieneSola) {
  QSet<QString> menus = {QString()}, vistos;
  for (const EntradaMenu& e : menuPrincipal()) {
    const QString control = e.control.toString();
    SCOPED_TRACE(control.toStdString());
    EXPECT_FALSE(vistos.contains(control));
    vistos.insert(control);
    EXPECT_TRUE(menus.contains(e.padre.toString()));
    if (e.accion == AccionMenu::Menu) menus.insert(control);
    const bool conDestino = e.accion != AccionMenu::Menu && e.accion != AccionMenu::Rutina &&
                            e.accion != AccionMenu::Nada;
    EXPECT_EQ(conDestino, !e.destino.isEmpty());
    const bool conTexto = e.condicion != CondicionMenu::Ninguna;
    EXPECT_EQ(conTexto, !e.aviso.isEmpty() && !e.titulo.isEmpty());
  }
  for (const BotonMenu& boton : botonesPrincipal()) {
    EXPECT_TRUE(entradaMenu(boton.igualQue) || boton.igualQue == boton.control);
    EXPECT_TRUE(QFile::exists(
        rutaFuente("src/toolkit/icons/" + QFileInfo(boton.icono.toString()).fileName())))
        << qPrintable(boton.icono.toString());
  }
}
