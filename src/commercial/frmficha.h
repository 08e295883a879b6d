// A card of fields over a table of the commercial program, with a list that slides over it.
//
// Its books are one file for the whole installation, Gestion.MDB, which comes with that program and
// is never made here. The card is either looked at, and then its fields are closed, or written;
// only what is accepted with "Guardar" reaches the file.
#pragma once

#include <vector>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

class Rejilla;

class FrmFicha : public Formulario {
  Q_OBJECT
 public:
  void Form_Load() override;
  void Form_Activate() override;

 protected:
  struct Campo {
    QLineEdit* control;
    const char* campo;      // of the table
    bool importe = false;   // by the company's mask
    QString mostrado = {};  // what the record had shown
  };

  explicit FrmFicha(Contexto& contexto);
  // To be called when the screen is made: its buttons are reached by their names. `otros` are the
  // controls that open and close with the fields.
  void conecta(std::vector<Campo> campos, std::vector<QWidget*> otros);

  // The fields of a new card take what most begin with.
  virtual void alNuevo() {}
  // After the card shows another record, and after a field of it has changed.
  virtual void alMostrar() {}
  void EsconderCampos();
  void MostrarCampos();
  // Code and name of a table of the commercial program for a list; empty if it hasn't got it.
  std::vector<std::pair<QString, QString>> lista(const QString& tabla);

 private:
  enum class Estado { Consulta, Alta, Cambio };

  template <class C = QAbstractButton>
  C& control(const char* nombre) const;
  QString campoElegido() const;
  bool hayFilas() const;
  void abre(const QString& condicion = {});
  void muestra();
  void muestraRegistro();
  void vaciaOtros();
  void relee(int posicion);
  void pon(Estado estado);
  void escribe();
  void CmdNuevo_Click();
  void CmdEditar_Click();
  void CmdGuardar_Click();
  void CmdCancelar_Click();
  void CmdElimina_Click();
  void CmdVerlista_Click();
  void CmdLocalizar_Click();
  void verLista(bool si);

  DataControl DtaBase_;
  std::vector<Campo> campos_;
  std::vector<QWidget*> otros_;
  Estado estado_ = Estado::Consulta;
};
