#include "oficial/frmdatosregistros.h"

#include <algorithm>

#include "common/formato.h"
#include "engine/dbengine.h"
#include "journal/widgets/lineaapunte.h"
#include "journal/widgets/trabajoendiario.h"
#include "oficial/modelo303.h"
#include "oficial/registrofijo.h"
#include "toolkit/protocolo.h"
#include "ui_frmdatosregistros.h"

namespace {

constexpr int k303 = 303, k347 = 347;
const QString kTodoElAno = QStringLiteral("Todo el año");

// What is shown of the row itself, before its data.
enum Propias { Codigo, Fecha, Factura, Base, Porcen, Cuota, kPropias };

const DatoDeRegistro& dato(int columna) {
  return datosDeRegistro()[size_t(columna - kPropias)];
}

bool esDato(int columna) {
  return columna >= kPropias && columna < kPropias + int(datosDeRegistro().size());
}

std::vector<ColumnaHojaPantalla> columnas() {
  std::vector<ColumnaHojaPantalla> lista = {{"Código", 12},     {"Fecha", 11},
                                            {"Factura", 14},    {"Base", 13, true},
                                            {"% IVA", 7, true}, {"Cuota", 12, true}};
  for (const DatoDeRegistro& d : datosDeRegistro()) {
    const QString campo = QLatin1String(d.campo);
    const bool derecha = campo == QLatin1String("Base") || campo == QLatin1String("Deducible");
    lista.push_back({QString::fromUtf8(d.titulo), d.ancho, derecha, QString::fromUtf8(d.ayuda)});
  }
  lista.push_back({"Aviso", 50});
  return lista;
}

}  // namespace

FrmDatosRegistros::FrmDatosRegistros(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmDatosRegistros>()) {
  ui_->setupUi(this);
  ui_->TxtLibro->addItems({"Ambos", "Soportado", "Repercutido"});
  ui_->TxtPeriodo->addItem(kTodoElAno);
  ui_->TxtPeriodo->addItems(Periodo::codigos());
  sinIntro(ui_->GrdRegistros);
  for (QComboBox* combo : {ui_->TxtLibro, ui_->TxtPeriodo})
    alElegir(combo, [this](int) { elige(); });
  alPulsar(ui_->ChkAvisos, [this] { elige(); });
  connect(ui_->GrdRegistros, &TablaHoja::filaCambiada, this, [this](int fila) {
    const bool hay = fila >= 0 && fila < int(visibles_.size());
    ui_->LblAviso->setText(hay ? avisos_[size_t(visibles_[size_t(fila)])].join(QStringLiteral(". "))
                               : QString());
  });
  connect(ui_->GrdRegistros, &TablaHoja::intro, this,
          [this](int fila) { protege([&] { abreFactura(fila); }, "GrdRegistros_KeyPress"); });
  alPulsar(ui_->CmdFactura, [this] { abreFactura(ui_->GrdRegistros->fila()); });
  alPulsar(ui_->CmdSalir, [this] {
    ui_->GrdRegistros->cierraCelda();
    descargar();
  });
}

FrmDatosRegistros::~FrmDatosRegistros() = default;

std::unique_ptr<Database> FrmDatosRegistros::empresa() {
  return ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
}

void FrmDatosRegistros::Form_Load() {
  const int llamada = sesion().CodigoLlamada;
  const QString pedido = sesion().ValorElegido;
  const auto base = empresa();
  tipos_ = TiposPorFechas(*base);
  if (llamada == k303) {
    const Hoja303 hoja(*base, {sesion().AnoActual, pedido.section(u' ', 0, 0)});
    const Casilla303* const casilla = hoja.casilla(pedido.section(u' ', 1));
    for (const int i : casilla ? casilla->lineas : hoja.sinCasilla())
      codigos_ += hoja.lineas()[size_t(i)].codigo;
  } else if (llamada == k347) {
    codigos_ = pedido.split(u' ', Qt::SkipEmptyParts);
  }
  soloCodigos_ = llamada == k303 || llamada == k347;
  ui_->GrdRegistros->enlazar(
      columnas(),
      {.filas = [this] { return int(visibles_.size()); },
       .texto = [this](int fila, int columna) { return celda(fila, columna); },
       .editable = [](int, int columna) { return esDato(columna); },
       .escribe = [this](int fila, int columna,
                         const QString& texto) { escribe(fila, columna, texto); },
       .resalta =
           [this](int fila, int columna) {
             return esDato(columna) && lineas_[size_t(visibles_[size_t(fila)])].escrito.contains(
                                           QLatin1String(dato(columna).campo));
           },
       .avisa = [](int, int columna) { return columna > kPropias && !esDato(columna); }});
  lee();
  ui_->GrdRegistros->setFocus();
}

