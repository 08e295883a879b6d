#include "journal/frmcuadrarasientos.h"

#include "common/formato.h"
#include "engine/dbengine.h"
#include "journal/apunte.h"
#include "journal/descuadres.h"
#include "journal/widgets/camposubcuenta.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/principal.h"
#include "toolkit/protocolo.h"
#include "ui_frmcuadrarasientos.h"

FrmCuadrarAsientos::FrmCuadrarAsientos(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmCuadrarAsientos>()),
      DtaDescuadres_(contexto.motor) {
  ui_->setupUi(this);
  subcuenta_ = std::make_unique<CampoSubcuenta>(
      *this, ctx,
      CampoSubcuenta::Opciones{
          .codigo = *ui_->TxtSubcuenta, .nombre = *ui_->LblCuenta, .accion = accion::kCuadrar});
  subcuenta_->conecta();
  fecha(ui_->TxtDesde);
  fecha(ui_->TxtHasta);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmCuadrarAsientos::~FrmCuadrarAsientos() = default;

void FrmCuadrarAsientos::Form_Activate() {
  subcuenta_->ajustaDigitos();
  const QString ano = QString::number(sesion().AnoActual);
  ui_->TxtDesde->setText("01/01/" + ano);
  ui_->TxtHasta->setText("31/12/" + ano);
}

void FrmCuadrarAsientos::CmdAceptar_Click() {
  DtaDescuadres_.bind(sesion().rutaEmpresa(),
                      "Select * from SqlSumaDiarioPorAsientos order by nasiento");
  trabajaEnDiario(ctx, *ui_->Bar, [this](const Avance& avance) {
    recorreDescuadres(DtaDescuadres_.Recordset(), sesion().MascaraImporte, avance,
                      [this](int asiento, const QString& resto) {
                        cuadra(asiento, resto);
                        return true;
                      });
  });
  mensaje("Fín de la busqueda de cuadrar asientos descuadrados", "Fín");
  descargar();
}

void FrmCuadrarAsientos::cuadra(int asiento, const QString& resto) {
  DataControl& diario = ctx.principal->DtaDiarioLista();
  const QString numero = QString::number(asiento);
  diario.bind(sesion().rutaEmpresa(),
              "Select * from SqlDiarioPrincipalBlanco where Nasiento = " + numero);
  const QDate dia = diario.Fields("Fecha").Value().date();
  // The limits themselves stay out: opening and closing entries stand on them.
  if (!(dia > Variant(ui_->TxtDesde->text()).date() && dia < Variant(ui_->TxtHasta->text()).date()))
    return;
  if (!ui_->ChkSolicitar->isChecked() &&
      !pregunta("Asiento " + numero + " descuadrado, ¿desea cuadrar el asiento?",
                "Descuadre localizado"))
    return;
  Apunte apunte;
  apunte.NAsiento = numero;
  apunte.Fecha = Format(dia, "dd/mm/yyyy");
  apunte.Subcuenta = ui_->TxtSubcuenta->text();
  apunte.Descripcion = "Descuadre Automático";
  const double falta = -ImporteDe(resto, sesion().MascaraImporte).value_or(0);
  apunte.DH = falta > 0 ? "D" : "H";
  apunte.Importe = falta;
  grabaApunte(diario, ctx.principal->DtaEmpresaActual(), apunte);
  // The next question is answered looking at them.
  ctx.principal->ATotal();
  ctx.principal->AMarcado();
}
