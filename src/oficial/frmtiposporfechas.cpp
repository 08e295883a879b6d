#include "oficial/frmtiposporfechas.h"

#include "common/formato.h"
#include "engine/dbengine.h"
#include "iva/tiposfechas.h"
#include "toolkit/rejilla.h"
#include "ui_frmtiposporfechas.h"

FrmTiposPorFechas::FrmTiposPorFechas(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmTiposPorFechas>()),
      DtaTipos_(contexto.motor) {
  ui_->setupUi(this);
  using Tipo = Columna::Tipo;
  ui_->GrdTipos->enlazar(DtaTipos_,
                         {{.campo = "IVA", .titulo = "IVA", .ancho = 9, .tipo = Tipo::Numero},
                          {.campo = "RE", .titulo = "Recargo", .ancho = 9, .tipo = Tipo::Numero},
                          {.campo = "Desde", .titulo = "Desde", .ancho = 12, .tipo = Tipo::Fecha},
                          {.campo = "Hasta", .titulo = "Hasta", .ancho = 12, .tipo = Tipo::Fecha},
                          {.campo = "Dudoso", .titulo = "Dudoso", .ancho = 8, .tipo = Tipo::SiNo},
                          {.campo = "Bienes", .titulo = "Bienes", .ancho = 36}});
  ui_->GrdTipos->permitirEdicion(Rejilla::Cambios | Rejilla::Altas | Rejilla::Bajas);
  fecha(ui_->TxtFecha);
  alPulsar(ui_->CmdPoner, [this] { CmdPoner_Click(); });
  alPulsar(ui_->CmdSalir, [this] {
    if (ui_->GrdTipos->guardarFila()) descargar();
  });
}

FrmTiposPorFechas::~FrmTiposPorFechas() = default;

void FrmTiposPorFechas::Form_Load() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  aseguraTiposPorFechas(*empresa);
  DtaTipos_.bind(sesion().rutaEmpresa(), "Select * from TiposPorFechas");
  ui_->TxtFecha->setText(Format(ctx.reloj->hoy(), QStringLiteral("dd/mm/yyyy")));
  ui_->GrdTipos->setFocus();
}

void FrmTiposPorFechas::CmdPoner_Click() {
  if (!ui_->GrdTipos->guardarFila()) return;
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  const QDate dia = Variant(ui_->TxtFecha->text()).date();
  const TiposPuestos puestos = ponTiposEnVigor(*empresa, TiposPorFechas(*empresa), dia);
  ctx.cajas->guardaPendiente(this);
  QString texto = puestos.codigos.isEmpty()
                      ? QStringLiteral("Los tipos en vigor ya están en la tabla de tipos de IVA")
                      : QStringLiteral("Tipos puestos en los códigos ") +
                            puestos.codigos.join(QStringLiteral(", "));
  if (puestos.sinCodigo > 0)
    texto =
        QStringLiteral("%1. Faltan códigos libres para %2 tipos").arg(texto).arg(puestos.sinCodigo);
  mensaje(texto, "Tipos de IVA");
}
