#include "oficial/modelo303.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "common/errorejecucion.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "oficial/tablasoficiales.h"

namespace {

const QString kTabla303 = QStringLiteral("303.csv");
const QString kTabla = QStringLiteral("Modelo303");
const QString kVolumen = QStringLiteral("04");  // the page
// Casillas with a proposal of their own.
const QString kPendientes = QStringLiteral("110"), kAplicadas = QStringLiteral("78");
const QString kEstado = QStringLiteral("65");
// What a filed return leaves to compensate stands beside its casillas under this name.
const QString kACompensar = QStringLiteral("COMP");
const QString kAMano = QStringLiteral("M"), kPresentado = QStringLiteral("P");

QString deTabla(const Periodo& periodo, const QString& clase) {
  return QStringLiteral("Select * from %1 where Ejercicio=%2 and Periodo='%3' and Clase='%4'")
      .arg(kTabla)
      .arg(periodo.ejercicio)
      .arg(periodo.codigo, clase);
}

void anadeFila(Recordset& filas, const Periodo& periodo, const QString& casilla,
               const QString& clase) {
  filas.Fields(QStringLiteral("Ejercicio")) = periodo.ejercicio;
  filas.Fields(QStringLiteral("Periodo")) = periodo.codigo;
  filas.Fields(QStringLiteral("Casilla")) = casilla;
  filas.Fields(QStringLiteral("Clase")) = clase;
}

QHash<QString, qint64> leeImportes(Database& empresa, const Periodo& periodo,
                                   const QString& clase) {
  QHash<QString, qint64> importes;
  const auto filas = leeTablaOficial(empresa, kTabla, deTabla(periodo, clase));
  for (; filas && !filas->Eof(); filas->MoveNext())
    importes.insert(filas->Fields(QStringLiteral("Casilla")).display(),
                    centimosDe(filas->Fields(QStringLiteral("Importe")).number()));
  return importes;
}

bool esTipo(const CampoFijo& campo) {
  constexpr int kCifrasDeTipo = 5;
  return campo.longitud == kCifrasDeTipo;
}

}  // namespace

QString diseno303(const Periodo& periodo) {
  if (periodo.ejercicio < 2024) return QStringLiteral("2024A");
  if (periodo.ejercicio > 2025) return QStringLiteral("2026");
  if (periodo.ejercicio == 2025) return QStringLiteral("2025");
  return periodo.ultimoMes() < 9 ? QStringLiteral("2024A") : QStringLiteral("2024B");
}

Hoja303::Hoja303(Database& empresa, const Periodo& periodo)
    : periodo_(periodo), diseno_(kTabla303, diseno303(periodo)) {
  lineas_ = leeRegistros(empresa, {periodo.desde(), periodo.hasta(), false});
  ponCasillas();
  reparte();
  ponTipos();
  leePendiente(empresa);
  leeAMano(empresa);
}

void Hoja303::ponCasillas() {
  const auto pon = [&](const DisenoFijo& diseno, const QString& pagina) {
    for (const CampoFijo& campo : diseno.campos(pagina)) {
      if (campo.casilla.isEmpty()) continue;
      Casilla303 casilla;
      casilla.numero = campo.casilla;
      casilla.titulo = campo.nombre;
      casilla.pagina = pagina;
      casilla.formula = campo.formula;
      casilla.porcentaje = esTipo(campo);
      casilla.fija = !campo.fijo.isEmpty();
      casilla.sinSigno = campo.tipo == TipoFijo::Numero;
      if (casilla.fija) casilla.calculado = campo.fijo.toLongLong();
      casillas_.push_back(casilla);
    }
  };
  pon(diseno_, QStringLiteral("01"));
  pon(diseno_, QStringLiteral("03"));
  if (!periodo_.esUltimo()) return;
  // The page of the volume is the same in all years.
  pon(DisenoFijo(kTabla303, QStringLiteral("2024B")), kVolumen);
}

Casilla303* Hoja303::busca(const QString& numero) {
  const auto it = std::ranges::find(casillas_, numero, &Casilla303::numero);
  return it == casillas_.end() ? nullptr : &*it;
}

const Casilla303* Hoja303::casilla(const QString& numero) const {
  const auto it = std::ranges::find(casillas_, numero, &Casilla303::numero);
  return it == casillas_.end() ? nullptr : &*it;
}

