// How the program looks: one style on every system, light or dark as the user's desktop is, Spanish
// texts whatever its language.
#pragma once

#include <QIcon>

class QApplication;

// To be called once, before the first form: style, palette, visible focus, Spanish texts of the
// file pickers and menus of the system's own fields.
void aplicarTema(QApplication& aplicacion);

// One of the program's own drawings, by name: icono("plan"). In a .ui file: ":/iconos/plan.svg".
QIcon icono(const QString& nombre);
