#include "oficial/frmplan2007.h"

#include <algorithm>
#include <QHeaderView>

#include "engine/dbengine.h"
#include "ui_frmplan2007.h"

FrmPlan2007::FrmPlan2007(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmPlan2007>()) {
  ui_->setupUi(this);
  QTableWidget& tabla = *ui_->GrdPlan;
  tabla.setColumnCount(4);
  tabla.setHorizontalHeaderLabels({"Cuenta", "Nombre actual", "Nombre en 2007", "Qué se hace"});
  tabla.verticalHeader()->hide();
  // The names share what the window has, in two lines where they need them.
  QHeaderView& cabecera = *tabla.horizontalHeader();
  for (const int nombre : {1, 2}) cabecera.setSectionResizeMode(nombre, QHeaderView::Stretch);
  alElegirOpcion("OptModelo", [this](int) { muestra(); });
  alPulsar(ui_->ChkNombres, [this] { muestra(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmPlan2007::~FrmPlan2007() = default;

void FrmPlan2007::Form_Load() {
  setOpcion("OptModelo", 1);
}

Modelo2007 FrmPlan2007::modelo() const {
  return opcion("OptModelo") == 0 ? Modelo2007::Normal : Modelo2007::Pymes;
}

void FrmPlan2007::muestra() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  cambios_ = cambiosAl2007(*empresa, modelo(), sesion().DigitosCuenta);
  QTableWidget& tabla = *ui_->GrdPlan;
  const bool nombres = ui_->ChkNombres->isChecked();
  tabla.setRowCount(static_cast<int>(cambios_.size()));
  for (int fila = 0; fila < tabla.rowCount(); ++fila) {
    const CambioDePlan& cambio = cambios_[fila];
    const QString hace = cambio.esNueva()         ? QStringLiteral("Se crea")
                         : !cambio.cambiaNombre() ? QString()
                         : nombres                ? QStringLiteral("Cambia de nombre")
                                                  : QStringLiteral("Se queda como está");
    int columna = 0;
    for (const QString& texto : {cambio.codigo, cambio.actual, cambio.nuevo, hace})
      tabla.setItem(fila, columna++, new QTableWidgetItem(texto));
  }
  for (const int columna : {0, 3}) tabla.resizeColumnToContents(columna);
  if (tabla.rowCount() > 0 && tabla.currentRow() < 0) tabla.setCurrentCell(0, 0);
  const auto nuevas = std::ranges::count_if(cambios_, &CambioDePlan::esNueva);
  const auto otras = std::ranges::count_if(cambios_, &CambioDePlan::cambiaNombre);
  ui_->LblResumen->setText(
      QStringLiteral("Cuentas del plan: %1   Se crean: %2   Con otro nombre en la empresa: %3")
          .arg(cambios_.size())
          .arg(nuevas)
          .arg(otras));
}

void FrmPlan2007::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  const bool otras = std::ranges::any_of(cambios_, &CambioDePlan::cambiaNombre);
  if (otras && !plan2007De(*empresa).sigue &&
      !pregunta(
          "Hay cuentas que en la empresa se llaman de otra manera, y en el plan de 2007 su "
          "código puede significar otra cosa. Si la empresa lleva el plan anterior, haga antes "
          "la conversión. ¿Desea seguir?",
          "Plan de 2007", Icono::Pregunta))
    return;
  estrenaPlan2007(*empresa, modelo(), sesion().DigitosCuenta, ctx.reloj->hoy(),
                  ui_->ChkNombres->isChecked());
  descargar();
}
