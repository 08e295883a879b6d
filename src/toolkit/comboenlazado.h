// A combo over one column of a Data control: companies, concepts, users.
//
// The list is the column's texts in the order of the source, and follows each Refresh. Picking
// moves the Data control to the picked row, so that its fields answer for it. Typing, where it is
// allowed, moves nothing. In a .ui file it is a QComboBox promoted to ComboEnlazado.
#pragma once

#include <QComboBox>
#include <QPointer>

class DataControl;

class ComboEnlazado : public QComboBox {
  Q_OBJECT
 public:
  explicit ComboEnlazado(QWidget* padre = nullptr);

  // `campo` is what the list shows, and `codigo`, if given, the column written before it; only the
  // former goes into the field. Rows where it is empty aren't on offer. Free text is set with
  // editable in the .ui file; the text typed is kept when the list is filled anew.
  void enlazar(DataControl& datos, const QString& campo, const QString& codigo = {});

  // The text of the field, typed or picked; empty when nothing is.
  QString texto() const { return currentText(); }
  // Puts a text in the field. If it is one of the list (without regard to case) that row is picked,
  // as if the user had done it, the Data control moves to it, and elegido() is emitted: true.
  // Otherwise an editable combo just shows it, the other one is left empty: false.
  bool ponerTexto(const QString& texto);

  void showPopup() override;

 Q_SIGNALS:
  // A row has been picked, by the user or by ponerTexto, and the Data control already stands on it.
  void elegido();

 private:
  void llenar();
  void anotarCambio();
  void ponerAlDia();
  void elegir(int indice);

  QPointer<DataControl> datos_;
  QString campo_;
  QString codigo_;
  bool anticuado_ = false;  // rows have changed since the list was filled
};
