#include "oficial/frminmuebles347.h"

#include "engine/dbengine.h"
#include "oficial/inmuebles347.h"
#include "oficial/modelo347fichero.h"
#include "toolkit/rejilla.h"
#include "ui_frminmuebles347.h"

FrmInmuebles347::FrmInmuebles347(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmInmuebles347>()),
      DtaInmuebles_(contexto.motor) {
  ui_->setupUi(this);
  std::vector<Columna> columnas;
  for (const DatoDeInmueble& dato : datosDeInmueble()) {
    const bool importe = QLatin1String(dato.campo) == QLatin1String("Importe");
    columnas.push_back({.campo = QLatin1String(dato.campo),
                        .titulo = QString::fromUtf8(dato.titulo),
                        .ancho = dato.ancho,
                        .tipo = importe ? Columna::Tipo::Importe : Columna::Tipo::Texto});
  }
  ui_->GrdInmuebles->enlazar(DtaInmuebles_, std::move(columnas));
  ui_->GrdInmuebles->permitirEdicion(Rejilla::Cambios | Rejilla::Altas | Rejilla::Bajas);
  alPulsar(ui_->CmdProponer, [this] { CmdProponer_Click(); });
  alPulsar(ui_->CmdSalir, [this] {
    if (ui_->GrdInmuebles->guardarFila()) descargar();
  });
}

FrmInmuebles347::~FrmInmuebles347() = default;

void FrmInmuebles347::Form_Load() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  aseguraInmuebles(*empresa);
  ui_->GrdInmuebles->setMascara(sesion().MascaraImporte);
  DtaInmuebles_.bind(sesion().rutaEmpresa(), "Select * from Inmuebles347");
  ui_->GrdInmuebles->setFocus();
}

// One for each tenant that has none yet, with the year's rent.
void FrmInmuebles347::CmdProponer_Click() {
  if (!ui_->GrdInmuebles->guardarFila()) return;
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  const Modelo347 modelo(*empresa, sesion().AnoActual);
  const int cuantos = modelo.proponeInmuebles(*empresa);
  ctx.cajas->guardaPendiente(this);
  DtaInmuebles_.Refresh();
  if (cuantos == 0)
    mensaje("Cada arrendatario que se declara tiene ya su local", "Locales arrendados");
}
