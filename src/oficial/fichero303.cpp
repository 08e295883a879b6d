// The file of a 303 and its check against the journal.
#include <algorithm>
#include <QMap>
#include <QSet>

#include "common/comillas.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "engine/dbengine.h"
#include "engine/rowreader.h"
#include "oficial/modelo303.h"

namespace {

QString literal(QDate fecha) {
  return u'#' + Format(fecha, QStringLiteral("m-d-yyyy")) + u'#';
}

// What the period's rows put on each quota account, debit positive.
QMap<QString, qint64> cuotasDeRegistros(const std::vector<LineaRegistro>& lineas) {
  QMap<QString, qint64> cuotas;
  for (const LineaRegistro& l : lineas) {
    const int signo = l.emitida() ? -1 : 1;
    if (l.iva != 0) cuotas[l.ctaIVA] += signo * l.iva;
    if (l.recargo != 0) cuotas[l.ctaRE] += signo * l.recargo;
  }
  return cuotas;
}

// The quota accounts of the plan and of the company, whether the registers know them or not.
QStringList cuentasDeCuota(Database& empresa) {
  QStringList cuentas;
  for (RowReader r(empresa, QStringLiteral("Select IVASSub, IVARSub, IVASRE, IVARRE from Empresa"));
       r.next();)
    for (int i = 0; i < 4; ++i)
      if (!r.text(i).isEmpty()) cuentas += r.text(i);
  RowReader r(empresa,
              QStringLiteral("Select Subcuenta from Subcuentas where (Subcuenta >= '472' and "
                             "Subcuenta < '473') or (Subcuenta >= '477' and Subcuenta < '478')"));
  while (r.next()) cuentas += r.text(0);
  return cuentas;
}

// The asientos of the period that only move the quotas elsewhere: their settlement with the
// Treasury, the opening and the closing.
QSet<int> asientosDeTraspaso(Database& empresa, const Periodo& periodo) {
  QSet<int> asientos;
  const QString fechas = QStringLiteral(" and Fecha >= %1 and Fecha <= %2")
                             .arg(literal(periodo.desde()), literal(periodo.hasta()));
  QStringList condiciones;
  for (const auto& [desde, hasta] : {std::pair{"4750", "4751"}, std::pair{"4700", "4701"}})
    condiciones += QStringLiteral("Subcuenta >= '%1' and Subcuenta < '%2'")
                       .arg(QLatin1String(desde), QLatin1String(hasta)) +
                   fechas;
  for (const QDate dia : {QDate(periodo.ejercicio, 1, 1), QDate(periodo.ejercicio, 12, 31)})
    if (dia >= periodo.desde() && dia <= periodo.hasta())
      condiciones +=
          QStringLiteral("Fecha = %1 and (TipoDiario = 'A' or TipoDiario = 'C')").arg(literal(dia));
  for (const QString& condicion : condiciones) {
    RowReader r(empresa, QStringLiteral("Select NAsiento from Diario where ") + condicion);
    while (r.next()) asientos.insert(int(r.number(0)));
  }
  return asientos;
}

qint64 movimiento(Database& empresa, const QString& subcuenta, const Periodo& periodo) {
  RowReader r(empresa, QStringLiteral("Select SumaDeDebe, SumaDeHaber from "
                                      "SqlDiarioSaldosCuentasMeses where Subcuenta=%1 and Mes >= "
                                      "%2 and Mes <= %3")
                           .arg(entreComillas(subcuenta))
                           .arg(periodo.primerMes())
                           .arg(periodo.ultimoMes()));
  qint64 total = 0;
  while (r.next()) total += centimosDe(r.number(0)) + centimosDe(r.number(1));
  return total;
}

}  // namespace

std::vector<Cuadre303> Hoja303::descuadres(Database& empresa) const {
  QMap<QString, qint64> registros = cuotasDeRegistros(lineas_);
  for (const QString& cuenta : cuentasDeCuota(empresa)) registros[cuenta] += 0;
  QHash<QString, qint64> traspasos;
  for (const int asiento : asientosDeTraspaso(empresa, periodo_)) {
    RowReader r(empresa,
                QStringLiteral("Select Subcuenta, Importe, ApunteIVA from Diario where NAsiento=") +
                    QString::number(asiento));
    while (r.next())
      if (r.text(2).isEmpty()) traspasos[r.text(0)] += centimosDe(r.number(1));
  }
  std::vector<Cuadre303> lista;
  for (auto it = registros.cbegin(); it != registros.cend(); ++it) {
    if (it.key().isEmpty()) continue;
    const qint64 diario = movimiento(empresa, it.key(), periodo_) - traspasos.value(it.key());
    if (diario != *it) lista.push_back({it.key(), *it, diario});
  }
  return lista;
}

QByteArray fichero303(const Hoja303& hoja, const ValoresFijos& datos, bool volumen) {
  if (!hoja.conDiseno())
    throw ErrorEjecucion(
        err::kLlamadaNoValida,
        QStringLiteral("No hay diseño del 303 para el ejercicio %1").arg(hoja.periodo().ejercicio));
  ValoresFijos valores = datos;
  valores.insert(QStringLiteral("Ejercicio"), QString::number(hoja.periodo().ejercicio));
  valores.insert(QStringLiteral("Periodo"), hoja.periodo().codigo);
  for (const Casilla303& c : hoja.casillas()) valores.insert(c.numero, hoja.valor(c.numero));
  if (hoja.sinActividad())
    valores.insert(QStringLiteral("Declaración sin actividad"), QStringLiteral("X"));
  QByteArray fichero;
  for (const char* registro : {"00", "01", "03"})
    fichero += escribeRegistro(hoja.diseno(), QLatin1String(registro), valores);
  if (volumen)
    fichero += escribeRegistro(DisenoFijo(QStringLiteral("303.csv"), QStringLiteral("2024B")),
                               QStringLiteral("04"), valores);
  for (const char* registro : {"DID", "99"})
    fichero += escribeRegistro(hoja.diseno(), QLatin1String(registro), valores);
  return fichero;
}
