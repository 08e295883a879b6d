#include "company/frmempresas.h"

#include <algorithm>
#include <QTabBar>

#include "common/formato.h"
#include "common/funciones.h"
#include "company/alta.h"
#include "engine/dbengine.h"
#include "toolkit/fallo.h"
#include "toolkit/protocolo.h"
#include "ui_frmempresas.h"

namespace {

using Pantalla = Ui_FrmEmpresas;

struct Enlace {
  QString DatosEmpresa::*dato;
  QLineEdit* Pantalla::*campo;
};

// In the order of the fields of Empresa: the digits come before the accounts, which they recompute
// when they are shown.
constexpr Enlace kEnlaces[] = {
    {&DatosEmpresa::NombreEmpresa, &Pantalla::TxtNombreEmpresa},
    {&DatosEmpresa::Ano, &Pantalla::TxtAñoContable},
    {&DatosEmpresa::Direccion, &Pantalla::TxtDireccion},
    {&DatosEmpresa::Provincia, &Pantalla::TxtProvincia},
    {&DatosEmpresa::CP, &Pantalla::TxtCodigoPostal},
    {&DatosEmpresa::Poblacion, &Pantalla::TxtPoblacion},
    {&DatosEmpresa::Pais, &Pantalla::TxtPais},
    {&DatosEmpresa::Nif, &Pantalla::TxtNif},
    {&DatosEmpresa::Telefono, &Pantalla::TxtTelefono},
    {&DatosEmpresa::Fax, &Pantalla::TxtFax},
    {&DatosEmpresa::Gerente, &Pantalla::TxtGerente},
    {&DatosEmpresa::CapitalSocial, &Pantalla::TxtCapitalSocial},
    {&DatosEmpresa::MayorN01, &Pantalla::TxtMayNivel},
    {&DatosEmpresa::SubCuN01, &Pantalla::TxtSubNivel},
    {&DatosEmpresa::IVASSub, &Pantalla::TxtIVASCuenta},
    {&DatosEmpresa::IVASPro, &Pantalla::TxtIVASProveedores},
    {&DatosEmpresa::IVASCom, &Pantalla::TxtIVASCompras},
    {&DatosEmpresa::IVARSub, &Pantalla::TxtIVARCuenta},
    {&DatosEmpresa::IVARCli, &Pantalla::TxtIVARClientes},
    {&DatosEmpresa::IVARVen, &Pantalla::TXTIVARVentas},
    {&DatosEmpresa::MesInicio, &Pantalla::TxtMesInicio},
    {&DatosEmpresa::NoModificar, &Pantalla::TxtNoModifica},
    {&DatosEmpresa::Asiento, &Pantalla::TxtContador},
    {&DatosEmpresa::Mascara, &Pantalla::TxtMascara},
    {&DatosEmpresa::Simbolo, &Pantalla::TxtSimbologia},
    {&DatosEmpresa::IVASRE, &Pantalla::TxtIVASRecargo},
    {&DatosEmpresa::IVARRE, &Pantalla::TxtIVARRecargo},
};

constexpr QLineEdit* Pantalla::*kNumeros[] = {
    &Pantalla::TxtAñoContable,     &Pantalla::TxtCodigoPostal, &Pantalla::TxtCapitalSocial,
    &Pantalla::TxtMayNivel,        &Pantalla::TxtSubNivel,     &Pantalla::TxtIVASCuenta,
    &Pantalla::TxtIVASProveedores, &Pantalla::TxtIVASCompras,  &Pantalla::TxtIVARCuenta,
    &Pantalla::TxtIVARClientes,    &Pantalla::TXTIVARVentas,   &Pantalla::TxtMesInicio,
    &Pantalla::TxtContador,        &Pantalla::TxtIVASRecargo,  &Pantalla::TxtIVARRecargo,
};

constexpr QLineEdit* Pantalla::*kSenas[] = {
    &Pantalla::TxtDireccion, &Pantalla::TxtProvincia, &Pantalla::TxtCodigoPostal,
    &Pantalla::TxtPoblacion, &Pantalla::TxtPais,
};

struct Codigo {
  QLineEdit* Pantalla::*campo;
  QLineEdit* Pantalla::*nivel;
  QString CuentasIVA::*porDefecto;
};
constexpr Codigo kCodigos[] = {
    {&Pantalla::TxtIVASCuenta, &Pantalla::TxtSubNivel, &CuentasIVA::IVASSub},
    {&Pantalla::TxtIVASProveedores, &Pantalla::TxtMayNivel, &CuentasIVA::IVASPro},
    {&Pantalla::TxtIVASCompras, &Pantalla::TxtSubNivel, &CuentasIVA::IVASCom},
    {&Pantalla::TxtIVARCuenta, &Pantalla::TxtSubNivel, &CuentasIVA::IVARSub},
    {&Pantalla::TxtIVARClientes, &Pantalla::TxtMayNivel, &CuentasIVA::IVARCli},
    {&Pantalla::TXTIVARVentas, &Pantalla::TxtSubNivel, &CuentasIVA::IVARVen},
    {&Pantalla::TxtIVASRecargo, &Pantalla::TxtSubNivel, &CuentasIVA::IVASRE},
    {&Pantalla::TxtIVARRecargo, &Pantalla::TxtSubNivel, &CuentasIVA::IVARRE},
};

constexpr int kNivelMinimo = 3;

// The number in a level's field; nothing for a text that isn't one.
std::optional<int> nivel(const QLineEdit* campo) {
  if (!EsNumerico(campo->text())) return std::nullopt;
  return static_cast<int>(Val(campo->text()));
}

QString ceros(int digitos) {
  return QString(digitos, QLatin1Char('0'));
}

}  // namespace

