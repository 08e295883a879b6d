#include "oficial/frmconversion2007.h"

#include <algorithm>
#include <QHeaderView>

#include "common/formato.h"
#include "company/sesionempresa.h"
#include "engine/dbengine.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/principal.h"
#include "ui_frmconversion2007.h"

namespace {
enum { kCodigo, kNombre, kLineas, kSaldo, kNuevo, kDecidir, kNota, kColumnas };
constexpr int kMasFaltas = 12;  // are told in one box
enum { kTodas, kCambian, kPorDecidir };

bool seEnsena(const FilaConversion& fila, int cuales) {
  if (cuales == kPorDecidir) return fila.nuevo.isEmpty();
  return cuales == kTodas || fila.nuevo != fila.codigo;
}
}  // namespace

FrmConversion2007::FrmConversion2007(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmConversion2007>()) {
  ui_->setupUi(this);
  QTableWidget& tabla = *ui_->GrdConversion;
  tabla.setColumnCount(kColumnas);
  tabla.setHorizontalHeaderLabels(
      {"Código", "Nombre", "Líneas", "Saldo", "Código nuevo", "Dudosa", "Nota"});
  tabla.verticalHeader()->hide();
  tabla.horizontalHeader()->setStretchLastSection(true);
  const int anchos[] = {85, 210, 60, 105, 100, 60};
  for (int i = 0; i < kNota; ++i) tabla.setColumnWidth(i, anchos[i]);
  ui_->Bar->hide();
  sinIntro(&tabla);
  alElegirOpcion("OptModelo", [this](int) { propone(); });
  alElegirOpcion("OptVer", [this](int) { ensena(); });
  connect(&tabla, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* celda) {
    protege([&] { cambiada(celda); }, "GrdConversion_Change");
  });
  alPulsar(ui_->CmdIgual, [this] { CmdIgual_Click(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmConversion2007::~FrmConversion2007() = default;

void FrmConversion2007::Form_Load() {
  setOpcion("OptVer", kCambian);
  setOpcion("OptModelo", 1);
}

Modelo2007 FrmConversion2007::modelo() const {
  return opcion("OptModelo") == 0 ? Modelo2007::Normal : Modelo2007::Pymes;
}

void FrmConversion2007::propone() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  filas_ = proponeConversion(*empresa, modelo());
  ensena();
}

void FrmConversion2007::ensena() {
  ensenando_ = true;
  QTableWidget& tabla = *ui_->GrdConversion;
  tabla.setRowCount(0);
  for (qsizetype i = 0; i < filas_.size(); ++i) {
    const FilaConversion& fila = filas_[i];
    if (!seEnsena(fila, opcion("OptVer"))) continue;
    const int sitio = tabla.rowCount();
    tabla.insertRow(sitio);
    const QString textos[] = {fila.codigo,
                              fila.nombre,
                              QString::number(fila.lineas),
                              Format(fila.saldo, sesion().MascaraImporte),
                              fila.nuevo,
                              fila.dudosa ? "Decidir" : "",
                              fila.nota};
    for (int columna = 0; columna < kColumnas; ++columna) {
      auto* celda = new QTableWidgetItem(textos[columna]);
      if (columna != kNuevo) celda->setFlags(celda->flags() & ~Qt::ItemIsEditable);
      if (columna == kLineas || columna == kSaldo)
        celda->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      if (columna == kNota) celda->setToolTip(fila.nota);
      QFont letra = celda->font();
      letra.setBold(fila.dudosa);
      celda->setFont(letra);
      tabla.setItem(sitio, columna, celda);
    }
    tabla.item(sitio, kCodigo)->setData(Qt::UserRole, i);
  }
  if (tabla.rowCount() > 0) tabla.setCurrentCell(0, kNuevo);
  ensenando_ = false;
  resume();
}

void FrmConversion2007::cambiada(QTableWidgetItem* celda) {
  if (ensenando_ || celda->column() != kNuevo) return;
  const auto i = ui_->GrdConversion->item(celda->row(), kCodigo)->data(Qt::UserRole).toLongLong();
  FilaConversion& fila = filas_[i];
  const QString escrito = celda->text().trimmed();
  // A bare cuenta takes the ending of the old code with it.
  const bool cuenta =
      escrito.size() >= 3 && escrito.size() < fila.codigo.size() && escrito.size() <= 4;
  fila.nuevo = cuenta ? codigoConvertido(fila.codigo, escrito) : escrito;
  ensenando_ = true;
  celda->setText(fila.nuevo);
  ensenando_ = false;
  resume();
}

void FrmConversion2007::resume() {
  const auto cambian = std::ranges::count_if(
      filas_, [](const FilaConversion& f) { return !f.nuevo.isEmpty() && f.nuevo != f.codigo; });
  const auto faltan =
      std::ranges::count_if(filas_, [](const FilaConversion& f) { return f.nuevo.isEmpty(); });
  ui_->LblResumen->setText(QStringLiteral("Códigos: %1   Cambian: %2   Por decidir: %3")
                               .arg(filas_.size())
                               .arg(cambian)
                               .arg(faltan));
}

// What was decided for one goes for the rest of its old cuenta, each with its ending.
void FrmConversion2007::CmdIgual_Click() {
  const QTableWidget& tabla = *ui_->GrdConversion;
  if (tabla.currentRow() < 0) return;
  const auto i = tabla.item(tabla.currentRow(), kCodigo)->data(Qt::UserRole).toLongLong();
  const QString viejo = filas_[i].codigo, nuevo = filas_[i].nuevo;
  if (nuevo.isEmpty()) return mensaje("Decida primero el código nuevo de esta línea", "Atención");
  const bool cuatro = nuevo != codigoConvertido(viejo, nuevo.left(3));
  for (FilaConversion& fila : filas_)
    if (fila.codigo != viejo && fila.codigo.left(3) == viejo.left(3))
      fila.nuevo = codigoConvertido(fila.codigo, nuevo.left(cuatro ? 4 : 3));
  ensena();
}

bool FrmConversion2007::seQuiere(Database& empresa) {
  const Plan2007DeEmpresa plan = plan2007De(empresa);
  if (plan.sigue &&
      !pregunta("La empresa sigue ya el plan de 2007 desde el " + Format(plan.desde, "dd/mm/yyyy") +
                    ". Otra conversión cambiaría otra vez los códigos. ¿Desea seguir?",
                "Conversión al plan de 2007", Icono::Aviso))
    return false;
  if (empresaCerrada(sesion()) &&
      !pregunta("La empresa está cerrada y sus libros pueden estar ya presentados. ¿Desea seguir?",
                "Conversión al plan de 2007", Icono::Aviso))
    return false;
  QStringList faltas = faltasDeConversion(empresa, {modelo(), filas_});
  if (!faltas.isEmpty()) {
    const auto cuantas = faltas.size();
    if (cuantas > kMasFaltas)
      faltas = faltas.first(kMasFaltas) +
               QStringList(QStringLiteral("... y %1 más").arg(cuantas - kMasFaltas));
    mensaje("No se ha cambiado nada:\n" + faltas.join('\n'), "Conversión al plan de 2007");
    return false;
  }
  return pregunta(
      "Se cambiarán los códigos de toda la empresa, después de hacer una copia de ella. "
      "¿Desea seguir?",
      "Conversión al plan de 2007", Icono::Pregunta);
}

void FrmConversion2007::ponBotones(bool si) {
  for (QAbstractButton* boton : {ui_->CmdAceptar, ui_->CmdCancelar, ui_->CmdIgual})
    boton->setEnabled(si);
  if (si) ui_->Bar->hide();
}

void FrmConversion2007::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  if (!seQuiere(*empresa)) return;
  Convertido hecho;
  QString copia;
  ponBotones(false);
  try {
    copia = copiaAntesDeConvertir(ctx.motor, sesion().rutaEmpresa());
    trabajaEnDiario(ctx, *ui_->Bar, [&](const Avance& avance) {
      hecho = convierteA2007(ctx.motor, *empresa, {modelo(), filas_}, ctx.reloj->hoy(), avance);
    });
  } catch (...) {
    ponBotones(true);
    throw;
  }
  ponBotones(true);
  const auto sumas = [this](const SumasConversion& suma) {
    return "debe " + Format(suma.debe, sesion().MascaraImporte).trimmed() + ", haber " +
           Format(-suma.haber, sesion().MascaraImporte).trimmed();
  };
  mensaje(QStringLiteral("Han cambiado %1 subcuentas y %2 líneas del diario.\nSumas antes: %3"
                         "\nSumas después: %4\nLa copia de antes es %5")
              .arg(hecho.subcuentas)
              .arg(hecho.lineas)
              .arg(sumas(hecho.antes), sumas(hecho.despues), copia),
          "Conversión al plan de 2007");
  descargar();
}
