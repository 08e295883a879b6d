#include "oficial/casillas303.h"

#include <cmath>
#include <string_view>

namespace {

using std::string_view;

enum class De { Tipo, TipoRecargo, Iva, Recargo, Deducible, Base, BaseVuelta, Cuota };
enum class Signo { Cualquiera, Positivo, Negativo };
enum class Si { DaIgual, No, Si };

// A row counts when all that a rule asks for is so. Lists are separated by blanks; an empty one
// asks for nothing.
struct Regla {
  De de;
  string_view base, cuota;
  LibroIVA libro;
  string_view tipos;
  string_view claves;
  Signo signo = Signo::Cualquiera;
  string_view calificacion = {};  // or the exemption
  Si inversion = Si::DaIgual;
  Si bienInversion = Si::DaIgual;
  Si union_ = Si::DaIgual;  // the third party has a number of the Union
};

constexpr LibroIVA kE = LibroIVA::Repercutido, kR = LibroIVA::Soportado;
constexpr string_view kFacturas = "F1 F2 F4", kRectificativas = "R1 R2 R3 R4 R5";
constexpr string_view kRecibidas = "F1 F3 F4 F6", kDeFuera = "F1 F4 F6";
constexpr string_view kCorrientes = "01 03 05 09 11 12 13 15";
// All but those with rules of their own: cash basis (07) and one-stop shop (17).
constexpr string_view kSinCaja = "01 02 03 04 05 06 08 09 10 11 12 13 14 15 18 19";
// Of received ones: nor compensations to farmers (02).
constexpr string_view kRectificables = "01 03 04 05 06 08 09 12 13 18 19";
constexpr string_view kDeducibles = "01 12", kSinUnion = "01 03 05 12";
constexpr auto kPos = Signo::Positivo, kNeg = Signo::Negativo;

constexpr Regla kReglas[] = {
    {De::Tipo, "", "", kE, kFacturas, kCorrientes, kPos, "S1"},
    {De::Iva, "14", "15", kE, "R1 R2 R3 R4 R5 AJ", kSinCaja, Signo::Cualquiera, "S1"},
    {De::Iva, "14", "15", kE, kFacturas, kSinCaja, kNeg, "S1"},
    {De::Iva, "14", "15", kE, "DV", "02"},
    {De::TipoRecargo, "", "", kE, kFacturas, "01", kPos, "S1"},
    {De::Recargo, "25", "26", kE, "R1 R2 R3 R4", kSinCaja, Signo::Cualquiera, "S1"},
    {De::Recargo, "25", "26", kE, kFacturas, kSinCaja, kNeg, "S1"},
    {De::Base, "59", "", kE, "", "", Signo::Cualquiera, "E5"},
    {.de = De::Base,
     .base = "59",
     .cuota = "",
     .libro = kE,
     .tipos = "",
     .claves = kSinCaja,
     .calificacion = "E6 N2",
     .union_ = Si::Si},
    {De::Base, "60", "", kE, "", "01 02 05", Signo::Cualquiera, "E2 E3 E4"},
    {.de = De::Base,
     .base = "60",
     .cuota = "",
     .libro = kE,
     .tipos = "",
     .claves = "02 05",
     .calificacion = "E6",
     .union_ = Si::No},
    {De::BaseVuelta, "60", "", kE, "DV", ""},
    {.de = De::Base,
     .base = "120",
     .cuota = "",
     .libro = kE,
     .tipos = "",
     .claves = kSinCaja,
     .calificacion = "N2",
     .union_ = Si::No},
    {De::Base, "122", "", kE, "", "", Signo::Cualquiera, "S2"},
    {De::Base, "123", "", kE, "", "17", Signo::Cualquiera, "N2"},
    {De::Base, "124", "", kE, "", "17", Signo::Cualquiera, "S1"},
    {De::Iva, "62", "63", kE, "", "07"},

    {De::Iva, "10", "11", kR, kDeFuera, "09", kPos, "", Si::No},
    {De::Iva, "12", "13", kR, kDeFuera, kSinUnion, kPos, "", Si::Si},
    {De::Iva, "14", "15", kR, kRectificativas, "09"},
    {De::Iva, "14", "15", kR, "F1 F2 F3 F4 F5 F6", "09", kNeg},
    {De::Iva, "14", "15", kR, kRectificativas, kSinUnion, Signo::Cualquiera, "", Si::Si},
    {De::Iva, "14", "15", kR, "F1 F2 F3 F4 F5 F6", kSinUnion, kNeg, "", Si::Si},
    {De::Deducible, "28", "29", kR, kRecibidas, kDeducibles, kPos, "", Si::DaIgual, Si::No},
    {De::Deducible, "30", "31", kR, kRecibidas, kDeducibles, kPos, "", Si::DaIgual, Si::Si},
    {De::Deducible, "32", "33", kR, "F5 LC", "01", kPos, "", Si::DaIgual, Si::No},
    {De::Deducible, "34", "35", kR, "F5 LC", "01", kPos, "", Si::DaIgual, Si::Si},
    {De::Deducible, "36", "37", kR, kRecibidas, "09", kPos, "", Si::DaIgual, Si::No},
    {De::Deducible, "38", "39", kR, kRecibidas, "09", kPos, "", Si::DaIgual, Si::Si},
    {De::Deducible, "40", "41", kR, kRectificativas, kRectificables},
    {De::Deducible, "40", "41", kR, "F1 F3 F4 F5 F6 LC", kRectificables, kNeg},
    {De::Cuota, "", "42", kR, "F1 F2 F3 F4 F6 R1 R2 R3 R4 R5", "02"},
    {De::Cuota, "", "44", kR, "SF", ""},
    {De::Iva, "74", "75", kR, "", "07"},
};

// The casillas of each rate, in hundredths of a point, and the months between which it has them.
struct CasillasDeTipo {
  int tipo;
  bool recargo;
  string_view base, porciento, cuota;
  int desde = 0, hasta = 999999;
};
constexpr CasillasDeTipo kTipos[] = {
    {0, false, "150", "151", "152"},
    {200, false, "165", "166", "167", 202410, 202412},
    {400, false, "01", "02", "03"},
    {500, false, "153", "154", "155", 0, 202409},
    {750, false, "153", "154", "155", 202410, 202412},
    {1000, false, "04", "05", "06"},
    {2100, false, "07", "08", "09"},
    {175, true, "156", "157", "158"},
    {50, true, "168", "169", "170", 202410},
    {26, true, "168", "169", "170", 202410, 202412},
    {50, true, "16", "17", "18", 0, 202409},
    {62, true, "16", "17", "18", 0, 202409},
    {100, true, "16", "17", "18", 202410, 202412},
    {140, true, "19", "20", "21"},
    {520, true, "22", "23", "24"},
};

bool contiene(string_view lista, const QString& palabra) {
  if (lista.empty()) return true;
  const QLatin1String todas(lista.data(), qsizetype(lista.size()));
  for (qsizetype i = 0; i < todas.size();) {
    qsizetype fin = todas.indexOf(QLatin1Char(' '), i);
    if (fin < 0) fin = todas.size();
    if (palabra == todas.sliced(i, fin - i)) return true;
    i = fin + 1;
  }
  return false;
}

bool cumple(Si pedido, bool es) {
  return pedido == Si::DaIgual || (pedido == Si::Si) == es;
}

bool cumple(const Regla& r, const LineaRegistro& l) {
  if (r.libro != l.libro) return false;
  if (r.signo != Signo::Cualquiera && (r.signo == Signo::Negativo) != l.negativa()) return false;
  const QString& calificada = l.exenta.isEmpty() ? l.calificacion : l.exenta;
  return contiene(r.tipos, l.tipoFactura) && contiene(r.claves, l.clave) &&
         contiene(r.calificacion, calificada) && cumple(r.inversion, l.inversion) &&
         cumple(r.bienInversion, l.bienInversion) &&
         cumple(r.union_, l.tipoNif == QLatin1String("02"));
}

QString texto(string_view v) {
  return QString::fromLatin1(v.data(), qsizetype(v.size()));
}

int mesDe(const Periodo& p) {
  return p.ejercicio * 100 + p.primerMes();
}

const CasillasDeTipo* casillasDe(double porcien, bool recargo, const Periodo& periodo) {
  const auto tipo = int(std::lround(porcien * 100));
  const int mes = mesDe(periodo);
  for (const CasillasDeTipo& c : kTipos)
    if (c.tipo == tipo && c.recargo == recargo && mes >= c.desde && mes <= c.hasta) return &c;
  return nullptr;
}

void anade(std::vector<Aportacion>& lista, string_view casilla, qint64 importe) {
  if (!casilla.empty() && importe != 0) lista.push_back({casilla, importe, 0, {}});
}

void anadeTipo(std::vector<Aportacion>& lista, const LineaRegistro& l, bool recargo,
               const Periodo& periodo) {
  const CasillasDeTipo* const c = casillasDe(recargo ? l.porcenRE : l.porcenIVA, recargo, periodo);
  if (!c) return;
  anade(lista, c->base, l.base);
  if (!lista.empty()) {
    lista.back().tipo = c->tipo;
    lista.back().casillaTipo = c->porciento;
  }
  anade(lista, c->cuota, recargo ? l.recargo : l.iva);
}

void aplica(const Regla& r, const LineaRegistro& l, const Periodo& periodo,
            std::vector<Aportacion>& lista) {
  switch (r.de) {
    case De::Tipo:
      // A quota of nothing is a sale at 0 %, or none.
      if ((l.iva != 0) == (l.porcenIVA != 0)) anadeTipo(lista, l, false, periodo);
      return;
    case De::TipoRecargo:
      if (l.recargo != 0) anadeTipo(lista, l, true, periodo);
      return;
    case De::Base:
      return anade(lista, r.base, l.base);
    case De::BaseVuelta:
      return anade(lista, r.base, 0 - l.base);
    case De::Cuota:
      return anade(lista, r.cuota, l.deducible != 0 ? l.deducible : l.iva);
    default:
      break;
  }
  const qint64 cuota = r.de == De::Iva ? l.iva : r.de == De::Recargo ? l.recargo : l.deducible;
  if (cuota == 0 && (r.de != De::Iva || !l.emitida())) return;
  anade(lista, r.base, l.base);
  anade(lista, r.cuota, cuota);
}

}  // namespace

std::vector<Aportacion> aportaciones(const LineaRegistro& linea, const Periodo& periodo) {
  std::vector<Aportacion> lista;
  if (linea.autorrepercusion) return lista;
  for (const Regla& regla : kReglas)
    if (cumple(regla, linea)) aplica(regla, linea, periodo, lista);
  return lista;
}

bool deberiaAportar(const LineaRegistro& l) {
  if (l.autorrepercusion) return false;
  // One that takes the place of simplified ones, which are in the return already.
  if (l.emitida()) return (l.iva != 0 || l.recargo != 0) && l.tipoFactura != QLatin1String("F3");
  return l.deducible != 0;
}

int tipoPorDefecto(const QString& casilla, const Periodo& periodo) {
  int ultimo = 0, cuantos = 0;
  const int mes = mesDe(periodo);
  for (const CasillasDeTipo& c : kTipos) {
    if (casilla != texto(c.porciento) || mes < c.desde || mes > c.hasta) continue;
    if (cuantos++ == 0) ultimo = c.tipo;
  }
  // Before October 2024 that one might be at 0 % as well.
  return casilla == QLatin1String("17") && cuantos > 1 ? 0 : ultimo;
}
