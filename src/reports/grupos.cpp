#include "reports/grupos.h"

#include <algorithm>

#include "common/comillas.h"
#include "engine/rowreader.h"
#include "engine/store.h"
#include "reports/expresiones.h"

namespace reports {
namespace {
constexpr qint64 kSumaExacta = 4'000'000'000;  // beyond it a number has no place for millionths
constexpr qint64 kFilasPorCabecera = 50;  // below it a look at each group's first row costs more
constexpr qint64 kUnaLarga = 20;          // more than one in so many, and rows are counted
constexpr qint64 kParteDelLibro = 4;      // a smaller part of it is read as soon as counted
constexpr size_t kGruposPorTanda = 64;
constexpr qint64 kFilasPorTanda = 20'000;

bool tiene(const std::vector<int>& todos, int uno) {
  return std::find(todos.begin(), todos.end(), uno) != todos.end();
}

void anade(std::vector<int>& todos, int uno) {
  if (!tiene(todos, uno)) todos.push_back(uno);
}

// A column for a statement that doesn't show the others; empty if it calls one of those by the name
// that it is given here.
QString expresionDe(const Consulta& consulta, int columna) {
  QString e = consulta.columnas[columna];
  const QString propio = aliasDe(e);
  for (const QString& otra : consulta.columnas) {
    const QString alias = aliasDe(otra);
    if (!alias.isEmpty() && nombra(e, alias)) return {};
  }
  if (!propio.isEmpty()) e = sinAlias(e);
  return e;
}

class Planteador {
 public:
  Planteador(const Plantilla& plantilla, const Fuente& fuente)
      : plantilla_(plantilla), fuente_(fuente), consulta_(fuente.consulta()) {}

  std::optional<Grupos::Planteo> haz() {
    const bool directa = !fuente_.fija() && consulta_.origen.agrupado.isEmpty() &&
                         consulta_.columnas.size() == fuente_.propias();
    if (!directa || plantilla_.grupos.empty() || !plantilla_.resumenes.empty()) return {};
    if (!clave() || !sumas() || !internas() || !condiciones()) return {};
    return p_;
  }

 private:
  bool propia(int ordinal) const {
    return ordinal < fuente_.propias() && !expresionDe(consulta_, ordinal).isEmpty();
  }
  bool esNumero(int ordinal) const { return fuente_.tipo(ordinal) == FieldType::Long; }

  // The book must come in order of its outermost groups.
  bool clave() {
    p_.clave = plantilla_.grupos.front().ordinal;
    if (!propia(p_.clave)) return false;
    const QString primero = partesDe(consulta_.origen.orden).value(0);
    return !primero.isEmpty() && mismaExpresion(primero, expresionDe(consulta_, p_.clave)) &&
           (esNumero(p_.clave) || fuente_.tipo(p_.clave) == FieldType::Text);
  }

  bool sumas() {
    for (const Acumulador& a : plantilla_.acumuladores) {
      if (!propia(a.ordinal) || a.ordinal == p_.clave) return false;
      anade(p_.sumadas, a.ordinal);
    }
    return true;
  }

  // Texts that only differ in case are one to a statement and two to a page.
  bool internas() {
    for (const Grupo& g : plantilla_.grupos) {
      if (g.ordinal == p_.clave) continue;
      const bool cierta = esNumero(g.ordinal) || fuente_.tipo(g.ordinal) == FieldType::Date;
      if (!propia(g.ordinal) || !cierta || tiene(p_.sumadas, g.ordinal) || !esNumero(p_.clave))
        return false;
      anade(p_.internas, g.ordinal);
    }
    return true;
  }

