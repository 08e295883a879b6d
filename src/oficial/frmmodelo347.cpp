#include "oficial/frmmodelo347.h"

#include "common/formato.h"
#include "engine/dbengine.h"
#include "oficial/registrofijo.h"
#include "oficial/widgets/hojaimpresa.h"
#include "ui_frmmodelo347.h"

namespace {

enum Columnas {
  Clave,
  Nif,
  Nombre,
  Provincia,
  Pais,
  Nota,
  Total,
  Trimestre1,
  Metalico = Trimestre1 + 4,
  AnoMetalico,
  Excluido
};

std::optional<Dato347> datoDe(int columna) {
  switch (columna) {
    case Provincia:
      return Dato347::Provincia;
    case Pais:
      return Dato347::Pais;
    case Metalico:
      return Dato347::Metalico;
    case AnoMetalico:
      return Dato347::EjercicioMetalico;
    case Excluido:
      return Dato347::Excluido;
    default:
      return std::nullopt;
  }
}

}  // namespace

FrmModelo347::FrmModelo347(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmModelo347>()) {
  ui_->setupUi(this);
  importeSinSigno(ui_->TxtLimite);
  ui_->TxtFinLinea->addItems({"Con saltos de línea", "Sin saltos de línea"});
  sinIntro(ui_->GrdTerceros);
  alSalir(ui_->TxtLimite, [this] { lee(); });
  connect(ui_->GrdTerceros, &TablaHoja::intro, this,
          [this](int fila) { protege([&] { abreFilas(fila); }, "GrdTerceros_KeyPress"); });
  alPulsar(ui_->CmdDeclarante, [this] { mostrar("FrmDeclarante"); });
  alPulsar(ui_->CmdFilas, [this] { abreFilas(ui_->GrdTerceros->fila()); });
  alPulsar(ui_->CmdLocales, [this] {
    mostrar("FrmInmuebles347");
    lee();
  });
  alPulsar(ui_->CmdCartas, [this] { CmdCartas_Click(); });
  alPulsar(ui_->CmdFichero, [this] { CmdFichero_Click(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmModelo347::~FrmModelo347() = default;

std::unique_ptr<Database> FrmModelo347::empresa() {
  return ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
}

QString FrmModelo347::importe(qint64 centimos) const {
  return textoDeCentimos(centimos, ctx.sesion.MascaraImporte).trimmed();
}

void FrmModelo347::Form_Load() {
  ui_->TxtLimite->setText(importe(Modelo347::kLimite));
  ui_->GrdTerceros->enlazar(
      {{"Clave", 5, false, "A compras, B ventas"},
       {"NIF", 12},
       {"Nombre", 24},
       {"Prov.", 5, false, "Código de provincia, 99 fuera de España"},
       {"País", 5},
       {"Nota", 22},
       {"Año", 12, true},
       {"1T", 12, true},
       {"2T", 12, true},
       {"3T", 12, true},
       {"4T", 12, true},
       {"Metálico", 12, true, "Lo cobrado en metálico, si pasa de 6.000"},
       {"Ej. met.", 8, true},
       {"Fuera", 6, false, "S: no se declara"}},
      {.filas = [this] { return modelo_ ? int(modelo_->terceros().size()) : 0; },
       .texto = [this](int fila, int columna) { return celda(fila, columna); },
       .editable = [](int, int columna) { return datoDe(columna).has_value(); },
       .escribe = [this](int fila, int columna,
                         const QString& texto) { escribe(fila, columna, texto); },
       .avisa =
           [this](int fila, int columna) {
             return columna == Nota && !modelo_->terceros()[size_t(fila)].faltas().isEmpty();
           }});
  lee();
  ui_->GrdTerceros->setFocus();
}

void FrmModelo347::lee() {
  ui_->GrdTerceros->cierraCelda();
  const double limite = ImporteDe(ui_->TxtLimite->text(), sesion().MascaraImporte).value_or(0);
  ui_->TxtLimite->setText(importe(centimosDe(limite)));
  modelo_ = std::make_unique<Modelo347>(*empresa(), sesion().AnoActual, centimosDe(limite));
  ui_->GrdTerceros->refresca();
  muestraTotales();
}

void FrmModelo347::muestraTotales() {
  ui_->LblTotales->setText(
      QStringLiteral("Declarados: %1   Importe: %2   Fuera: %3 facturas con retención, %4 de otras "
                     "declaraciones")
          .arg(modelo_->cuantos())
          .arg(importe(modelo_->importe()))
          .arg(modelo_->fueraPorRetencion())
          .arg(modelo_->fueraPorOtros()));
}

QString FrmModelo347::celda(int fila, int columna) const {
  const Tercero347& t = modelo_->terceros()[size_t(fila)];
  if (columna >= Trimestre1 && columna < Metalico)
    return importe(t.trimestres[size_t(columna - Trimestre1)]);
  QStringList notas = t.faltas();
  switch (columna) {
    case Clave:
      return t.clave;
    case Nif:
      return t.nif;
    case Nombre:
      return t.nombre;
    case Provincia:
      return t.provincia;
    case Pais:
      return t.pais;
    case Total:
      return importe(t.total);
    case Metalico:
      return t.metalico > 0 ? importe(t.metalico) : QString();
    case AnoMetalico:
      return t.ejercicioMetalico > 0 ? QString::number(t.ejercicioMetalico) : QString();
    case Excluido:
      return t.excluido ? QStringLiteral("S") : QString();
    default:
      if (t.local) notas += QStringLiteral("Arrendamiento de local");
      if (t.inversion) notas += QStringLiteral("Inversión del sujeto pasivo");
      return notas.join(QStringLiteral(". "));
  }
}

void FrmModelo347::escribe(int fila, int columna, const QString& texto) {
  modelo_->escribe(*empresa(), size_t(fila), *datoDe(columna), texto);
  guardaCelda(*this, ctx, [this] { lee(); });
  muestraTotales();
}

void FrmModelo347::abreFilas(int fila) {
  ui_->GrdTerceros->cierraCelda();
  if (fila < 0 || fila >= int(modelo_->terceros().size())) return;
  mostrar("FrmDatosRegistros", 347, modelo_->terceros()[size_t(fila)].codigos.join(u' '));
  lee();
}

void FrmModelo347::CmdCartas_Click() {
  ui_->GrdTerceros->cierraCelda();
  const Declarante declarante(*empresa());
  HojaImpresa cartas(ctx, this);
  for (const Tercero347& t : modelo_->terceros()) {
    if (t.excluido) continue;
    const auto q = [&](size_t i) { return importe(t.trimestres[i]); };
    cartas.anade({t.nombre, t.calle, t.pueblo, t.nif,
                  t.clave == QLatin1String("A") ? "compras nuestras" : "ventas nuestras",
                  importe(t.total), q(0), q(1), q(2), q(3), declarante["Nombre"], declarante["Nif"],
                  t.metalico > 0 ? importe(t.metalico) : QString(),
                  t.metalico > 0 ? "Cobrado en metálico" : QString()});
  }
  cartas.muestra(QStringLiteral("Cartas del modelo 347"), QStringLiteral("347Carta"),
                 QString::number(modelo_->ejercicio()));
}

void FrmModelo347::CmdFichero_Click() {
  ui_->GrdTerceros->cierraCelda();
  const Declarante declarante(*empresa());
  if (declarante["Nif"].isEmpty())
    return mensaje("Falta el NIF del declarante: póngalo con «Declarante...»", "Modelo 347");
  QStringList avisos = declarante.faltas();
  for (const Tercero347& t : modelo_->terceros())
    if (!t.excluido && !t.faltas().isEmpty())
      avisos += t.nombre + QStringLiteral(": ") + t.faltas().join(QStringLiteral(". "));
  avisos += modelo_->faltasDeInmuebles();
  constexpr int kMuestra = 15;
  const qsizetype resto = avisos.size() - kMuestra;
  if (resto > 0) avisos = avisos.first(kMuestra) << QStringLiteral("... y %1 más").arg(resto);
  if (!avisos.isEmpty() &&
      !pregunta(avisos.join(u'\n') + QStringLiteral("\n\n¿Desea hacer el fichero?"), "Modelo 347"))
    return;
  const QByteArray fin = ui_->TxtFinLinea->currentIndex() == 0 ? "\r\n" : "";
  const QByteArray fichero = modelo_->fichero(declarante, fin);
  const auto ruta = ctx.cajas->guardarFichero(
      this, "Fichero del modelo 347",
      QStringLiteral("%1_%2.347").arg(declarante["Nif"]).arg(modelo_->ejercicio()),
      "Modelo 347 (*.347)");
  if (!ruta || ruta->isEmpty()) return;
  escribeFichero(*ruta, fichero);
  const auto locales = modelo_->inmuebles().size();
  mensaje(QStringLiteral("Fichero hecho. Declarados: %1").arg(modelo_->cuantos()) +
              (locales > 0 ? QStringLiteral(". Locales: %1").arg(locales) : QString()),
          "Modelo 347");
}
