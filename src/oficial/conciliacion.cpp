#include "oficial/conciliacion.h"

#include <algorithm>
#include <QHash>
#include <QSet>
#include <unordered_map>

#include "common/comillas.h"
#include "common/errorejecucion.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"
#include "engine/store.h"
#include "journal/apunte.h"
#include "oficial/registrofijo.h"
#include "oficial/tablafija.h"
#include "oficial/tablasoficiales.h"

namespace {

const QString kMovimientos = QStringLiteral("MovimientosBanco");
const QString kCuentas = QStringLiteral("CuentasBanco");
const QString kExtractos = QStringLiteral("ExtractosBanco");
const QString kReglas = QStringLiteral("ReglasBanco");
constexpr int kLargoDeConcepto = 255;

[[noreturn]] void rehusa(const QString& texto) {
  throw ErrorEjecucion(err::kLlamadaNoValida, texto);
}

QString diaDe(const QDate& fecha) {
  return fecha.toString(QStringLiteral("dd/MM/yyyy"));
}

// Runs a change that stands as a whole or not at all.
template <class Cambio>
void deUnaVez(DBEngine& motor, Cambio&& cambio) {
  DBEngine::Whole entero(motor);
  cambio();
  entero.commit();
}

Variant texto(const QString& valor) {
  return valor.isEmpty() ? Variant() : Variant(valor);
}

// Everything by which a movement is told from others.
QString huella(const QString& ccc, const MovimientoBanco& m) {
  return ccc + u'|' + m.senas() + u'|' + QString::number(m.ordinal);
}

MovimientoGuardado movimientoDe(const RowReader& r) {
  MovimientoGuardado m;
  m.numero = static_cast<int>(r.number(0));
  m.operacion = r.value(2).date();
  m.valor = r.value(3).date();
  m.comun = r.text(4);
  m.propio = r.text(5);
  m.centimos = centimosDe(r.number(6));
  m.documento = r.text(7);
  m.referencia1 = r.text(8);
  m.referencia2 = r.text(9);
  m.ordinal = static_cast<int>(r.number(10));
  m.concepto = r.text(11);
  m.apunte = m.guardado = r.isNull(12) ? kSinApunte : static_cast<int>(r.number(12));
  return m;
}

const QString kColumnas = QStringLiteral(
    "Numero, Ccc, Operacion, Valor, Comun, Propio, Importe, Documento, Referencia1, Referencia2, "
    "Ordinal, Concepto, Apunte");

void leeMovimientos(Database& empresa, Conciliacion& c) {
  if (!tieneTablaOficial(empresa, kMovimientos)) return;
  RowReader ano(empresa, QStringLiteral("Select Año from Empresa"));
  const int suyo = ano.next() ? static_cast<int>(ano.number(0)) : 0;
  for (RowReader r(empresa, QStringLiteral("Select %1 from %2 where Ccc=%3")
                                .arg(kColumnas, kMovimientos, entreComillas(c.ccc)));
       r.next();) {
    c.movimientos.push_back(movimientoDe(r));
    c.movimientos.back().deOtroAno = c.movimientos.back().operacion.year() != suyo;
  }
  std::ranges::stable_sort(c.movimientos, {}, &MovimientoGuardado::operacion);
}

void leeApuntes(Database& empresa, Conciliacion& c) {
  if (c.subcuenta.isEmpty()) return;
  for (RowReader r(empresa, QStringLiteral("Select NLinea, NAsiento, Fecha, Descripcion, Importe, "
                                           "Punteo from Diario where Subcuenta=") +
                                entreComillas(c.subcuenta));
       r.next();) {
    if (r.isNull(2)) continue;
    c.apuntes.push_back({static_cast<int>(r.number(0)), static_cast<int>(r.number(1)),
                         r.value(2).date(), r.text(3), centimosDe(r.number(4)), r.text(5), 0});
  }
  std::ranges::stable_sort(c.apuntes, {}, &ApunteBanco::fecha);
}

void graba(Recordset& filas, const QString& ccc, const MovimientoBanco& m, int numero) {
  const std::pair<const char*, Variant> valores[] = {
      {"Numero", numero},
      {"Ccc", ccc},
      {"Operacion", m.operacion},
      {"Valor", m.valor},
      {"Comun", m.comun},
      {"Propio", m.propio},
      {"Importe", double(m.centimos) / 100},
      {"Documento", texto(m.documento)},
      {"Referencia1", texto(m.referencia1)},
      {"Referencia2", texto(m.referencia2)},
      {"Ordinal", m.ordinal},
      {"Concepto", texto(m.concepto.left(kLargoDeConcepto))}};
  filas.AddNew();
  completa(filas, [&] {
    for (const auto& [campo, valor] : valores) filas.Fields(QLatin1String(campo)) = valor;
  });
}

QString deCuenta(const QString& tabla, const QString& ccc) {
  return QStringLiteral("Select * from %1 where Ccc=%2").arg(tabla, entreComillas(ccc));
}

struct Extracto {
  QDate desde, hasta;
  qint64 inicial = 0, final = 0;
};
// Those of an account, by their last day.
std::vector<Extracto> extractosDe(Database& empresa, const QString& ccc) {
  std::vector<Extracto> extractos;
  const auto filas = leeTablaOficial(empresa, kExtractos, deCuenta(kExtractos, ccc));
  for (; filas && !filas->Eof(); filas->MoveNext())
    extractos.push_back({filas->Fields(QStringLiteral("Desde")).Value().date(),
                         filas->Fields(QStringLiteral("Hasta")).Value().date(),
                         centimosDe(filas->Fields(QStringLiteral("Inicial")).number()),
                         centimosDe(filas->Fields(QStringLiteral("Final")).number())});
  std::ranges::stable_sort(extractos, {}, &Extracto::hasta);
  return extractos;
}

void grabaExtracto(Database& empresa, const CuentaBanco& cuenta, QStringList& avisos) {
  const Extracto* anterior = nullptr;
  const std::vector<Extracto> extractos = extractosDe(empresa, cuenta.ccc);
  for (const Extracto& e : extractos) {
    if (e.desde == cuenta.desde && e.hasta == cuenta.hasta && e.inicial == cuenta.inicial &&
        e.final == cuenta.final)
      return;
    if (e.hasta < cuenta.desde) anterior = &e;
  }
  if (anterior && anterior->final != cuenta.inicial)
    avisos += QStringLiteral("Cuenta %1: empieza con %2 y el extracto anterior acabó el %3 con %4")
                  .arg(cuenta.ccc, textoDeCentimos(cuenta.inicial), diaDe(anterior->hasta),
                       textoDeCentimos(anterior->final));
  const auto filas = empresa.OpenRecordset(kExtractos);
  filas->AddNew();
  completa(*filas, [&] {
    filas->Fields(QStringLiteral("Ccc")) = cuenta.ccc;
    filas->Fields(QStringLiteral("Desde")) = cuenta.desde;
    filas->Fields(QStringLiteral("Hasta")) = cuenta.hasta;
    filas->Fields(QStringLiteral("Inicial")) = double(cuenta.inicial) / 100;
    filas->Fields(QStringLiteral("Final")) = double(cuenta.final) / 100;
  });
}

void apuntaCuenta(Database& empresa, const QString& ccc) {
  const auto filas = empresa.OpenRecordset(deCuenta(kCuentas, ccc));
  if (!filas->Eof()) return;
  filas->AddNew();
  completa(*filas, [&] { filas->Fields(QStringLiteral("Ccc")) = ccc; });
}

void compruebaSubcuenta(Database& empresa, const QString& subcuenta) {
  const auto filas =
      empresa.OpenRecordset(QStringLiteral("Select Subcuenta from Subcuentas where Subcuenta=") +
                            entreComillas(subcuenta));
  if (filas->Eof()) rehusa(QStringLiteral("no existe la subcuenta %1").arg(subcuenta));
}

std::unique_ptr<Recordset> filaDe(Database& empresa, const MovimientoGuardado& m) {
  auto fila = empresa.OpenRecordset(
      QStringLiteral("Select * from %1 where Numero=%2").arg(kMovimientos).arg(m.numero));
  if (fila->Eof())
    rehusa(QStringLiteral("el movimiento del %1 ya no está").arg(diaDe(m.operacion)));
  return fila;
}

void apuntaEn(Database& empresa, const MovimientoGuardado& m, int linea, const QDate& fecha) {
  const auto fila = filaDe(empresa, m);
  const FieldRef suyo = fila->Fields(QStringLiteral("Apunte"));
  if ((suyo.isNull() ? kSinApunte : suyo.toLong()) != m.guardado)
    rehusa(QStringLiteral("el movimiento del %1 ya se ha conciliado").arg(diaDe(m.operacion)));
  fila->Edit();
  completa(*fila, [&] {
    fila->Fields(QStringLiteral("Apunte")) = linea == kSinApunte ? Variant() : Variant(linea);
    fila->Fields(QStringLiteral("Conciliado")) = fecha.isValid() ? Variant(fecha) : Variant();
  });
}

// The lines that movements were accepted with, whoever did it.
QSet<int> lineasProbadas(Database& empresa) {
  QSet<int> lineas;
  for (RowReader r(empresa,
                   QStringLiteral("Select Apunte from MovimientosBanco where Apunte is not Null"));
       r.next();)
    lineas.insert(static_cast<int>(r.number(0)));
  return lineas;
}

std::unique_ptr<Recordset> lineaDeDiario(Database& empresa, int linea) {
  return empresa.OpenRecordset(QStringLiteral("Select * from Diario where NLinea=%1").arg(linea));
}

[[noreturn]] void rehusaCambiada(const ApunteBanco& a) {
  rehusa(QStringLiteral("la partida del asiento %1 ha cambiado").arg(a.asiento));
}

void marca(Database& empresa, const Conciliacion& c, const ApunteBanco& a, const QString& letra) {
  const auto linea = lineaDeDiario(empresa, a.linea);
  if (linea->Eof() || linea->Fields(QStringLiteral("Subcuenta")).display() != c.subcuenta ||
      centimosDe(linea->Fields(QStringLiteral("Importe")).number()) != a.centimos)
    rehusaCambiada(a);
  linea->Edit();
  completa(*linea, [&] { linea->Fields(QStringLiteral("Punteo")) = texto(letra); });
}

// --- pairing ------------------------------------------------------------------------------------

// The pending ones of an amount, in order of their days.
struct DeUnImporte {
  std::vector<int> porOperacion, porValor;  // movements
  std::vector<int> apuntes;
};

class Emparejador {
 public:
  explicit Emparejador(const Conciliacion& c)
      : c_(c), libreM_(c.movimientos.size()), libreA_(c.apuntes.size()) {
    reparte();
  }
  std::vector<Pareja> hasta(int dias) {
    for (auto& [importe, grupo] : grupos_)
      for (int d = 0; d <= dias; ++d) {
        pasada(grupo.porOperacion, grupo.apuntes, &MovimientoBanco::operacion, d);
        pasada(grupo.porValor, grupo.apuntes, &MovimientoBanco::valor, d);
        limpia(grupo);
        if (grupo.porOperacion.empty() || grupo.apuntes.empty()) break;
      }
    std::ranges::sort(parejas_, {}, &Pareja::movimiento);
    return std::move(parejas_);
  }

