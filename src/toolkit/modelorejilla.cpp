#include "toolkit/modelorejilla.h"

#include <algorithm>

#include "common/errorejecucion.h"
#include "common/formato.h"

void ModeloRejilla::enlazar(DataControl& datos, std::vector<Columna> columnas) {
  beginResetModel();
  datos_ = &datos;
  columnas_ = std::move(columnas);
  ordinales_.assign(columnas_.size(), -1);
  total_ = 0;
  endResetModel();
  reiniciar_ = true;
}

void ModeloRejilla::setCambios(int cambios) {
  beginResetModel();
  cambios_ = cambios;
  endResetModel();
}

// --- following the recordset
// ----------------------------------------------------------------------

void ModeloRejilla::reiniciar() {
  beginResetModel();
  reiniciar_ = false;
  borradas_.clear();
  porBorrar_.clear();
  nueva_.clear();
  total_ = 0;
  if (datos_ && datos_->isOpen()) {
    const auto& filas = datos_->Recordset();
    total_ = filas.rowsKnown();
    for (size_t i = 0; i < columnas_.size(); ++i) ordinales_[i] = filas.Ordinal(columnas_[i].campo);
  }
  endResetModel();
}

void ModeloRejilla::ponerAlDia() {
  if (!datos_ || !datos_->isOpen() || reiniciar_) return reiniciar();
  const int ahora = datos_->Recordset().rowsKnown();
  if (ahora > total_) {
    beginInsertRows({}, filas(), filas() + ahora - total_ - 1);
    total_ = ahora;
    endInsertRows();
  }
  const auto porBorrar = std::exchange(porBorrar_, {});
  for (const int posicion : porBorrar) {
    const auto sitio = std::lower_bound(borradas_.begin(), borradas_.end(), posicion);
    if (posicion >= total_ || (sitio != borradas_.end() && *sitio == posicion)) continue;
    const int fila = filaDe(posicion);
    beginRemoveRows({}, fila, fila);
    borradas_.insert(sitio, posicion);
    endRemoveRows();
  }
}

int ModeloRejilla::filaDe(int posicion) const {
  const auto antes = std::lower_bound(borradas_.begin(), borradas_.end(), posicion);
  return posicion - static_cast<int>(antes - borradas_.begin());
}

bool ModeloRejilla::borrada(int posicion) const {
  return std::binary_search(borradas_.begin(), borradas_.end(), posicion);
}

int ModeloRejilla::posicion(int fila) const {
  // The k-th deleted position, less the k deleted before it, is the row it used to stand at.
  int desde = 0;
  int hasta = static_cast<int>(borradas_.size());
  while (desde < hasta) {
    const int medio = (desde + hasta) / 2;
    if (borradas_[medio] - medio <= fila) {
      desde = medio + 1;
    } else {
      hasta = medio;
    }
  }
  return fila + desde;
}

// --- texts
// ----------------------------------------------------------------------------------------

QString ModeloRejilla::texto(int fila, int columna) const {
  if (fila == filaNueva()) return nueva_.value(columna);
  if (!datos_ || !datos_->isOpen() || ordinales_[columna] < 0 || fila < 0) return {};
  const auto& filas = datos_->Recordset();
  const int donde = posicion(fila);
  if (donde >= filas.rowsKnown()) return {};
  return formato(filas.cell(donde, ordinales_[columna]), columna);
}

QString ModeloRejilla::textoPintado(int fila, int columna) const {
  try {
    return texto(fila, columna);
  } catch (const ErrorEjecucion&) {
    sinLeer_ = true;
    return formato(datos_->Recordset().shown(posicion(fila), ordinales_[columna]), columna);
  }
}

QString ModeloRejilla::formato(const Variant& valor, int columna) const {
  if (valor.isNull()) return {};
  const Columna& c = columnas_[columna];
  switch (c.tipo) {
    case Columna::Tipo::Importe:
      return mascara(columna).isEmpty() ? valor.text() : Format(valor, mascara(columna));
    case Columna::Tipo::Fecha:
      return valor.isDate() ? Format(valor, QStringLiteral("dd/mm/yyyy")) : valor.text();
    case Columna::Tipo::SiNo:
      return valor.toBool() ? QStringLiteral("Sí") : QStringLiteral("No");
    case Columna::Tipo::Texto:
    case Columna::Tipo::Numero:
      break;
  }
  return valor.text();
}

const QString& ModeloRejilla::mascara(int columna) const {
  const QString& suya = columnas_[columna].mascara;
  return suya.isEmpty() ? mascara_ : suya;
}

