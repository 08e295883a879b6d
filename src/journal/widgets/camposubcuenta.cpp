#include "journal/widgets/camposubcuenta.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "accounts/widgets/subcuentatecleada.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/ignorar.h"
#include "toolkit/formulario.h"
#include "toolkit/protocolo.h"

namespace {
constexpr int kLargoDelNombre = 50;  // as Subcuentas keeps it
}

CampoSubcuenta::CampoSubcuenta(Formulario& forma, Contexto& contexto, Opciones opciones)
    : forma_(forma), ctx_(contexto), o_(std::move(opciones)), DtaSubcuenta_(contexto.motor) {
  // A field scrolls; a label can only be wide enough.
  if (qobject_cast<QLabel*>(&o_.nombre))
    o_.nombre.setMinimumWidth(
        o_.nombre.fontMetrics().horizontalAdvance(QString(kLargoDelNombre, QLatin1Char('0'))));
  if (o_.alCompletarse) forma.alCambiar(&o_.codigo, [this] { Change(); });
  forma.alBajarTecla(&o_.codigo, [this](QKeyEvent& tecla) {
    if (tecla.key() != Qt::Key_F2) return false;
    consulta();
    return true;
  });
}

void CampoSubcuenta::ajustaDigitos() {
  const int digitos = ctx_.sesion.DigitosSubcuenta;
  o_.codigo.setMaxLength(digitos);
  o_.codigo.setMinimumWidth(
      o_.codigo.fontMetrics().horizontalAdvance(QString(digitos + 2, QLatin1Char('0'))));
}

void CampoSubcuenta::conecta() {
  forma_.alSalir(&o_.codigo, [this] { deja(); });
}

void CampoSubcuenta::Change() {
  const auto largo = o_.codigo.text().size();
  if (largo == 0 || largo != ctx_.sesion.DigitosSubcuenta) return;
  ignorando([this] { busca(); });
}

void CampoSubcuenta::busca() {
  muestraNombre({});
  muestraNombre(nombreDeSubcuenta(o_.codigo, DtaSubcuenta_, ctx_.sesion));
  if (o_.encontrada) o_.encontrada();
}

bool CampoSubcuenta::deja() {
  if (o_.codigo.text().isEmpty()) {
    if (!o_.puedeEstarVacia) elige();
    return false;
  }
  try {
    busca();
    return true;
  } catch (const ErrorEjecucion& error) {
    if (error.numero() == err::kSinRegistroActivo) {
      elige();
    } else {
      if (o_.lugarDeErrores.isEmpty()) throw;
      forma_.anota(error, o_.lugarDeErrores);
    }
  }
  return false;
}

bool CampoSubcuenta::esCodigoEntero() const {
  const QString codigo = o_.codigo.text();
  return codigo.size() == ctx_.sesion.DigitosSubcuenta && EsNumerico(codigo);
}

// A whole code that isn't in the plan is new or mistyped; anything else is a name to look for.
void CampoSubcuenta::elige() {
  if (o_.ofreceAlta && esCodigoEntero() &&
      forma_.pregunta(QStringLiteral("El código de la subcuenta introducido no existe, ¿ Desea "
                                     "darlo de alta ? "),
                      QStringLiteral("Error"))) {
    forma_.mostrar(QStringLiteral("FrmSubCuentas"), llamada::kAlta, o_.codigo.text());
    ignorando([this] { busca(); });  // given up, or created under another code
    return;
  }
  consulta();
  if (o_.vuelve) forma_.enfocar(&o_.codigo);
}

void CampoSubcuenta::consulta() {
  forma_.consultar(QStringLiteral("FrmVisualizaPlan"), o_.accion, o_.codigo.text());
  // What the browser writes is looked up as it is written where the field does so by itself.
  if (!o_.alCompletarse && esCodigoEntero()) ignorando([this] { busca(); });
}

void CampoSubcuenta::muestraNombre(const QString& nombre) {
  if (auto* rotulo = qobject_cast<QLabel*>(&o_.nombre)) {
    rotulo->setText(nombre);
    rotulo->setToolTip(nombre);  // capitals may still be wider
  }
  if (auto* campo = qobject_cast<QLineEdit*>(&o_.nombre)) {
    campo->setText(nombre);
    campo->setCursorPosition(0);  // a long name shows its beginning
  }
}
