#include "journal/apunte.h"

#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/ignorar.h"
#include "engine/datacontrol.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"

namespace {

const QString kAsiento = QStringLiteral("Asiento");

constexpr struct {
  const char* campo;
  Variant Apunte::*valor;
} kCampos[] = {
    {"NAsiento", &Apunte::NAsiento},
    {"Fecha", &Apunte::Fecha},
    {"Subcuenta", &Apunte::Subcuenta},
    {"Descripcion", &Apunte::Descripcion},
    {"DH", &Apunte::DH},
    {"Importe", &Apunte::Importe},
    {"ApunteIVA", &Apunte::ApunteIVA},
    {"FacturaZuri", &Apunte::FacturaZuri},
    {"TipoFactura", &Apunte::TipoFactura},
    {"TipoDiario", &Apunte::TipoDiario},
    {"EmpresaZuri", &Apunte::EmpresaZuri},
    {"Punteo", &Apunte::Punteo},
    {"ApunteCartera", &Apunte::ApunteCartera},
};

template <class Filas>
int toma(Filas& empresa, const QString& contador) {
  int valor = 0;
  empresa.Edit();
  completa(empresa, [&] {
    FieldRef campo = empresa.Fields(contador);
    valor = static_cast<int>(campo.toLong());
    campo = valor + 1;
  });
  return valor;
}

// Read once its edit has begun.
template <class Filas>
int mira(Filas& empresa) {
  empresa.Edit();
  const int asiento = static_cast<int>(empresa.Fields(kAsiento).toLong());
  empresa.CancelUpdate();
  return asiento;
}

template <class Filas>
void escribe(Filas& diario, const Apunte& apunte) {
  for (const auto& campo : kCampos) {
    const Variant& valor = apunte.*campo.valor;
    if (!valor.isNull()) diario.Fields(QLatin1String(campo.campo)) = valor;
  }
}

template <class Filas>
int graba(Filas& diario, Filas& empresa, const Apunte& apunte) {
  const QString contador = QStringLiteral("NLinDiario");
  int linea = 0;
  // The counter is written after the line, but all that may refuse it comes before: a line without
  // its number counted would have the next one refused.
  empresa.Edit();
  completa(empresa, [&] {
    FieldRef siguiente = empresa.Fields(contador);
    linea = static_cast<int>(siguiente.toLong());
    siguiente = linea + 1;
    diario.AddNew();
    completa(diario, [&] {
      diario.Fields(QStringLiteral("NLinea")) = linea;
      escribe(diario, apunte);
    });
  });
  return linea;
}

}  // namespace

Variant importeEscrito(const QString& importe, const QString& mascara) {
  const auto numero = ImporteDe(importe, mascara);
  return numero ? Variant(*numero) : Variant(importe);
}

Variant importeAlHaber(const QString& importe, const QString& mascara) {
  const Variant valor = importeEscrito(importe, mascara);
  if (!valor.isNumber() || valor.number() < 0) return QString(u'-' + importe);
  return 0 - valor.number();
}

int grabaApunte(DataControl& diario, DataControl& empresa, const Apunte& apunte) {
  return graba(diario, empresa, apunte);
}

int grabaApunte(Recordset& diario, Recordset& empresa, const Apunte& apunte) {
  return graba(diario, empresa, apunte);
}

void cambiaApunte(DataControl& diario, const Apunte& apunte) {
  diario.Edit();
  completa(diario, [&] { escribe(diario, apunte); });
}

int tomaAsiento(DataControl& empresa) {
  return toma(empresa, kAsiento);
}

int tomaAsiento(Recordset& empresa) {
  return toma(empresa, kAsiento);
}

int proximoAsiento(DataControl& empresa) {
  return mira(empresa);
}

int proximoAsiento(Recordset& empresa) {
  return mira(empresa);
}

bool esSuyoElNumero(const AsientoGrabado& grabado, const DataControl& empresa) {
  return !grabado.asiento.isEmpty() && grabado.asiento.toLong() < empresa.Fields(kAsiento).toLong();
}