namespace {
int alineacion(const Columna& columna) {
  const bool cifras =
      columna.tipo == Columna::Tipo::Importe || columna.tipo == Columna::Tipo::Numero;
  return int(Qt::AlignVCenter | (cifras ? Qt::AlignRight : Qt::AlignLeft));
}
// What is no number is the engine's to refuse.
void exigirLimite(const Columna& columna, const QString& texto) {
  if (columna.maximo == 0 || !EsNumerico(texto)) return;
  const double valor = Variant(texto).number();
  if (valor < 0 || valor > columna.maximo)
    throw ErrorEjecucion(err::kDesbordamiento,
                         QStringLiteral("%1, de 0 a %2").arg(columna.titulo).arg(columna.maximo));
}

}  // namespace

QVariant ModeloRejilla::data(const QModelIndex& indice, int papel) const {
  switch (papel) {
    case Qt::DisplayRole:
      return textoPintado(indice.row(), indice.column());
    case Qt::EditRole:
      return textoPintado(indice.row(), indice.column()).trimmed();
    case Qt::TextAlignmentRole:
      return alineacion(columnas_[indice.column()]);
    default:
      return {};
  }
}

QVariant ModeloRejilla::headerData(int seccion, Qt::Orientation sentido, int papel) const {
  if (sentido == Qt::Vertical) {
    return papel == Qt::DisplayRole && seccion == filaNueva() ? QStringLiteral("*") : QVariant();
  }
  if (papel == Qt::DisplayRole) return columnas_[seccion].titulo;
  if (papel == Qt::TextAlignmentRole) return alineacion(columnas_[seccion]);
  return {};
}

int ModeloRejilla::rowCount(const QModelIndex& padre) const {
  if (padre.isValid() || !datos_) return 0;
  return filas() + (cambios_ & Rejilla::Altas ? 1 : 0);
}

int ModeloRejilla::columnCount(const QModelIndex& padre) const {
  return padre.isValid() ? 0 : static_cast<int>(columnas_.size());
}

bool ModeloRejilla::editable(int columna) const {
  return cambios_ != 0 && columna >= 0 && columnas_[columna].editable && ordinales_[columna] >= 0;
}

int ModeloRejilla::largo(int columna) const {
  return ordinales_[columna] < 0 ? 0 : datos_->Recordset().Size(ordinales_[columna]);
}

Qt::ItemFlags ModeloRejilla::flags(const QModelIndex& indice) const {
  auto senales = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (indice.isValid() && editable(indice.column())) senales |= Qt::ItemIsEditable;
  return senales;
}

// --- editing
// --------------------------------------------------------------------------------------

bool ModeloRejilla::intentar(const std::function<void()>& cambio) {
  try {
    cambio();
    return true;
  } catch (const ErrorEjecucion& e) {
    fallo_ = e;
  }
  try {
    datos_->CancelUpdate();
  } catch (const ErrorEjecucion&) {
    // There was no edit open yet.
  }
  return false;
}

std::optional<ErrorEjecucion> ModeloRejilla::tomarFallo() {
  return std::exchange(fallo_, {});
}

bool ModeloRejilla::escribir(int fila, int columna, const QString& texto) {
  if (fila == filaNueva()) {
    if (texto.isEmpty()) {
      nueva_.remove(columna);
    } else {
      nueva_.insert(columna, texto);
    }
    return true;
  }
  const int donde = posicion(fila);
  return intentar([&] {
    exigirLimite(columnas_[columna], texto);
    if (datos_->Recordset().AbsolutePosition() != donde) datos_->setAbsolutePosition(donde);
    datos_->Edit();
    datos_->Fields(ordinales_[columna]) = texto.isEmpty() ? Variant() : Variant(texto);
    datos_->Update();
  });
}

bool ModeloRejilla::guardarNueva() {
  if (nueva_.isEmpty()) return true;
  const bool guardada = intentar([&] {
    datos_->AddNew();
    for (auto it = nueva_.cbegin(); it != nueva_.cend(); ++it) {
      exigirLimite(columnas_[it.key()], it.value());
      datos_->Fields(ordinales_[it.key()]) = Variant(it.value());
    }
    datos_->Update();
  });
  if (guardada) dejarNueva();
  return guardada;
}

void ModeloRejilla::dejarNueva() {
  nueva_.clear();
  if (filaNueva() < 0 || columnas_.empty()) return;
  Q_EMIT dataChanged(index(filaNueva(), 0), index(filaNueva(), columnCount() - 1));
}

bool ModeloRejilla::setData(const QModelIndex& indice, const QVariant& valor, int papel) {
  if (papel != Qt::EditRole || !editable(indice.column())) return false;
  const QString nuevo = valor.toString();
  if (nuevo == data(indice, Qt::EditRole).toString()) return true;
  const bool escrito = escribir(indice.row(), indice.column(), nuevo);
  Q_EMIT dataChanged(indice, indice);
  return escrito;
}
