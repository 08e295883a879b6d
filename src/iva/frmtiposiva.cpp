#include "iva/frmtiposiva.h"

#include <QKeyEvent>

#include "engine/dbengine.h"
#include "toolkit/consulta.h"
#include "toolkit/rejilla.h"
#include "ui_frmtiposiva.h"

namespace {
constexpr double kCiento = 100;
}

FrmTiposIVA::FrmTiposIVA(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmTiposIVA>()), DtaIVA_(contexto.motor) {
  ui_->setupUi(this);
  DtaIVA_.setObjectName("DtaIVA");
  ui_->GrdIVA->enlazar(DtaIVA_, {{.campo = "Codigo", .titulo = "Código", .ancho = 7},
                                 {.campo = "Descripcion", .titulo = "Descripción", .ancho = 34},
                                 {.campo = "IVA",
                                  .titulo = "IVA",
                                  .ancho = 9,
                                  .tipo = Columna::Tipo::Numero,
                                  .maximo = kCiento},
                                 {.campo = "RE",
                                  .titulo = "Recargo",
                                  .ancho = 9,
                                  .tipo = Columna::Tipo::Numero,
                                  .maximo = kCiento}});
  ui_->GrdIVA->permitirEdicion(Rejilla::Cambios);
  alRecolocar(DtaIVA_, [this] { entrega(); });
  connect(ui_->GrdIVA, &Rejilla::intro, this, [this] { GrdIVA_KeyPress(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmTiposIVA::~FrmTiposIVA() = default;

// It opens on the rate that the field holds, so that the next one is a key away.
void FrmTiposIVA::Form_Load() {
  enCampo_ = textoDeDestino(ctx, destinosDeTipoIVA());
  DtaIVA_.bind(sesion().rutaEmpresa(), "Select * from TiposIVA");
  if (enCampo_ && !enCampo_->isEmpty() && !DtaIVA_.Eof())
    DtaIVA_.FindFirst("Codigo='" + QString(*enCampo_).remove('\'') + "'");
  abierta_ = true;
  ui_->GrdIVA->setFocus();
}

void FrmTiposIVA::entrega() {
  if (abierta_ && !DtaIVA_.Eof())
    entregarConsulta(ctx, destinosDeTipoIVA(), DtaIVA_.Fields("Codigo").display());
}

void FrmTiposIVA::GrdIVA_KeyPress() {
  entrega();  // the row is chosen even if the grid hasn't moved to it
  descargar();
}

// Leaving by Escape is having looked: the field holds again what it held.
void FrmTiposIVA::keyPressEvent(QKeyEvent* evento) {
  if (evento->key() == Qt::Key_Escape && enCampo_)
    entregarConsulta(ctx, destinosDeTipoIVA(), *enCampo_);
  Formulario::keyPressEvent(evento);
}
