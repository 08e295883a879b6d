#include "iva/frmivasr.h"

#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>

#include "common/formato.h"
#include "common/funciones.h"
#include "engine/dbengine.h"
#include "iva/grabaiva.h"
#include "iva/widgets/campotipoiva.h"
#include "journal/apunte.h"
#include "journal/widgets/camposubcuenta.h"
#include "journal/widgets/lineaapunte.h"
#include "toolkit/principal.h"
#include "toolkit/protocolo.h"
#include "ui_frmivasr.h"

namespace {

// What a new invoice of each register starts with, by field of Empresa.
struct Arranque {
  const char* quien;
  const char* cuentaIva;
  const char* contrapartida;
  const char* proveedor;
  const char* recargo;
};

constexpr Arranque kSoportado = {"proveedor", "IVASSub", "IVASCom", "IVASPro", "IVASRE"};
constexpr Arranque kRepercutido = {"cliente", "IVARSub", "IVARVen", "IVARCli", "IVARRE"};

const Arranque& arranqueDe(LibroIVA libro) {
  return libro == LibroIVA::Soportado ? kSoportado : kRepercutido;
}

}  // namespace

FrmIVASR::FrmIVASR(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmIVASR>()), DtaIVA_(contexto.motor) {
  ui_->setupUi(this);
  const auto subcuenta = [this](QLineEdit& codigo, QLabel& nombre, int accion) {
    return std::make_unique<CampoSubcuenta>(
        *this, ctx, CampoSubcuenta::Opciones{.codigo = codigo, .nombre = nombre, .accion = accion});
  };
  proveedor_ = subcuenta(*ui_->TxtCodigoProveedor, *ui_->TxtCDescripcion, accion::kIVAProveedor);
  cuentaIva_ = subcuenta(*ui_->TxtCuentaIva, *ui_->TxtCIVADescripcion, accion::kIVACuenta);
  recargo_ = subcuenta(*ui_->TxtCuentaRecargo, *ui_->TxtCRDescripcion, accion::kIVARecargo);
  contrapartida_ =
      subcuenta(*ui_->TxtContrapartida, *ui_->TxtContDescripcion, accion::kIVAContrapartida);
  tipo_ =
      std::make_unique<CampoTipoIVA>(*this, ctx,
                                     CampoTipoIVA::Opciones{.codigo = *ui_->TxtIva,
                                                            .descripcion = *ui_->TXTIVADescripcion,
                                                            .porcenIVA = *ui_->TxtPorcenIVA,
                                                            .porcenRE = *ui_->TxtPorcenRec,
                                                            .aviso = *ui_->LblAvisoTipo,
                                                            .accion = accion::kTipoDeIVA});

  soloNumero(ui_->TxtNOrden);
  for (QLineEdit* campo : {ui_->TxtCodigoProveedor, ui_->TxtNumFactura}) {
    sinSeleccion(campo);
    alEntrar(campo, [campo] { campo->end(false); });
  }
  proveedor_->conecta();
  fecha(ui_->TxtFecha);
  alSalir(ui_->TxtFecha, [this] { TxtFecha_LostFocus(); });
  conectaImportes();
  alSalir(ui_->TxtIva, [this] { TxtIva_LostFocus(); });
  cuentaIva_->conecta();
  alSalir(ui_->TxtCuentaRecargo, [this] { TxtCuentaRecargo_LostFocus(); });
  contrapartida_->conecta();
  fecha(ui_->TxtFechaContable);
  ui_->LblNOrden->installEventFilter(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmIVASR::~FrmIVASR() = default;

void FrmIVASR::conectaImportes() {
  for (QLineEdit* campo : {ui_->TxtBase, ui_->TxtImporteIva, ui_->TxtRecargo, ui_->TxtTotal})
    conectaImporte(*this, ctx, *campo);
  // The first digit takes the place of the zero, wherever a click has left the caret.
  alTeclear(ui_->TxtBase, [this](Tecla& tecla) {
    if (tecla.texto.isPrint() && ui_->TxtBase->text() == cero()) ui_->TxtBase->selectAll();
  });
  alSalir(ui_->TxtBase, [this] { TxtBase_LostFocus(); });
  alSalir(ui_->TxtTotal, [this] { TxtTotal_LostFocus(); });
}

// --- loading ------------------------------------------------------------------------------------

void FrmIVASR::Form_Activate() {
  const int codigo = sesion().CodigoLlamada;
  const QString asiento = sesion().ValorElegido;
  for (CampoSubcuenta* campo :
       {proveedor_.get(), cuentaIva_.get(), contrapartida_.get(), recargo_.get()})
    campo->ajustaDigitos();
  for (QLineEdit* campo : {ui_->TxtBase, ui_->TxtImporteIva, ui_->TxtTotal, ui_->TxtRecargo})
    campo->setText(cero());
  totalCalculado_ = ui_->TxtTotal->text();
  if (!asiento.isEmpty()) ui_->TxtAsientoContable->setText(asiento);

  if (codigo == llamada::kIVASoportado) preparaAlta(LibroIVA::Soportado);
  if (codigo == llamada::kIVARepercutido) preparaAlta(LibroIVA::Repercutido);
  const bool cambia = codigo == llamada::kIVAModificacion || codigo == llamada::kIVARevision;
  if (cambia && !preparaModificacion(asiento, codigo == llamada::kIVAModificacion)) return;
  contrapartida_->deja();
  cuentaIva_->deja();
  TxtCuentaRecargo_LostFocus();
  avisaDeTipo();
}

void FrmIVASR::preparaAlta(LibroIVA libro) {
  const DataControl& empresa = ctx.principal->DtaEmpresaActual();
  const Arranque& arranque = arranqueDe(libro);
  const auto campo = [&](const char* nombre) {
    return empresa.Fields(QLatin1String(nombre)).display();
  };
  const Variant ultimo = empresa.Fields(contadorDe(libro)).Value();
  ui_->TxtNOrden->setText(QString::number((ultimo.isNull() ? 0 : ultimo.toLong()) + 1));
  ui_->TxtCuentaIva->setText(campo(arranque.cuentaIva));
  ui_->TxtContrapartida->setText(campo(arranque.contrapartida));
  ui_->TxtCodigoProveedor->setText(campo(arranque.proveedor));
  titula({libro, false});
  ui_->TxtCuentaRecargo->setText(campo(arranque.recargo));
}

void FrmIVASR::titula(const ClaseDeFactura& clase) {
  setWindowTitle(tituloDe(clase));
  ui_->LblProveedor->setText(ui_->LblProveedor->text() +
                             QLatin1String(arranqueDe(clase.libro).quien));
}

// False when the dialog has unloaded itself, because there is no invoice to change.
bool FrmIVASR::preparaModificacion(const QString& asiento, bool avisa) {
  try {
    leeFactura(asiento);
    TxtIva_LostFocus();
    proveedor_->deja();
    avisaDeAlmirel(avisa);
    return true;
  } catch (const ErrorEjecucion& error) {
    if (error.numero() == err::kSinRegistroActivo) {
      mensaje(
          QStringLiteral("Este registro no tiene un IVA asociado seguramente habra habido un "
                         "error en el traspaso de Almirel, se procede a la modificacion manual"),
          QStringLiteral("Error"));
    } else {
      anota(error, QStringLiteral("Form_Activate - FrmIVASR"));
    }
    descargar();
    return false;
  }
}

// The amounts besides the base aren't read: an invoice that is opened again takes the rate of
// today, and what follows from it.
void FrmIVASR::leeFactura(const QString& asiento) {
  DtaIVA_.bind(sesion().rutaEmpresa(),
               QStringLiteral("select * from RSIVA where asiento=") + asiento);
  muestraAsiento(asiento);
  const DataControl& diario = ctx.principal->DtaDiarioLista();
  FacturaZuri_ = diario.Fields(QStringLiteral("FacturaZuri")).display();
  EmpresaZuri_ = diario.Fields(QStringLiteral("EmpresaZuri")).display();

  const FilaRSIVA fila = leeFila(DtaIVA_.Recordset());
  const auto dia = [](const Variant& valor) { return Format(valor, QStringLiteral("dd/mm/yyyy")); };
  titula({fila.libro(), true});
  ui_->TxtBase->setText(Format(importesDe(fila).base, sesion().MascaraImporte));
  ui_->TxtNOrden->setText(QString::number(fila.Codigo.text().mid(1).toLongLong()));
  ui_->TxtNOrden->setEnabled(false);
  ui_->TxtCodigoProveedor->setText(fila.CliPro.display());
  ui_->TxtNumFactura->setText(fila.Factura.display());
  ui_->TxtFecha->setText(dia(fila.Fecha));
  ui_->TxtFechaContable->setText(dia(fila.FechaC));
  ui_->TxtAsientoContable->setText(fila.Asiento.display());
  ui_->TxtAsientoContable->setEnabled(false);
  ui_->TxtIva->setText(fila.TipoIVA.display());
  ui_->TxtCuentaIva->setText(fila.CtaIVA.display());
  ui_->TxtCuentaRecargo->setText(fila.CtaRE.display());
  ui_->TxtContrapartida->setText(fila.CtaCon.display());
}

// An invoice of the commercial program is changed there, or the two would tell different amounts.
void FrmIVASR::avisaDeAlmirel(bool avisa) {
  if (FacturaZuri_.isEmpty()) return;
  if (avisa) {
    mensaje(QStringLiteral("Atención esta factura se ha creado con Almirel, No sera posible su "
                           "modificación, solo desde Almirel."),
            QStringLiteral("Almirel"));
  }
  ui_->CmdAceptar->setEnabled(false);
  ui_->LblNOrden->setToolTip(
      QStringLiteral("Pulsando <Ctrl>+Click editara facturas creadas con Almirel"));
}

void FrmIVASR::muestraAsiento(const QString& asiento) {
  ctx.principal->DtaDiarioLista().bind(
      sesion().rutaEmpresa(),
      QStringLiteral("Select * from SqlDiarioPrincipalBlanco where Nasiento =") + asiento);
}

// --- the fields ---------------------------------------------------------------------------------

bool FrmIVASR::eventFilter(QObject* objeto, QEvent* evento) {
  if (objeto == ui_->LblNOrden && evento->type() == QEvent::MouseButtonRelease) {
    const auto& raton = static_cast<const QMouseEvent&>(*evento);
    if (raton.button() == Qt::LeftButton && raton.modifiers() == Qt::ControlModifier &&
        ui_->LblNOrden->rect().contains(raton.position().toPoint()))
      protege([this] { LblNOrden_Click(); }, QStringLiteral("LblNOrden_Click"));
  }
  return Formulario::eventFilter(objeto, evento);
}

void FrmIVASR::LblNOrden_Click() {
  if (ui_->CmdAceptar->isEnabled()) return;
  ui_->CmdAceptar->setEnabled(
      pregunta(QStringLiteral("¿ Desea activar el boton de aceptar para modificar esta partida ?, "
                              "bajo su responsabilidad puesto que esta partida ha sido creada con "
                              "Almirel"),
               QStringLiteral("Atención")));
}

void FrmIVASR::TxtFecha_LostFocus() {
  ui_->TxtFechaContable->setText(ui_->TxtFecha->text());
  avisaDeTipo();
}

void FrmIVASR::TxtIva_LostFocus() {
  if (!tipo_->deja()) return;
  avisaDeTipo();
  FacturaIVA f = factura();
  calculaDesdeBase(f, sesion().MascaraImporte);
  muestraCuentas(f);
}

void FrmIVASR::TxtBase_LostFocus() {
  avisaDeTipo();
  if (ui_->ChkNoCalcula->isChecked()) return;
  FacturaIVA f = factura();
  calculaDesdeBase(f, sesion().MascaraImporte);
  muestraCuentas(f);
}

// Only a total that was typed: computed back from its own total a base may come out a cent off, and
// whoever just passes through the field would change it.
void FrmIVASR::TxtTotal_LostFocus() {
  if (ui_->ChkNoCalcula->isChecked() || ui_->TxtTotal->text() == totalCalculado_) return;
  FacturaIVA f = factura();
  calculaDesdeTotal(f, sesion().MascaraImporte);
  muestraCuentas(f);
}

// Kept: a shortened code is written out in the box of the IVA account and not in this one, where it
// is looked for as it stands.
void FrmIVASR::TxtCuentaRecargo_LostFocus() {
  ui_->TxtCuentaIva->setText(ExpandeCodigo(ui_->TxtCuentaIva->text(), sesion().DigitosSubcuenta));
  if (!ui_->TxtCuentaRecargo->text().contains(u'.')) {
    recargo_->deja();
    return;
  }
  recargo_->consulta();
  enfocar(ui_->TxtCuentaRecargo);
}

void FrmIVASR::avisaDeTipo() {
  const bool rectifica = ImporteDe(ui_->TxtBase->text(), sesion().MascaraImporte).value_or(0) < 0;
  tipo_->avisa(rectifica ? QString() : ui_->TxtFecha->text());
}

QString FrmIVASR::cero() const {
  return Format(QStringLiteral("0"), ctx.sesion.MascaraImporte);
}

// --- accepting ----------------------------------------------------------------------------------

FacturaIVA FrmIVASR::factura() const {
  FacturaIVA f;
  f.NOrden = ui_->TxtNOrden->text();
  f.CodigoProveedor = ui_->TxtCodigoProveedor->text();
  f.NombreProveedor = ui_->TxtCDescripcion->text();
  f.NumFactura = ui_->TxtNumFactura->text();
  f.Fecha = ui_->TxtFecha->text();
  f.AsientoContable = ui_->TxtAsientoContable->text();
  f.Base = ui_->TxtBase->text();
  f.Iva = ui_->TxtIva->text();
  f.ImporteIva = ui_->TxtImporteIva->text();
  f.Recargo = ui_->TxtRecargo->text();
  f.Total = ui_->TxtTotal->text();
  f.CuentaIva = ui_->TxtCuentaIva->text();
  f.CuentaRecargo = ui_->TxtCuentaRecargo->text();
  f.Contrapartida = ui_->TxtContrapartida->text();
  f.FechaContable = ui_->TxtFechaContable->text();
  f.PorcenIVA = tipo_->porcenIVA();
  f.PorcenREC = tipo_->porcenREC();
  f.FacturaZuri = FacturaZuri_;
  f.EmpresaZuri = EmpresaZuri_;
  return f;
}

void FrmIVASR::muestraCuentas(const FacturaIVA& factura) {
  ui_->TxtBase->setText(factura.Base);
  ui_->TxtImporteIva->setText(factura.ImporteIva);
  ui_->TxtRecargo->setText(factura.Recargo);
  ui_->TxtTotal->setText(factura.Total);
  totalCalculado_ = factura.Total;
}

void FrmIVASR::CmdAceptar_Click() {
  const ClaseDeFactura clase = claseDe(windowTitle());
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  GrabadoIVA grabado;
  DtaIVA_.setDatabaseName(sesion().rutaEmpresa());
  try {
    grabaFactura(factura(), clase, sesion().MascaraImporte,
                 {DtaIVA_, ctx.principal->DtaDiarioLista(), ctx.principal->DtaEmpresaActual()},
                 grabado);
    ctx.cajas->guardaPendiente(this);  // given up, what was typed still stands
  } catch (const ErrorEjecucion& error) {
    avisarError(error.numero(), textoDeFallo(error, *empresa, grabado),
                QStringLiteral("CmdAceptar_Click"));
    // The lines that came before the failure are taken away when it is accepted again.
    if (clase.modificacion) muestraAsiento(grabado.asiento);
    return;
  }
  muestraAsiento(QString::number(Variant(grabado.asiento).toLong()));
  descargar();
}
