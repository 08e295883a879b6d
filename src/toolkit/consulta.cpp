#include "toolkit/consulta.h"

#include <QComboBox>
#include <QLineEdit>

#include "toolkit/contexto.h"
#include "toolkit/formulario.h"
#include "toolkit/protocolo.h"
#include "toolkit/registro.h"

namespace {
constexpr DestinoConsulta kSubcuentas[] = {
    {accion::kIVAProveedor, "FrmIVASR", "TxtCodigoProveedor"},
    {accion::kIVACuenta, "FrmIVASR", "TxtCuentaIva"},
    {accion::kIVARecargo, "FrmIVASR", "TxtCuentaRecargo"},
    {accion::kIVAContrapartida, "FrmIVASR", "TxtContrapartida"},
    {accion::kPartida, "FrmPartida", "TxtSubcuenta"},
    {accion::kListadoDesde, "FrmSubcuentasImpresos", "TxtSubcuentasDesde"},
    {accion::kListadoHasta, "FrmSubcuentasImpresos", "TxtSubcuentasHasta"},
    {accion::kPerdidasYGanancias, "FrmPerdidasyGanacias", "TxtSubcuenta"},
    {accion::kCuadrar, "FrmCuadrarAsientos", "TxtSubcuenta"},
    {accion::kReciboCuenta, "FrmRecibos", "TxtCuenta"},
    {accion::kReciboContrapartida, "FrmRecibos", "TxtContrapartida"},
    {accion::kNominaSueldoBruto, "FrmNomina", "TxtSubSueldoBruto"},
    {accion::kNominaSSCargoEmpresa, "FrmNomina", "TxtSubSSCargoEmpresa"},
    {accion::kNominaOrganismosSS, "FrmNomina", "TxtSubOrganismosSSAcreedora"},
    {accion::kNominaRetenciones, "FrmNomina", "TxtSubRetenciones"},
    {accion::kNominaAnticipos, "FrmNomina", "TxtSubAnticipos"},
    {accion::kNominaRemuneraciones, "FrmNomina", "TxtSubRenumeracionesPP"},
    {accion::kNominaCaja, "FrmNomina", "TxtsubCaja"},
    {accion::kIntracomunitarioRepercutido, "FrmIVAIntercomunitario", "TxtIVARepercutido"},
    {accion::kIntracomunitarioSoportado, "FrmIVAIntercomunitario", "TxtIVASoportado"},
    {accion::kIntracomunitarioRERepercutido, "FrmIVAIntercomunitario", "TxtRERepercutido"},
    {accion::kIntracomunitarioRESoportado, "FrmIVAIntercomunitario", "TxtRESoportado"},
    {accion::kBanco, "FrmNorma43", "TxtSubcuenta"},
    {accion::kBancoContrapartida, "FrmNorma43", "TxtContrapartida"},
};

constexpr DestinoConsulta kTiposIVA[] = {
    {accion::kTipoDeIVA, "FrmIVASR", "TxtIva"},
    {accion::kTipoDeIntracomunitario, "FrmIVAIntercomunitario", "TxtIva"},
};
}  // namespace

std::span<const DestinoConsulta> destinosDeSubcuenta() {
  return kSubcuentas;
}
std::span<const DestinoConsulta> destinosDeTipoIVA() {
  return kTiposIVA;
}

QWidget* campoDestino(const Contexto& contexto, std::span<const DestinoConsulta> destinos,
                      int codigo) {
  for (const auto& destino : destinos) {
    if (destino.codigo != codigo) continue;
    const auto* forma = contexto.formularios->abierto(QLatin1String(destino.formulario));
    return forma ? forma->findChild<QWidget*>(QLatin1String(destino.control)) : nullptr;
  }
  return nullptr;
}

bool entregarConsulta(Contexto& contexto, std::span<const DestinoConsulta> destinos,
                      const QString& codigo) {
  QWidget* control = campoDestino(contexto, destinos, contexto.sesion.CodigoAccion);
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
  const QWidget* control = campoDestino(contexto, destinos, contexto.sesion.CodigoAccion);
  if (const auto* campo = qobject_cast<const QLineEdit*>(control)) return campo->text();
  if (const auto* combo = qobject_cast<const QComboBox*>(control)) return combo->currentText();
  return std::nullopt;
}
