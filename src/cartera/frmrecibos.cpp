#include "cartera/frmrecibos.h"

#include <QLabel>
#include <QLineEdit>

#include "cartera/frmreciboslista.h"
#include "common/formato.h"
#include "engine/dbengine.h"
#include "journal/apunte.h"
#include "journal/widgets/camposubcuenta.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/principal.h"
#include "toolkit/protocolo.h"
#include "toolkit/registro.h"
#include "ui_frmrecibos.h"

namespace {
constexpr int kLargoDeTipo = 50;  // as TipoRecibos and Recibos keep it
}

FrmRecibos::FrmRecibos(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmRecibos>()),
      DtaTiposRecibos_(contexto.motor),
      DtaRecibos_(contexto.motor) {
  ui_->setupUi(this);
  const auto subcuenta = [this](QLineEdit& codigo, QLabel& nombre, int accion) {
    return std::make_unique<CampoSubcuenta>(
        *this, ctx, CampoSubcuenta::Opciones{.codigo = codigo, .nombre = nombre, .accion = accion});
  };
  cuenta_ = subcuenta(*ui_->TxtCuenta, *ui_->LblSubcuenta, accion::kReciboCuenta);
  contrapartida_ =
      subcuenta(*ui_->TxtContrapartida, *ui_->LblContrapartida, accion::kReciboContrapartida);
  fecha(ui_->TxtFechaVencimiento);
  alSalir(ui_->TxtCuenta, [this] { TxtCuenta_LostFocus(); });
  contrapartida_->conecta();
  ui_->TxtTipo->enlazar(DtaTiposRecibos_, QStringLiteral("Tipo"));
  ui_->TxtTipo->lineEdit()->setMaxLength(kLargoDeTipo);
  alEntrar(ui_->TxtTitulo, [this] { TxtTitulo_GotFocus(); });
  alTeclear(ui_->TxtCA, [](Tecla& tecla) { tecla.texto = tecla.texto.toUpper(); });
  alSalir(ui_->TxtCA, [this] { TxtCA_LostFocus(); });
  importe(ui_->TxtImporte);
  alPulsar(ui_->CmdTipos, [this] { CmdTipos_Click(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmRecibos::~FrmRecibos() = default;

void FrmRecibos::Form_Load() {
  uso_ = sesion().CodigoLlamada;
  lista_ =
      qobject_cast<FrmRecibosLista*>(ctx.formularios->abierto(QStringLiteral("FrmRecibosLista")));
  if (uso_ == llamada::kContabilizacion)
    setWindowTitle(QStringLiteral("Contabiliza recibo en diario"));
  cuenta_->ajustaDigitos();
  contrapartida_->ajustaDigitos();
  DtaTiposRecibos_.bind(sesion().rutaEmpresa(), QStringLiteral("Select * from TipoRecibos"));
  DtaRecibos_.setDatabaseName(sesion().rutaEmpresa());
}

// Kept: the side is derived from the account again, so that a recibo follows the company's account
// of suppliers when that changes.
void FrmRecibos::Form_Activate() {
  if (!lista_ || uso_ == llamada::kAlta) return;
  leido_ = leeRecibo(lista_->DtaRecibos().Recordset());
  ui_->TxtFechaVencimiento->setText(Format(leido_.Vencimiento, QStringLiteral("dd/mm/yyyy")));
  ui_->TxtCuenta->setText(leido_.Subcuenta.display());
  ui_->TxtTitulo->setText(leido_.Titulo.display());
  ui_->TxtFactura->setText(leido_.Factura.display());
  ui_->TxtTipo->ponerTexto(leido_.Tipo.display());
  ui_->TxtContrapartida->setText(leido_.Banco.display());
  ui_->TxtCA->setText(leido_.CA.display());
  TxtCuenta_LostFocus();
  contrapartida_->deja();
  ui_->TxtImporte->setText(Format(leido_.Importe, sesion().MascaraImporte));
}

void FrmRecibos::TxtCuenta_LostFocus() {
  cuenta_->deja();
  const QString proveedores =
      ctx.principal->DtaEmpresaActual().Fields(QStringLiteral("IVASPro")).display();
  ui_->TxtCA->setText(cargoAbono(ui_->TxtCuenta->text(), proveedores));
}

void FrmRecibos::TxtCA_LostFocus() {
  if (ui_->TxtCA->text() != QLatin1String("C") && ui_->TxtCA->text() != QLatin1String("A"))
    ui_->TxtCA->setText(QStringLiteral("C"));
}

// Kept: "su" is written for customers too, and nothing between it and the number, so that all the
// titles are found by one text.
void FrmRecibos::TxtTitulo_GotFocus() {
  if (ui_->TxtTitulo->text().isEmpty()) {
    const QString factura = ui_->TxtFactura->text();
    ui_->TxtTitulo->setText(ui_->TxtTipo->texto() +
                            (factura.isEmpty() ? QString() : " De su Fra." + factura));
  }
  ui_->TxtTitulo->selectAll();
}

void FrmRecibos::CmdTipos_Click() {
  mostrar(QStringLiteral("FrmRecibosTipos"));
  DtaTiposRecibos_.Refresh();
}

// --- accepting ----------------------------------------------------------------------------------

bool FrmRecibos::estaLleno() const {
  for (const QLineEdit* caja :
       {ui_->TxtFechaVencimiento, ui_->TxtCuenta, ui_->TxtTitulo, ui_->TxtFactura,
        ui_->TxtContrapartida, ui_->TxtCA, ui_->TxtImporte}) {
    if (caja->text().isEmpty()) return false;
  }
  return !ui_->TxtTipo->texto().isEmpty();
}

Recibo FrmRecibos::tecleado() const {
  return {.Vencimiento = ui_->TxtFechaVencimiento->text(),
          .Subcuenta = ui_->TxtCuenta->text(),
          .Titulo = ui_->TxtTitulo->text(),
          .Factura = ui_->TxtFactura->text(),
          .Tipo = ui_->TxtTipo->texto(),
          .Banco = ui_->TxtContrapartida->text(),
          .CA = ui_->TxtCA->text(),
          .Importe = importeEscrito(ui_->TxtImporte->text(), ctx.sesion.MascaraImporte),
          .FraZuri = leido_.FraZuri};
}

void FrmRecibos::guarda() {
  if (uso_ == llamada::kModificacion) {
    situaEn(DtaRecibos_, leido_);
    cambiaRecibo(DtaRecibos_, tecleado());
  } else {
    altaRecibo(DtaRecibos_, tecleado());
    DtaRecibos_.MoveLast();
  }
  const Recibo escrito = leeRecibo(DtaRecibos_.Recordset());
  ctx.cajas->guardaPendiente(this);  // given up, what was typed still stands
  leido_ = escrito;
}

// False if it has failed, which has been told.
bool FrmRecibos::contabiliza() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  AsientoGrabado grabado;
  try {
    trabajaEnDiario(ctx, [&] {
      situaEn(DtaRecibos_, leido_);
      Principal& menu = *ctx.principal;
      contabilizaRecibo({.Vencimiento = ui_->TxtFechaVencimiento->text(),
                         .Subcuenta = ui_->TxtCuenta->text(),
                         .Titulo = ui_->TxtTitulo->text(),
                         .Banco = ui_->TxtContrapartida->text(),
                         .CA = ui_->TxtCA->text(),
                         .Importe = ui_->TxtImporte->text()},
                        sesion().MascaraImporte,
                        {DtaRecibos_, menu.DtaDiarioLista(), menu.DtaEmpresaActual()}, grabado);
    });
  } catch (const ErrorEjecucion& error) {
    avisarError(error.numero(), textoDeFallo(error, *empresa, grabado),
                QStringLiteral("CmdAceptar_Click"));
    return false;
  }
  return true;
}

void FrmRecibos::CmdAceptar_Click() {
  if (!estaLleno())
    return mensaje(QStringLiteral("No ha rellenado todos los campos"), QStringLiteral("Error"));
  if (uso_ == llamada::kContabilizacion) {
    if (!contabiliza()) return;
  } else {
    guarda();
  }
  if (lista_) lista_->situateEn(leido_);
  descargar();
}
