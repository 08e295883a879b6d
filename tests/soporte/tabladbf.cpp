#include "soporte/tabladbf.h"

#include <QtCore>

#include "soporte/ficheros.h"

namespace {

QByteArray enBytes(quint32 numero, qsizetype cuantos) {
  char todos[4];
  qToLittleEndian(numero, todos);
  return QByteArray(todos, cuantos);
}

}  // namespace

const QList<ColumnaDbf>& columnasDeDiario() {
  static const QList<ColumnaDbf> columnas{
      {"ASIEN", 'N', 6},        {"FECHA", 'D', 8},        {"SUBCTA", 'C', 12},
      {"CONTRA", 'C', 12},      {"PTADEBE", 'N', 16, 2},  {"CONCEPTO", 'C', 25},
      {"PTAHABER", 'N', 16, 2}, {"FACTURA", 'N', 8},      {"BASEIMPO", 'N', 16, 2},
      {"IVA", 'N', 5, 2},       {"RECEQUIV", 'N', 5, 2},  {"DOCUMENTO", 'C', 10},
      {"DEPARTA", 'C', 3},      {"CLAVE", 'C', 6},        {"ESTADO", 'C', 1},
      {"SERIE", 'C', 1},        {"EURODEBE", 'N', 16, 2}, {"EUROHABER", 'N', 16, 2},
      {"BASEEURO", 'N', 16, 2}};
  return columnas;
}

EscritorDbf& EscritorDbf::registro(const QList<QByteArray>& celdas, bool borrado) {
  registros_ += borrado ? '*' : ' ';
  for (qsizetype i = 0; i < columnas_.size(); ++i) {
    const QByteArray celda = celdas.value(i);
    registros_ += columnas_[i].tipo == 'N' ? celda.rightJustified(columnas_[i].ancho, ' ', true)
                                           : celda.leftJustified(columnas_[i].ancho, ' ', true);
  }
  ++cuantos_;
  return *this;
}

QByteArray EscritorDbf::bytes(char marca) const {
  int ancho = 1;
  QByteArray descripciones;
  for (const ColumnaDbf& columna : columnas_) {
    ancho += columna.ancho;
    descripciones += QByteArray(columna.nombre).leftJustified(11, '\0') + columna.tipo +
                     QByteArray(4, '\0') + static_cast<char>(columna.ancho) +
                     static_cast<char>(columna.decimales) + QByteArray(14, '\0');
  }
  const auto cabecera = static_cast<quint32>(32 + descripciones.size() + 1);
  return QByteArray("\x03\x67\x03\x0F", 4) + enBytes(static_cast<quint32>(cuantos_), 4) +
         enBytes(cabecera, 2) + enBytes(static_cast<quint32>(ancho), 2) + QByteArray(17, '\0') +
         marca + QByteArray(2, '\0') + descripciones + '\x0D' + registros_ + '\x1A';
}

void EscritorDbf::graba(const QString& ruta, char marca) const {
  haceFichero(ruta, bytes(marca));
}
