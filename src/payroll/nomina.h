// A payroll and its asiento: the gross and the company's social security at the debe; the social
// security body, withholdings, advances, pending pay and the net at the haber.
//
// No payroll is computed here: the amounts are those of the paper, and from them only the sum for
// the social security body and the net come.
#pragma once

#include <array>
#include <QString>

class DataControl;
struct AsientoGrabado;

// In the order of the lines.
enum class ConceptoNomina {
  SueldoBruto,
  SSCargoEmpresa,
  OrganismosSS,
  Retenciones,
  Anticipos,
  Remuneraciones,
  Caja,
};
inline constexpr int kConceptosNomina = 7;

struct ParteNomina {
  QString Subcuenta;
  double Importe = 0;
  bool Marcada = true;  // its check box, where the concept has one
};

struct Nomina {
  QString Fecha;
  QString ApunteN;         // kAsientoAutomatico in any case of its letters, or the asiento to join
  QString NombreEmpleado;  // the name of the subcuenta of the gross: told in every line
  double CargoTrabajador = 0;  // in no line of its own
  std::array<ParteNomina, kConceptosNomina> Partes;

  ParteNomina& parte(ConceptoNomina c) { return Partes[static_cast<std::size_t>(c)]; }
  const ParteNomina& parte(ConceptoNomina c) const { return Partes[static_cast<std::size_t>(c)]; }
};

inline const QString kAsientoAutomatico = QStringLiteral("<Auto>");

// What the social security body is owed, if the company's share is given, and the net paid.
void CalculoTotal(Nomina& nomina);

// Whether debe and haber are the same, with no tolerance at all: the amounts are added as the
// decimals that the boxes show, so that no sum of cents is off by what a double can't hold.
bool cuadra(const Nomina& nomina);

// Writes the lines, in the order of the concepts, into the next free asiento or into the one given.
// The first and the last are always written, any other if it is marked and isn't zero under
// `mascara`. Nothing is checked: a line that fails leaves those before it. 3421 for a date or a
// number of asiento that can't be read, 3163 for a subcuenta that is too long, 3260 when another
// station holds the file.
void grabaNomina(const Nomina& nomina, const QString& mascara, DataControl& diario,
                 DataControl& empresa, AsientoGrabado& grabado);
