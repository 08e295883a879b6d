#include "iva/filarsiva.h"

#include "engine/dbengine.h"
#include "engine/filas.h"

namespace {

constexpr CampoRSIVA kCampos[] = {
    {"Codigo", &FilaRSIVA::Codigo},
    {"Base", &FilaRSIVA::Base},
    {"IVA", &FilaRSIVA::IVA},
    {"Recargo", &FilaRSIVA::Recargo},
    {"PorcenIVA", &FilaRSIVA::PorcenIVA},
    {"PorcenREC", &FilaRSIVA::PorcenREC},
    {"Neto", &FilaRSIVA::Neto},
    {"CliPro", &FilaRSIVA::CliPro},
    {"Factura", &FilaRSIVA::Factura},
    {"TipoIVA", &FilaRSIVA::TipoIVA},
    {"Asiento", &FilaRSIVA::Asiento},
    {"CtaIVA", &FilaRSIVA::CtaIVA},
    {"FechaC", &FilaRSIVA::FechaC},
    {"CtaRE", &FilaRSIVA::CtaRE},
    {"CtaCon", &FilaRSIVA::CtaCon},
    {"Fecha", &FilaRSIVA::Fecha},
};

}  // namespace

QChar letraDe(LibroIVA libro) {
  return libro == LibroIVA::Soportado ? u'S' : u'R';
}

QString contadorDe(LibroIVA libro) {
  return libro == LibroIVA::Soportado ? QStringLiteral("NLinIVAS") : QStringLiteral("NLinIVAR");
}

LibroIVA FilaRSIVA::libro() const {
  return Codigo.display().startsWith(letraDe(LibroIVA::Soportado)) ? LibroIVA::Soportado
                                                                   : LibroIVA::Repercutido;
}

ImportesIVA importesDe(const FilaRSIVA& fila) {
  const bool vuelve = fila.libro() == LibroIVA::Repercutido;
  const auto importe = [vuelve](const Variant& valor) {
    const double guardado = valor.isNull() ? 0 : valor.number();
    return vuelve ? 0 - guardado : guardado;  // a zero has no sign
  };
  return {importe(fila.Base), importe(fila.IVA), importe(fila.Recargo), importe(fila.Neto)};
}

FilaRSIVA leeFila(Recordset& registro) {
  FilaRSIVA fila;
  for (const auto& [nombre, valor] : kCampos)
    fila.*valor = registro.Fields(QLatin1String(nombre)).Value();
  return fila;
}

std::span<const CampoRSIVA> camposRSIVA() {
  return kCampos;
}

void ponCodigoEnAsiento(Database& empresa, const Variant& asiento, const QString& codigo) {
  if (asiento.isNull()) return;
  const auto lineas = empresa.OpenRecordset(
      QStringLiteral("Select * from Diario where Nasiento=%1").arg(asiento.toLong()));
  for (; !lineas->Eof(); lineas->MoveNext()) {
    lineas->Edit();
    completa(*lineas, [&] { lineas->Fields("ApunteIVA") = codigo; });
  }
}