 private:
  void reparte() {
    for (size_t i = 0; i < c_.movimientos.size(); ++i)
      if ((libreM_[i] = c_.movimientos[i].pendiente())) {
        DeUnImporte& grupo = grupos_[c_.movimientos[i].centimos];
        grupo.porOperacion.push_back(static_cast<int>(i));
        grupo.porValor.push_back(static_cast<int>(i));
      }
    for (size_t i = 0; i < c_.apuntes.size(); ++i) {
      libreA_[i] = c_.apuntes[i].movimiento == 0;
      const auto grupo = grupos_.find(c_.apuntes[i].centimos);
      if (libreA_[i] && grupo != grupos_.end())
        grupo->second.apuntes.push_back(static_cast<int>(i));
    }
    for (auto& [importe, grupo] : grupos_)
      std::ranges::stable_sort(grupo.porValor, {}, [&](int m) { return c_.movimientos[m].valor; });
  }
  // Both lists go by date, so one walk finds all that lie so near; what is nearer was taken before.
  void pasada(const std::vector<int>& movimientos, const std::vector<int>& apuntes,
              QDate MovimientoBanco::*dia, int dias) {
    for (size_t i = 0, j = 0; i < movimientos.size() && j < apuntes.size();) {
      const int m = movimientos[i], a = apuntes[j];
      const qint64 lejos = (c_.movimientos[m].*dia).daysTo(c_.apuntes[a].fecha);
      if (!libreM_[m] || lejos > dias) {
        ++i;
      } else if (!libreA_[a] || lejos < -dias) {
        ++j;
      } else {
        parejas_.push_back({m, a});
        libreM_[m] = libreA_[a] = false;
        ++i, ++j;
      }
    }
  }
  void limpia(DeUnImporte& grupo) const {
    std::erase_if(grupo.porOperacion, [&](int m) { return !libreM_[m]; });
    std::erase_if(grupo.porValor, [&](int m) { return !libreM_[m]; });
    std::erase_if(grupo.apuntes, [&](int a) { return !libreA_[a]; });
  }

