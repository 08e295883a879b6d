#include "yearend/frmperdidasyganacias.h"

#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "journal/apunte.h"
#include "journal/widgets/camposubcuenta.h"
#include "toolkit/principal.h"
#include "toolkit/protocolo.h"
#include "ui_frmperdidasyganacias.h"
#include "yearend/ejercicio.h"
#include "yearend/widgets/pasoanual.h"

FrmPerdidasyGanacias::FrmPerdidasyGanacias(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmPerdidasyGanacias>()) {
  ui_->setupUi(this);
  resultado_ = std::make_unique<CampoSubcuenta>(
      *this, ctx,
      CampoSubcuenta::Opciones{.codigo = *ui_->TxtSubcuenta,
                               .nombre = *ui_->LblSubcuenta,
                               .accion = accion::kPerdidasYGanancias,
                               .vuelve = false});
  conectaFechaDeAsiento(*this, ctx, *ui_->TxtFecha);
  conectaCompletable(*this, *ui_->TxtDescripcion);
  conectaCompletable(*this, *ui_->TxtSubcuenta);
  resultado_->conecta();
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmPerdidasyGanacias::~FrmPerdidasyGanacias() = default;

void FrmPerdidasyGanacias::Form_Activate() {
  const int digitos = sesion().DigitosSubcuenta;
  ui_->TxtFecha->setText("31/12/" + QString::number(sesion().AnoActual));
  // Each line against the result names the subcuenta that it comes from.
  ui_->TxtDescripcion->setMaxLength(kLargoDeDescripcion - 1 - digitos);
  resultado_->ajustaDigitos();
  ui_->TxtSubcuenta->setText("129" + QString(digitos - 3, u'0'));
  ignorando([this] { resultado_->busca(); });  // it may not be in the plan yet
}

void FrmPerdidasyGanacias::CmdAceptar_Click() {
  if (ui_->TxtSubcuenta->text().size() != sesion().DigitosSubcuenta)
    return mensaje("La subcuenta introducida no es correcta", "Error");
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  trabajaPasoAnual(ctx, {ui_->CmdAceptar, ui_->CmdCancelar}, [&](const Avance& avance) {
    for (const QChar grupo : {u'6', u'7'}) {
      ctx.principal->CmdLinAsiento_Click();
      barreGrupo(*empresa, grupo, ui_->TxtSubcuenta->text(),
                 {.asiento = ctx.principal->TxtAsiento().text(),
                  .fecha = ui_->TxtFecha->text(),
                  .descripcion = ui_->TxtDescripcion->text(),
                  .mascara = sesion().MascaraImporte},
                 avance);
    }
  });
  descargar();
}
