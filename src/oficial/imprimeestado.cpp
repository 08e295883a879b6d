#include "oficial/imprimeestado.h"

#include "engine/dbengine.h"
#include "engine/filas.h"
#include "oficial/tablasoficiales.h"

namespace {

const QString kTabla = QStringLiteral("EstadosOficiales");
constexpr int kOrdenDeAvisos = 1000;  // behind every line
constexpr int kNivelDeAviso = 9;

struct Fila {
  int orden;
  int nivel;
  QString clave, texto, casilla;
  Variant importe, anterior;
};

QList<Fila> filasDe(const EstadoImpreso& impreso) {
  QList<Fila> filas;
  for (const LineaDeEstado& linea : impreso.estado.lineas)
    if (seMuestra(linea, impreso.mascara, impreso.todas))
      filas.append({linea.orden, linea.nivel, linea.clave, linea.texto, linea.casilla,
                    linea.importe, impreso.conAnterior ? Variant(linea.anterior) : Variant()});
  int orden = kOrdenDeAvisos;
  for (const auto& [clave, texto] : impreso.avisos)
    filas.append({orden++, kNivelDeAviso, {}, (clave + u' ' + texto).trimmed(), {}, {}, {}});
  return filas;
}

}  // namespace

int escribeEstado(Database& empresa, const EstadoImpreso& impreso, const QDate& hoy) {
  aseguraTablaOficial(empresa, kTabla);
  qint64 numero = 1;
  const auto tabla = empresa.OpenRecordset(kTabla);
  // A page of today may still be on show somewhere.
  for (; !tabla->Eof(); tabla->MoveNext()) {
    numero = std::max(numero, tabla->Fields("Lanzamiento").toLong() + 1);
    if (tabla->Fields("Dia").Value().date() != hoy) tabla->Delete();
  }
  for (const Fila& fila : filasDe(impreso)) {
    tabla->AddNew();
    completa(*tabla, [&] {
      tabla->Fields("Lanzamiento") = numero;
      tabla->Fields("Dia") = hoy;
      tabla->Fields("Orden") = fila.orden;
      tabla->Fields("Nivel") = fila.nivel;
      tabla->Fields("Clave") = fila.clave;
      tabla->Fields("Texto") = fila.texto.left(160);
      tabla->Fields("Casilla") = fila.casilla;
      tabla->Fields("Importe") = fila.importe;
      tabla->Fields("Anterior") = fila.anterior;
      tabla->Fields("RotuloActual") = impreso.rotuloActual;
      tabla->Fields("RotuloAnterior") = impreso.rotuloAnterior;
    });
  }
  return static_cast<int>(numero);
}