  const Conciliacion& c_;
  std::vector<char> libreM_, libreA_;
  std::unordered_map<qint64, DeUnImporte> grupos_;
  std::vector<Pareja> parejas_;
};

QStringList palabrasDe(const QString& texto) {
  QString limpio = llanoOficial(texto);
  for (QChar& c : limpio)
    if (!c.isLetterOrNumber()) c = u' ';
  return limpio.split(u' ', Qt::SkipEmptyParts);
}

std::unique_ptr<Recordset> filasDeRegla(Database& empresa, const QString& palabras) {
  return empresa.OpenRecordset(QStringLiteral("Select * from ReglasBanco where Palabras=") +
                               entreComillas(palabras));
}

int asientaUno(Recordset& diario, Recordset& contadores, const MovimientoGuardado& m,
               const QStringList& subcuentas, const QString& letra) {
  const int asiento = tomaAsiento(contadores);
  const double importe = double(m.centimos) / 100;
  Apunte apunte;
  apunte.NAsiento = asiento;
  apunte.Fecha = m.operacion;
  apunte.Descripcion = texto(m.concepto.left(kLargoDeDescripcion));
  apunte.Subcuenta = subcuentas[0];
  apunte.DH = importe > 0 ? QStringLiteral("D") : QStringLiteral("H");
  apunte.Importe = importe;
  apunte.Punteo = texto(letra);
  const int linea = grabaApunte(diario, contadores, apunte);
  apunte.Subcuenta = subcuentas[1];
  apunte.DH = importe > 0 ? QStringLiteral("H") : QStringLiteral("D");
  apunte.Importe = -importe;
  apunte.Punteo = Variant();
  grabaApunte(diario, contadores, apunte);
  return linea;
}

}  // namespace

