#include "toolkit/comboenlazado.h"

#include <QSignalBlocker>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

ComboEnlazado::ComboEnlazado(QWidget* padre) : QComboBox(padre) {
  setInsertPolicy(NoInsert);
  setMaxVisibleItems(20);
  connect(this, &QComboBox::activated, this, &ComboEnlazado::elegir);
}

void ComboEnlazado::enlazar(DataControl& datos, const QString& campo) {
  if (datos_) disconnect(datos_, nullptr, this, nullptr);
  datos_ = &datos;
  campo_ = campo;
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
    for (int i = 0; ordinal >= 0 && i < filas.rowTotal(); ++i) {
      // The position goes along: rows deleted since then leave a gap.
      if (!filas.isDeleted(i)) addItem(filas.cell(i, ordinal).display(), i);
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
  ponerAlDia();
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
