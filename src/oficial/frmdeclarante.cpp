#include "oficial/frmdeclarante.h"

#include "engine/dbengine.h"
#include "oficial/identificadores.h"
#include "ui_frmdeclarante.h"

FrmDeclarante::FrmDeclarante(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmDeclarante>()) {
  ui_->setupUi(this);
  sinIntro(ui_->GrdDatos);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmDeclarante::~FrmDeclarante() = default;

void FrmDeclarante::Form_Load() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  declarante_ = std::make_unique<Declarante>(*empresa);
  const auto dato = [](int fila) -> const DatoDeclarante& {
    return datosDeclarante()[size_t(fila)];
  };
  ui_->GrdDatos->enlazar(
      {{"Dato", 34}, {"Valor", 40}},
      {.filas = [] { return int(datosDeclarante().size()); },
       .texto =
           [this, dato](int fila, int columna) {
             return columna == 0 ? QString::fromUtf8(dato(fila).titulo)
                                 : (*declarante_)[dato(fila).dato];
           },
       .editable = [](int, int columna) { return columna == 1; },
       .escribe =
           [this, dato](int fila, int, const QString& texto) {
             const bool numero =
                 qstrcmp(dato(fila).dato, "Nif") == 0 || qstrcmp(dato(fila).dato, "Iban") == 0;
             const QString valor = numero ? normalizaIdentificador(texto) : texto.trimmed();
             declarante_->pon(QLatin1String(dato(fila).dato), valor.left(dato(fila).largo));
             muestraFaltas();
           }});
  ui_->GrdDatos->irA(0, 1);
  ui_->GrdDatos->setFocus();
  muestraFaltas();
}

void FrmDeclarante::muestraFaltas() {
  ui_->LblFaltas->setText(declarante_->faltas().join(QStringLiteral(". ")));
}

void FrmDeclarante::CmdAceptar_Click() {
  ui_->GrdDatos->cierraCelda();
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  declarante_->graba(*empresa);
  ctx.cajas->guardaPendiente(this);  // given up, what was typed still stands
  descargar();
}