Importacion importaNorma43(DBEngine& motor, Database& empresa, const LecturaNorma43& leido) {
  if (!leido.errores.isEmpty()) rehusa(leido.errores.first().entero());
  Importacion hecha;
  for (const AvisoDeLinea& aviso : leido.avisos) hecha.avisos += aviso.entero();
  deUnaVez(motor, [&] {
    for (const QString& tabla : {kMovimientos, kCuentas, kExtractos})
      aseguraTablaOficial(empresa, tabla);
    QSet<QString> guardados;
    int numero = 0;
    for (RowReader r(empresa, QStringLiteral("Select %1 from %2").arg(kColumnas, kMovimientos));
         r.next();) {
      const MovimientoGuardado m = movimientoDe(r);
      guardados.insert(huella(r.text(1), m));
      numero = std::max(numero, m.numero);
    }
    const auto filas = empresa.OpenRecordset(kMovimientos);
    for (const CuentaBanco& cuenta : leido.cuentas) {
      apuntaCuenta(empresa, cuenta.ccc);
      grabaExtracto(empresa, cuenta, hecha.avisos);
      for (const MovimientoBanco& m : cuenta.movimientos) {
        const QString suya = huella(cuenta.ccc, m);
        if (guardados.contains(suya)) {
          ++hecha.repetidos;
          continue;
        }
        guardados.insert(suya);
        graba(*filas, cuenta.ccc, m, ++numero);
        ++hecha.nuevos;
      }
    }
  });
  return hecha;
}

