// An invoice of either register, typed or changed: purchases (soportado) and sales (repercutido).
//
// Base, quota, recargo and total follow one another while they are typed; accepting posts what
// stands on the screen. Its caption says which register and whether it is new, and accepting reads
// it there. Called with llamada::kIVASoportado, kIVARepercutido, kIVAModificacion or kIVARevision;
// ValorElegido is the asiento that the invoice joins or that is changed.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "iva/facturaiva.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmIVASR;
}
class CampoSubcuenta;
class CampoTipoIVA;

class FrmIVASR : public Formulario {
  Q_OBJECT
 public:
  explicit FrmIVASR(Contexto& contexto);
  ~FrmIVASR() override;

  void Form_Activate() override;

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  void conectaImportes();
  void TxtFecha_LostFocus();
  void TxtIva_LostFocus();
  void TxtBase_LostFocus();
  void TxtTotal_LostFocus();
  void TxtCuentaRecargo_LostFocus();
  void LblNOrden_Click();
  void CmdAceptar_Click();

  void preparaAlta(LibroIVA libro);
  void titula(const ClaseDeFactura& clase);
  bool preparaModificacion(const QString& asiento, bool avisa);
  void leeFactura(const QString& asiento);
  void avisaDeAlmirel(bool avisa);
  void muestraAsiento(const QString& asiento);

  FacturaIVA factura() const;
  void muestraCuentas(const FacturaIVA& factura);
  void avisaDeTipo();
  QString cero() const;

  std::unique_ptr<Ui::FrmIVASR> ui_;
  std::unique_ptr<CampoSubcuenta> proveedor_;
  std::unique_ptr<CampoTipoIVA> tipo_;
  std::unique_ptr<CampoSubcuenta> cuentaIva_;
  std::unique_ptr<CampoSubcuenta> recargo_;
  std::unique_ptr<CampoSubcuenta> contrapartida_;
  DataControl DtaIVA_;
  QString totalCalculado_;  // what the box of the total shows while nobody has typed in it
  QString FacturaZuri_;
  QString EmpresaZuri_;
};
