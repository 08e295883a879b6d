// A statement on its way to the printed page: its lines stand in a table of the company's file,
// from where the report frame reads them under the user's own template.
#pragma once

#include <QDate>

#include "oficial/estados.h"

struct EstadoImpreso {
  EstadoOficial estado;
  QString mascara;
  bool todas = false;        // lines without amounts too
  bool conAnterior = false;  // there is a column of the year before
  QString rotuloActual;      // over the columns
  QString rotuloAnterior;
  QList<QPair<QString, QString>> avisos;  // code or nothing, and text, under the lines
};

// Writes the lines on show under a number of their own, and takes away those of other days. The
// result is that number: the template's selection.
int escribeEstado(Database& empresa, const EstadoImpreso& impreso, const QDate& hoy);
