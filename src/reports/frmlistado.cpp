#include "reports/frmlistado.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>

#include "common/rutas.h"
#include "engine/dbengine.h"
#include "reports/widgets/vistaprevia.h"

FrmListado::FrmListado(Contexto& contexto)
    : Formulario(contexto),
      Rpt01(contexto.motor, *contexto.reloj, destinoDePantalla(contexto, this)) {}

FrmListado::~FrmListado() = default;

void FrmListado::lanza(const std::function<Listado()>& prepara) {
  try {
    lanzaSinTrampa(prepara());
  } catch (const ErrorEjecucion& e) {
    avisaDeFallo(ctx, this, e);
  }
}

void FrmListado::lanzaSinTrampa(const Listado& listado) {
  // Wherever the program was started from, what a book names by a bare name is looked for beside
  // it.
  if (!QDir::setCurrent(rutaSistema(ctx.carpetaPrograma)))
    throw ErrorEjecucion(err::kRutaNoEncontrada, ctx.carpetaPrograma);
  Rpt01.WindowTitle = listado.titulo;
  Rpt01.ReportFileName =
      listado.plantilla.isEmpty() ? QString() : sesion().DirDatos + listado.plantilla;
  Rpt01.DataFiles(0) = sesion().rutaEmpresa();
  Rpt01.SelectionFormula = listado.seleccion;
  Rpt01.GroupSelectionFormula = listado.seleccionGrupos;
  Rpt01.ParameterFields(0) = listado.limites ? "Limites;" + *listado.limites + ";True" : QString();
  Rpt01.PrintReport();
}

void FrmListado::ponAnoEntero(QLineEdit* desde, QLineEdit* hasta) {
  const QString ano = QString::number(sesion().AnoActual);
  desde->setText("01/01/" + ano);
  hasta->setText("31/12/" + ano);
}

void FrmListado::ponMeses(QComboBox* desde, QComboBox* hasta) {
  for (QComboBox* combo : {desde, hasta}) {
    combo->clear();
    combo->addItems(listaMeses());
  }
  hasta->setCurrentIndex(11);
}