void Hoja303::reparte() {
  std::map<std::string, Casilla303*, std::less<>> porNumero;
  for (Casilla303& c : casillas_) porNumero[c.numero.toStdString()] = &c;
  // The rates that share a casilla, with the base of each.
  std::map<std::string_view, std::map<int, qint64>> mezclas;
  for (size_t i = 0; i < lineas_.size(); ++i) {
    bool alguna = false;
    for (const Aportacion& a : aportaciones(lineas_[i], periodo_)) {
      const auto it = porNumero.find(a.casilla);
      if (it == porNumero.end()) continue;
      Casilla303* const c = it->second;
      c->calculado += a.importe;
      if (c->lineas.empty() || c->lineas.back() != int(i)) c->lineas.push_back(int(i));
      if (!a.casillaTipo.empty()) mezclas[a.casillaTipo][a.tipo] += a.importe;
      alguna = true;
    }
    if (!alguna && deberiaAportar(lineas_[i])) sinCasilla_.push_back(int(i));
  }
  for (const auto& [numero, tipos] : mezclas) {
    const auto it = porNumero.find(numero);
    if (it == porNumero.end() || it->second->fija) continue;
    Casilla303& c = *it->second;
    qint64 mayor = -1;
    for (const auto& [tipo, base] : tipos) {
      if (base <= mayor) continue;
      mayor = base;
      c.calculado = tipo;
    }
    if (tipos.size() > 1)
      avisos_ +=
          QStringLiteral("En la casilla %1 hay más de un tipo: se pone el de mayor base, el %2 %")
              .arg(c.numero, textoDeCentimos(c.calculado));
  }
}

void Hoja303::ponTipos() {
  for (Casilla303& c : casillas_)
    if (c.porcentaje && !c.fija && c.calculado == 0 && c.numero != kEstado)
      c.calculado = tipoPorDefecto(c.numero, periodo_);
  if (Casilla303* const estado = busca(kEstado)) estado->calculado = 10000;
}

void Hoja303::leeAMano(Database& empresa) {
  const auto importes = leeImportes(empresa, periodo_, kAMano);
  for (auto it = importes.cbegin(); it != importes.cend(); ++it)
    if (Casilla303* const c = busca(it.key()); c && c->editable()) c->aMano = *it;
}

void Hoja303::leePendiente(Database& empresa) {
  const Periodo antes = periodo_.anterior();
  if (antes.codigo.isEmpty()) {
    avisoPendiente_ = QStringLiteral(
        "Lo pendiente de compensar del ejercicio anterior (casilla 110) se escribe a mano");
    return;
  }
  const auto importes = leeImportes(empresa, antes, kPresentado);
  if (importes.isEmpty()) {
    avisoPendiente_ = QStringLiteral("El %1 no consta presentado: la casilla 110 se propone a cero")
                          .arg(antes.codigo);
    return;
  }
  pendiente_ = importes.value(kACompensar);
  if (Casilla303* const c = busca(kPendientes)) c->calculado = pendiente_;
}

// As much of what is pending as the period owes.
qint64 Hoja303::aplicable() const {
  qint64 debido = 0;
  for (const char* numero : {"66", "77", "68", "108"}) debido += valor(QLatin1String(numero));
  return std::clamp<qint64>(debido, 0, std::max<qint64>(0, valor(kPendientes)));
}

qint64 Hoja303::valor(const QString& numero) const {
  const Casilla303* const c = casilla(numero);
  if (!c) return 0;
  if (c->aMano) return *c->aMano;
  if (!c->formula.isEmpty()) return evalua(c->formula);
  return numero == kAplicadas ? aplicable() : c->calculado;
}

// Sums and differences of casillas, or one by a rate: "27-45", "64*65/100".
qint64 Hoja303::evalua(const QString& formula) const {
  if (const qsizetype por = formula.indexOf(u'*'); por > 0) {
    const QString tipo = formula.mid(por + 1).section(u'/', 0, 0);
    return std::llround(double(valor(formula.left(por))) * double(valor(tipo)) / 10000);
  }
  qint64 total = 0;
  qsizetype desde = 0;
  for (qsizetype i = 1; i <= formula.size(); ++i) {
    if (i < formula.size() && formula[i] != u'+' && formula[i] != u'-') continue;
    const bool resta = desde > 0 && formula[desde - 1] == u'-';
    const qint64 sumando = valor(formula.mid(desde, i - desde));
    total += resta ? 0 - sumando : sumando;
    desde = i + 1;
  }
  return total;
}