FrmEmpresas::FrmEmpresas(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmEmpresas>()), DtaEmpresas_(contexto.motor) {
  ui_->setupUi(this);
  DtaEmpresas_.setObjectName(QStringLiteral("DtaEmpresas"));
  cablea();
}

FrmEmpresas::~FrmEmpresas() = default;

void FrmEmpresas::cablea() {
  for (const auto numero : kNumeros) numeroConSigno((*ui_).*numero);
  for (const auto sena : kSenas) sinSeleccion((*ui_).*sena);
  for (const Codigo& codigo : kCodigos)
    alSalir((*ui_).*codigo.campo,
            [this, &codigo] { expande(*((*ui_).*codigo.campo), *((*ui_).*codigo.nivel)); });
  alCambiar(ui_->TxtMayNivel, [this] { TxtMayNivel_Change(); });
  alCambiar(ui_->TxtSubNivel, [this] { TxtSubNivel_Change(); });
  alSalir(ui_->TxtSubNivel, [this] { TxtSubNivel_LostFocus(); });
  alSalir(ui_->TxtMesInicio, [this] { TxtMesInicio_LostFocus(); });
  alSalir(ui_->TxtNoModifica, [this] { TxtNoModifica_LostFocus(); });
  alTeclear(ui_->TxtSubNivel, [this](Tecla& t) { pasaPestana(t, ui_->TxtDireccion); });
  alTeclear(ui_->TxtCapitalSocial, [this](Tecla& t) { pasaPestana(t, ui_->TxtIVASCuenta); });
  alTeclear(ui_->TXTIVARVentas, [this](Tecla& t) { pasaPestana(t, ui_->TxtMesInicio); });
  connect(ui_->Tabla, &QTabWidget::currentChanged, this,
          [this](int pestana) { protege([this, pestana] { Tabla_Click(pestana); }); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

void FrmEmpresas::Form_Load() {
  ui_->OptCreaPlan->setVisible(sesion().CodigoLlamada == llamada::kAlta);
  if (sesion().CodigoLlamada == llamada::kAlta) {
    setWindowTitle(QStringLiteral("Alta de empresa"));
    porDefecto();
  } else if (sesion().CodigoLlamada == llamada::kModificacion) {
    ui_->TxtNombreEmpresa->setEnabled(false);
    DtaEmpresas_.bind(sesion().rutaEmpresa(), QStringLiteral("Select * from Empresa"));
    muestra(leeDatosEmpresa(DtaEmpresas_.Recordset()));
  }
}

void FrmEmpresas::Form_Activate() {
  if (sesion().CodigoLlamada == llamada::kAlta) enfocar(ui_->TxtNombreEmpresa);
  if (sesion().CodigoLlamada != llamada::kModificacion) return;
  ui_->TxtMayNivel->setEnabled(false);
  ui_->TxtSubNivel->setEnabled(false);
  ui_->TxtAñoContable->setEnabled(false);
}

// The year and the month of today, and not January: whose year begins otherwise changes them.
void FrmEmpresas::porDefecto() {
  const QDate hoy = ctx.reloj->hoy();
  ui_->TxtAñoContable->setText(QString::number(hoy.year()));
  ui_->TxtFechaCreacion->setText(hoy.toString(QStringLiteral("dd/MM/yyyy")));
  ui_->TxtCapitalSocial->setText(QStringLiteral("0"));
  ui_->TxtMayNivel->setText(QStringLiteral("3"));
  ui_->TxtSubNivel->setText(QStringLiteral("8"));
  ui_->TxtMesInicio->setText(QString::number(hoy.month()));
  ui_->TxtContador->setText(QStringLiteral("1"));
  ui_->TxtMascara->setText(QStringLiteral("#,##0.00 ;-#,##0.00"));
}

void FrmEmpresas::TxtMayNivel_Change() {
  const auto valor = nivel(ui_->TxtMayNivel);
  if (!valor) return;
  if (*valor < kNivelMinimo) {
    ui_->TxtMayNivel->setText(QString::number(kNivelMinimo));
    return;
  }
  ui_->TxtMayRepre->setText(ceros(*valor));
  ui_->TxtSubNivel->setText(QString::number(*valor + 1));
  CalculaCuentas();
}

void FrmEmpresas::TxtSubNivel_Change() {
  ui_->TxtSubRepre->setText(ceros(nivel(ui_->TxtSubNivel).value_or(0)));
  CalculaCuentas();
}

void FrmEmpresas::TxtSubNivel_LostFocus() {
  const int mayores = nivel(ui_->TxtMayNivel).value_or(0);
  if (nivel(ui_->TxtSubNivel).value_or(0) > mayores) return;
  mensaje(QStringLiteral("El nivel de la subcuenta tiene que ser un número más que las cuentas, "
                         "como mínimo"),
          QStringLiteral("Error"));
  ui_->Tabla->setCurrentIndex(0);
  ui_->TxtSubNivel->setText(QString::number(mayores + 1));
  enfocar(ui_->TxtSubNivel);
}

void FrmEmpresas::TxtMesInicio_LostFocus() {
  ui_->TxtMesInicio->setText(QString::number(static_cast<int>(Val(ui_->TxtMesInicio->text()))));
}

void FrmEmpresas::expande(QLineEdit& campo, const QLineEdit& nivelDelCodigo) {
  const int digitos = nivel(&nivelDelCodigo).value_or(0);
  if (campo.text().size() <= digitos) campo.setText(ExpandeCodigo(campo.text(), digitos));
}

void FrmEmpresas::TxtNoModifica_LostFocus() {
  const QString texto = ui_->TxtNoModifica->text();
  if (texto.isEmpty()) return;
  ui_->TxtNoModifica->setText(NormalizaFecha(texto, sesion().AnoActual, ctx.reloj->hoy()));
}

// Kept: also in a company that stands, going to another tab brings its accounts back to those that
// its levels ask for.
void FrmEmpresas::Tabla_Click(int pestana) {
  CalculaCuentas();
  // The field left by this click has refused, and its tab is on show again.
  if (pestana != ui_->Tabla->currentIndex()) enfocar(ui_->TxtSubNivel);
}

// Widths that leave no account, as while a level is being typed, leave the accounts as they are.
void FrmEmpresas::CalculaCuentas() {
  const auto mayores = nivel(ui_->TxtMayNivel);
  const auto subcuentas = nivel(ui_->TxtSubNivel);
  if (!mayores || !subcuentas || *subcuentas <= *mayores) return;
  const CuentasIVA cuentas = ::CalculaCuentas(*mayores, *subcuentas);
  for (const Codigo& codigo : kCodigos) {
    QLineEdit& campo = *((*ui_).*codigo.campo);
    campo.setMaxLength(*nivel((*ui_).*codigo.nivel));
    campo.setText(cuentas.*codigo.porDefecto);
  }
}

// Enter in the last field of a tab goes on in the first of the next one. The focus passes through
// the row of tabs, so that the field left can refuse before its tab is gone.
void FrmEmpresas::pasaPestana(Tecla& tecla, QWidget* primero) {
  if (!tecla.esIntro()) return;
  tecla.tragar();
  QTabBar* pestanas = ui_->Tabla->tabBar();
  pestanas->setFocus(Qt::TabFocusReason);
  if (focusWidget() != pestanas) return;
  ui_->Tabla->setCurrentIndex(ui_->Tabla->currentIndex() + 1);
  primero->setFocus(Qt::TabFocusReason);
}

DatosEmpresa FrmEmpresas::datos() const {
  DatosEmpresa datos;
  for (const Enlace& e : kEnlaces) datos.*e.dato = ((*ui_).*e.campo)->text();
  datos.FechaCreacion = ui_->TxtFechaCreacion->text();
  datos.Limpiar = ui_->TxtLimpiarPantalla->isChecked();
  datos.Controlar = ui_->TxtControlarAsiento->isChecked();
  return datos;
}

void FrmEmpresas::muestra(const DatosEmpresa& datos) {
  for (const Enlace& e : kEnlaces) ((*ui_).*e.campo)->setText(datos.*e.dato);
  ui_->TxtFechaCreacion->setText(datos.FechaCreacion);
  ui_->TxtLimpiarPantalla->setChecked(datos.Limpiar);
  ui_->TxtControlarAsiento->setChecked(datos.Controlar);
}

// A message about a field, which is gone to.
void FrmEmpresas::rechaza(const QString& texto, QLineEdit& campo) {
  mensaje(texto, QStringLiteral("Error"));
  for (int i = 0; i < ui_->Tabla->count(); ++i)
    if (ui_->Tabla->widget(i)->isAncestorOf(&campo)) ui_->Tabla->setCurrentIndex(i);
  enfocar(&campo);
}

void FrmEmpresas::CmdAceptar_Click() {
  // A name's blanks at its ends would be lost from its folder's.
  if (sesion().CodigoLlamada == llamada::kAlta)
    ui_->TxtNombreEmpresa->setText(ui_->TxtNombreEmpresa->text().trimmed());
  if (ui_->TxtNombreEmpresa->text().isEmpty())
    return rechaza(QStringLiteral("Necesita introducir un nombre de empresa"),
                   *ui_->TxtNombreEmpresa);
  if (sesion().CodigoLlamada == llamada::kAlta) crea();
  if (sesion().CodigoLlamada == llamada::kModificacion) modifica();
}

void FrmEmpresas::crea() {
  try {
    const DatosEmpresa nueva = datos();
    if (const auto reparo = reparoDelAlta(ctx.motor, sesion().DirDatos, nueva)) {
      const auto* enlace = std::ranges::find(kEnlaces, reparo->campo, &Enlace::dato);
      return rechaza(reparo->texto, *((*ui_).*enlace->campo));
    }
    creaEmpresa(ctx.motor, sesion().DirDatos, nueva);
  } catch (const ErrorEjecucion& e) {
    return creacionFallida(e);
  }
  // The plan's form closes this one too.
  if (!ui_->OptCreaPlan->isChecked() || !mostrar(QStringLiteral("FrmCrearPlan"))) descargar();
}

void FrmEmpresas::creacionFallida(const ErrorEjecucion& e) {
  if (e.numero() == err::kClaveDuplicada) {
    mensaje(
        QStringLiteral("Esta intentando dar de alta una empresa que ya existe, cree otra empresa"),
        QStringLiteral("Error"));
    descargar();
    return;
  }
  avisa(ctx, this, {e, QStringLiteral("CmdAceptar_Click - FrmEmpresas")},
        QStringLiteral("No se ha podido crear la empresa. ") + e.descripcion(),
        QStringLiteral("Error"));
}

// Kept: a value that the file refuses is lost without a word, so that one bad field keeps nobody
// from changing the others. A file that takes nothing at all is told, and the session keeps to it.
void FrmEmpresas::modifica() {
  try {
    DtaEmpresas_.Edit();
    escribeDatosEmpresa(DtaEmpresas_.Recordset(), datos());
    DtaEmpresas_.Update();
    ctx.cajas->guardaPendiente(this);
  } catch (const ErrorEjecucion& e) {
    if (DtaEmpresas_.isOpen()) DtaEmpresas_.CancelUpdate();
    return avisa(ctx, this, {e, QStringLiteral("CmdAceptar_Click - FrmEmpresas")},
                 QStringLiteral("No se han podido guardar los datos. ") + e.descripcion(),
                 QStringLiteral("Error"));
  }
  refrescaSesion();
  descargar();
}

// The other values reach the session when the company is opened again.
void FrmEmpresas::refrescaSesion() {
  Sesion& s = sesion();
  s.MesInicio = static_cast<int>(Val(ui_->TxtMesInicio->text()));
  s.FechaNoModificar = ui_->TxtNoModifica->text();
  s.LimpiarAsiento = ui_->TxtLimpiarPantalla->isChecked();
  s.ControlarAsiento = ui_->TxtControlarAsiento->isChecked();
  s.MascaraImporte = ui_->TxtMascara->text();
  s.SimboloMoneda = ui_->TxtSimbologia->text();
}
