#include "cartera/frmreciboslista.h"

#include <QScreen>
#include <QStyle>

#include "common/comillas.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/funciones.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "toolkit/protocolo.h"
#include "ui_frmreciboslista.h"

namespace {

const QString kTodos = QStringLiteral("Select * from SQLRecibos order by vencimiento");

constexpr int kLetrasDeAncho = 175;
constexpr int kLineasDeAlto = 32;

}  // namespace

FrmRecibosLista::FrmRecibosLista(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmRecibosLista>()),
      DtaRecibos_(contexto.motor) {
  ui_->setupUi(this);
  DtaRecibos_.setObjectName("DtaRecibos");
  ui_->Grid->enlazar(
      DtaRecibos_,
      {{.campo = "Vencimiento", .titulo = "Vencimiento", .tipo = Columna::Tipo::Fecha},
       {.campo = "Subcuentas.Descripcion", .titulo = "Cliente/Proveedor", .ancho = 26},
       {.campo = "Titulo", .titulo = "Titulo", .ancho = 30},
       {.campo = "Factura", .titulo = "Factura", .ancho = 12},
       {.campo = "Tipo", .titulo = "Tipo", .ancho = 12},
       {.campo = "Subcuentas_1.Descripcion", .titulo = "Caja/Banco", .ancho = 20},
       {.campo = "Importe", .titulo = "Importe", .ancho = 14, .tipo = Columna::Tipo::Importe},
       {.campo = "CA", .titulo = "C/A", .ancho = 5}});
  repartePorColumnas();
  conectaFiltros();
  for (const auto senal : {&Rejilla::intro, &Rejilla::dobleClic})
    connect(ui_->Grid, senal, this,
            [this] { protege([this] { CmdModifica_Click(); }, "CmdModifica_Click"); });
  connect(ui_->Grid, &Rejilla::mas, this,
          [this] { protege([this] { abreRecibo(llamada::kAlta); }, "CmdAltas_Click"); });
  alPulsar(ui_->CmdAltas,
           [this] { protege([this] { abreRecibo(llamada::kAlta); }, "CmdAltas_Click"); });
  alPulsar(ui_->CmdModifica, [this] { CmdModifica_Click(); });
  alPulsar(ui_->CmdContabiliza, [this] { CmdContabiliza_Click(); });
  alPulsar(ui_->CmdElimina, [this] { CmdElimina_Click(); });
  alPulsar(ui_->CmdImpresos, [this] { mostrar("FrmRecibosImpresos"); });
  alPulsar(ui_->CmdLocalizarTodos, [this] { CmdLocalizarTodos_Click(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmRecibosLista::~FrmRecibosLista() = default;

// Each button is as wide as its column, which in a narrow window needs less than most buttons.
void FrmRecibosLista::repartePorColumnas() {
  const std::vector<QWidget*> botones = {ui_->CmdVencimiento, ui_->CmdCliPro, ui_->CmdTitulo,
                                         ui_->CmdFactura,     ui_->CmdTipo,   ui_->CmdCajaBanco,
                                         ui_->CmdImporte,     ui_->CmdCA};
  const auto cabe = [this](const QString& texto) {
    return fontMetrics().horizontalAdvance(texto + "00");
  };
  for (QWidget* boton : botones) {
    boton->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    boton->setMinimumWidth(cabe(static_cast<QAbstractButton*>(boton)->text()));
  }
  ui_->CmdImporte->setMinimumWidth(cabe("-9.999.999,99"));
  // The last one stands over the bar too.
  ui_->CmdCA->setMinimumWidth(cabe("C/A") + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  ui_->Grid->alinearCon(botones);
  ui_->Grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

void FrmRecibosLista::Form_Load() {
  ui_->CmdLocalizarTodos->hide();
  ui_->Grid->setMascara(sesion().MascaraImporte);
  // With whole names where the screen has room for them.
  const QFontMetrics letra = fontMetrics();
  resize(letra.horizontalAdvance('0') * kLetrasDeAncho, letra.height() * kLineasDeAlto);
  DtaRecibos_.bind(sesion().rutaEmpresa(), kTodos);
  ui_->Grid->setFocus();
}

// --- looking for recibos ------------------------------------------------------------------------

// What is typed becomes part of the statement as it stands, with its own wildcards.
void FrmRecibosLista::conectaFiltros() {
  const struct {
    QAbstractButton* boton;
    const char* pregunta;
    const char* campo;
  } filtros[] = {
      {ui_->CmdCliPro, "Introduzca el cliente/proveedor a localizar", "Subcuentas.Descripcion"},
      {ui_->CmdTitulo, "Introduzca el Título a localizar", "Titulo"},
      {ui_->CmdFactura, "Introduzca la factura a localizar", "Factura"},
      {ui_->CmdTipo, "Introduzca el Tipo a localizar", "Tipo"},
      {ui_->CmdCajaBanco, "Introduzca el Caja/Banco a localizar", "Banco"},
      {ui_->CmdCA, "Introduzca el C ó A a localizar", "CA"},
  };
  for (const auto& filtro : filtros) {
    alPulsar(filtro.boton, [this, filtro] {
      const QString campo = filtro.campo;
      localiza("Select * from SQLRecibos where " + campo + " like " +
               entreComillas(pide(filtro.pregunta)) + " order by " + campo);
    });
  }
  alPulsar(ui_->CmdVencimiento, [this] { CmdVencimiento_Click(); });
  alPulsar(ui_->CmdImporte, [this] { CmdImporte_Click(); });
}

void FrmRecibosLista::CmdVencimiento_Click() {
  const QString texto = pide("Introduzca la fecha a localizar");
  if (!EsFecha(texto)) return;
  const QString dia = NormalizaFecha(texto, sesion().AnoActual, ctx.reloj->hoy());
  localiza("Select * from SQLRecibos where vencimiento >= #" + Format(dia, "m-d-yy") +
           "# order by vencimiento");
}

void FrmRecibosLista::CmdImporte_Click() {
  const QString texto = pide("Introduzca el Importe a localizar");
  if (texto.isEmpty()) return;  // any other filter can look for nothing, a comparison can't
  localiza("Select * from SQLRecibos where Importe >=" + texto + " order by Importe");
}

void FrmRecibosLista::CmdLocalizarTodos_Click() {
  localiza(kTodos);
  ui_->Grid->setFocus();  // before the button that has it goes
  ui_->CmdLocalizarTodos->hide();
}

// Empty when it is given up.
QString FrmRecibosLista::pide(const char* texto) {
  return ctx.cajas->entrada(this, texto, "Localiza", {}).value_or(QString());
}

// A statement that what was typed has broken leaves the list as it was.
void FrmRecibosLista::localiza(const QString& fuente) {
  const QString antes = DtaRecibos_.RecordSource();
  DtaRecibos_.setRecordSource(fuente);
  try {
    DtaRecibos_.Refresh();
  } catch (const ErrorEjecucion&) {
    DtaRecibos_.setRecordSource(antes);
    DtaRecibos_.Refresh();
    throw;
  }
  ui_->CmdLocalizarTodos->show();
}

// --- the current recibo -------------------------------------------------------------------------

bool FrmRecibosLista::hayRecibo() {
  if (!ui_->Grid->valor("Vencimiento").isEmpty()) return true;
  mensaje("No hay ningun registro seleccionado", "Error");
  return false;
}

// However the dialog ends, the list then shows what is in the file: another station may have been
// at it meanwhile.
void FrmRecibosLista::abreRecibo(int uso) {
  buscado_ = DtaRecibos_.Eof() ? Recibo() : leeRecibo(DtaRecibos_.Recordset());
  mostrar("FrmRecibos", uso);
  relee();
}

void FrmRecibosLista::CmdModifica_Click() {
  if (hayRecibo()) abreRecibo(llamada::kModificacion);
}

void FrmRecibosLista::CmdContabiliza_Click() {
  if (hayRecibo()) abreRecibo(llamada::kContabilizacion);
}

void FrmRecibosLista::CmdElimina_Click() {
  if (!hayRecibo()) return;
  buscado_ = leeRecibo(DtaRecibos_.Recordset());
  if (!pregunta("Desea eliminar el recibo seleccionado", "Elimina")) return;
  DataControl filas(ctx.motor);
  filas.setDatabaseName(sesion().rutaEmpresa());
  try {
    situaEn(filas, buscado_);
    filas.Delete();
    ctx.cajas->guardaPendiente(this);
  } catch (...) {
    // Another station may have taken it.
    ignorando([this] { relee(); });
    throw;
  }
  relee();
}

void FrmRecibosLista::relee() {
  const int posicion = DtaRecibos_.Recordset().AbsolutePosition();
  DtaRecibos_.Refresh();
  const int filas = DtaRecibos_.Recordset().rowTotal();
  if (!situa(buscado_) && posicion > 0 && filas > 0)
    DtaRecibos_.setAbsolutePosition(std::min(posicion, filas - 1));
}

bool FrmRecibosLista::situa(const Recibo& recibo) {
  const Recordset& filas = DtaRecibos_.Recordset();
  const int importe = filas.Ordinal("Importe"), titulo = filas.Ordinal("Titulo");
  for (int fila = 0; fila < filas.rowTotal(); ++fila) {
    if (filas.cell(fila, importe) != recibo.Importe || filas.cell(fila, titulo) != recibo.Titulo)
      continue;
    DtaRecibos_.setAbsolutePosition(fila);
    if (leeRecibo(DtaRecibos_.Recordset()) == recibo) return true;
  }
  return false;
}
