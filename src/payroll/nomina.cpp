#include "payroll/nomina.h"

#include "common/conversion.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "engine/datacontrol.h"
#include "journal/apunte.h"

namespace {

struct Concepto {
  const char* prefijo;
  bool alDebe;
  bool siempre;  // without a check box
};

constexpr Concepto kConceptos[kConceptosNomina] = {
    {"Nomina ", true, true},      {"S.S.Emp+TR ", true, false}, {"S.S.Acreedora ", false, false},
    {"Retencion ", false, false}, {"Anticipos ", false, false}, {"Rem.P.P. ", false, false},
    {"Nomina ", false, true},
};

// The amount by the digits that stand for it, with more decimals than any mask shows. Those of 13
// and more digits don't come here: no box takes them.
qint64 enMillonesimas(double importe) {
  constexpr int kDecimales = 6;
  const QString texto = numberText(importe);
  const QString decimales = texto.section(u',', 1).left(kDecimales).leftJustified(kDecimales, u'0');
  return (texto.section(u',', 0, 0) + decimales).toLongLong();
}

}  // namespace

void CalculoTotal(Nomina& nomina) {
  using enum ConceptoNomina;
  const auto importe = [&](ConceptoNomina c) { return nomina.parte(c).Importe; };
  if (nomina.parte(SSCargoEmpresa).Marcada)
    nomina.parte(OrganismosSS).Importe = importe(SSCargoEmpresa) + nomina.CargoTrabajador;
  nomina.parte(Caja).Importe =
      (importe(SueldoBruto) + importe(SSCargoEmpresa)) -
      (importe(Retenciones) + importe(OrganismosSS) + importe(Anticipos) + importe(Remuneraciones));
}

bool cuadra(const Nomina& nomina) {
  qint64 resto = 0;
  for (std::size_t i = 0; i < nomina.Partes.size(); ++i) {
    const qint64 importe = enMillonesimas(nomina.Partes[i].Importe);
    resto += kConceptos[i].alDebe ? importe : -importe;
  }
  return resto == 0;
}

void grabaNomina(const Nomina& nomina, const QString& mascara, DataControl& diario,
                 DataControl& empresa, AsientoGrabado& grabado) {
  const bool automatico = nomina.ApunteN.compare(kAsientoAutomatico, Qt::CaseInsensitive) == 0;
  grabado.asiento = automatico ? QString::number(tomaAsiento(empresa)) : nomina.ApunteN;
  const QString cero = Format(QStringLiteral("0"), mascara);
  for (std::size_t i = 0; i < nomina.Partes.size(); ++i) {
    const Concepto& concepto = kConceptos[i];
    const ParteNomina& parte = nomina.Partes[i];
    if (!concepto.siempre && (!parte.Marcada || Format(parte.Importe, mascara) == cero)) continue;
    Apunte apunte;
    apunte.NAsiento = grabado.asiento;
    apunte.Fecha = nomina.Fecha;
    apunte.Subcuenta = parte.Subcuenta;
    apunte.Descripcion =
        (QLatin1String(concepto.prefijo) + nomina.NombreEmpleado).left(kLargoDeDescripcion);
    apunte.DH = concepto.alDebe ? "D" : "H";
    apunte.Importe = concepto.alDebe ? parte.Importe : 0 - parte.Importe;
    grabado.apunta(grabaApunte(diario, empresa, apunte));
  }
}
