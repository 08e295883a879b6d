#include "reports/filas.h"

#include <QRegularExpression>

#include "common/errorejecucion.h"
#include "reports/errores.h"

namespace reports {

Fuente::Fuente(std::unique_ptr<Database> base, const Consulta& consulta)
    : base_(std::move(base)), sentencia_(consulta.sentencia) {
  const auto abierta = lector();
  propias_ = abierta->columnCount();
  columnas_ = consulta.origen->columnas;
  static const QRegularExpression nombre(QStringLiteral("^[\\w. ]+$"),
                                         QRegularExpression::UseUnicodePropertiesOption);
  if (consulta.origen->agrupado.isEmpty() && QString(columnas_).remove(u',').contains(nombre)) {
    sueltas_ = columnas_.split(u',');
  }
  for (int c = 0; c < propias_; ++c) {
    nombres_ << abierta->columnName(c);
    tipos_.push_back(abierta->columnType(c));
  }
  for (const Busca& b : consulta.origen->buscas) {
    const int codigo = columna(b.codigo);
    if (codigo < 0 || codigo >= propias_) {
      throw ErrorEjecucion(err::kPlantillaDefectuosa, QStringLiteral("no hay columna ") + b.codigo);
    }
    Tabla tabla{codigo, {}};
    RowReader nombres(
        *base_,
        QStringLiteral("SELECT [%1].[%2], [%1].[%3] FROM [%1]").arg(b.tabla, b.clave, b.dato));
    while (nombres.next()) tabla.nombres.insert(nombres.text(0), nombres.text(1));
    buscas_.push_back(std::move(tabla));
    nombres_ << b.columna;
    tipos_.push_back(FieldType::Text);
  }
}

int Fuente::columna(const QString& nombre) const {
  for (int c = 0; c < nombres_.size(); ++c) {
    if (nombres_[c].compare(nombre, Qt::CaseInsensitive) == 0) return c;
  }
  return -1;
}

FieldType Fuente::tipo(int ordinal) const {
  return tipos_[static_cast<size_t>(ordinal)];
}

QString Fuente::nombreDe(int ordinal, const QString& codigo) const {
  return buscas_[static_cast<size_t>(ordinal - propias_)].nombres.value(codigo);
}

std::unique_ptr<RowReader> Fuente::lector(const std::vector<int>& solo,
                                          std::vector<int>* sitio) const {
  if (solo.empty() || sueltas_.size() != propias_) {
    return std::make_unique<RowReader>(*base_, sentencia_);
  }
  QStringList pedidas;
  sitio->assign(static_cast<size_t>(propias_), -1);
  for (const int c : solo) {
    if ((*sitio)[static_cast<size_t>(c)] >= 0) continue;
    (*sitio)[static_cast<size_t>(c)] = static_cast<int>(pedidas.size());
    pedidas << sueltas_[c];
  }
  // The list is the first thing in the statement.
  QString corta = sentencia_;
  corta.replace(corta.indexOf(columnas_), columnas_.size(), pedidas.join(u','));
  return std::make_unique<RowReader>(*base_, corta);
}

std::unique_ptr<Recordset> Fuente::registros() const {
  return base_->OpenRecordset(sentencia_);
}

Variant Cursor::valor(int ordinal) const {
  if (ordinal < fuente_.propias()) return celda(ordinal);
  return fuente_.nombreDe(ordinal, textoCelda(fuente_.codigoDe(ordinal)));
}

Variant Cursor::valorAnterior(int ordinal) const {
  if (ordinal < fuente_.propias()) return celdaAnterior(ordinal);
  return fuente_.nombreDe(ordinal, celdaAnterior(fuente_.codigoDe(ordinal)).display());
}

QString Cursor::texto(int ordinal) const {
  if (ordinal < fuente_.propias()) return textoCelda(ordinal);
  return fuente_.nombreDe(ordinal, textoCelda(fuente_.codigoDe(ordinal)));
}

CursorAvance::CursorAvance(const Fuente& fuente, std::vector<int> retiene,
                           const std::vector<int>& solo)
    : Cursor(fuente), lector_(fuente.lector(solo, &sitios_)), retiene_(std::move(retiene)) {
  for (int& c : retiene_) {
    if (c >= fuente.propias()) c = fuente.codigoDe(c);
  }
  anterior_.resize(static_cast<size_t>(fuente.propias()));
}

bool CursorAvance::situa(qint64 fila) {
  if (fila == fila_) return !fin_;
  if (fila_ >= 0) {
    for (const int c : retiene_) anterior_[static_cast<size_t>(c)] = lector_->value(c);
  }
  fila_ = fila;
  fin_ = !lector_->next();
  return !fin_;
}

Variant CursorAvance::celdaAnterior(int ordinal) const {
  return anterior_[static_cast<size_t>(ordinal)];
}

double CursorSuelto::numero(int ordinal) const {
  const Variant v = celda(ordinal);
  return v.isNull() ? 0 : v.number();
}

}  // namespace reports
