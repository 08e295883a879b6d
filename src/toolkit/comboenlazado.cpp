#include "toolkit/comboenlazado.h"

#include <QAbstractItemView>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace {

constexpr int kCodigo = Qt::UserRole + 1;

// A row of the list with its code in front.
class FilaConCodigo : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* opcion, const QModelIndex& fila) const override {
    QStyledItemDelegate::initStyleOption(opcion, fila);
    opcion->text.prepend(fila.data(kCodigo).toString() + QStringLiteral("   "));
  }
};

}  // namespace

ComboEnlazado::ComboEnlazado(QWidget* padre) : QComboBox(padre) {
  setInsertPolicy(NoInsert);
  setMaxVisibleItems(20);
  connect(this, &QComboBox::activated, this, &ComboEnlazado::elegir);
}

void ComboEnlazado::enlazar(DataControl& datos, const QString& campo, const QString& codigo) {
  if (datos_) disconnect(datos_, nullptr, this, nullptr);
  datos_ = &datos;
  campo_ = campo;
  codigo_ = codigo;
  if (!codigo.isEmpty()) setItemDelegate(new FilaConCodigo(this));
  connect(&datos, &DataControl::refreshed, this, &ComboEnlazado::llenar);
  for (const auto senal :
       {&DataControl::rowAdded, &DataControl::rowChanged, &DataControl::rowDeleted}) {
    connect(&datos, senal, this, &ComboEnlazado::anotarCambio);
  }
  llenar();
}

void ComboEnlazado::llenar() {
  const QSignalBlocker guarda(this);
  const QString texto = currentText();
  anticuado_ = false;
  clear();
  if (datos_ && datos_->isOpen()) {
    const auto& filas = datos_->Recordset();
    const int ordinal = filas.Ordinal(campo_);
    const int ordinalCodigo = codigo_.isEmpty() ? -1 : filas.Ordinal(codigo_);
    for (int i = 0; ordinal >= 0 && i < filas.rowTotal(); ++i) {
      if (filas.isDeleted(i)) continue;
      const QString fila = filas.cell(i, ordinal).display();
      if (fila.trimmed().isEmpty()) continue;
      // The position goes along: rows that are left out leave a gap.
      addItem(fila, i);
      if (ordinalCodigo >= 0) {
        setItemData(count() - 1, filas.cell(i, ordinalCodigo).display(), kCodigo);
      }
    }
  }
  setCurrentIndex(findText(texto, Qt::MatchFixedString));
  if (isEditable()) setEditText(texto);
}

void ComboEnlazado::anotarCambio() {
  anticuado_ = true;
}

void ComboEnlazado::ponerAlDia() {
  if (anticuado_) llenar();
}

void ComboEnlazado::showPopup() {
  Formulario::protegeEn(
      this, [this] { ponerAlDia(); }, objectName() + QStringLiteral("_DropDown"));
  // The field may be narrow, the list shows its rows whole.
  view()->setMinimumWidth(view()->sizeHintForColumn(0) +
                          view()->verticalScrollBar()->sizeHint().width());
  QComboBox::showPopup();
}

void ComboEnlazado::elegir(int indice) {
  if (indice < 0 || !datos_) return;
  Formulario::protegeEn(
      this,
      [&] {
        datos_->setAbsolutePosition(itemData(indice).toInt());
        Q_EMIT elegido();
      },
      objectName() + QStringLiteral("_Click"));
}

bool ComboEnlazado::ponerTexto(const QString& texto) {
  ponerAlDia();
  const int indice = texto.isEmpty() ? -1 : findText(texto, Qt::MatchFixedString);
  setCurrentIndex(indice);
  if (isEditable()) setEditText(indice < 0 ? texto : itemText(indice));
  if (indice < 0) return false;
  elegir(indice);
  return true;
}
