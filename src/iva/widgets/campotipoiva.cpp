#include "iva/widgets/campotipoiva.h"

#include <QLabel>
#include <QLineEdit>

#include "common/comillas.h"
#include "common/conversion.h"
#include "common/formato.h"
#include "engine/dbengine.h"
#include "toolkit/formulario.h"

CampoTipoIVA::CampoTipoIVA(Formulario& forma, Contexto& contexto, Opciones opciones)
    : forma_(forma), ctx_(contexto), o_(opciones), DtaTipos_(contexto.motor) {
  forma.soloNumero(&o_.codigo);
}

bool CampoTipoIVA::deja() {
  DtaTipos_.bind(
      ctx_.sesion.rutaEmpresa(),
      QStringLiteral("Select * from TiposIVA where Codigo =") + entreComillas(o_.codigo.text()));
  if (DtaTipos_.Eof()) {
    forma_.consultar(QStringLiteral("FrmTiposIVA"), o_.accion, o_.codigo.text());
    forma_.enfocar(&o_.codigo);
    return false;
  }
  const auto porcentaje = [this](const char* campo) {
    const Variant valor = DtaTipos_.Fields(QLatin1String(campo)).Value();
    return valor.isNull() ? 0 : valor.number();
  };
  porcenIVA_ = porcentaje("IVA");
  porcenREC_ = porcentaje("RE");
  o_.descripcion.setText(DtaTipos_.Fields(QStringLiteral("Descripcion")).display());
  o_.porcenIVA.setText(numberText(porcenIVA_) + QStringLiteral(" %"));
  o_.porcenRE.setText(numberText(porcenREC_) + QStringLiteral(" %"));
  return true;
}

void CampoTipoIVA::avisa(const QString& fecha) {
  QString aviso;
  if (EsFecha(fecha)) {
    if (!tipos_) tipos_.emplace(*ctx_.motor.Workspaces(0).OpenDatabase(ctx_.sesion.rutaEmpresa()));
    aviso = tipos_->aviso(porcenIVA_, porcenREC_, Variant(fecha).date());
  }
  o_.aviso.setText(aviso);
}
