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

bool entregarConsulta(Contexto& contexto, std::span<const DestinoConsulta> destinos,
                      const QString& codigo) {
  for (const auto& destino : destinos) {
    if (destino.codigoAccion != contexto.sesion.CodigoAccion) continue;
    const auto* forma = contexto.formularios->abierto(QLatin1String(destino.formulario));
    if (!forma) return false;
    const QLatin1String nombre(destino.control);
    if (auto* campo = forma->findChild<QLineEdit*>(nombre)) {
      campo->setText(codigo);
      return true;
    }
    if (auto* combo = forma->findChild<QComboBox*>(nombre)) {
      combo->setCurrentText(codigo);
      return true;
    }
    return false;
  }
  return false;
}
