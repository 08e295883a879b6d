#include "journal/integridad.h"

#include "common/formato.h"
#include "common/funciones.h"
#include "company/indices.h"
#include "engine/dbengine.h"

QString avisoSinRegistro(Database& empresa, const QString& asientos) {
  const auto faltan = empresa.OpenRecordset(
      QStringLiteral("Select Diario.NAsiento, Count(*) as Lineas from Diario "
                     "left join RSIVA on Diario.ApunteIVA = RSIVA.Codigo "
                     "where Diario.ApunteIVA <> '' and RSIVA.Codigo is null "
                     "and Diario.NAsiento %1 group by Diario.NAsiento order by Diario.NAsiento")
          .arg(asientos));
  constexpr int kNombrados = 5;
  qint64 lineas = 0;
  QStringList numeros;
  for (; !faltan->Eof(); faltan->MoveNext()) {
    lineas += faltan->Fields(1).toLong();
    if (numeros.size() < kNombrados)
      numeros << faltan->Fields(0).text();
    else if (numeros.size() == kNombrados)
      numeros << QStringLiteral("...");
  }
  if (lineas == 0) return {};
  const QString cuantas = lineas == 1 ? QStringLiteral("Hay 1 partida que señala")
                                      : QStringLiteral("Hay %1 partidas que señalan").arg(lineas);
  return QStringLiteral(
             "%1 a un registro de IVA que no existe (asiento %2). No se ha cambiado nada.")
      .arg(cuantas, numeros.join(QStringLiteral(", ")));
}

void unificaFechas(Database& empresa, int anoActual, QDate hoy, const Avance& avance) {
  const auto diario = empresa.OpenRecordset(
      QStringLiteral("Select NAsiento, Fecha from Diario order by NAsiento, Fecha"));
  if (diario->Eof()) return;
  diario->MoveLast();
  const int total = diario->RecordCount();
  IndicesAparte aparte(empresa, total, {QStringLiteral("Fecha")});
  FieldRef numero = diario->Fields("NAsiento"), dia = diario->Fields("Fecha");
  QString ultimo;
  QString fecha;
  for (diario->MoveFirst(); !diario->Eof(); diario->MoveNext()) {
    avance(diario->AbsolutePosition(), total);
    const QString asiento = numero.text();
    if (asiento != ultimo) {
      ultimo = asiento;
      const QString suya = Format(dia.Value(), QStringLiteral("dd/mm/yyyy"));
      fecha = NormalizaFecha(suya.left(6) + QString::number(anoActual), anoActual, hoy);
    }
    diario->Edit();
    dia = fecha;
    diario->Update();
  }
  aparte.repone();
}

namespace {

// The register row of an invoice follows its asiento.
void renumeraRegistro(Database& empresa, const QString& codigo, int asiento) {
  const auto registro =
      empresa.OpenRecordset(QStringLiteral("Select * from RSIVA where Codigo = '%1'").arg(codigo));
  registro->Edit();
  registro->Fields("Asiento") = asiento;
  registro->Update();
}

}  // namespace

int renumeraDiario(Database& empresa, int desde, const Avance& avance) {
  int siguiente = desde;
  const auto diario = empresa.OpenRecordset(
      QStringLiteral("Select NAsiento, ApunteIVA from SqlDiarioPrincipalBlanco "
                     "where Nasiento >= %1 order by Fecha, NAsiento")
          .arg(desde));
  if (!diario->Eof()) {
    diario->MoveLast();
    const int total = diario->RecordCount();
    IndicesAparte aparte(empresa, total, {QStringLiteral("NAsiento")});
    FieldRef numero = diario->Fields("NAsiento"), apunte = diario->Fields("ApunteIVA");
    QString ultimo = QStringLiteral("0");
    for (diario->MoveFirst(); !diario->Eof(); diario->MoveNext()) {
      avance(diario->AbsolutePosition(), total);
      const QString asiento = numero.text();
      if (asiento != ultimo) {
        ultimo = asiento;
        ++siguiente;
      }
      const QString codigo = apunte.display();
      diario->Edit();
      numero = siguiente - 1;
      diario->Update();
      if (!codigo.isEmpty()) renumeraRegistro(empresa, codigo, siguiente - 1);
    }
    aparte.repone();
  }
  const auto contadores = empresa.OpenRecordset(QStringLiteral("Select * from Empresa"));
  contadores->Edit();
  contadores->Fields("Asiento") = siguiente;
  contadores->Update();
  return siguiente;
}
