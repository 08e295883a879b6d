#include "reports/filas.h"

#include "common/errorejecucion.h"
#include "engine/rowreader.h"
#include "reports/errores.h"
#include "reports/filasfijas.h"

namespace reports {
namespace {
constexpr qsizetype kNombresSueltos = 300;

class LecturaViva : public Lectura {
 public:
  LecturaViva(Database& base, const QString& sentencia) : filas_(base, sentencia) {}
  bool siguiente() override { return filas_.next(); }
  Variant valor(int columna) const override { return filas_.value(columna); }
  QString texto(int columna) const override { return filas_.text(columna); }
  double numero(int columna) const override { return filas_.number(columna); }

 private:
  RowReader filas_;
};
}  // namespace

Fuente::Fuente(std::unique_ptr<Database> base, Consulta consulta)
    : base_(std::move(base)), consulta_(std::move(consulta)) {
  abierta_ = base_->OpenRecordset(consulta_.sentencia(), Opening::FirstRows);
  propias_ = abierta_->FieldCount();
  for (int c = 0; c < propias_; ++c) {
    nombres_ << abierta_->FieldName(c);
    tipos_.push_back(abierta_->Type(c));
  }
  for (const Busca& b : consulta_.origen.buscas) {
    const int codigo = columna(b.codigo);
    if (codigo < 0 || codigo >= propias_) {
      throw ErrorEjecucion(err::kPlantillaDefectuosa, QStringLiteral("no hay columna ") + b.codigo);
    }
    Tabla tabla;
    tabla.codigo = codigo;
    tabla.sentencia =
        QStringLiteral("SELECT [%1].[%2], %3 FROM [%1]").arg(b.tabla, b.clave, b.dato);
    tabla.clave = QStringLiteral("[%1].[%2]").arg(b.tabla, b.clave);
    tipos_.push_back(base_->columns(tabla.sentencia).back().type);
    buscas_.push_back(std::move(tabla));
    nombres_ << b.columna;
  }
}

Fuente::Fuente(const Fuente& otra, std::shared_ptr<const FilasFijas> filas) : Fuente(otra) {
  fijas_ = std::move(filas);
  abierta_.reset();
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

void Fuente::lee(Tabla& tabla) const {
  RowReader nombres(*base_, tabla.sentencia);
  while (nombres.next()) {
    // What isn't there reads as Null: of the asientos only those that aren't square are kept.
    if (Variant dato = nombres.value(1); !dato.isNull())
      tabla.datos.insert(nombres.text(0), std::move(dato));
  }
  tabla.entera = true;
}

Variant Fuente::leeUno(Tabla& tabla, const QString& codigo) const {
  const bool texto = tipo(tabla.codigo) == FieldType::Text;
  RowReader nombre(*base_,
                   tabla.sentencia + QStringLiteral(" WHERE ") + tabla.clave +
                       (texto ? QStringLiteral(" = '%1'") : QStringLiteral(" = %1")).arg(codigo));
  return *tabla.datos.insert(codigo, nombre.next() ? nombre.value(1) : Variant());
}

void Fuente::leeNombres() const {
  for (Tabla& t : buscas_) {
    if (!t.entera) lee(t);
  }
}

Variant Fuente::dato(int ordinal, const QString& codigo) const {
  Tabla& tabla = buscas_[static_cast<size_t>(ordinal - propias_)];
  if (tabla.entera) return tabla.datos.value(codigo);
  const auto sabido = tabla.datos.constFind(codigo);
  if (sabido != tabla.datos.constEnd()) return *sabido;
  // A page asks for a few names; a whole book is better served by all of them at once.
  if (tabla.datos.size() < kNombresSueltos && !codigo.isEmpty() && !codigo.contains(u'\''))
    return leeUno(tabla, codigo);
  lee(tabla);
  return tabla.datos.value(codigo);
}

std::unique_ptr<Lectura> Fuente::lectura(const std::vector<int>& solo,
                                         std::vector<int>* sitio) const {
  if (sitio) sitio->clear();
  if (fijas_) return fijas_->lectura();
  if (solo.empty() || consulta_.columnas.size() != propias_)
    return std::make_unique<LecturaViva>(*base_, consulta_.sentencia());
  return std::make_unique<LecturaViva>(*base_, consulta_.sentenciaCorta(solo, sitio));
}

std::shared_ptr<Recordset> Fuente::registros() const {
  if (abierta_) return std::exchange(abierta_, nullptr);
  return base_->OpenRecordset(consulta_.sentencia(), Opening::FirstRows);
}

Variant Cursor::valor(int ordinal) const {
  if (ordinal < fuente_.propias()) return celda(ordinal);
  return fuente_.dato(ordinal, textoCelda(fuente_.codigoDe(ordinal)));
}

Variant Cursor::valorAnterior(int ordinal) const {
  if (ordinal < fuente_.propias()) return celdaAnterior(ordinal);
  return fuente_.dato(ordinal, celdaAnterior(fuente_.codigoDe(ordinal)).display());
}

QString Cursor::texto(int ordinal) const {
  if (ordinal < fuente_.propias()) return textoCelda(ordinal);
  return valor(ordinal).display();
}

double Cursor::numero(int ordinal) const {
  if (ordinal < fuente_.propias()) return numeroCelda(ordinal);
  const Variant v = valor(ordinal);
  return v.isNull() ? 0 : v.number();
}

CursorAvance::CursorAvance(const Fuente& fuente, std::vector<int> retiene,
                           const std::vector<int>& solo)
    : Cursor(fuente), lectura_(fuente.lectura(solo, &sitios_)), retiene_(std::move(retiene)) {
  for (int& c : retiene_) {
    if (c >= fuente.propias()) c = fuente.codigoDe(c);
  }
  anterior_.resize(static_cast<size_t>(fuente.propias()));
}

bool CursorAvance::situa(qint64 fila) {
  if (fila == fila_) return !fin_;
  if (fila_ >= 0) {
    for (const int c : retiene_) anterior_[static_cast<size_t>(c)] = lectura_->valor(sitio(c));
  }
  fila_ = fila;
  fin_ = !lectura_->siguiente();
  return !fin_;
}

Variant CursorAvance::celdaAnterior(int ordinal) const {
  return anterior_[static_cast<size_t>(ordinal)];
}

double Cursor::numeroCelda(int ordinal) const {
  const Variant v = celda(ordinal);
  return v.isNull() ? 0 : v.number();
}

}  // namespace reports
