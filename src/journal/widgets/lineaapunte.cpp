#include "journal/widgets/lineaapunte.h"

#include <QLineEdit>

#include "common/errorejecucion.h"
#include "common/formato.h"
#include "engine/datacontrol.h"
#include "journal/apunte.h"
#include "journal/lineatecleada.h"
#include "toolkit/comboenlazado.h"
#include "toolkit/formulario.h"

namespace {

constexpr int kTextoDeConcepto = 1;
constexpr int kLetrasALaVista = 16;  // of a concept, in the narrowest window

void Concepto_KeyPress(Formulario& forma, ComboEnlazado& concepto, DataControl& conceptos,
                       Tecla& tecla) {
  const QString texto = concepto.texto();
  if (!tecla.esIntro() || texto.isEmpty() || !texto.at(0).isDigit()) return;
  if (!conceptos.isOpen()) return;  // no company: no code means anything
  tecla.tragar();
  try {
    conceptos.FindFirst(QStringLiteral("NConcepto = '%1'").arg(texto));
    if (conceptos.Recordset().NoMatch()) throw ErrorEjecucion(err::kNuloNoValido);
    concepto.setEditText(conceptos.Fields(kTextoDeConcepto).text());
    concepto.lineEdit()->end(false);
  } catch (const ErrorEjecucion& error) {
    if (error.numero() == err::kNuloNoValido) {
      forma.mensaje(QStringLiteral("El código del concepto escrito no existe intente con otro"),
                    QStringLiteral("Error"));
      concepto.setEditText({});
    } else {
      // Kept: one place for all entry lines, so that the log reads the same whatever the form.
      forma.anota(error, QStringLiteral("TxtConcepto_KeyPress - FrmMenu"));
    }
  }
}

}  // namespace

void conectaConcepto(Formulario& forma, ComboEnlazado& concepto, DataControl& conceptos) {
  concepto.lineEdit()->setMaxLength(kLargoDeDescripcion);
  // What is typed is the bookkeeper's own text: nothing may complete it.
  concepto.setCompleter(nullptr);
  concepto.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  concepto.setMinimumContentsLength(kLetrasALaVista);
  forma.alTeclear(&concepto, [&forma, &concepto, &conceptos](Tecla& tecla) {
    Concepto_KeyPress(forma, concepto, conceptos, tecla);
  });
}

bool pasaFechaLimite(const Contexto& contexto, const QString& fecha, bool tambienIgual) {
  const QString limite = contexto.sesion.FechaNoModificar;
  return EsFecha(limite) && (fecha < limite || (tambienIgual && fecha == limite));
}

void avisaDeFechaLimite(Formulario& forma, const Contexto& contexto) {
  forma.mensaje(QStringLiteral("Usted no puede modificar ningun apunte anterior a la fecha ") +
                    contexto.sesion.FechaNoModificar,
                QStringLiteral("Error"));
}

bool avisaDeFechaLimite(Formulario& forma, const Contexto& contexto, const QString& fecha) {
  if (!pasaFechaLimite(contexto, fecha)) return false;
  avisaDeFechaLimite(forma, contexto);
  return true;
}

void eligeFecha(Formulario& forma, QLineEdit& fecha, int codigoLlamada) {
  forma.mostrar(QStringLiteral("FrmCalendario"), codigoLlamada);
  forma.enfocar(&fecha);
}

void conectaImporteSinSigno(Formulario& forma, const Contexto& contexto, QLineEdit& importe) {
  forma.importeSinSigno(&importe);
  forma.alTeclear(&importe, [&contexto, &importe](const Tecla& tecla) {
    if (tecla.esIntro() || tecla.esRetroceso() || !importe.text().isEmpty()) return;
    importe.setText(Format(0.0, contexto.sesion.MascaraImporte));
    importe.selectAll();
  });
}

void conectaImporte(Formulario& forma, const Contexto& contexto, QLineEdit& importe) {
  forma.importe(&importe);
  forma.alSalir(&importe, [&forma, &contexto, &importe] {
    const double valor = importeDe(importe, contexto);
    exigeImporte(forma, importe, valor);
    ponImporte(importe, valor, contexto);
  });
}

void exigeImporte(Formulario& forma, QLineEdit& campo, double importe) {
  try {
    compruebaImporte(importe);
  } catch (const ErrorEjecucion&) {
    forma.enfocar(&campo);
    throw;
  }
}

double importeDe(const QLineEdit& importe, const Contexto& contexto) {
  return ImporteDe(importe.text(), contexto.sesion.MascaraImporte).value_or(0);
}

void ponImporte(QLineEdit& importe, double valor, const Contexto& contexto) {
  importe.setText(Format(valor, contexto.sesion.MascaraImporte));
}
