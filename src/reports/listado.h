// What a dialog asks of a printed book: which template, which lines, and the range told on its
// pages.
#pragma once

#include <optional>
#include <QString>
#include <QStringList>

struct Listado {
  QString titulo;     // of the window
  QString plantilla;  // relative to the data folder: "Impresos\May1.rpt"
  QString seleccion;
  QString seleccionGrupos = {};
  // The range shown on the pages, "Desde : a   ~   Hasta : b"; it selects nothing.
  std::optional<QString> limites = std::nullopt;
};

QString textoLimites(const QString& desde, const QString& hasta);

// The twelve fixed items of the month choosers, "01-Enero" to "12-Diciembre".
const QStringList& listaMeses();
// The month's number in its shortest form, as most selections write it: "01-Enero" gives "1".
QString numeroDeMes(const QString& item);

// Lines between two dates, as typed. Raises 13 for a text that is no date.
QString seleccionFechas(const QString& campo, const QString& desde, const QString& hasta);
// Codes between two texts.
QString seleccionCodigos(const QString& campo, const QString& desde, const QString& hasta);

// A book of the months between two items of the choosers; `plantilla` is the file's bare name.
Listado listadoMensual(const QString& titulo, const QString& plantilla, const QString& campoMes,
                       const QString& desde, const QString& hasta);
