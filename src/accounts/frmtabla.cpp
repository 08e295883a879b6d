#include "accounts/frmtabla.h"

#include "engine/dbengine.h"
#include "ui_frmtabla.h"

FrmTabla::FrmTabla(Contexto& contexto, const QString& nombre, const QString& titulo,
                   const QString& tabla, std::vector<Columna> columnas)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmTabla>()),
      tabla_(tabla),
      DtaTabla_(contexto.motor) {
  setObjectName(nombre);
  ui_->setupUi(this);
  DtaTabla_.setObjectName("DtaTabla");
  setWindowTitle(titulo);
  ui_->DBGrid1->enlazar(DtaTabla_, std::move(columnas));
  ui_->DBGrid1->permitirEdicion(Rejilla::Cambios);
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmTabla::~FrmTabla() = default;

void FrmTabla::Form_Load() {
  DtaTabla_.bind(sesion().rutaEmpresa(), "Select * from " + tabla_);
}
