#include "oficial/frmestados.h"

#include <algorithm>
#include <QHeaderView>

#include "accounts/plan2007.h"
#include "common/comillas.h"
#include "common/formato.h"
#include "oficial/widgets/hojaimpresa.h"
#include "toolkit/registro.h"
#include "ui_frmestados.h"

namespace {
enum { kConcepto, kImporte, kAnterior };
constexpr int kResultados = 2;
constexpr int kNivelDeAviso = 9;
constexpr int kSangria = 3;  // blanks for each level
const QString kAnoAnterior = QStringLiteral(" (año anterior)");
}  // namespace

FrmEstados::FrmEstados(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmEstados>()), DtaEmpresas_(contexto.motor) {
  ui_->setupUi(this);
  DtaEmpresas_.setObjectName("DtaEmpresas");
  ui_->TxtEmpresa->enlazar(DtaEmpresas_, "NombreEmpresa");
  sinIntro(ui_->GrdEstado);
  for (QComboBox* combo : {ui_->TxtDesde, ui_->TxtHasta})
    alElegir(combo, [this](int) { muestra(); });
  connect(ui_->TxtEmpresa, &ComboEnlazado::elegido, this,
          [this] { protege([this] { muestra(); }, "TxtEmpresa_Click"); });
  alPulsar(ui_->CmdSinAnterior, [this] {
    ui_->TxtEmpresa->setCurrentIndex(-1);
    muestra();
  });
  alPulsar(ui_->ChkTodas, [this] { muestra(); });
  alPulsar(ui_->CmdAceptar, [this] { imprime(); });
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

int FrmEstados::desde() const {
  return numeroDeMes(ui_->TxtDesde->currentText()).toInt();
}

int FrmEstados::hasta() const {
  return numeroDeMes(ui_->TxtHasta->currentText()).toInt();
}

// The file of the company that keeps the year before; null where none is chosen.
std::unique_ptr<Database> FrmEstados::delAnoAnterior() {
  const QString otra = ui_->TxtEmpresa->texto();
  rotuloAnterior_.clear();
  if (otra.isEmpty()) return nullptr;
  auto base = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa(otra));
  const auto fila = base->OpenRecordset("Select * from Empresa");
  rotuloAnterior_ = fila->Eof() ? otra : fila->Fields("Año").display();
  if (!plan2007De(*base).sigue)
    avisos_ += "La empresa " + otra + " no consta que siga el plan de 2007";
  return base;
}

void FrmEstados::calcula() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  avisos_.clear();
  const Saldos actual = saldosDelPeriodo(*empresa, desde(), hasta());
  const Desgloses desgloses = desglosesDelPeriodo(*empresa, cual_, desde(), hasta());
  Saldos anterior;
  Desgloses desglosesAnteriores;
  if (const auto base = delAnoAnterior()) {
    anterior = saldosDelPeriodo(*base, desde(), hasta());
    desglosesAnteriores = desglosesDelPeriodo(*base, cual_, desde(), hasta());
  }
  estado_ = calculaEstado(cual_, actual, anterior, desgloses, desglosesAnteriores);
  const Estado otro = cual_ == Estado::Balance ? Estado::Resultados : Estado::Balance;
  avisa(*empresa, calculaEstado(otro, actual, anterior), resultadoDe(actual));
}

// What doesn't square, and what stands in no line, is told on the screen and on the page.
void FrmEstados::avisa(Database& empresa, const EstadoOficial& otro, double resultado) {
  const auto importe = [this](double valor) {
    return Format(valor, sesion().MascaraImporte).trimmed();
  };
  const QString cero = importe(0);
  const EstadoOficial& balance = cual_ == Estado::Balance ? estado_ : otro;
  const EstadoOficial& resultados = cual_ == Estado::Balance ? otro : estado_;
  for (const auto& [columna, cuando] :
       {std::pair(&LineaDeEstado::importe, QString()), {&LineaDeEstado::anterior, kAnoAnterior}}) {
    const double descuadre = importeDeLinea(balance, lineaestado::kActivo, columna) -
                             importeDeLinea(balance, lineaestado::kPasivo, columna);
    if (importe(descuadre) != cero)
      avisos_ += "El activo no es igual al patrimonio neto y pasivo: diferencia de " +
                 importe(descuadre) + cuando;
  }
  const double diferencia = resultado - importeDeLinea(resultados, lineaestado::kResultado);
  if (importe(diferencia) != cero)
    avisos_ += "El resultado del balance no es el de pérdidas y ganancias: diferencia de " +
               importe(diferencia);
  avisaDeCuentasSinLinea(empresa);
}