  bool condiciones() {
    for (const Grupo& g : plantilla_.grupos) {
      if (g.cabecera.si.isEmpty()) continue;
      const int o = g.cabecera.ordinalSi;
      if (!propia(o) || tiene(p_.sumadas, o)) return false;
      anade(p_.cabeceras, o);
    }
    const Banda& largo = plantilla_.detalleLargo;
    if (!plantilla_.detalle.si.isEmpty()) return false;
    if (largo.alto == 0 || largo.si.isEmpty()) return true;
    if (!largo.siNumerica || largo.pasa <= 0 || !propia(largo.ordinalSi) || !esNumero(p_.clave) ||
        tiene(p_.sumadas, largo.ordinalSi))
      return false;
    p_.largas = QStringLiteral("(%1) > %2")
                    .arg(expresionDe(consulta_, largo.ordinalSi), QString::number(largo.pasa));
    return true;
  }

  const Plantilla& plantilla_;
  const Fuente& fuente_;
  const Consulta& consulta_;
  Grupos::Planteo p_;
};

// A key of which it is certain that a statement and a page tell it from others in the same way, and
// that a literal finds it again.
bool esCierta(const Variant& clave) {
  if (!clave.isText()) return clave.isInteger();
  const QString texto = clave.text();
  return !texto.isEmpty() &&
         std::all_of(texto.begin(), texto.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

QString literal(const Variant& clave) {
  return clave.isText() ? entreComillas(clave.text()) : QString::number(clave.integer());
}
}  // namespace

std::shared_ptr<const Grupos> Grupos::de(const Plantilla& plantilla, const Fuente& fuente) {
  const auto planteo = Planteador(plantilla, fuente).haz();
  if (!planteo) return nullptr;
  Database& base = fuente.base();
  const auto cierre = base.hold();
  const std::shared_ptr<Grupos> g(new Grupos(*planteo, fuente.consulta()));
  if (!g->eligeLimites(base) || !g->lee(base)) return nullptr;
  const auto grupos = static_cast<qint64>(g->cuantos());
  if (!planteo->cabeceras.empty() && g->filas() < grupos * kFilasPorCabecera) return nullptr;
  if (!g->apartaLargas(base) || !g->criba(base)) return nullptr;
  g->apartaPartidas(base);
  return g;
}

qint64 Grupos::cuantas(Database& base, const Consulta& consulta, const QString& ademas) {
  RowReader cuenta(base, consulta.sentenciaDe(QStringLiteral("Count(*)"), ademas, {}));
  return cuenta.next() ? cuenta.value(0).integer() : 0;
}

// Tells the limits that leave nothing out, as the first day and the last of the year do, those that
// the sums know of, and the others. False where the sums know of nothing, or of too much.
bool Grupos::eligeLimites(Database& base) {
  Consulta suelta = consulta_;
  suelta.condiciones.clear();
  if (!base.readsKeptSums(sentencia(suelta))) return false;
  std::erase_if(consulta_.condiciones, [&](const Formula::Parte& p) {
    return !p.fuera.isEmpty() && std::all_of(p.fuera.begin(), p.fuera.end(), [&](const QString& f) {
      return cuantas(base, suelta, f) == 0;
    });
  });
  deSumas_ = consulta_;
  std::erase_if(deSumas_.condiciones, [&](const Formula::Parte& p) {
    Consulta una = suelta;
    una.condiciones = {p};
    return !base.readsKeptSums(sentencia(una));
  });
  if (!limitada()) return true;
  return !planteo_.internas.empty() &&
         cuantas(base, consulta_, {}) > cuantas(base, deSumas_, {}) / kParteDelLibro;
}

QString Grupos::sentencia(const Consulta& consulta) const {
  const QString clave = expresionDe(consulta, planteo_.clave);
  QString lista = clave + QStringLiteral(", Count(*)");
  for (const int o : planteo_.sumadas)
    lista += QStringLiteral(", Sum(%1)").arg(expresionDe(consulta, o));
  return consulta.sentenciaDe(lista, {}, QStringLiteral(" GROUP BY %1 ORDER BY %1").arg(clave));
}

bool Grupos::lee(Database& base) {
  RowReader fila(base, sentencia(deSumas_));
  const int sumas = static_cast<int>(planteo_.sumadas.size());
  while (fila.next()) {
    Variant clave = fila.value(0);
    if (!esCierta(clave)) return false;
    claves_.push_back(std::move(clave));
    primeras_.push_back(primeras_.back() + fila.value(1).integer());
    bool exacta = true;
    for (int i = 0; i < sumas; ++i) {
      const double suma = fila.number(2 + i);
      const bool cabe = std::abs(suma) < kSumaExacta;
      exacta = exacta && cabe;
      sumas_.push_back(cabe ? millonesimas(suma) : 0);
    }
    sueltos_.push_back(!exacta);
  }
  return true;
}

// Rows with a long line are few; where they aren't, false.
bool Grupos::apartaLargas(Database& base) {
  if (planteo_.largas.isEmpty()) return true;
  const auto largas = base.OpenRecordset(
      deSumas_.sentenciaDe(expresionDe(consulta_, planteo_.clave), planteo_.largas, {}));
  const int cuantas = largas->rowTotal();
  if (cuantas > filas() / kUnaLarga) return false;
  std::vector<qint64> claves;
  for (int i = 0; i < cuantas; ++i) {
    if (const Variant c = largas->cell(i, 0); c.isInteger()) claves.push_back(c.integer());
  }
  aparta(std::move(claves));
  return true;
}

// Under limits of which the sums know nothing, as dates are to asientos, a group with all of its
// rows still adds up to its sums. False where too few do.
bool Grupos::criba(Database& base) {
  if (!limitada()) return true;
  const QString clave = expresionDe(consulta_, planteo_.clave);
  const QString dentro = expresionDe(consulta_, planteo_.internas.front());
  RowReader par(base, consulta_.sentenciaDe(
                          QStringLiteral("%1, Count(*)").arg(clave), {},
                          QStringLiteral(" GROUP BY %2, %1 ORDER BY %2, %1").arg(clave, dentro)));
  std::vector<std::pair<qint64, qint64>> cuentas;
  cuentas.reserve(cuantos());
  while (par.next()) {
    if (!par.value(0).isInteger()) return false;
    cuentas.emplace_back(par.value(0).integer(), par.value(1).integer());
  }
  std::sort(cuentas.begin(), cuentas.end());
  return quedaCon(cuentas);
}

bool Grupos::quedaCon(const std::vector<std::pair<qint64, qint64>>& cuentas) {
  const size_t sumadas = planteo_.sumadas.size();
  const std::vector<qint64> antes = std::exchange(primeras_, {0});
  auto cuenta = cuentas.begin();
  size_t quedan = 0;
  qint64 sueltas = 0;
  for (size_t g = 0; g < claves_.size(); ++g) {
    qint64 filas = 0, partes = 0;
    for (; cuenta != cuentas.end() && cuenta->first == claves_[g].integer(); ++cuenta, ++partes)
      filas += cuenta->second;
    if (filas == 0) continue;
    sueltos_[quedan] = sueltos_[g] || partes > 1 || filas != antes[g + 1] - antes[g];
    if (sueltos_[quedan]) sueltas += filas;
    std::copy_n(sumas_.begin() + std::ptrdiff_t(g * sumadas), sumadas,
                sumas_.begin() + std::ptrdiff_t(quedan * sumadas));
    if (quedan != g) claves_[quedan] = std::move(claves_[g]);
    primeras_.push_back(primeras_.back() + filas);
    ++quedan;
  }
  claves_.resize(quedan);
  sueltos_.resize(quedan);
  sumas_.resize(quedan * sumadas);
  return cuenta == cuentas.end() && sueltas <= filas() / 2;
}

// Groups that have inner ones: those that stand beside more than one of their values.
void Grupos::apartaPartidas(Database& base) {
  const QString clave = expresionDe(consulta_, planteo_.clave);
  // By the first of them they have been counted where there are limits.
  for (const int interna : std::span(planteo_.internas).subspan(limitada() ? 1 : 0)) {
    // In order of the inner one, as there is an index; an order that isn't that of the columns
    // spares a grouping.
    const QString dentro = expresionDe(consulta_, interna);
    RowReader par(base,
                  consulta_.sentenciaDe(QStringLiteral("DISTINCT %1, %2").arg(clave, dentro), {},
                                        QStringLiteral(" ORDER BY %2, %1").arg(clave, dentro)));
    std::vector<qint64> claves;
    claves.reserve(cuantos());
    while (par.next()) claves.push_back(par.value(0).integer());
    std::sort(claves.begin(), claves.end());
    std::vector<qint64> repetidas;
    for (size_t i = 1; i < claves.size(); ++i) {
      if (claves[i] == claves[i - 1]) repetidas.push_back(claves[i]);
    }
    aparta(std::move(repetidas));
  }
}

void Grupos::aparta(std::vector<qint64> claves) {
  for (const qint64 c : claves) {
    const auto sitio = std::lower_bound(claves_.begin(), claves_.end(), c,
                                        [](const Variant& v, qint64 x) { return v.integer() < x; });
    if (sitio != claves_.end() && sitio->integer() == c)
      sueltos_[size_t(sitio - claves_.begin())] = true;
  }
}

size_t Grupos::grupoDe(qint64 fila) const {
  return size_t(std::upper_bound(primeras_.begin(), primeras_.end(), fila) - primeras_.begin()) - 1;
}

qint64 Grupos::suma(size_t grupo, int ordinal) const {
  const auto& s = planteo_.sumadas;
  const auto i = std::find(s.begin(), s.end(), ordinal) - s.begin();
  return sumas_[grupo * s.size() + size_t(i)];
}

QString Grupos::filasDe(std::span<const size_t> grupos, const std::vector<int>& solo,
                        std::vector<int>* sitio) const {
  QStringList claves;
  for (const size_t g : grupos) claves << literal(claves_[g]);
  const QString clave = expresionDe(consulta_, planteo_.clave);
  const QString cual =
      claves.size() == 1
          ? QStringLiteral("(%1 = %2)").arg(clave, claves[0])
          : QStringLiteral("(%1 In (%2))").arg(clave, claves.join(QStringLiteral(", ")));
  return consulta_.sentenciaCorta(solo, sitio, cual);
}

// From the nearer end of the run.
void Grupos::completa(const Plantilla& plantilla, Cursor& filas, Marca& marca) const {
  if (marca.sumadas == marca.fila) return;
  const size_t grupo = grupoDe(marca.sumadas);
  const bool delante = marca.fila - marca.sumadas <= fin(grupo) - marca.fila;
  std::map<int, qint64> sumas;
  for (const int c : planteo_.sumadas) sumas[c] = delante ? 0 : suma(grupo, c);
  const qint64 hasta = delante ? marca.fila : fin(grupo);
  for (qint64 f = delante ? marca.sumadas : marca.fila; f < hasta; ++f) {
    filas.situa(f);
    for (auto& [columna, suma] : sumas) {
      const qint64 x = millonesimas(filas.numero(columna));
      suma = sumado(suma, delante ? x : -x);
    }
  }
  for (size_t i = 0; i < marca.sumas.size(); ++i)
    marca.sumas[i] = sumado(marca.sumas[i], sumas[plantilla.acumuladores[i].ordinal]);
  marca.sumadas = marca.fila;
}

CursorDeGrupos::CursorDeGrupos(const Fuente& fuente, std::shared_ptr<const Grupos> grupos,
                               const std::vector<int>& solo)
    : Cursor(fuente), grupos_(std::move(grupos)), solo_(solo) {}

CursorDeGrupos::~CursorDeGrupos() = default;

bool CursorDeGrupos::situa(qint64 fila) {
  if (fila >= grupos_->filas()) return false;
  if (fila == fila_) return true;
  fila_ = fila;
  while (grupos_->fin(grupo_) <= fila) ++grupo_;
  if (grupos_->suelto(grupo_)) return leeSuelto();
  if (fila == grupos_->primera(grupo_) && !grupos_->planteo().cabeceras.empty()) leePrimera();
  return true;
}

qint64 CursorDeGrupos::iguales() const {
  return grupos_->suelto(grupo_) ? 1 : grupos_->fin(grupo_) - fila_;
}

Variant CursorDeGrupos::celda(int ordinal) const {
  const auto sitio = [&] { return sitios_.empty() ? ordinal : sitios_[size_t(ordinal)]; };
  if (grupos_->suelto(grupo_)) return sueltas_->value(sitio());
  const Grupos::Planteo& planteo = grupos_->planteo();
  if (ordinal == planteo.clave) return grupos_->clave(grupo_);
  if (tiene(planteo.sumadas, ordinal)) return importeDe(grupos_->suma(grupo_, ordinal));
  return tiene(planteo.cabeceras, ordinal) ? primera_[size_t(ordinal)] : Variant();
}

// The next row of the groups apart, of which some that follow each other are asked for at once.
// There are fewer rows only if somebody has just taken them away, and then all is counted anew.
bool CursorDeGrupos::leeSuelto() {
  if (grupo_ >= tanda_) {
    std::vector<size_t> tanda;
    qint64 filas = 0;
    for (tanda_ = grupo_; tanda_ < grupos_->cuantos(); ++tanda_) {
      if (!grupos_->suelto(tanda_)) continue;
      if (tanda.size() == kGruposPorTanda || filas > kFilasPorTanda) break;
      tanda.push_back(tanda_);
      filas += grupos_->fin(tanda_) - grupos_->primera(tanda_);
    }
    sueltas_ =
        std::make_unique<RowReader>(fuente_.base(), grupos_->filasDe(tanda, solo_, &sitios_));
  }
  ++leidas_;
  return sueltas_->next();
}

void CursorDeGrupos::leePrimera() {
  const std::vector<int>& columnas = grupos_->planteo().cabeceras;
  std::vector<int> sitios;
  const size_t uno[] = {grupo_};
  const auto filas =
      fuente_.base().OpenRecordset(grupos_->filasDe(uno, columnas, &sitios), Opening::FirstRows);
  primera_.assign(size_t(fuente_.propias()), {});
  for (const int c : columnas)
    primera_[size_t(c)] = filas->cell(0, sitios.empty() ? c : sitios[size_t(c)]);
  ++leidas_;
}

bool CursorPorGrupos::situa(qint64 fila) {
  fila_ = fila;
  return fila < grupos_->filas();
}

Recordset& CursorPorGrupos::abre(size_t grupo) const {
  if (abiertos_[0].filas && abiertos_[0].grupo == grupo) return *abiertos_[0].filas;
  std::swap(abiertos_[0], abiertos_[1]);
  if (!abiertos_[0].filas || abiertos_[0].grupo != grupo) {
    std::vector<int> sitios;
    const size_t uno[] = {grupo};
    abiertos_[0] = {grupo, fuente_.base().OpenRecordset(grupos_->filasDe(uno, {}, &sitios),
                                                        Opening::FirstRows)};
  }
  return *abiertos_[0].filas;
}

Variant CursorPorGrupos::leida(qint64 fila, int ordinal) const {
  const Abierto& ultimo = abiertos_[0];
  const bool ahi =
      ultimo.filas && grupos_->primera(ultimo.grupo) <= fila && fila < grupos_->fin(ultimo.grupo);
  const size_t grupo = ahi ? ultimo.grupo : grupos_->grupoDe(fila);
  Recordset& filas = abre(grupo);
  const auto sitio = static_cast<int>(fila - grupos_->primera(grupo));
  if (sitio >= filas.rowsKnown()) filas.rowTotal();
  return filas.cell(sitio, ordinal);
}

}  // namespace reports
