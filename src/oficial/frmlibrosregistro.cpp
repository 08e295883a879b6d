#include "oficial/frmlibrosregistro.h"

#include <QFileInfo>

#include "engine/dbengine.h"
#include "ui_frmlibrosregistro.h"

namespace {
constexpr qint64 kMasGrande = 4 * 1024 * 1024;  // that the offices take
}

FrmLibrosRegistro::FrmLibrosRegistro(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmLibrosRegistro>()) {
  ui_->setupUi(this);
  ui_->TxtPeriodo->addItems({"1T", "2T", "3T", "4T"});
  ui_->TxtLetra->addItems({"Del IVA (C)", "Del IVA y del IRPF (T)"});
  sinIntro(ui_->GrdAvisos);
  alElegir(ui_->TxtPeriodo, [this](int) { lee(); });
  connect(ui_->GrdAvisos, &TablaHoja::intro, this, [this](int fila) {
    protege(
        [&] {
          mostrar("FrmDatosRegistros", 347, libros_->avisos()[size_t(fila)].codigo);
          lee();
        },
        "GrdAvisos_KeyPress");
  });
  alPulsar(ui_->CmdDeclarante, [this] { mostrar("FrmDeclarante"); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmLibrosRegistro::~FrmLibrosRegistro() = default;

std::unique_ptr<Database> FrmLibrosRegistro::empresa() {
  return ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
}

void FrmLibrosRegistro::Form_Load() {
  ui_->GrdAvisos->enlazar(
      {{"Código", 12}, {"Factura", 16}, {"Aviso", 52}},
      {.filas = [this] { return libros_ ? int(libros_->avisos().size()) : 0; },
       .texto =
           [this](int fila, int columna) {
             const auto& aviso = libros_->avisos()[size_t(fila)];
             return columna == 0 ? aviso.codigo : columna == 1 ? aviso.factura : aviso.texto;
           }});
  const QDate hoy = ctx.reloj->hoy();
  const int ano = sesion().AnoActual;
  const int trimestre = hoy.year() > ano ? 4 : hoy.year() < ano ? 1 : (hoy.month() - 1) / 3;
  ui_->TxtPeriodo->setCurrentIndex(qMax(0, trimestre - 1));
  lee();
}

void FrmLibrosRegistro::lee() {
  libros_ = std::make_unique<LibrosRegistro>(*empresa(), sesion().AnoActual,
                                             ui_->TxtPeriodo->currentText());
  ui_->GrdAvisos->refresca();
  ui_->LblResumen->setText(QStringLiteral("Expedidas: %1. Recibidas: %2. Avisos: %3")
                               .arg(libros_->expedidas().size())
                               .arg(libros_->recibidas().size())
                               .arg(libros_->avisos().size()));
}

void FrmLibrosRegistro::CmdAceptar_Click() {
  const Declarante declarante(*empresa());
  const QStringList faltas = declarante.faltas();
  if (declarante["Nif"].isEmpty())
    return mensaje("Falta el NIF del declarante: póngalo con «Declarante...»", "Libros registro");
  const auto libros = ui_->TxtLetra->currentIndex() == 0 ? LibrosDe::Iva : LibrosDe::Unificados;
  QStringList avisos = faltas;
  if (libros == LibrosDe::Unificados)
    avisos += QStringLiteral("Los conceptos de IRPF y las retenciones se dejan vacíos");
  if (!avisos.isEmpty() &&
      !pregunta(avisos.join(u'\n') + QStringLiteral("\n\n¿Desea hacer los libros?"),
                "Libros registro"))
    return;
  const auto ruta = ctx.cajas->guardarFichero(
      this, "Libros registro", libros_->nombre(declarante, libros), "Hoja de cálculo (*.xlsx)");
  if (!ruta || ruta->isEmpty()) return;
  libros_->escribe(*ruta, declarante, libros);
  const bool grande = QFileInfo(*ruta).size() > kMasGrande;
  mensaje(grande ? QStringLiteral("Libros hechos, pero pasan de 4 MB: no los admitirán")
                 : QStringLiteral("Libros hechos"),
          "Libros registro");
}
