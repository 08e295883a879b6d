// The periods of an IVA return: quarters "1T" to "4T" and months "01" to "12".
#pragma once

#include <QDate>
#include <QStringList>

struct Periodo {
  int ejercicio = 0;
  QString codigo;

  bool esMensual() const { return !codigo.endsWith(u'T'); }
  int primerMes() const;
  int ultimoMes() const;
  QDate desde() const;
  QDate hasta() const;
  // The last of the year: refunds may be asked for, and some are exempt from the yearly summary.
  bool esUltimo() const { return ultimoMes() == 12; }
  // The one before it in its year; without code for the first.
  Periodo anterior() const;

  // All sixteen, quarters first.
  static QStringList codigos();
  // The quarter of a date, "1T" to "4T".
  static QString trimestreDe(QDate fecha);
};
