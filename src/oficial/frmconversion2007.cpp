#include "oficial/frmconversion2007.h"

#include <algorithm>
#include <QHeaderView>

#include "common/formato.h"
#include "company/sesionempresa.h"
#include "engine/dbengine.h"
#include "journal/widgets/trabajoendiario.h"
#include "oficial/widgets/hojaimpresa.h"
#include "toolkit/celdaimporte.h"
#include "toolkit/principal.h"
#include "ui_frmconversion2007.h"

namespace {
enum { kCodigo, kNombre, kLineas, kSaldo, kNuevo, kDecidir, kNota, kColumnas };
constexpr int kMasFaltas = 12;  // are told in one box
enum { kTodas, kCambian, kPorDecidir };

const QString kSeBorra = QStringLiteral("Se borra");

QString nuevoDe(const FilaConversion& fila) {
  return fila.seBorra ? kSeBorra : fila.nuevo;
}

bool seEnsena(const FilaConversion& fila, int cuales) {
  if (cuales == kPorDecidir) return !fila.decidida();
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
  const int anchos[] = {85, 0, 60, 105, 100, 60};
  for (int i = 0; i < kNota; ++i) tabla.setColumnWidth(i, anchos[i]);
  // These two share what the window has, and a note takes the lines that it then needs.
  QHeaderView& cabecera = *tabla.horizontalHeader();
  for (const int columna : {kNombre, kNota})
    cabecera.setSectionResizeMode(columna, QHeaderView::Stretch);
  connect(&cabecera, &QHeaderView::sectionResized, this, [this](int columna) {
    if (columna == kNota) ajustaNotas();
  });
  for (QWidget* control :
       std::initializer_list<QWidget*>{ui_->Bar, ui_->GrdSumas, ui_->CmdImprimir})
    control->hide();
  for (QAbstractItemView* vista :
       {static_cast<QAbstractItemView*>(&tabla), static_cast<QAbstractItemView*>(ui_->GrdSumas)})
    sinIntro(vista);
  alElegirOpcion("OptModelo", [this](int) { propone(); });
  alElegirOpcion("OptVer", [this](int) { ensena(); });
  connect(&tabla, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* celda) {
    protege([&] { cambiada(celda); }, "GrdConversion_Change");
  });
  alPulsar(ui_->CmdIgual, [this] { CmdIgual_Click(); });
  alPulsar(ui_->CmdNoUsadas, [this] { CmdNoUsadas_Click(); });
  alPulsar(ui_->CmdImprimir, [this] { CmdImprimir_Click(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmConversion2007::~FrmConversion2007() = default;

void FrmConversion2007::Form_Load() {
  ui_->GrdConversion->setItemDelegateForColumn(
      kSaldo, new CeldaImporte(sesion().MascaraImporte, ui_->GrdConversion));
  setOpcion("OptVer", kCambian);
  setOpcion("OptModelo", 1);
}

Modelo2007 FrmConversion2007::modelo() const {
  return opcion("OptModelo") == 0 ? Modelo2007::Normal : Modelo2007::Pymes;
}

void FrmConversion2007::propone() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  QHash<QString, FilaConversion> antes;
  for (const FilaConversion& fila : std::as_const(filas_))
    if (tecleadas_.contains(fila.codigo)) antes.insert(fila.codigo, fila);
  filas_ = proponeConversion(*empresa, modelo());
  // What was typed is as good for the other model, or will be told.
  for (FilaConversion& fila : filas_) {
    const auto suya = antes.constFind(fila.codigo);
    if (suya == antes.cend()) continue;
    fila.nuevo = suya->nuevo;
    fila.seBorra = suya->seBorra;
  }
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
                              nuevoDe(fila),
                              fila.dudosa ? "Decidir" : "",
                              fila.nota};
    for (int columna = 0; columna < kColumnas; ++columna) {
      auto* celda = new QTableWidgetItem(textos[columna]);
      if (columna != kNuevo) celda->setFlags(celda->flags() & ~Qt::ItemIsEditable);
      if (columna == kLineas || columna == kSaldo)
        celda->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      if (columna == kNombre || columna == kNota) celda->setToolTip(textos[columna]);
      QFont letra = celda->font();
      letra.setBold(fila.dudosa);
      celda->setFont(letra);
      tabla.setItem(sitio, columna, celda);
    }
    tabla.item(sitio, kCodigo)->setData(Qt::UserRole, i);
  }
  if (tabla.rowCount() > 0) tabla.setCurrentCell(0, kNuevo);
  ensenando_ = false;
  ajustaNotas();
  resume();
}

void FrmConversion2007::ajustaNotas() {
  QTableWidget& tabla = *ui_->GrdConversion;
  for (int fila = 0; fila < tabla.rowCount(); ++fila) {
    const QTableWidgetItem* nota = tabla.item(fila, kNota);
    if (nota && !nota->text().isEmpty()) tabla.resizeRowToContents(fila);
  }
}

void FrmConversion2007::cambiada(QTableWidgetItem* celda) {
  if (ensenando_ || celda->column() != kNuevo) return;
  const auto i = ui_->GrdConversion->item(celda->row(), kCodigo)->data(Qt::UserRole).toLongLong();
  FilaConversion& fila = filas_[i];
  const QString escrito = celda->text().trimmed();
  tecleadas_.insert(fila.codigo);
  fila.seBorra = escrito == QLatin1String("-") || escrito == kSeBorra;
  // A bare cuenta takes the ending of the old code with it.
  const bool cuenta =
      escrito.size() >= 3 && escrito.size() < fila.codigo.size() && escrito.size() <= 4;
  fila.nuevo = fila.seBorra ? QString() : cuenta ? codigoConvertido(fila.codigo, escrito) : escrito;
  ensenando_ = true;
  celda->setText(nuevoDe(fila));
  ensenando_ = false;
  resume();
}

void FrmConversion2007::resume() {
  const auto cambian = std::ranges::count_if(
      filas_, [](const FilaConversion& f) { return !f.nuevo.isEmpty() && f.nuevo != f.codigo; });
  const auto borradas = std::ranges::count_if(filas_, &FilaConversion::seBorra);
  const auto faltan = filas_.size() - std::ranges::count_if(filas_, &FilaConversion::decidida);
  ui_->LblResumen->setText(
      QStringLiteral("Códigos: %1   Cambian: %2   Se borran: %3   Por decidir: %4")
          .arg(filas_.size())
          .arg(cambian)
          .arg(borradas)
          .arg(faltan));
}

void FrmConversion2007::CmdNoUsadas_Click() {
  if (decideNoUsadas(filas_) == 0)
    return mensaje("No hay códigos por decidir que no se usen", "Conversión al plan de 2007");
  ensena();
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
    if (fila.codigo != viejo && fila.codigo.left(3) == viejo.left(3)) {
      fila.nuevo = codigoConvertido(fila.codigo, nuevo.left(cuatro ? 4 : 3));
      fila.seBorra = false;
      tecleadas_.insert(fila.codigo);
    }
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
  for (QWidget* control : std::initializer_list<QWidget*>{ui_->CmdAceptar, ui_->CmdCancelar,
                                                          ui_->CmdIgual, ui_->CmdNoUsadas})
    control->setEnabled(si);
  if (si) ui_->Bar->hide();
}

// The accounts that the program sets by itself may have another code afterwards: the session takes
// them anew.
Convertido FrmConversion2007::convierte(Database& empresa) {
  Convertido hecho;
  trabajaEnDiario(ctx, *ui_->Bar, [&](const Avance& avance) {
    hecho = convierteA2007(ctx.motor, empresa, {modelo(), filas_}, ctx.reloj->hoy(), avance);
  });
  leeEmpresa(*empresa.OpenRecordset("Select * from Empresa"), sesion());
  return hecho;
}

void FrmConversion2007::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  if (!seQuiere(*empresa)) return;
  QString copia;
  const QString ruta = sesion().rutaEmpresa();
  const qint64 antes = ctx.motor.commits(ruta);
  ponBotones(false);
  try {
    copia = copiaAntesDeConvertir(ctx.motor, ruta);
    hecho_ = convierte(*empresa);
  } catch (...) {
    retiraCopiaSobrante(ctx.motor, ruta, copia, antes);
    ponBotones(true);
    throw;
  }
  ponBotones(true);
  ensenaSumas();
  mensaje(QStringLiteral("Subcuentas que han cambiado: %1. Líneas del diario: %2. Subcuentas "
                         "borradas: %3\nLa copia de antes es %4")
              .arg(hecho_.subcuentas)
              .arg(hecho_.lineas)
              .arg(hecho_.borradas)
              .arg(copia),
          "Conversión al plan de 2007");
  ui_->GrdSumas->setFocus();
}