void FrmDatosRegistros::lee() {
  int perdidos = 0;
  lineas_ = leeRegistros(*empresa(), {}, &perdidos);
  avisos_.clear();
  for (const LineaRegistro& linea : lineas_) avisos_.push_back(avisosDe(linea, tipos_));
  elige();
  if (perdidos > 0)
    ui_->LblAviso->setText(
        QStringLiteral("Datos escritos de facturas que ya no están: %1").arg(perdidos));
}

bool FrmDatosRegistros::entra(const LineaRegistro& l, size_t lugar) const {
  if (soloCodigos_ && !codigos_.contains(l.codigo)) return false;
  if (ui_->TxtLibro->currentIndex() == 1 && l.emitida()) return false;
  if (ui_->TxtLibro->currentIndex() == 2 && !l.emitida()) return false;
  if (ui_->ChkAvisos->isChecked() && avisos_[lugar].isEmpty()) return false;
  if (ui_->TxtPeriodo->currentText() == kTodoElAno) return true;
  const Periodo periodo{ctx.sesion.AnoActual, ui_->TxtPeriodo->currentText()};
  const QDate dia = l.fechaDeRegistro();
  return dia >= periodo.desde() && dia <= periodo.hasta();
}

void FrmDatosRegistros::elige() {
  ui_->GrdRegistros->cierraCelda();
  visibles_.clear();
  for (size_t i = 0; i < lineas_.size(); ++i)
    if (entra(lineas_[i], i)) visibles_.push_back(int(i));
  ui_->GrdRegistros->refresca();
  if (visibles_.empty()) ui_->LblAviso->setText("No hay facturas");
}

QString FrmDatosRegistros::celda(int fila, int columna) const {
  const auto lugar = size_t(visibles_[size_t(fila)]);
  const LineaRegistro& l = lineas_[lugar];
  const QString& mascara = ctx.sesion.MascaraImporte;
  const auto importe = [&](qint64 centimos) { return textoDeCentimos(centimos, mascara); };
  switch (columna) {
    case Codigo:
      return l.codigo;
    case Fecha:
      return l.fecha.isValid() ? Format(l.fecha, QStringLiteral("dd/mm/yyyy")) : QString();
    case Factura:
      return l.factura;
    case Base:
      return importe(l.baseDeFila);
    case Porcen:
      return Format(l.porcenIVA, QStringLiteral("0.00"));
    case Cuota:
      return importe(l.iva);
    default:
      return esDato(columna) ? valorDeDato(l, QLatin1String(dato(columna).campo), mascara)
                             : avisos_[lugar].join(QStringLiteral(". "));
  }
}

void FrmDatosRegistros::escribe(int fila, int columna, const QString& texto) {
  const auto lugar = size_t(visibles_[size_t(fila)]);
  escribeDato(*empresa(), lineas_[lugar], QLatin1String(dato(columna).campo), texto);
  guardaCelda(*this, ctx, [this] { lee(); });
  avisos_[lugar] = avisosDe(lineas_[lugar], tipos_);
  ui_->LblAviso->setText(avisos_[lugar].join(QStringLiteral(". ")));
}

// What the main window refuses to change, and told as there.
bool FrmDatosRegistros::puedeAbrirse(const LineaRegistro& linea) {
  const QString& limite = sesion().FechaNoModificar;
  if (linea.adquisicion) {
    mensaje(
        "No puede modificar una partida creada con IVA intracomunitario, elimine la partida y "
        "cree una nueva",
        "Partida intracomunitaria");
    return false;
  }
  if (EsFecha(limite) && linea.fechaC.isValid() && linea.fechaC < Variant(limite).date()) {
    avisaDeFechaLimite(*this, ctx);
    return false;
  }
  const auto primera = std::ranges::find(lineas_, linea.asiento, &LineaRegistro::asiento);
  if (primera->codigo != linea.codigo)
    mensaje(QStringLiteral("El asiento %1 lleva más de una factura: se abre la primera, la %2")
                .arg(linea.asiento)
                .arg(primera->factura),
            "Atención");
  return true;
}

void FrmDatosRegistros::abreFactura(int fila) {
  ui_->GrdRegistros->cierraCelda();
  if (fila < 0 || fila >= int(visibles_.size())) return;
  const LineaRegistro linea = lineas_[size_t(visibles_[size_t(fila)])];
  if (!puedeAbrirse(linea)) return;
  trabajaEnDiario(
      ctx, [&] { mostrar("FrmIVASR", llamada::kIVAModificacion, QString::number(linea.asiento)); });
  lee();
}
