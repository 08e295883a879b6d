#include "oficial/frmestados.h"

#include <algorithm>
#include <QHeaderView>

#include "accounts/plan2007.h"
#include "common/comillas.h"
#include "common/formato.h"
#include "toolkit/registro.h"
#include "ui_frmestados.h"

namespace {
constexpr int kResultados = 2;
const QString kAnoAnterior = QStringLiteral(" (año anterior)");
constexpr int kSangria = 3;  // blanks for each level

QTableWidgetItem* celda(const QString& texto, Qt::Alignment alineacion, bool fuerte) {
  auto* item = new QTableWidgetItem(texto);
  item->setTextAlignment(alineacion | Qt::AlignVCenter);
  QFont letra = item->font();
  letra.setBold(fuerte);
  item->setFont(letra);
  return item;
}
}  // namespace

FrmEstados::FrmEstados(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmEstados>()), DtaEmpresas_(contexto.motor) {
  ui_->setupUi(this);
  DtaEmpresas_.setObjectName("DtaEmpresas");
  ui_->TxtEmpresa->enlazar(DtaEmpresas_, "NombreEmpresa");
  ui_->GrdEstado->setColumnCount(3);
  ui_->GrdEstado->verticalHeader()->hide();
  ui_->GrdEstado->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  for (QComboBox* combo : {ui_->TxtDesde, ui_->TxtHasta})
    alElegir(combo, [this](int) { muestra(); });
  connect(ui_->TxtEmpresa, &ComboEnlazado::elegido, this,
          [this] { protege([this] { muestra(); }, "TxtEmpresa_Click"); });
  alPulsar(ui_->CmdSinAnterior, [this] {
    ui_->TxtEmpresa->setCurrentIndex(-1);
    muestra();
  });
  alPulsar(ui_->ChkTodas, [this] { muestra(); });
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmEstados::~FrmEstados() = default;

void FrmEstados::Form_Load() {
  cual_ = sesion().CodigoLlamada == kResultados ? Estado::Resultados : Estado::Balance;
  setWindowTitle(cual_ == Estado::Balance ? "Balance (PYMES)" : "Pérdidas y ganancias (PYMES)");
  DtaEmpresas_.bind(sesion().rutaCatalogo(), "Select * from Empresas order by NombreEmpresa");
  ui_->TxtEmpresa->setCurrentIndex(-1);
  ponMeses(ui_->TxtDesde, ui_->TxtHasta);
  muestra();
}

Saldos FrmEstados::anteriores() {
  const QString otra = ui_->TxtEmpresa->texto();
  impreso_.conAnterior = !otra.isEmpty();
  impreso_.rotuloAnterior.clear();
  if (otra.isEmpty()) return {};
  const auto base = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa(otra));
  const auto fila = base->OpenRecordset("Select * from Empresa");
  impreso_.rotuloAnterior = fila->Eof() ? otra.left(30) : fila->Fields("Año").display();
  if (!plan2007De(*base).sigue)
    impreso_.avisos.append({{}, "La empresa " + otra + " no consta que siga el plan de 2007"});
  return saldosDelPeriodo(*base, numeroDeMes(ui_->TxtDesde->currentText()).toInt(),
                          numeroDeMes(ui_->TxtHasta->currentText()).toInt());
}

void FrmEstados::calcula() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  impreso_ = {};
  impreso_.mascara = sesion().MascaraImporte;
  impreso_.todas = ui_->ChkTodas->isChecked();
  impreso_.rotuloActual = QString::number(sesion().AnoActual);
  const Saldos actual =
      saldosDelPeriodo(*empresa, numeroDeMes(ui_->TxtDesde->currentText()).toInt(),
                       numeroDeMes(ui_->TxtHasta->currentText()).toInt());
  const Saldos anterior = anteriores();
  impreso_.estado = calculaEstado(cual_, actual, anterior);
  const Estado otro = cual_ == Estado::Balance ? Estado::Resultados : Estado::Balance;
  avisa(*empresa, calculaEstado(otro, actual, anterior), resultadoDe(actual));
}