bool Hoja303::sinActividad() const {
  return std::ranges::all_of(casillas_, [&](const Casilla303& c) {
    return c.porcentaje || (c.lineas.empty() && !c.aMano);
  });
}

void Hoja303::escribe(Database& empresa, const QString& numero, std::optional<qint64> importe) {
  Casilla303* const c = busca(numero);
  if (!c || !c->editable())
    throw ErrorEjecucion(err::kLlamadaNoValida,
                         QStringLiteral("La casilla %1 se calcula sola").arg(numero));
  if (importe && *importe < 0 && c->sinSigno)
    throw ErrorEjecucion(err::kLlamadaNoValida,
                         QStringLiteral("La casilla %1 no puede ser negativa").arg(numero));
  if (importe == c->aMano) return;
  aseguraTablaOficial(empresa, kTabla);
  const auto filas = empresa.OpenRecordset(deTabla(periodo_, kAMano) +
                                           QStringLiteral(" and Casilla='%1'").arg(numero));
  if (!importe) {
    if (!filas->Eof()) filas->Delete();
  } else {
    if (filas->Eof()) {
      filas->AddNew();
    } else {
      filas->Edit();
    }
    completa(*filas, [&] {
      anadeFila(*filas, periodo_, numero, kAMano);
      filas->Fields(QStringLiteral("Importe")) = double(*importe) / 100;
    });
  }
  c->aMano = importe;
}

QString Hoja303::tipoPropuesto(bool devolucion) const {
  const qint64 total = resultado();
  if (total > 0) return QStringLiteral("I");
  if (total == 0) return QStringLiteral("N");
  return devolucion ? QStringLiteral("D") : QStringLiteral("C");
}

void Hoja303::presenta(Database& empresa, const QString& tipo) const {
  aseguraTablaOficial(empresa, kTabla);
  const auto filas = empresa.OpenRecordset(deTabla(periodo_, kPresentado));
  for (; !filas->Eof(); filas->MoveNext()) filas->Delete();
  const auto anade = [&](const QString& casilla, qint64 centimos) {
    filas->AddNew();
    completa(*filas, [&] {
      anadeFila(*filas, periodo_, casilla, kPresentado);
      filas->Fields(QStringLiteral("Importe")) = double(centimos) / 100;
    });
  };
  for (const Casilla303& c : casillas_)
    if (!c.porcentaje && valor(c.numero) != 0) anade(c.numero, valor(c.numero));
  const qint64 negativo = tipo == QLatin1String("C") ? std::max<qint64>(0, 0 - resultado()) : 0;
  anade(kACompensar, valor(QStringLiteral("87")) + negativo);
}

QStringList Hoja303::avisos() const {
  QStringList todos = avisos_;
  const Casilla303* const pendientes = casilla(kPendientes);
  if (pendientes && !pendientes->aMano && !avisoPendiente_.isEmpty()) todos += avisoPendiente_;
  if (!conDiseno()) todos += QStringLiteral("No hay diseño de fichero para este ejercicio");
  if (periodo_.ejercicio > 2026)
    todos += QStringLiteral("El diseño es el de 2026: compruebe que sigue en vigor");
  if (!sinCasilla_.empty())
    todos += QStringLiteral("Facturas con cuota que no entran en ninguna casilla: %1")
                 .arg(sinCasilla_.size());
  const TiposPorFechas tipos;
  qsizetype dudosas = 0, deCaja = 0;
  for (const LineaRegistro& l : lineas_) {
    deCaja += l.clave == QLatin1String("07");
    const bool rectifica = l.tipoFactura.startsWith(u'R') || l.negativa();
    if (!rectifica && !l.autorrepercusion &&
        !tipos.aviso(l.porcenIVA, l.recargo == 0 ? 0 : l.porcenRE, l.fecha).isEmpty())
      ++dudosas;
  }
  if (dudosas > 0)
    todos += QStringLiteral("Facturas con un tipo que no rige en su fecha: %1").arg(dudosas);
  if (deCaja > 0)
    todos += QStringLiteral("Facturas de criterio de caja, cuyo cobro o pago se escribe a mano: %1")
                 .arg(deCaja);
  for (const Casilla303& c : casillas_)
    if (c.sinSigno && valor(c.numero) < 0)
      todos += QStringLiteral("La casilla %1 sale negativa").arg(c.numero);
  return todos;
}