QList<QPair<QString, QString>> cuentasDeBanco(Database& empresa) {
  QList<QPair<QString, QString>> cuentas;
  const auto filas =
      leeTablaOficial(empresa, kCuentas, QStringLiteral("Select * from CuentasBanco order by Ccc"));
  for (; filas && !filas->Eof(); filas->MoveNext())
    cuentas.append({filas->Fields(QStringLiteral("Ccc")).display(),
                    filas->Fields(QStringLiteral("Subcuenta")).display()});
  return cuentas;
}

void ponSubcuentaDeBanco(DBEngine& motor, Database& empresa, const QString& ccc,
                         const QString& subcuenta) {
  compruebaSubcuenta(empresa, subcuenta);
  for (const auto& [otra, suya] : cuentasDeBanco(empresa))
    if (otra != ccc && suya == subcuenta)
      rehusa(QStringLiteral("la subcuenta %1 es de la cuenta %2").arg(subcuenta, otra));
  deUnaVez(motor, [&] {
    aseguraTablaOficial(empresa, kCuentas);
    apuntaCuenta(empresa, ccc);
    const auto filas = empresa.OpenRecordset(deCuenta(kCuentas, ccc));
    filas->Edit();
    completa(*filas, [&] { filas->Fields(QStringLiteral("Subcuenta")) = subcuenta; });
  });
}

Conciliacion leeConciliacion(Database& empresa, const QString& ccc) {
  const auto estado = empresa.hold();
  Conciliacion c;
  c.ccc = ccc;
  for (const auto& [cuenta, subcuenta] : cuentasDeBanco(empresa))
    if (cuenta == ccc) c.subcuenta = subcuenta;
  if (const std::vector<Extracto> extractos = extractosDe(empresa, ccc); !extractos.empty())
    c.periodo = {std::ranges::min(extractos, {}, &Extracto::desde).desde, extractos.back().hasta,
                 extractos.back().final};
  leeMovimientos(empresa, c);
  leeApuntes(empresa, c);
  QHash<int, ApunteBanco*> porLinea;
  for (ApunteBanco& a : c.apuntes) porLinea.insert(a.linea, &a);
  for (MovimientoGuardado& m : c.movimientos) {
    ApunteBanco* const suyo = porLinea.value(m.apunte);
    if (suyo && suyo->centimos == m.centimos)
      suyo->movimiento = m.numero;
    else
      m.apunte = kSinApunte;
  }
  return c;
}

std::vector<Pareja> empareja(const Conciliacion& conciliacion, int dias) {
  return Emparejador(conciliacion).hasta(dias);
}

void aceptaParejas(DBEngine& motor, Database& empresa, Conciliacion& c,
                   const std::vector<Pareja>& parejas, const Punteo& punteo) {
  deUnaVez(motor, [&] {
    const QSet<int> probadas = lineasProbadas(empresa);
    for (const auto& [m, a] : parejas) {
      if (probadas.contains(c.apuntes[a].linea)) rehusaCambiada(c.apuntes[a]);
      marca(empresa, c, c.apuntes[a], punteo.marca);
      apuntaEn(empresa, c.movimientos[m], c.apuntes[a].linea, punteo.fecha);
    }
  });
  for (const auto& [m, a] : parejas) {
    c.movimientos[m].apunte = c.movimientos[m].guardado = c.apuntes[a].linea;
    c.apuntes[a].movimiento = c.movimientos[m].numero;
    c.apuntes[a].punteo = punteo.marca;
  }
}

void deshaceConciliacion(DBEngine& motor, Database& empresa, Conciliacion& c, int movimiento) {
  MovimientoGuardado& m = c.movimientos[movimiento];
  if (m.apunte == kSinApunte) return;
  const auto suyo = std::ranges::find(c.apuntes, m.apunte, &ApunteBanco::linea);
  deUnaVez(motor, [&] {
    marca(empresa, c, *suyo, {});
    apuntaEn(empresa, m, kSinApunte, {});
  });
  m.apunte = m.guardado = kSinApunte;
  suyo->movimiento = 0;
  suyo->punteo.clear();
}

