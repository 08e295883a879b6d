#include "payroll/frmnomina.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

#include "common/formato.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "journal/apunte.h"
#include "journal/widgets/camposubcuenta.h"
#include "journal/widgets/lineaapunte.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/principal.h"
#include "toolkit/protocolo.h"
#include "ui_frmnomina.h"

FrmNomina::FrmNomina(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmNomina>()) {
  ui_->setupUi(this);
  fecha(ui_->TxtFecha);
  for (const Fila& fila : filas()) conectaFila(fila);
  conectaImporteDeNomina(*ui_->TxtSSCargoTrabajador);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmNomina::~FrmNomina() = default;

std::array<FrmNomina::Fila, kConceptosNomina> FrmNomina::filas() const {
  const Ui::FrmNomina& u = *ui_;
  return {{
      {nullptr, u.TxtSubSueldoBruto, u.LblSubSueldoBruto, u.TxtImpSueldoBruto,
       accion::kNominaSueldoBruto},
      {u.ChkSSCargoEmpresa, u.TxtSubSSCargoEmpresa, u.LblSubSSCargoEmpresa, u.TxtImpSScargoEmpresa,
       accion::kNominaSSCargoEmpresa},
      {u.ChkOrganismosSSACreedora, u.TxtSubOrganismosSSAcreedora, u.LblSubOrganismosSSAcreedora,
       u.TxtImpOrganismosSSAcreedora, accion::kNominaOrganismosSS},
      {u.ChkRetenciones, u.TxtSubRetenciones, u.LblSubRetenciones, u.TxtImpImportes,
       accion::kNominaRetenciones},
      {u.ChkAnticipos, u.TxtSubAnticipos, u.LblSubAnticipos, u.TxtImpAnticipos,
       accion::kNominaAnticipos},
      {u.ChkRemunera, u.TxtSubRenumeracionesPP, u.LblSubRenumeracionesPP, u.TxtImpRenumeracionesPP,
       accion::kNominaRemuneraciones},
      {nullptr, u.TxtsubCaja, u.LblsubCaja, u.TxtImpCaja, accion::kNominaCaja},
  }};
}

void FrmNomina::conectaFila(const Fila& fila) {
  subcuentas_.push_back(std::make_unique<CampoSubcuenta>(
      *this, ctx,
      CampoSubcuenta::Opciones{
          .codigo = *fila.subcuenta, .nombre = *fila.nombre, .accion = fila.accion}));
  subcuentas_.back()->conecta();
  conectaImporteDeNomina(*fila.importe);
  if (!fila.casilla) return;
  fila.subcuenta->setEnabled(false);
  fila.importe->setEnabled(false);
  alPulsar(fila.casilla, [this, fila] { Chk_Click(fila); });
}

void FrmNomina::conectaImporteDeNomina(QLineEdit& importe) {
  conectaImporte(*this, ctx, importe);
  alSalir(&importe, [this] { calculaTotal(); });
}

QString FrmNomina::cero() const {
  return Format(QStringLiteral("0"), ctx.sesion.MascaraImporte);
}

void FrmNomina::Form_Load() {
  for (const auto& subcuenta : subcuentas_) subcuenta->ajustaDigitos();
  for (const Fila& fila : filas()) fila.importe->setText(cero());
  ui_->TxtSSCargoTrabajador->setText(cero());
}

// Kept: the total follows at the next amount that is left, so that one which is switched off and
// on again while its row is looked at moves nothing else.
void FrmNomina::Chk_Click(const Fila& fila) {
  const bool si = fila.casilla->isChecked();
  fila.subcuenta->setEnabled(si);
  fila.importe->setEnabled(si);
  if (si)
    fila.subcuenta->setFocus(Qt::TabFocusReason);
  else
    fila.importe->setText(cero());
}

Nomina FrmNomina::nomina() const {
  Nomina n;
  n.Fecha = ui_->TxtFecha->text();
  n.ApunteN = ui_->TxtApunteN->text();
  n.NombreEmpleado = ui_->LblSubSueldoBruto->text();
  n.CargoTrabajador = importeDe(*ui_->TxtSSCargoTrabajador, ctx);
  const auto suyas = filas();
  for (std::size_t i = 0; i < suyas.size(); ++i) {
    const Fila& fila = suyas[i];
    n.Partes[i] = {.Subcuenta = fila.subcuenta->text(),
                   .Importe = importeDe(*fila.importe, ctx),
                   .Marcada = !fila.casilla || fila.casilla->isChecked()};
  }
  return n;
}

// Kept: the sum for the social security body is put even into a box that is switched off, and is
// then owed by no line: the descuadre in the main window tells the missing check mark.
void FrmNomina::calculaTotal() {
  using enum ConceptoNomina;
  Nomina n = nomina();
  CalculoTotal(n);
  if (n.parte(SSCargoEmpresa).Marcada)
    ponImporte(*ui_->TxtImpOrganismosSSAcreedora, n.parte(OrganismosSS).Importe, ctx);
  ponImporte(*ui_->TxtImpCaja, n.parte(Caja).Importe, ctx);
}

void FrmNomina::rechaza(const QString& texto, const QString& titulo) {
  mensaje(texto, titulo);
  enfocar(ui_->TxtImpSueldoBruto);
}

void FrmNomina::CmdAceptar_Click() {
  if (ui_->TxtImpSueldoBruto->text() == cero() || ui_->TxtImpCaja->text() == cero())
    return rechaza(QStringLiteral("Le faltan datos de rellenar para la creación de la nomina"),
                   QStringLiteral("Error"));
  const Nomina n = nomina();
  if (!cuadra(n))
    return rechaza(QStringLiteral("El apunte no puede ser creado, la causa: (esta descuadrado)"),
                   QStringLiteral("Asiento descuadrado"));

  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  AsientoGrabado grabado;
  try {
    trabajaEnDiario(ctx, [&] {
      Principal& menu = *ctx.principal;
      grabaNomina(n, sesion().MascaraImporte, menu.DtaDiarioLista(), menu.DtaEmpresaActual(),
                  grabado);
    });
  } catch (const ErrorEjecucion& error) {
    // Accepted again it goes on with the number that it has taken.
    ignorando([&] {
      if (esSuyoElNumero(grabado, ctx.principal->DtaEmpresaActual()))
        ui_->TxtApunteN->setText(grabado.asiento);
    });
    return avisarError(error.numero(),
                       textoDeFallo(error, *empresa, grabado, "La nómina no está entera"),
                       QStringLiteral("CmdAceptar_Click"));
  }
  descargar();
}
