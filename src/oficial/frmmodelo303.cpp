#include "oficial/frmmodelo303.h"

#include "common/conversion.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/version.h"
#include "engine/dbengine.h"
#include "oficial/declarante.h"
#include "oficial/registrofijo.h"
#include "oficial/widgets/hojaimpresa.h"
#include "ui_frmmodelo303.h"

namespace {

enum Columnas { Numero, Concepto, Registros, AMano, Total };
const QString kSegunResultado = QStringLiteral("Según el resultado");
const QString kVolumen = QStringLiteral("04");

const QStringList kTipos = {kSegunResultado,
                            QStringLiteral("I - A ingresar"),
                            QStringLiteral("U - Domiciliación"),
                            QStringLiteral("G - Cuenta corriente tributaria, ingreso"),
                            QStringLiteral("C - A compensar"),
                            QStringLiteral("D - Devolución"),
                            QStringLiteral("X - Devolución en el extranjero"),
                            QStringLiteral("V - Cuenta corriente tributaria, devolución"),
                            QStringLiteral("N - Sin actividad o resultado cero")};

}  // namespace

FrmModelo303::FrmModelo303(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmModelo303>()) {
  ui_->setupUi(this);
  ui_->TxtPeriodo->addItems(Periodo::codigos());
  ui_->TxtTipo->addItems(kTipos);
  sinIntro(ui_->GrdCasillas);
  alElegir(ui_->TxtPeriodo, [this](int) { lee(); });
  alElegir(ui_->TxtTipo, [this](int) { muestraResultado(); });
  alPulsar(ui_->ChkExonerado, [this] { lee(); });
  connect(ui_->GrdCasillas, &TablaHoja::intro, this, [this](int fila) {
    protege([&] { abreFilas(hoja_->casillas()[size_t(visibles_[size_t(fila)])].numero); },
            "GrdCasillas_KeyPress");
  });
  alPulsar(ui_->CmdDeclarante, [this] { mostrar("FrmDeclarante"); });
  alPulsar(ui_->CmdFilas, [this] {
    if (const int fila = ui_->GrdCasillas->fila(); fila >= 0)
      abreFilas(hoja_->casillas()[size_t(visibles_[size_t(fila)])].numero);
  });
  alPulsar(ui_->CmdSinCasilla, [this] { abreFilas(QStringLiteral("-")); });
  alPulsar(ui_->CmdImprimir, [this] { CmdImprimir_Click(); });
  alPulsar(ui_->CmdFichero, [this] { CmdFichero_Click(); });
  alPulsar(ui_->CmdPresentar, [this] { CmdPresentar_Click(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmModelo303::~FrmModelo303() = default;

std::unique_ptr<Database> FrmModelo303::empresa() {
  return ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
}

// It opens on the quarter that is to be filed: the last one finished by today, within the year.
void FrmModelo303::Form_Load() {
  ui_->GrdCasillas->enlazar(
      {{"Casilla", 6, true},
       {"Concepto", 41},
       {"Registros", 13, true, "Lo que suman las facturas, o lo que se calcula"},
       {"A mano", 13, true, "Cuenta en lugar de lo de los registros. Supr lo quita"},
       {"Total", 13, true}},
      {.filas = [this] { return int(visibles_.size()); },
       .texto = [this](int fila, int columna) { return celda(fila, columna); },
       .editable =
           [this](int fila, int columna) {
             return columna == AMano &&
                    hoja_->casillas()[size_t(visibles_[size_t(fila)])].editable();
           },
       .escribe = [this](int fila, int, const QString& texto) { escribe(fila, texto); },
       .resalta =
           [this](int fila, int) {
             return !hoja_->casillas()[size_t(visibles_[size_t(fila)])].formula.isEmpty();
           },
       .avisa =
           [this](int fila, int columna) {
             const Casilla303& c = hoja_->casillas()[size_t(visibles_[size_t(fila)])];
             return columna == Total && c.sinSigno && hoja_->valor(c.numero) < 0;
           }});
  const QDate hoy = ctx.reloj->hoy();
  const int ano = sesion().AnoActual;
  const int trimestre = hoy.year() > ano ? 4 : hoy.year() < ano ? 1 : (hoy.month() - 1) / 3;
  ui_->TxtPeriodo->setCurrentIndex(qMax(0, trimestre - 1));
  lee();
  ui_->GrdCasillas->setFocus();
  ui_->GrdCasillas->irA(0, AMano);
}

void FrmModelo303::lee() {
  const Periodo periodo{sesion().AnoActual, ui_->TxtPeriodo->currentText()};
  const auto base = empresa();
  hoja_ = std::make_unique<Hoja303>(*base, periodo);
  ui_->ChkExonerado->setEnabled(periodo.esUltimo());
  visibles_.clear();
  const bool volumen = periodo.esUltimo() && ui_->ChkExonerado->isChecked();
  for (size_t i = 0; i < hoja_->casillas().size(); ++i)
    if (hoja_->casillas()[i].pagina != kVolumen || volumen) visibles_.push_back(int(i));
  ui_->GrdCasillas->refresca();
  ui_->CmdSinCasilla->setEnabled(!hoja_->sinCasilla().empty());
  descuadres_ = hoja_->descuadres(*base);
  muestraResultado();
}

QString FrmModelo303::importe(const Casilla303& casilla, qint64 valor) const {
  return textoDeCentimos(valor,
                         casilla.porcentaje ? QStringLiteral("0.00") : ctx.sesion.MascaraImporte);
}

void FrmModelo303::muestraResultado() {
  QStringList avisos = hoja_->avisos();
  for (const Cuadre303& c : descuadres_)
    avisos +=
        QStringLiteral("Cuenta %1: los registros dan %2 y el diario %3")
            .arg(c.subcuenta, importe({}, c.registros).trimmed(), importe({}, c.diario).trimmed());
  ui_->TxtAvisos->setPlainText(avisos.join(u'\n'));
  ui_->LblResultado->setText(
      QStringLiteral("<b>Resultado: %1</b> &nbsp; &nbsp; Declaración: %2 &nbsp; &nbsp; A compensar "
                     "después: %3")
          .arg(importe({}, hoja_->resultado()).trimmed(), tipo(),
               importe({}, hoja_->valor(QStringLiteral("87"))).trimmed()));
}

QString FrmModelo303::celda(int fila, int columna) const {
  const Casilla303& c = hoja_->casillas()[size_t(visibles_[size_t(fila)])];
  switch (columna) {
    case Numero:
      return c.numero;
    case Concepto:
      return c.titulo;
    case Registros:
      return c.lineas.empty() && c.formula.isEmpty() && c.calculado == 0 ? QString()
             : c.formula.isEmpty()                                       ? importe(c, c.calculado)
                                                                         : QString();
    case AMano:
      return c.aMano ? importe(c, *c.aMano) : QString();
    default: {
      // Zeros only where something was reckoned.
      const qint64 valor = hoja_->valor(c.numero);
      const bool vacia = valor == 0 && c.formula.isEmpty() && c.lineas.empty() && !c.aMano;
      return vacia ? QString() : importe(c, valor);
    }
  }
}

void FrmModelo303::escribe(int fila, const QString& texto) {
  std::optional<qint64> valor;
  if (!texto.trimmed().isEmpty()) {
    const auto leido = ImporteDe(texto, sesion().MascaraImporte);
    if (!leido)
      throw ErrorEjecucion(err::kTiposNoCoinciden,
                           QStringLiteral("«%1» no es un importe").arg(texto));
    valor = centimosDe(*leido);
  }
  const auto base = empresa();
  hoja_->escribe(*base, hoja_->casillas()[size_t(visibles_[size_t(fila)])].numero, valor);
  guardaCelda(*this, ctx, [this] { lee(); });
  muestraResultado();
}

QString FrmModelo303::tipo() const {
  const QString elegido = ui_->TxtTipo->currentText();
  return elegido == kSegunResultado ? hoja_->tipoPropuesto(false) : elegido.left(1);
}

void FrmModelo303::abreFilas(const QString& casilla) {
  ui_->GrdCasillas->cierraCelda();
  const Casilla303* const c = hoja_->casilla(casilla);
  if (c && c->lineas.empty())
    return mensaje(c->formula.isEmpty()
                       ? QStringLiteral("Ninguna factura entra en la casilla %1").arg(casilla)
                       : QStringLiteral("La casilla %1 es %2").arg(casilla, c->formula),
                   "Modelo 303");
  mostrar("FrmDatosRegistros", 303, hoja_->periodo().codigo + u' ' + casilla);
  lee();
}

ValoresFijos FrmModelo303::datos(const Declarante& declarante) const {
  const QString clase = tipo();
  const bool ultimo = hoja_->periodo().esUltimo();
  const bool exonerado = ultimo && ui_->ChkExonerado->isChecked();
  const bool conVolumen = exonerado && hoja_->valor(QStringLiteral("88")) != 0;
  const bool conCuenta = QStringLiteral("UDX").contains(clase);
  const QString iban = declarante["Iban"];
  ValoresFijos datos = {
      {QStringLiteral("NIF"), declarante["Nif"]},
      {QStringLiteral("Apellidos y nombre o razón social"), declarante["Nombre"]},
      {QStringLiteral("Tipo de declaración"), clase},
      {QStringLiteral("Versión del programa"), versionDelPrograma()},
      {QStringLiteral("Exonerado del modelo 390"), !ultimo     ? "0"
                                                   : exonerado ? "1"
                                                               : "2"},
      {QStringLiteral("Volumen anual de operaciones distinto de cero"), !exonerado   ? "0"
                                                                        : conVolumen ? "1"
                                                                                     : "2"},
      {QStringLiteral("Código de actividad principal"), declarante["ClaveActividad"]},
      {QStringLiteral("Epígrafe IAE principal"), declarante["Epigrafe"]}};
  if (!conCuenta) return datos;
  datos.insert(QStringLiteral("Domiciliación o devolución: IBAN"), iban);
  if (clase == QLatin1String("X"))
    datos.insert(QStringLiteral("Devolución: SWIFT-BIC"), declarante["Bic"]);
  if (clase == QLatin1String("D") && iban.startsWith(QLatin1String("ES")))
    datos.insert(QStringLiteral("Devolución: marca SEPA"), "1");
  return datos;
}

QStringList FrmModelo303::avisosDelFichero(const Declarante& declarante) const {
  QStringList avisos = declarante.faltas() + hoja_->avisos();
  const qint64 resultado = hoja_->resultado();
  const QString clase = tipo();
  if ((resultado > 0) != QStringLiteral("IUG").contains(clase) ||
      (resultado < 0) != QStringLiteral("CDXV").contains(clase))
    avisos += QStringLiteral("La clase de declaración (%1) no va con su resultado").arg(clase);
  if (QStringLiteral("DXV").contains(clase) && !hoja_->periodo().esUltimo())
    avisos += QStringLiteral("Sólo en el último periodo se pide la devolución");
  if (QStringLiteral("UDX").contains(clase) && declarante["Iban"].isEmpty())
    avisos += QStringLiteral("Falta el IBAN");
  if (hoja_->periodo().esUltimo() && ui_->ChkExonerado->isChecked() &&
      hoja_->diseno().nombre() != QLatin1String("2024B"))
    avisos += QStringLiteral("La página del volumen de operaciones es la de 2024");
  return avisos;
}

void FrmModelo303::CmdFichero_Click() {
  ui_->GrdCasillas->cierraCelda();
  lee();  // what another station has posted meanwhile is in the file too
  const auto base = empresa();
  const Declarante declarante(*base);
  if (declarante["Nif"].isEmpty())
    return mensaje("Falta el NIF del declarante: póngalo con «Declarante...»", "Modelo 303");
  const QStringList avisos = avisosDelFichero(declarante);
  if (!avisos.isEmpty() &&
      !pregunta(avisos.join(u'\n') + QStringLiteral("\n\n¿Desea hacer el fichero?"), "Modelo 303"))
    return;
  const bool volumen = hoja_->periodo().esUltimo() && ui_->ChkExonerado->isChecked();
  const QByteArray fichero = fichero303(*hoja_, datos(declarante), volumen);
  const QString nombre = QStringLiteral("%1_%2_%3.303")
                             .arg(declarante["Nif"])
                             .arg(hoja_->periodo().ejercicio)
                             .arg(hoja_->periodo().codigo);
  const auto ruta =
      ctx.cajas->guardarFichero(this, "Fichero del modelo 303", nombre, "Modelo 303 (*.303)");
  if (!ruta || ruta->isEmpty()) return;
  escribeFichero(*ruta, fichero);
  mensaje("Fichero hecho. Cuando lo haya presentado, dé el periodo por presentado.", "Modelo 303");
}

void FrmModelo303::CmdPresentar_Click() {
  ui_->GrdCasillas->cierraCelda();
  lee();
  if (!pregunta(
          QStringLiteral("¿Dar por presentado el %1 con resultado %2 (%3)?")
              .arg(hoja_->periodo().codigo, importe({}, hoja_->resultado()).trimmed(), tipo()),
          "Modelo 303"))
    return;
  const auto base = empresa();
  hoja_->presenta(*base, tipo());
  ctx.cajas->guardaPendiente(this);
}

void FrmModelo303::CmdImprimir_Click() {
  ui_->GrdCasillas->cierraCelda();
  HojaImpresa impresa(ctx, this);
  for (const int i : visibles_) {
    const Casilla303& c = hoja_->casillas()[size_t(i)];
    impresa.anade({c.numero, c.titulo, c.aMano ? QStringLiteral("a mano") : QString()},
                  {double(hoja_->valor(c.numero)) / 100});
  }
  impresa.muestra(QStringLiteral("Modelo 303"), QStringLiteral("Modelo303"),
                  QStringLiteral("%1 de %2   N.I.F. %3")
                      .arg(hoja_->periodo().codigo)
                      .arg(hoja_->periodo().ejercicio)
                      .arg(Declarante(*empresa())["Nif"]));
}