bool quedaAlgo(const ErrorEjecucion& error, const std::function<bool()>& queda) {
  bool algo = !esDelFichero(error.numero());
  ignorando([&] { algo = queda(); });
  return algo;
}

bool quedanApuntes(Database& empresa, const AsientoGrabado& grabado) {
  if (grabado.apuntes == 0) return false;
  return RowReader(empresa, QStringLiteral("Select NLinea from Diario where NAsiento=%1 and "
                                           "NLinea>=%2")
                                .arg(grabado.asiento)
                                .arg(grabado.primera))
      .next();
}

QString textoDeFallo(const ErrorEjecucion& error, Database& empresa, const AsientoGrabado& grabado,
                     const QString& parte) {
  if (!quedaAlgo(error, [&] { return quedanApuntes(empresa, grabado); }))
    return error.descripcion();
  return error.descripcion() +
         QStringLiteral(" %1 en el diario: revise el asiento %2.").arg(parte, grabado.asiento);
}

int tomaContador(DataControl& empresa, const QString& contador) {
  return toma(empresa, contador);
}

int tomaContador(Recordset& empresa, const QString& contador) {
  return toma(empresa, contador);
}

QString codigoRegistro(QChar lado, const QString& orden) {
  constexpr int kCifras = 10;
  if (orden.size() > kCifras)
    throw ErrorEjecucion(
        err::kLlamadaNoValida,
        QStringLiteral("el número de orden %1 tiene más de diez cifras").arg(orden));
  return lado + orden.rightJustified(kCifras, u'0');
}

// --- in great number ----------------------------------------------------------------------------

ApuntesEnSerie::ApuntesEnSerie(Database& empresa)
    : diario_(empresa.OpenRecordset(QStringLiteral("Select * from Diario where NLinea = -1"))),
      contadores_(empresa.OpenRecordset(QStringLiteral("Select * from Empresa"))) {
  for (const auto& campo : kCampos)
    ordinales_.push_back(diario_->Ordinal(QLatin1String(campo.campo)));
}

ApuntesEnSerie::~ApuntesEnSerie() {
  // What wasn't closed has failed, and that is being told.
  ignorando([this] { cierra(); });
}

void ApuntesEnSerie::abre() {
  constexpr int kSerie = 256;
  contadores_->Edit();
  completa(*contadores_, [this] {
    FieldRef siguiente = contadores_->Fields(QStringLiteral("NLinDiario"));
    linea_ = static_cast<int>(siguiente.toLong());
    siguiente = linea_ + kSerie;
  });
  quedan_ = kSerie;
}

void ApuntesEnSerie::escribe(const Apunte& apunte) {
  diario_->AddNew();
  completa(*diario_, [&] {
    diario_->Fields(0) = linea_;
    for (std::size_t i = 0; i < ordinales_.size(); ++i) {
      const Variant& valor = apunte.*kCampos[i].valor;
      if (!valor.isNull()) diario_->Fields(ordinales_[i]) = valor;
    }
  });
}

void ApuntesEnSerie::graba(const Apunte& apunte) {
  if (quedan_ == 0) abre();
  try {
    escribe(apunte);
  } catch (const ErrorEjecucion&) {
    ignorando([this] { cierra(); });
    throw;
  }
  ++linea_;
  --quedan_;
  if (!apunte.NAsiento.isNull()) asiento_ = apunte.NAsiento.toLong() + 1;
  if (quedan_ == 0) cierra();
}

void ApuntesEnSerie::cierra() {
  if (quedan_ == 0 && asiento_.isNull()) return;
  contadores_->Edit();
  completa(*contadores_, [this] {
    FieldRef siguiente = contadores_->Fields(QStringLiteral("NLinDiario"));
    // Another station may have gone on from there, if a failure let it in; and a failure that undid
    // the lines has put the number back.
    const qint64 tomado = siguiente.toLong();
    if (tomado == linea_ + quedan_) siguiente = linea_;
    if (tomado >= linea_ + quedan_ && !asiento_.isNull())
      contadores_->Fields(QStringLiteral("Asiento")) = asiento_;
  });
  quedan_ = 0;
  asiento_ = Variant();
}
