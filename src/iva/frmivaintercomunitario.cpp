#include "iva/frmivaintercomunitario.h"

#include <QLabel>
#include <QLineEdit>

#include "common/formato.h"
#include "engine/dbengine.h"
#include "iva/grabaiva.h"
#include "iva/widgets/campotipoiva.h"
#include "journal/apunte.h"
#include "journal/widgets/camposubcuenta.h"
#include "journal/widgets/lineaapunte.h"
#include "toolkit/principal.h"
#include "toolkit/protocolo.h"
#include "ui_frmivaintercomunitario.h"

FrmIVAIntercomunitario::FrmIVAIntercomunitario(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmIVAIntercomunitario>()),
      DtaIVA_(contexto.motor) {
  ui_->setupUi(this);
  tipo_ = std::make_unique<CampoTipoIVA>(
      *this, ctx,
      CampoTipoIVA::Opciones{.codigo = *ui_->TxtIva,
                             .descripcion = *ui_->TXTIVADescripcion,
                             .porcenIVA = *ui_->TxtPorcenIVA,
                             .porcenRE = *ui_->TxtPorcenRec,
                             .aviso = *ui_->LblAvisoTipo,
                             .accion = accion::kTipoDeIntracomunitario});
  const struct {
    QLineEdit* codigo;
    QLabel* nombre;
    int accion;
  } cuentas[] = {
      {ui_->TxtIVASoportado, ui_->LblIvaSoportado, accion::kIntracomunitarioSoportado},
      {ui_->TxtIVARepercutido, ui_->LblIvaRepercutido, accion::kIntracomunitarioRepercutido},
      {ui_->TxtRESoportado, ui_->LblReSoportado, accion::kIntracomunitarioRESoportado},
      {ui_->TxtRERepercutido, ui_->LblRERepercutido, accion::kIntracomunitarioRERepercutido}};
  for (const auto& cuenta : cuentas) {
    cuentas_.push_back(std::make_unique<CampoSubcuenta>(
        *this, ctx,
        CampoSubcuenta::Opciones{
            .codigo = *cuenta.codigo, .nombre = *cuenta.nombre, .accion = cuenta.accion}));
    cuentas_.back()->conecta();
  }
  fecha(ui_->TxtFecha);
  sinSeleccion(ui_->TxtNumFactura);
  alEntrar(ui_->TxtNumFactura, [this] { ui_->TxtNumFactura->end(false); });
  alSalir(ui_->TxtFecha, [this] { tipo_->avisa(ui_->TxtFecha->text()); });
  alSalir(ui_->TxtIva, [this] { TxtIva_LostFocus(); });
  conectaImporte(*this, ctx, *ui_->TxtImporteIva);
  conectaImporte(*this, ctx, *ui_->TxtRecargo);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmIVAIntercomunitario::~FrmIVAIntercomunitario() = default;

// Kept: the recargo starts on the accounts of the IVA itself, where most acquisitions post it.
void FrmIVAIntercomunitario::Form_Activate() {
  for (QLineEdit* campo : {ui_->TxtImporteIva, ui_->TxtRecargo})
    campo->setText(Format(QStringLiteral("0"), sesion().MascaraImporte));
  const DataControl& empresa = ctx.principal->DtaEmpresaActual();
  const QString repercutido = empresa.Fields(QStringLiteral("IVARSub")).display();
  const QString soportado = empresa.Fields(QStringLiteral("IVASSub")).display();
  for (const auto& cuenta : cuentas_) cuenta->ajustaDigitos();
  ui_->TxtIVARepercutido->setText(repercutido);
  ui_->TxtRERepercutido->setText(repercutido);
  ui_->TxtIVASoportado->setText(soportado);
  ui_->TxtRESoportado->setText(soportado);
  for (const auto& cuenta : cuentas_) cuenta->deja();
}

void FrmIVAIntercomunitario::TxtIva_LostFocus() {
  if (tipo_->deja()) tipo_->avisa(ui_->TxtFecha->text());
}

FacturaIntracomunitaria FrmIVAIntercomunitario::factura() const {
  return {.NumFactura = ui_->TxtNumFactura->text(),
          .Fecha = ui_->TxtFecha->text(),
          .Iva = ui_->TxtIva->text(),
          .ImporteIva = ui_->TxtImporteIva->text(),
          .Recargo = ui_->TxtRecargo->text(),
          .IVASoportado = ui_->TxtIVASoportado->text(),
          .IVARepercutido = ui_->TxtIVARepercutido->text(),
          .RESoportado = ui_->TxtRESoportado->text(),
          .RERepercutido = ui_->TxtRERepercutido->text(),
          .PorcenIVA = tipo_->porcenIVA(),
          .PorcenREC = tipo_->porcenREC()};
}

void FrmIVAIntercomunitario::CmdAceptar_Click() {
  const QString mascara = sesion().MascaraImporte;
  if (esCero(ui_->TxtImporteIva->text(), mascara))
    return mensaje(QStringLiteral("No se puede realizar una partida si no tiene IVA"),
                   QStringLiteral("Error"));
  if (claseDe(windowTitle()).modificacion) return descargar();

  Principal& menu = *ctx.principal;
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  GrabadoIVA grabado;
  DtaIVA_.setDatabaseName(sesion().rutaEmpresa());
  try {
    grabaIntracomunitaria(factura(), mascara,
                          {DtaIVA_, menu.DtaDiarioLista(), menu.DtaEmpresaActual()}, grabado);
    ctx.cajas->guardaPendiente(this);  // given up, what was typed still stands
  } catch (const ErrorEjecucion& error) {
    avisarError(error.numero(), textoDeFallo(error, *empresa, grabado),
                QStringLiteral("CmdAceptar_Click"));
    return;
  }
  // The journal on show has the lines already; its totals follow.
  menu.ATotal();
  menu.ACuenta();
  menu.AAsiento();
  descargar();
}
