#include "reports/frmacumulados.h"

#include "common/formato.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "toolkit/celdaimporte.h"
#include "toolkit/principal.h"
#include "ui_frmacumulados.h"

namespace {

constexpr int kMeses = 12;
enum Columnas { Mes, Debe, Haber, SaldoMes, Saldo, kColumnas };

}  // namespace

FrmAcumulados::FrmAcumulados(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmAcumulados>()), DtaSaldos_(contexto.motor) {
  ui_->setupUi(this);
  alPulsar(ui_->Command1, [this] { descargar(); });
  setBotonDeCierre(ui_->Command1);
}

FrmAcumulados::~FrmAcumulados() = default;

void FrmAcumulados::Form_Load() {
  encabeza();
  leeONoAbre([this] { llena(ctx.principal->TxtSubcuenta().text()); });
  ajusta();
}

void FrmAcumulados::encabeza() {
  ui_->Grid->setRowCount(kMeses + 1);
  ui_->Grid->setColumnCount(kColumnas);
  ui_->Grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
  ui_->Grid->horizontalHeader()->hide();
  ui_->Grid->verticalHeader()->hide();
  // Headings are no amounts; they have no blank at their end either.
  for (int c = Debe; c <= Saldo; ++c)
    ui_->Grid->setItemDelegateForColumn(c, new CeldaImporte(sesion().MascaraImporte, ui_->Grid));
  const QStringList titulos = {"", "Debe", "Haber", "Saldo mes", "Saldo"};
  for (int c = 0; c < kColumnas; ++c) pon(0, c, titulos.at(c));
  for (int mes = 1; mes <= kMeses; ++mes)
    pon(mes, Mes, Format(QDate(2002, mes, 1), "mmm").toUpper());
}

void FrmAcumulados::llena(const QString& subcuenta) {
  const QString mascara = sesion().MascaraImporte;
  for (int mes = 1; mes <= kMeses; ++mes) {
    for (int c = Debe; c <= Saldo; ++c) pon(mes, c, Format(0, mascara));
    // A month without lines has no row, and keeps its zeros.
    saltando([&] {
      DtaSaldos_.bind(sesion().rutaEmpresa(),
                      "Select * from SqlDiarioSaldosCuentasMeses where Subcuenta='" + subcuenta +
                          "' and Mes = '" + QString::number(mes) + "'");
      if (DtaSaldos_.Eof()) return;
      pon(mes, Debe, Format(DtaSaldos_.Fields("SumaDeDebe").Value(), mascara));
      pon(mes, Haber, Format(DtaSaldos_.Fields("SumaDeHaber").Value(), mascara));
    });
  }
  double saldo = 0;
  for (int mes = 1; mes <= kMeses; ++mes) {
    pon(mes, SaldoMes, Format(importe(mes, Debe) + importe(mes, Haber), mascara));
    saldo += importe(mes, SaldoMes);
    pon(mes, Saldo, Format(saldo, mascara));
  }
}

void FrmAcumulados::pon(int fila, int columna, const QString& texto) {
  auto* celda = new QTableWidgetItem(texto);
  const bool cabecera = fila == 0 || columna == 0;
  celda->setTextAlignment(Qt::AlignVCenter | (columna == 0 ? Qt::AlignLeft : Qt::AlignRight));
  if (cabecera) {
    celda->setBackground(palette().button());
    celda->setFlags(Qt::ItemIsEnabled);
  }
  ui_->Grid->setItem(fila, columna, celda);
}

// The whole year is seen at once, however large the letters and the amounts.
void FrmAcumulados::ajusta() {
  QTableWidget& grid = *ui_->Grid;
  const int cifra = fontMetrics().horizontalAdvance('0');
  grid.verticalHeader()->setDefaultSectionSize(fontMetrics().height() + cifra);
  grid.resizeColumnsToContents();
  int ancho = 2 * grid.frameWidth();
  for (int c = 0; c < kColumnas; ++c) {
    if (c != Mes) grid.setColumnWidth(c, qMax(grid.columnWidth(c) + cifra, 14 * cifra));
    ancho += grid.columnWidth(c);
  }
  int alto = 2 * grid.frameWidth();
  for (int fila = 0; fila <= kMeses; ++fila) alto += grid.rowHeight(fila);
  grid.setMinimumSize(ancho, alto);
  grid.horizontalHeader()->setStretchLastSection(true);
  grid.setCurrentCell(1, Debe);
}

double FrmAcumulados::importe(int fila, int columna) const {
  return ImporteDe(ui_->Grid->item(fila, columna)->text(), ctx.sesion.MascaraImporte).value_or(0);
}
