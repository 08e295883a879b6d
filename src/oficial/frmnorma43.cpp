#include "oficial/frmnorma43.h"

#include <algorithm>

#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "oficial/registrofijo.h"
#include "toolkit/protocolo.h"
#include "ui_frmnorma43.h"

namespace {

enum Columnas {
  Dia,
  Valor,
  ConceptoBanco,
  Importe,
  Estado,
  ImporteLibros,
  DiaLibros,
  Asiento,
  ConceptoLibros
};
// Those of the main window, by which lines are located.
const QStringList kMarcas = {"X", "P", "V", "C", "R", "E", "F", "*", ">", "#"};

QString dia(const QDate& fecha) {
  return Format(fecha, QStringLiteral("dd/mm/yyyy"));
}

QString textoDeErrores(const QList<AvisoDeLinea>& errores) {
  constexpr qsizetype kALaVista = 15;
  QStringList textos;
  for (const AvisoDeLinea& error : errores.first(qMin(kALaVista, errores.size())))
    textos += error.entero();
  if (errores.size() > kALaVista) textos += QStringLiteral("... y más");
  return textos.join(u'\n');
}

}  // namespace

FrmNorma43::FrmNorma43(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmNorma43>()) {
  ui_->setupUi(this);
  const auto subcuenta = [this](QLineEdit& codigo, QLabel& nombre, int accion) {
    return std::make_unique<CampoSubcuenta>(
        *this, ctx,
        CampoSubcuenta::Opciones{
            .codigo = codigo, .nombre = nombre, .accion = accion, .puedeEstarVacia = true});
  };
  subcuenta_ = subcuenta(*ui_->TxtSubcuenta, *ui_->LblSubcuenta, accion::kBanco);
  contrapartida_ =
      subcuenta(*ui_->TxtContrapartida, *ui_->LblContrapartida, accion::kBancoContrapartida);
  ui_->TxtMarca->addItems(kMarcas);
  ui_->TxtPalabras->setMaxLength(kLargoDeRegla);
  soloNumero(ui_->TxtDias);
  fecha(ui_->TxtFecha);
  sinIntro(ui_->GrdMovimientos);
  contrapartida_->conecta();
  alElegir(ui_->TxtCuenta, [this](int) { lee(); });
  alSalir(ui_->TxtSubcuenta, [this] { TxtSubcuenta_LostFocus(); });
  alSalir(ui_->TxtDias, [this] { propone(); });
  alPulsar(ui_->ChkTodos, [this] { compone(); });
  alPulsar(ui_->CmdLeer, [this] { CmdLeer_Click(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdTodas, [this] { CmdTodas_Click(); });
  alPulsar(ui_->CmdDeshacer, [this] { CmdDeshacer_Click(); });
  alPulsar(ui_->CmdAsentar, [this] { CmdAsentar_Click(); });
  alPulsar(ui_->CmdAsentarReglas, [this] { CmdAsentarReglas_Click(); });
  alPulsar(ui_->CmdOlvidar, [this] { CmdOlvidar_Click(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmNorma43::~FrmNorma43() = default;

std::unique_ptr<Database> FrmNorma43::empresa() {
  return ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
}

void FrmNorma43::preparaTabla() {
  ui_->GrdMovimientos->enlazar(
      {{"Fecha", 10, false, "La de la operación en el banco"},
       {"Valor", 10},
       {"Concepto del banco", 30},
       {"Importe", 12, true},
       {"Estado", 12},
       {"En libros", 12, true},
       {"Fecha", 10},
       {"Asiento", 7, true},
       {"Concepto de los libros", 24}},
      {.filas = [this] { return int(filas_.size()); },
       .texto = [this](int fila, int columna) { return celda(fila, columna); },
       .avisa =
           [this](int fila, int columna) {
             const Fila& f = filas_[size_t(fila)];
             return columna == Estado && !esPropuesta(f) && (f.apunte < 0 || f.movimiento < 0);
           }});
  connect(ui_->GrdMovimientos, &TablaHoja::intro, this, [this](int fila) {
    protege([&] { GrdMovimientos_KeyPress(fila); }, "GrdMovimientos_KeyPress");
  });
  connect(ui_->GrdMovimientos, &TablaHoja::filaCambiada, this,
          [this] { protege([this] { preparaAsiento(); }, "GrdMovimientos_RowColChange"); });
}

void FrmNorma43::Form_Load() {
  subcuenta_->ajustaDigitos();
  contrapartida_->ajustaDigitos();
  ui_->TxtMarca->setCurrentText(sesion().MarcaPunteo);
  ui_->TxtFecha->setText(dia(ctx.reloj->hoy()));
  ui_->TxtDias->setText(QString::number(kDiasDeTolerancia));
  preparaTabla();
  llenaCuentas({});
}

void FrmNorma43::llenaCuentas(const QString& elegida) {
  const QString antes = elegida.isEmpty() ? ui_->TxtCuenta->currentText() : elegida;
  ui_->TxtCuenta->clear();
  for (const auto& cuenta : cuentasDeBanco(*empresa())) ui_->TxtCuenta->addItem(cuenta.first);
  ui_->TxtCuenta->setCurrentIndex(std::max(0, ui_->TxtCuenta->findText(antes)));
  lee();
}

void FrmNorma43::CmdLeer_Click() {
  const auto ruta = ctx.cajas->abrirFichero(this, "Extracto del banco", {},
                                            "Norma 43 (*.n43 *.txt *.q43 *.aeb);;Todos (*)");
  if (!ruta || ruta->isEmpty()) return;
  const LecturaNorma43 leido = leeFicheroNorma43(*ruta);
  if (!leido.errores.isEmpty())
    return mensaje("No se ha leído nada del fichero:\n" + textoDeErrores(leido.errores),
                   windowTitle(), Icono::Aviso);
  const Importacion hecha = importaNorma43(ctx.motor, *empresa(), leido);
  llenaCuentas(leido.cuentas.empty() ? QString() : leido.cuentas.front().ccc);
  QStringList dicho(QStringLiteral("Movimientos nuevos: %1. Ya leídos antes: %2.")
                        .arg(hecha.nuevos)
                        .arg(hecha.repetidos));
  mensaje((dicho + hecha.avisos).join(u'\n'), windowTitle());
  enfocar(conciliacion_.subcuenta.isEmpty() ? static_cast<QWidget*>(ui_->TxtSubcuenta)
                                            : ui_->GrdMovimientos);
}

void FrmNorma43::TxtSubcuenta_LostFocus() {
  const QString codigo = ui_->TxtSubcuenta->text();
  if (codigo == conciliacion_.subcuenta) return;
  if (codigo.isEmpty()) return lee();  // it stays what it was
  if (!subcuenta_->deja()) return;
  try {
    ponSubcuentaDeBanco(ctx.motor, *empresa(), conciliacion_.ccc, ui_->TxtSubcuenta->text());
  } catch (const ErrorEjecucion&) {
    lee();
    throw;
  }
  lee();
}

// --- what is on show ----------------------------------------------------------------------------

void FrmNorma43::lee() {
  const auto base = empresa();
  conciliacion_ = leeConciliacion(*base, ui_->TxtCuenta->currentText());
  reglas_ = ReglasBanco(*base);
  ui_->TxtSubcuenta->setEnabled(!conciliacion_.ccc.isEmpty());
  ui_->TxtSubcuenta->setText(conciliacion_.subcuenta);
  ui_->LblSubcuenta->clear();
  if (!conciliacion_.subcuenta.isEmpty()) ignorando([this] { subcuenta_->busca(); });
  propone();
}

void FrmNorma43::propone() {
  parejas_ = empareja(conciliacion_, ui_->TxtDias->text().toInt());
  compone();
}

// The movements with their lines, and then the lines of those days that the bank hasn't got.
void FrmNorma43::compone() {
  const auto& [ccc, subcuenta, periodo, movimientos, apuntes] = conciliacion_;
  std::vector<int> apunteDe(movimientos.size(), -1);
  std::vector<char> propuesto(apuntes.size());
  for (const auto& [m, a] : parejas_) {
    apunteDe[m] = a;
    propuesto[a] = true;
  }
  QHash<int, int> porLinea;
  for (int a = 0; a < int(apuntes.size()); ++a) porLinea.insert(apuntes[a].linea, a);
  const bool todos = ui_->ChkTodos->isChecked();
  filas_.clear();
  for (int m = 0; m < int(movimientos.size()); ++m)
    if (todos || movimientos[m].sinAsentar() || apunteDe[m] >= 0)
      filas_.push_back({m, porLinea.value(movimientos[m].apunte, apunteDe[m])});
  for (int a = 0; periodo && a < int(apuntes.size()); ++a)
    if (apuntes[a].movimiento == 0 && !propuesto[a] && apuntes[a].fecha >= periodo->desde &&
        apuntes[a].fecha <= periodo->hasta)
      filas_.push_back({-1, a});
  ui_->GrdMovimientos->refresca();
  preparaAsiento();
  ui_->LblCuadre->setText(textoDeCuadre());
}

QString FrmNorma43::importe(qint64 centimos) const {
  return textoDeCentimos(centimos, ctx.sesion.MascaraImporte).trimmed();
}

QString FrmNorma43::estado(const Fila& fila) const {
  const MovimientoGuardado* const m = movimiento(fila);
  if (!m) return QStringLiteral("No en banco");
  if (m->centimos == 0) return QStringLiteral("Sin importe");
  if (!m->pendiente()) return QStringLiteral("Conciliado");
  if (fila.apunte >= 0) return QStringLiteral("Propuesto");
  if (m->deOtroAno) return QStringLiteral("De otro año");
  return reglas_.para(m->concepto) ? QStringLiteral("Con regla") : QStringLiteral("Sin asentar");
}

QString FrmNorma43::celda(int fila, int columna) const {
  const Fila& f = filas_[size_t(fila)];
  if (columna == Estado) return estado(f);
  if (columna > Estado) return deLosLibros(f, columna);
  const MovimientoGuardado* const m = movimiento(f);
  if (!m) return {};
  switch (columna) {
    case Dia:
      return dia(m->operacion);
    case Valor:
      return dia(m->valor);
    case Importe:
      return importe(m->centimos);
    default:
      return m->concepto;
  }
}

// A movement without a line shows where its rule would post it.
QString FrmNorma43::deLosLibros(const Fila& fila, int columna) const {
  if (fila.apunte < 0) {
    const MovimientoGuardado& m = conciliacion_.movimientos[size_t(fila.movimiento)];
    const auto regla =
        columna == ConceptoLibros && m.sinAsentar() ? reglas_.para(m.concepto) : std::nullopt;
    return regla ? QStringLiteral("Irá a ") + regla->subcuenta : QString();
  }
  const ApunteBanco& a = conciliacion_.apuntes[size_t(fila.apunte)];
  switch (columna) {
    case ImporteLibros:
      return importe(a.centimos);
    case DiaLibros:
      return dia(a.fecha);
    case Asiento:
      return QString::number(a.asiento);
    default:
      return a.concepto;
  }
}

QString FrmNorma43::textoDeCuadre() const {
  const auto cuadre = cuadreDe(conciliacion_);
  if (!cuadre) return "Lea un fichero del banco.";
  if (conciliacion_.subcuenta.isEmpty()) return "Indique la subcuenta de esta cuenta.";
  const QString saldos =
      QStringLiteral("Al %1 el banco dice %2 y los libros %3: ")
          .arg(dia(conciliacion_.periodo->hasta), importe(cuadre->banco), importe(cuadre->libros));
  const QString resto =
      cuadre->diferencia() == 0
          ? QStringLiteral("son iguales.")
          : QStringLiteral("diferencia de %1.").arg(importe(cuadre->diferencia()));
  return saldos + resto +
         QStringLiteral(" Por conciliar: %1 del banco y %2 de los libros.")
             .arg(importe(cuadre->soloBanco), importe(cuadre->soloLibros));
}

FrmNorma43::Fila FrmNorma43::actual() const {
  const int fila = ui_->GrdMovimientos->fila();
  return fila >= 0 && fila < int(filas_.size()) ? filas_[size_t(fila)] : Fila{};
}

const MovimientoGuardado* FrmNorma43::movimiento(const Fila& fila) const {
  return fila.movimiento < 0 ? nullptr : &conciliacion_.movimientos[size_t(fila.movimiento)];
}

bool FrmNorma43::esPropuesta(const Fila& fila) const {
  const MovimientoGuardado* const m = movimiento(fila);
  return m && m->pendiente() && fila.apunte >= 0;
}

// What the rules say of the movement stands ready to be posted.
void FrmNorma43::preparaAsiento() {
  const Fila fila = actual();
  const MovimientoGuardado* const m = movimiento(fila);
  const bool falta = m && m->sinAsentar() && fila.apunte < 0;
  const auto regla = falta ? reglas_.para(m->concepto) : std::nullopt;
  ui_->TxtContrapartida->setText(regla ? regla->subcuenta : QString());
  ui_->LblContrapartida->clear();
  ui_->ChkRecuerda->setChecked(false);
  ui_->TxtPalabras->setText(regla   ? regla->palabras
                            : falta ? palabrasDeConcepto(m->concepto)
                                    : QString());
  ui_->CmdOlvidar->setEnabled(regla.has_value());
  if (regla) ignorando([this] { contrapartida_->busca(); });
}
