#include "toolkit/consulta.h"

#include <QComboBox>
#include <QLineEdit>

#include "toolkit/contexto.h"
#include "toolkit/formulario.h"
#include "toolkit/registro.h"

namespace {
constexpr DestinoConsulta kSubcuentas[] = {
    {20, "FrmIVASR", "TxtCodigoProveedor"},
    {22, "FrmIVASR", "TxtCuentaIva"},
    {23, "FrmIVASR", "TxtCuentaRecargo"},
    {24, "FrmIVASR", "TxtContrapartida"},
    {25, "FrmPartida", "TxtSubcuenta"},
    {30, "FrmSubcuentasImpresos", "TxtSubcuentasDesde"},
    {31, "FrmSubcuentasImpresos", "TxtSubcuentasHasta"},
    {40, "FrmPerdidasyGanacias", "TxtSubcuenta"},
    {50, "FrmCuadrarAsientos", "TxtSubcuenta"},
    {60, "FrmRecibos", "TxtCuenta"},
    {61, "FrmRecibos", "TxtContrapartida"},
    {71, "FrmNomina", "TxtSubSueldoBruto"},
    {72, "FrmNomina", "TxtSubSSCargoEmpresa"},
    {73, "FrmNomina", "TxtSubOrganismosSSAcreedora"},
    {74, "FrmNomina", "TxtSubRetenciones"},
    {75, "FrmNomina", "TxtSubAnticipos"},
    {76, "FrmNomina", "TxtSubRenumeracionesPP"},
    {77, "FrmNomina", "TxtsubCaja"},
    {81, "FrmIVAIntercomunitario", "TxtIVARepercutido"},
    {82, "FrmIVAIntercomunitario", "TxtIVASoportado"},
    {83, "FrmIVAIntercomunitario", "TxtRERepercutido"},
    {84, "FrmIVAIntercomunitario", "TxtRESoportado"},
};

constexpr DestinoConsulta kTiposIVA[] = {
    {21, "FrmIVASR", "TxtIva"},
    {22, "FrmIVAIntercomunitario", "TxtIva"},
};
}  // namespace

std::span<const DestinoConsulta> destinosDeSubcuenta() {
  return kSubcuentas;
}
std::span<const DestinoConsulta> destinosDeTipoIVA() {
  return kTiposIVA;
}

namespace {

QWidget* campoDe(const Contexto& contexto, std::span<const DestinoConsulta> destinos) {
  for (const auto& destino : destinos) {
    if (destino.codigoAccion != contexto.sesion.CodigoAccion) continue;
    const auto* forma = contexto.formularios->abierto(QLatin1String(destino.formulario));
    return forma ? forma->findChild<QWidget*>(QLatin1String(destino.control)) : nullptr;
  }
  return nullptr;
}

}  // namespace

bool entregarConsulta(Contexto& contexto, std::span<const DestinoConsulta> destinos,
                      const QString& codigo) {
  QWidget* control = campoDe(contexto, destinos);
  if (auto* campo = qobject_cast<QLineEdit*>(control)) {
    campo->setText(codigo);
  } else if (auto* combo = qobject_cast<QComboBox*>(control)) {
    combo->setCurrentText(codigo);
  } else {
    return false;
  }
  return true;
}

std::optional<QString> textoDeDestino(const Contexto& contexto,
                                      std::span<const DestinoConsulta> destinos) {
  const QWidget* control = campoDe(contexto, destinos);
  if (const auto* campo = qobject_cast<const QLineEdit*>(control)) return campo->text();
  if (const auto* combo = qobject_cast<const QComboBox*>(control)) return combo->currentText();
  return std::nullopt;
}
