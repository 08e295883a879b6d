#include "reports/frmextractoentractas.h"

#include "common/comillas.h"
#include "common/funciones.h"
#include "engine/dbengine.h"
#include "reports/extracto.h"
#include "toolkit/progreso.h"
#include "ui_frmextractoentractas.h"

FrmExtractoEntraCtas::FrmExtractoEntraCtas(Contexto& contexto)
    : FrmListado(contexto),
      ui(std::make_unique<Ui::FrmExtractoEntraCtas>()),
      DtaSubcuentas(contexto.motor) {
  ui->setupUi(this);
  fecha(ui->TxtDesde);
  fecha(ui->TxtHasta);
  for (QLineEdit* campo : {ui->TxtSubcuentaDesde, ui->TxtSubcuentaHasta})
    alSalir(campo, [this, campo] { expande(campo); });
  alPulsar(ui->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmExtractoEntraCtas::~FrmExtractoEntraCtas() = default;

void FrmExtractoEntraCtas::Form_Activate() {
  ponAnoEntero(ui->TxtDesde, ui->TxtHasta);
}

void FrmExtractoEntraCtas::expande(QLineEdit* campo) {
  campo->setText(ExpandeCodigo(campo->text(), sesion().DigitosSubcuenta));
}

// The trap is armed for the launch alone: a range without subcuentas fails before it.
void FrmExtractoEntraCtas::CmdAceptar_Click() {
  calculaSaldos();
  lanza([this] { return listado(); });
}

// The balances run over the whole year, whatever the limits of the book.
void FrmExtractoEntraCtas::calculaSaldos() {
  DtaSubcuentas.bind(
      sesion().rutaEmpresa(),
      "Select * from Subcuentas where Subcuenta >=" + entreComillas(ui->TxtSubcuentaDesde->text()) +
          " and subcuenta <=" + entreComillas(ui->TxtSubcuentaHasta->text()) +
          " order by Subcuenta");
  DtaSubcuentas.MoveLast();
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  Progreso progreso(ctx, *ui->Bar, DtaSubcuentas.Recordset().RecordCount());
  for (DtaSubcuentas.MoveFirst(); !DtaSubcuentas.Eof(); DtaSubcuentas.MoveNext()) {
    progreso.avanza(DtaSubcuentas.Recordset().AbsolutePosition());
    escribeSaldos(*empresa, DtaSubcuentas.Fields("Subcuenta").text(), {});
  }
  progreso.oculta();
}

Listado FrmExtractoEntraCtas::listado() const {
  return {
      .titulo = "Listado de libro Mayor",
      .plantilla = "Impresos\\May1.rpt",
      .seleccion =
          seleccionCodigos("SqlDiarioPrincipal.Subcuenta", ui->TxtSubcuentaDesde->text(),
                           ui->TxtSubcuentaHasta->text()) +
          " and " +
          seleccionFechas("SqlDiarioPrincipal.Fecha", ui->TxtDesde->text(), ui->TxtHasta->text()),
      .limites = textoLimites(ui->TxtDesde->text(), ui->TxtHasta->text())};
}