// --- the trial balance on both sides of it ------------------------------------------------------

// It takes the place of the proposal.
void FrmConversion2007::ensenaSumas() {
  hecho_.sumas.append(hecho_.total());
  ui_->Propuesta->hide();
  for (QWidget* control : std::initializer_list<QWidget*>{ui_->CmdAceptar, ui_->GrdConversion})
    control->hide();
  ui_->GrdSumas->show();
  ui_->CmdImprimir->show();
  ui_->CmdCancelar->setText("&Salir");
  const auto importe = [this](double valor) { return Format(valor, sesion().MascaraImporte); };
  const auto sumas = [&](const SumasConversion& suma) {
    return "debe " + importe(suma.debe).trimmed() + ", haber " + importe(-suma.haber).trimmed();
  };
  const FilaDeSumas& total = hecho_.sumas.last();
  ui_->LblResumen->setText("Sumas antes: " + sumas(total.antes) +
                           "   Después: " + sumas(total.despues));
  ui_->GrdSumas->enlazar({{"Código", 9},
                          {"Código nuevo", 11},
                          {"Nombre", 16},
                          {"Debe antes", 12, true},
                          {"Haber antes", 12, true},
                          {"Saldo antes", 12, true},
                          {"Debe después", 12, true},
                          {"Haber después", 12, true},
                          {"Saldo después", 12, true}},
                         {.filas = [this] { return int(hecho_.sumas.size()); },
                          .texto =
                              [this, importe](int fila, int columna) {
                                const FilaDeSumas& f = hecho_.sumas[fila];
                                const QString textos[] = {f.codigo,
                                                          f.nuevo,
                                                          f.codigo.isEmpty() ? "Total" : f.nombre,
                                                          importe(f.antes.debe),
                                                          importe(-f.antes.haber),
                                                          importe(f.antes.saldo()),
                                                          importe(f.despues.debe),
                                                          importe(-f.despues.haber),
                                                          importe(f.despues.saldo())};
                                return textos[columna];
                              },
                          .resalta =
                              [this](int fila, int columna) {
                                const FilaDeSumas& f = hecho_.sumas[fila];
                                return f.codigo.isEmpty() || (columna == 1 && f.codigo != f.nuevo);
                              }});
  ui_->GrdSumas->irA(0);
}

void FrmConversion2007::CmdImprimir_Click() {
  HojaImpresa hoja(ctx, this);
  for (const FilaDeSumas& f : hecho_.sumas)
    hoja.anade({f.codigo, f.nuevo, f.codigo.isEmpty() ? QStringLiteral("Total") : f.nombre},
               {f.antes.debe, -f.antes.haber, f.antes.saldo(), f.despues.debe, -f.despues.haber,
                f.despues.saldo()});
  hoja.muestra(windowTitle(), QStringLiteral("SumasConversion"),
               QStringLiteral("Antes y después del %1")
                   .arg(Format(ctx.reloj->hoy(), QStringLiteral("dd/mm/yyyy"))));
}
