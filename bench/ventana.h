// A session on a company's books, and its main window.
#pragma once

#include "libros.h"
#include "toolkit/cajasqt.h"
#include "toolkit/contexto.h"
#include "toolkit/registro.h"

namespace banco {

// A dialog is shown, painted and closed again: what the user waits for until it can be used.
class CajasVistas : public CajasQt {
 public:
  using CajasQt::CajasQt;

 protected:
  void ensenaModal(QDialog& dialogo) override;
};

struct Ventana {
  explicit Ventana(const Libros& libros, const QString& empresa = kEmpresa);
  ~Ventana();

  Reloj reloj;
  DBEngine motor;
  Contexto ctx{motor};
  CajasVistas cajas;
  Registro registro;
};

}  // namespace banco