void FrmEstados::avisaDeCuentasSinLinea(Database& empresa) {
  for (const auto& [saldos, cuando] :
       {std::pair(&estado_.sinLinea, QString()), {&estado_.sinLineaAnterior, kAnoAnterior}}) {
    QStringList codigos = saldos->keys();
    std::ranges::sort(codigos);
    for (const QString& codigo : codigos) {
      const auto fila = empresa.OpenRecordset(
          "Select Descripcion from Subcuentas where Subcuenta=" + entreComillas(codigo));
      const QString nombre = fila->Eof() ? QString() : fila->Fields(0).display();
      avisos_ += codigo + u' ' + nombre + ": no está en ninguna línea, saldo de " +
                 Format(saldos->value(codigo), sesion().MascaraImporte).trimmed() + cuando;
    }
  }
}

void FrmEstados::muestra() {
  ui_->GrdEstado->cierraCelda();
  calcula();
  const bool todas = ui_->ChkTodas->isChecked();
  visibles_.clear();
  for (qsizetype i = 0; i < estado_.lineas.size(); ++i) {
    const LineaDeEstado& linea = estado_.lineas[i];
    if (seMuestra(linea, sesion().MascaraImporte, todas) ||
        (todas && seEscribe(cual_, linea.orden)))
      visibles_.push_back(i);
  }
  ponRejilla();
  ui_->LblAvisos->setPlainText(avisos_.isEmpty()
                                   ? "El balance cuadra, el resultado es el mismo en los "
                                     "dos estados y todas las cuentas tienen su línea."
                                   : avisos_.join('\n'));
}

void FrmEstados::ponRejilla() {
  std::vector<ColumnaHojaPantalla> columnas = {{"Concepto", 66},
                                               {QString::number(sesion().AnoActual), 16, true}};
  if (!rotuloAnterior_.isEmpty()) columnas.push_back({rotuloAnterior_, 16, true});
  const int antes = ui_->GrdEstado->fila();
  ui_->GrdEstado->enlazar(
      std::move(columnas),
      {.filas = [this] { return int(visibles_.size()); },
       .texto = [this](int fila, int columna) { return celda(fila, columna); },
       .editable =
           [this](int fila, int columna) {
             return columna == kImporte && seEscribe(cual_, linea(fila).orden);
           },
       .escribe = [this](int fila, int, const QString& texto) { escribe(fila, texto); },
       .resalta = [this](int fila, int) { return linea(fila).nivel <= 1; }});
  ui_->GrdEstado->horizontalHeader()->setStretchLastSection(false);
  ui_->GrdEstado->horizontalHeader()->setSectionResizeMode(kConcepto, QHeaderView::Stretch);
  if (!visibles_.empty())
    ui_->GrdEstado->irA(std::clamp(antes, 0, int(visibles_.size()) - 1), kImporte);
}

QString FrmEstados::celda(int fila, int columna) const {
  const LineaDeEstado& l = linea(fila);
  if (columna == kConcepto)
    return QString(kSangria * std::max(0, l.nivel - 1), u' ') + l.clave +
           (l.clave.isEmpty() ? "" : " ") + l.texto;
  return Format(columna == kAnterior ? l.anterior : l.importe, ctx.sesion.MascaraImporte);
}

void FrmEstados::escribe(int fila, const QString& texto) {
  std::optional<double> importe;
  if (!texto.trimmed().isEmpty()) {
    importe = ImporteDe(texto, sesion().MascaraImporte);
    if (!importe)
      throw ErrorEjecucion(err::kTiposNoCoinciden,
                           QStringLiteral("«%1» no es un importe").arg(texto));
  }
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  escribeDesglose(*empresa, {cual_, linea(fila).orden, desde(), hasta()}, importe);
  guardaCelda(*this, ctx, [this] { muestra(); });
  // The editor still stands in the grid: its rows may change once it has gone.
  QMetaObject::invokeMethod(
      this, [this] { protege([this] { muestra(); }, "GrdEstado_AfterUpdate"); },
      Qt::QueuedConnection);
}

void FrmEstados::imprime() {
  muestra();
  HojaImpresa hoja(ctx, this);
  const QStringList rotulos = {QString::number(sesion().AnoActual), rotuloAnterior_};
  for (const LineaDeEstado& l : estado_.lineas) {
    if (!seMuestra(l, sesion().MascaraImporte, ui_->ChkTodas->isChecked())) continue;
    const Variant anterior = rotuloAnterior_.isEmpty() ? Variant() : Variant(l.anterior);
    hoja.anade(QStringList{l.clave, l.texto, l.casilla} + rotulos, {l.nivel, l.importe, anterior});
  }
  for (const QString& aviso : avisos_)
    hoja.anade(QStringList{{}, aviso, {}} + rotulos, {kNivelDeAviso});
  hoja.muestra(windowTitle(), cual_ == Estado::Balance ? "BalancePymes" : "ResultadosPymes",
               textoLimites(ui_->TxtDesde->currentText(), ui_->TxtHasta->currentText()));
}
