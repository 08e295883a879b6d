#include "reports/frmextractoentractas.h"

#include "common/comillas.h"
#include "common/funciones.h"
#include "engine/dbengine.h"
#include "reports/extracto.h"
#include "toolkit/progreso.h"
#include "ui_frmextractoentractas.h"

FrmExtractoEntraCtas::FrmExtractoEntraCtas(Contexto& contexto)
    : FrmListado(contexto),
      ui_(std::make_unique<Ui::FrmExtractoEntraCtas>()),
      DtaSubcuentas_(contexto.motor) {
  ui_->setupUi(this);
  fecha(ui_->TxtDesde);
  fecha(ui_->TxtHasta);
  for (QLineEdit* campo : {ui_->TxtSubcuentaDesde, ui_->TxtSubcuentaHasta})
    alSalir(campo, [this, campo] { expande(campo); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmExtractoEntraCtas::~FrmExtractoEntraCtas() = default;

void FrmExtractoEntraCtas::Form_Activate() {
  ponAnoEntero(ui_->TxtDesde, ui_->TxtHasta);
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
  DtaSubcuentas_.bind(sesion().rutaEmpresa(),
                      "Select * from Subcuentas where Subcuenta >=" +
                          entreComillas(ui_->TxtSubcuentaDesde->text()) + " and subcuenta <=" +
                          entreComillas(ui_->TxtSubcuentaHasta->text()) + " order by Subcuenta");
  DtaSubcuentas_.MoveLast();
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  Progreso progreso(ctx, *ui_->Bar, DtaSubcuentas_.Recordset().RecordCount());
  for (DtaSubcuentas_.MoveFirst(); !DtaSubcuentas_.Eof(); DtaSubcuentas_.MoveNext()) {
    progreso.avanza(DtaSubcuentas_.Recordset().AbsolutePosition());
    escribeSaldos(*empresa, DtaSubcuentas_.Fields("Subcuenta").text(), {});
  }
  progreso.oculta();
}

Listado FrmExtractoEntraCtas::listado() const {
  return {
      .titulo = "Listado de libro Mayor",
      .plantilla = "Impresos\\May1.rpt",
      .seleccion =
          seleccionCodigos("SqlDiarioPrincipal.Subcuenta", ui_->TxtSubcuentaDesde->text(),
                           ui_->TxtSubcuentaHasta->text()) +
          " and " +
          seleccionFechas("SqlDiarioPrincipal.Fecha", ui_->TxtDesde->text(), ui_->TxtHasta->text()),
      .limites = textoLimites(ui_->TxtDesde->text(), ui_->TxtHasta->text())};
}