// What doesn't square, and what stands in no line, is told on the screen and on the page.
void FrmEstados::avisa(Database& empresa, const EstadoOficial& otro, double resultado) {
  const auto importe = [this](double valor) { return Format(valor, impreso_.mascara).trimmed(); };
  const QString cero = importe(0);
  const EstadoOficial& balance = cual_ == Estado::Balance ? impreso_.estado : otro;
  const EstadoOficial& resultados = cual_ == Estado::Balance ? otro : impreso_.estado;
  for (const auto& [columna, cuando] :
       {std::pair(&LineaDeEstado::importe, QString()), {&LineaDeEstado::anterior, kAnoAnterior}}) {
    const double descuadre = importeDeLinea(balance, lineaestado::kActivo, columna) -
                             importeDeLinea(balance, lineaestado::kPasivo, columna);
    if (importe(descuadre) != cero)
      impreso_.avisos.append({{},
                              "El activo no es igual al patrimonio neto y pasivo: diferencia de " +
                                  importe(descuadre) + cuando});
  }
  const double diferencia = resultado - importeDeLinea(resultados, lineaestado::kResultado);
  if (importe(diferencia) != cero)
    impreso_.avisos.append(
        {{},
         "El resultado del balance no es el de pérdidas y ganancias: diferencia de " +
             importe(diferencia)});
  for (const auto& [saldos, cuando] : {std::pair(&impreso_.estado.sinLinea, QString()),
                                       {&impreso_.estado.sinLineaAnterior, kAnoAnterior}}) {
    QStringList codigos = saldos->keys();
    std::ranges::sort(codigos);
    for (const QString& codigo : codigos) {
      const auto fila = empresa.OpenRecordset(
          "Select Descripcion from Subcuentas where Subcuenta=" + entreComillas(codigo));
      const QString nombre = fila->Eof() ? QString() : fila->Fields(0).display();
      impreso_.avisos.append({codigo, nombre + ": no está en ninguna línea, saldo de " +
                                          importe(saldos->value(codigo)) + cuando});
    }
  }
}

void FrmEstados::muestra() {
  calcula();
  QTableWidget& tabla = *ui_->GrdEstado;
  tabla.setHorizontalHeaderLabels(
      {"Concepto", impreso_.rotuloActual,
       impreso_.conAnterior ? impreso_.rotuloAnterior : QStringLiteral(" ")});
  tabla.setColumnHidden(2, !impreso_.conAnterior);
  tabla.setRowCount(0);
  for (const LineaDeEstado& linea : impreso_.estado.lineas) {
    if (!seMuestra(linea, impreso_.mascara, impreso_.todas)) continue;
    const int fila = tabla.rowCount();
    const bool fuerte = linea.nivel <= 1;
    const QString texto = QString(kSangria * std::max(0, linea.nivel - 1), u' ') + linea.clave +
                          (linea.clave.isEmpty() ? "" : " ") + linea.texto;
    tabla.insertRow(fila);
    tabla.setItem(fila, 0, celda(texto, Qt::AlignLeft, fuerte));
    tabla.setItem(fila, 1, celda(Format(linea.importe, impreso_.mascara), Qt::AlignRight, fuerte));
    tabla.setItem(fila, 2, celda(Format(linea.anterior, impreso_.mascara), Qt::AlignRight, fuerte));
  }
  for (const int columna : {1, 2}) tabla.setColumnWidth(columna, 130);
  if (tabla.rowCount() > 0) tabla.setCurrentCell(0, 0);
  QStringList textos;
  for (const auto& [codigo, texto] : impreso_.avisos) textos << (codigo + u' ' + texto).trimmed();
  ui_->LblAvisos->setPlainText(textos.isEmpty()
                                   ? "El balance cuadra, el resultado es el mismo en los "
                                     "dos estados y todas las cuentas tienen su línea."
                                   : textos.join('\n'));
}

Listado FrmEstados::listado() {
  muestra();
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  const int numero = escribeEstado(*empresa, impreso_, ctx.reloj->hoy());
  ctx.motor.flush();
  const bool balance = cual_ == Estado::Balance;
  return {.titulo = windowTitle(),
          .plantilla = balance ? "Impresos\\BalancePymes.rpt" : "Impresos\\ResultadosPymes.rpt",
          .seleccion = "{EstadosOficiales.Lanzamiento}=" + QString::number(numero),
          .limites = textoLimites(ui_->TxtDesde->currentText(), ui_->TxtHasta->currentText())};
}
