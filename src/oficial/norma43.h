// Bank statements in the common format of the Spanish banks, their norm 43: records of 80
// characters for each account, its movements and its end.
//
// Amounts are whole cents as the books see them: what comes into the account is positive. The bank
// writes them from its own side, where a charge is debe.
#pragma once

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>
#include <vector>

struct MovimientoBanco {
  int linea = 0;  // of the file, from 1
  QDate operacion, valor;
  QString comun, propio;  // its kind, of two figures by the norm, of three by the bank
  qint64 centimos = 0;
  QString documento, referencia1, referencia2;
  QString concepto;  // all its notes, in their order
  // Two movements that are alike in everything are two: the first of a day is 0, its twin 1.
  int ordinal = 0;

  // All by which movements are told apart, but for the ordinal.
  QString senas() const;
};

struct CuentaBanco {
  int linea = 0;
  QString ccc;  // 20 figures, its check digits reckoned
  QString nombre;
  QDate desde, hasta;
  qint64 inicial = 0, final = 0;
  std::vector<MovimientoBanco> movimientos;
};

struct AvisoDeLinea {
  int linea = 0;
  QString texto;
  QString entero() const { return QStringLiteral("Línea %1: %2").arg(linea).arg(texto); }
};

// What a file says. With any error nothing of it may be taken; warnings only want to be read.
struct LecturaNorma43 {
  std::vector<CuentaBanco> cuentas;
  QList<AvisoDeLinea> errores, avisos;
};

// Reads a file in UTF-8, ISO-8859-1 or code page 850, with either end of line; never raises for
// what stands in it.
LecturaNorma43 leeNorma43(const QByteArray& fichero);
// The same from its path in the system. 53 without it, 75 when it can't be read or is longer than
// any statement.
LecturaNorma43 leeFicheroNorma43(const QString& ruta);

// The text of a file as the banks send it.
QString textoNorma43(const QByteArray& fichero);