void asientaMovimientos(DBEngine& motor, Database& empresa, const Conciliacion& c,
                        const std::vector<Contrapartida>& contrapartidas, const Punteo& punteo) {
  compruebaSubcuenta(empresa, c.subcuenta);
  deUnaVez(motor, [&] {
    const auto diario = empresa.OpenRecordset(QStringLiteral("Diario"), Opening::FirstRows);
    const auto contadores = empresa.OpenRecordset(QStringLiteral("Empresa"));
    for (const auto& [lugar, subcuenta] : contrapartidas) {
      const MovimientoGuardado& m = c.movimientos[lugar];
      compruebaSubcuenta(empresa, subcuenta);
      if (subcuenta == c.subcuenta) rehusa(QStringLiteral("la contrapartida es la del banco"));
      if (!m.pendiente())
        rehusa(QStringLiteral("el movimiento del %1 ya se ha conciliado").arg(diaDe(m.operacion)));
      if (m.deOtroAno)
        rehusa(QStringLiteral("el movimiento del %1 no es del año de la empresa")
                   .arg(diaDe(m.operacion)));
      const int linea = asientaUno(*diario, *contadores, m, {c.subcuenta, subcuenta}, punteo.marca);
      apuntaEn(empresa, m, linea, punteo.fecha);
    }
  });
}

ReglasBanco::ReglasBanco(Database& empresa) {
  const auto filas = leeTablaOficial(empresa, kReglas,
                                     QStringLiteral("Select * from ReglasBanco order by Palabras"));
  for (; filas && !filas->Eof(); filas->MoveNext())
    reglas_.push_back({filas->Fields(QStringLiteral("Palabras")).display(),
                       filas->Fields(QStringLiteral("Subcuenta")).display()});
  std::ranges::stable_sort(reglas_, std::greater(),
                           [](const ReglaBanco& regla) { return regla.palabras.size(); });
}

std::optional<ReglaBanco> ReglasBanco::para(const QString& concepto) const {
  const QStringList suyas = palabrasDe(concepto);
  const auto regla = std::ranges::find_if(reglas_, [&](const ReglaBanco& una) {
    return std::ranges::all_of(una.palabras.split(u' '),
                               [&](const QString& p) { return suyas.contains(p); });
  });
  return regla == reglas_.end() ? std::nullopt : std::optional(*regla);
}

void recuerdaRegla(DBEngine& motor, Database& empresa, const ReglaBanco& regla) {
  const QString palabras = palabrasDe(regla.palabras).join(u' ').left(kLargoDeRegla);
  if (palabras.isEmpty()) rehusa(QStringLiteral("la regla no tiene palabras"));
  compruebaSubcuenta(empresa, regla.subcuenta);
  deUnaVez(motor, [&] {
    aseguraTablaOficial(empresa, kReglas);
    const auto filas = filasDeRegla(empresa, palabras);
    filas->Eof() ? filas->AddNew() : filas->Edit();
    completa(*filas, [&] {
      filas->Fields(QStringLiteral("Palabras")) = palabras;
      filas->Fields(QStringLiteral("Subcuenta")) = regla.subcuenta;
    });
  });
}

void olvidaRegla(DBEngine& motor, Database& empresa, const QString& palabras) {
  deUnaVez(motor, [&] {
    const auto filas = filasDeRegla(empresa, palabras);
    if (!filas->Eof()) filas->Delete();
  });
}

QString palabrasDeConcepto(const QString& concepto) {
  constexpr int kPalabras = 3, kCorta = 2;
  QStringList elegidas;
  for (const QString& palabra : palabrasDe(concepto)) {
    const bool cifras = std::ranges::any_of(palabra, [](QChar c) { return c.isDigit(); });
    if (!cifras && palabra.size() > kCorta && elegidas.size() < kPalabras) elegidas += palabra;
  }
  return elegidas.join(u' ').left(kLargoDeRegla);
}

std::optional<CuadreBanco> cuadreDe(const Conciliacion& c) {
  if (!c.periodo) return std::nullopt;
  CuadreBanco cuadre;
  cuadre.banco = c.periodo->saldo;
  for (const MovimientoGuardado& m : c.movimientos)
    if (m.sinAsentar()) cuadre.soloBanco += m.centimos;
  for (const ApunteBanco& a : c.apuntes) {
    if (a.fecha > c.periodo->hasta) continue;
    cuadre.libros += a.centimos;
    if (a.movimiento == 0 && a.fecha >= c.periodo->desde) cuadre.soloLibros += a.centimos;
  }
  return cuadre;
}
