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
      ui(std::make_unique<Ui::FrmDuplicarAsiento>()),
      DtaEmpresa(contexto.motor) {
  ui->setupUi(this);
  ui->TxtEmpresa->enlazar(DtaEmpresa, "NombreEmpresa");
  fecha(ui->TxtFecha);
  alPulsar(ui->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmDuplicarAsiento::~FrmDuplicarAsiento() = default;

void FrmDuplicarAsiento::Form_Activate() {
  DataControl& diario = ctx.principal->DtaDiarioLista();
  const QString asiento = diario.Fields("NAsiento").text();
  ui->TxtAsiento->setText(asiento);
  DtaEmpresa.bind(sesion().rutaCatalogo(), "Select * from Empresas order by NombreEmpresa");
  ui->TxtEmpresa->ponerTexto(sesion().EmpresaActual);
  diario.bind(sesion().rutaEmpresa(),
              "Select * from SqlDiarioPrincipalBlanco where Nasiento =" + asiento);
  ui->TxtFecha->setText(Format(diario.Fields("Fecha").Value(), "dd/mm/yyyy"));
}

void FrmDuplicarAsiento::CmdAceptar_Click() {
  Workspace& area = ctx.motor.Workspaces(0);
  const auto origen = area.OpenDatabase(sesion().rutaEmpresa());
  const auto destino = area.OpenDatabase(sesion().rutaEmpresa(ui->TxtEmpresa->currentText()));
  const QString asiento = ui->TxtAsiento->text();
  if (const QString falta = avisoSinRegistro(*origen, "= " + asiento); !falta.isEmpty())
    return mensaje(falta, "Error");
  bool hecho = false;
  trabajaEnDiario(ctx, [&] {
    hecho = duplicaAsiento(ctx.motor, *origen, *destino, asiento.toInt(), ui->TxtFecha->text(),
                           sesion().DigitosSubcuenta, ui->ChkEliminaAsiento->isChecked());
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
