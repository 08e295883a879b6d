#include "oficial/periodo.h"

int Periodo::primerMes() const {
  return esMensual() ? codigo.toInt() : (codigo.left(1).toInt() - 1) * 3 + 1;
}

int Periodo::ultimoMes() const {
  return esMensual() ? primerMes() : primerMes() + 2;
}

QDate Periodo::desde() const {
  return QDate(ejercicio, primerMes(), 1);
}

QDate Periodo::hasta() const {
  const QDate ultimo(ejercicio, ultimoMes(), 1);
  return ultimo.addDays(ultimo.daysInMonth() - 1);
}

Periodo Periodo::anterior() const {
  if (primerMes() == 1) return {ejercicio, {}};
  const int numero = esMensual() ? primerMes() - 1 : codigo.left(1).toInt() - 1;
  return {ejercicio, esMensual() ? QStringLiteral("%1").arg(numero, 2, 10, QChar(u'0'))
                                 : QStringLiteral("%1T").arg(numero)};
}

QStringList Periodo::codigos() {
  QStringList lista;
  for (int t = 1; t <= 4; ++t) lista += QStringLiteral("%1T").arg(t);
  for (int m = 1; m <= 12; ++m) lista += QStringLiteral("%1").arg(m, 2, 10, QChar(u'0'));
  return lista;
}

QString Periodo::trimestreDe(QDate fecha) {
  return QStringLiteral("%1T").arg((fecha.month() + 2) / 3);
}
