#include "journal/frmduplicarasiento.h"

#include "common/formato.h"
#include "engine/dbengine.h"
#include "journal/integridad.h"
#include "journal/masivos.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/principal.h"
#include "ui_frmduplicarasiento.h"

FrmDuplicarAsiento::FrmDuplicarAsiento(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmDuplicarAsiento>()),
      DtaEmpresa_(contexto.motor) {
  ui_->setupUi(this);
  ui_->TxtEmpresa->enlazar(DtaEmpresa_, "NombreEmpresa");
  fecha(ui_->TxtFecha);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmDuplicarAsiento::~FrmDuplicarAsiento() = default;

void FrmDuplicarAsiento::Form_Activate() {
  DataControl& diario = ctx.principal->DtaDiarioLista();
  const QString asiento = diario.Fields("NAsiento").text();
  ui_->TxtAsiento->setText(asiento);
  DtaEmpresa_.bind(sesion().rutaCatalogo(), "Select * from Empresas order by NombreEmpresa");
  ui_->TxtEmpresa->ponerTexto(sesion().EmpresaActual);
  diario.bind(sesion().rutaEmpresa(),
              "Select * from SqlDiarioPrincipalBlanco where Nasiento =" + asiento);
  ui_->TxtFecha->setText(Format(diario.Fields("Fecha").Value(), "dd/mm/yyyy"));
}

void FrmDuplicarAsiento::CmdAceptar_Click() {
  Workspace& area = ctx.motor.Workspaces(0);
  const auto origen = area.OpenDatabase(sesion().rutaEmpresa());
  const auto destino = area.OpenDatabase(sesion().rutaEmpresa(ui_->TxtEmpresa->currentText()));
  const QString asiento = ui_->TxtAsiento->text();
  if (const QString falta = avisoSinRegistro(*origen, "= " + asiento); !falta.isEmpty())
    return mensaje(falta, "Error");
  bool hecho = false;
  trabajaEnDiario(ctx, [&] {
    hecho = duplicaAsiento(ctx.motor, *origen, *destino,
                           {.asiento = asiento.toInt(),
                            .fecha = ui_->TxtFecha->text(),
                            .digitosSubcuenta = sesion().DigitosSubcuenta,
                            .eliminar = ui_->ChkEliminaAsiento->isChecked()});
  });
  if (!hecho) {
    mensaje(
        "El tamaño de las subcuentas en la empresa destino no son iguales a las del origen, el "
        "proceso se cancelara",
        "Atención");
    return;
  }
  descargar();
}
