#include "oficial/revision.h"

#include <algorithm>
#include <map>
#include <optional>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <vector>

#include "engine/dbengine.h"
#include "engine/rowreader.h"
#include "engine/store.h"
#include "oficial/declarante.h"
#include "oficial/estados.h"
#include "oficial/identificadores.h"
#include "oficial/registrofijo.h"
#include "oficial/tablafija.h"

namespace {

struct FilaRevisada {
  QString codigo, tercero, factura;
  int asiento = 0;
  qint64 cuota = 0;  // IVA and recargo, signed as in the journal
  QStringList cuentas;
};

struct Plan {
  QString nombre, nif, pais;
  QString textos;  // where an account of the bank may be written, apart from each other
};

// A line with something wrong with itself.
struct LineaRara {
  int asiento = 0;
  QString subcuenta, fecha;
};

// All that the checks look at, read once.
struct Libros {
  Database& empresa;
  int ano;
  QString mascara;
  std::map<QString, Plan> plan;
  std::vector<FilaRevisada> registro;
  std::map<int, qint64> asientos;
  std::map<QString, qint64> saldos;
  QHash<QString, int> primeros;                       // an asiento of each subcuenta
  QHash<QString, QHash<QString, qint64>> porFactura;  // by register code and subcuenta
  std::vector<LineaRara> fueraDeAno;

  QString importe(qint64 centimos) const { return textoDeCentimos(centimos, mascara).trimmed(); }
  QString conNombre(const QString& subcuenta) const {
    const auto fila = plan.find(subcuenta);
    return fila == plan.end() ? subcuenta : subcuenta + u' ' + fila->second.nombre;
  }
};

void leePlan(Libros& l) {
  for (RowReader r(l.empresa, QStringLiteral("Select Subcuenta, Descripcion, Nif, Pais, Direccion, "
                                             "Gerente from Subcuentas"));
       r.next();)
    l.plan[r.text(0)] = {r.text(1), r.text(2), r.text(3),
                         QStringList{r.text(1), r.text(4), r.text(5)}.join(u'|')};
}

void leeRegistro(Libros& l) {
  for (RowReader r(l.empresa,
                   QStringLiteral("Select Codigo, CliPro, Factura, Asiento, IVA, Recargo, CtaIVA, "
                                  "CtaRE from RSIVA order by Codigo"));
       r.next();)
    l.registro.push_back({r.text(0),
                          r.text(1),
                          r.text(2),
                          static_cast<int>(r.number(3)),
                          centimosDe(r.number(4)) + centimosDe(r.number(5)),
                          {r.text(6), r.text(7)}});
}

void leeDiario(Libros& l) {
  QSet<QString> codigos;
  for (const FilaRevisada& f : l.registro) codigos.insert(f.codigo);
  for (RowReader r(l.empresa,
                   QStringLiteral("Select NAsiento, Subcuenta, Importe, Fecha, ApunteIVA "
                                  "from Diario"));
       r.next();) {
    const int asiento = static_cast<int>(r.number(0));
    const QString subcuenta = r.text(1), factura = r.text(4);
    const qint64 importe = centimosDe(r.number(2));
    l.asientos[asiento] += importe;
    l.saldos[subcuenta] += importe;
    if (!l.primeros.contains(subcuenta)) l.primeros.insert(subcuenta, asiento);
    if (codigos.contains(factura)) l.porFactura[factura][subcuenta] += importe;
    const QDate dia = r.isNull(3) ? QDate() : r.value(3).date();
    if (dia.isValid() && dia.year() == l.ano) continue;
    l.fueraDeAno.push_back(
        {asiento, subcuenta,
         dia.isValid() ? dia.toString(QStringLiteral("dd/MM/yyyy")) : QString()});
  }
}

// --- checks -------------------------------------------------------------------------------------

using Hallazgos = QList<Hallazgo>;

Hallazgo enSubcuenta(const QString& subcuenta, const QString& texto) {
  return {{}, texto, Sitio::Subcuenta, subcuenta, 0};
}
Hallazgo enExtracto(const QString& subcuenta, const QString& texto) {
  return {{}, texto, Sitio::Extracto, subcuenta, 0};
}
Hallazgo enDeclarante(const QString& texto) {
  return {{}, texto, Sitio::Declarante, {}, 0};
}
Hallazgo enAsiento(int asiento, const QString& texto) {
  return {{}, texto, Sitio::Asiento, {}, asiento};
}
// A row of the registers that no asiento bears stands by its code.
Hallazgo enFactura(const FilaRevisada& fila, const QString& texto) {
  return {
      {}, texto, fila.asiento != 0 ? Sitio::Factura : Sitio::Registro, fila.codigo, fila.asiento};
}

Hallazgos nifs(const Libros& l) {
  Hallazgos lista;
  for (const auto& [codigo, fila] : l.plan) {
    const Pais pais = paisDe(fila.pais);
    const QString nif = normalizaIdentificador(fila.nif);
    const Pais prefijo = paisDePrefijo(nif.left(2));
    const bool extranjero = (!pais.codigo.isEmpty() && !pais.esEspana()) ||
                            (!prefijo.codigo.isEmpty() && !prefijo.esEspana());
    const QString suyo = nif.startsWith(QLatin1String("ES")) ? nif.mid(2) : nif;
    if (compruebaNif(suyo) == Comprobacion::Malo && !extranjero)
      lista += enSubcuenta(
          codigo,
          QStringLiteral("%1: el NIF %2 no es correcto").arg(l.conNombre(codigo), fila.nif));
  }
  const QString declarante = Declarante(l.empresa)["Nif"];
  if (compruebaNif(declarante) == Comprobacion::Malo)
    lista +=
        enDeclarante(QStringLiteral("El NIF del declarante, %1, no es correcto").arg(declarante));
  return lista;
}

// The accounts that are written into a name or an address: an IBAN, or twenty figures.
QStringList cuentasEscritas(const QString& texto) {
  static const QRegularExpression cuenta(
      QStringLiteral("(?<![A-Z])ES ?\\d(?:[ ./-]?\\d){15,27}|"
                     "(?<!\\d)\\d(?:[ ./-]?\\d){19}(?![ ./-]?\\d)"),
      QRegularExpression::CaseInsensitiveOption);
  QStringList cuentas;
  for (auto it = cuenta.globalMatch(texto); it.hasNext();) cuentas += it.next().captured();
  return cuentas;
}

bool esCuentaMala(const QString& cuenta) {
  const bool conPais = cuenta.front().isLetter();
  return (conPais ? compruebaIBAN(cuenta) : compruebaCCC(cuenta)) == Comprobacion::Malo;
}

Hallazgos ibans(const Libros& l) {
  Hallazgos lista;
  for (const auto& [codigo, fila] : l.plan)
    for (const QString& cuenta : cuentasEscritas(fila.textos))
      if (esCuentaMala(cuenta))
        lista += enSubcuenta(
            codigo,
            QStringLiteral("%1: la cuenta %2 no es correcta").arg(l.conNombre(codigo), cuenta));
  const QString iban = Declarante(l.empresa)["Iban"];
  if (compruebaIBAN(iban) == Comprobacion::Malo)
    lista += enDeclarante(QStringLiteral("El IBAN del declarante, %1, no es correcto").arg(iban));
  return lista;
}

Hallazgos repetidas(const Libros& l) {
  std::map<std::pair<QString, QString>, std::vector<const FilaRevisada*>> porNumero;
  for (const FilaRevisada& f : l.registro)
    if (f.codigo.startsWith(u'S') && !f.factura.trimmed().isEmpty())
      porNumero[{f.tercero, normalizaIdentificador(f.factura)}].push_back(&f);
  Hallazgos lista;
  for (const auto& [clave, filas] : porNumero) {
    QSet<int> asientos;  // an invoice of several rates is several rows of one asiento
    for (const FilaRevisada* f : filas) {
      if (!asientos.isEmpty() && !asientos.contains(f->asiento))
        lista += enFactura(*f, QStringLiteral("La factura %1 de %2 está también en el asiento %3")
                                   .arg(f->factura, l.conNombre(f->tercero))
                                   .arg(filas.front()->asiento));
      asientos.insert(f->asiento);
    }
  }
  return lista;
}

Hallazgos huecos(const Libros& l) {
  QStringList facturas;
  QHash<QString, const FilaRevisada*> filas;
  for (const FilaRevisada& f : l.registro)
    if (f.codigo.startsWith(u'R') && f.tercero != f.cuentas[0]) {
      facturas += f.factura;
      filas.insert(f.factura, &f);
    }
  Hallazgos lista;
  for (const auto& [antes, falta] : huecosDeSerie(facturas, l.ano))
    lista += enFactura(*filas.value(antes),
                       QStringLiteral("Falta la factura %1, tras la %2").arg(falta, antes));
  return lista;
}

Hallazgos registroYDiario(const Libros& l) {
  Hallazgos lista;
  for (const FilaRevisada& f : l.registro) {
    const auto lineas = l.porFactura.value(f.codigo);
    qint64 suma = 0;
    for (const QString& cuenta : QSet<QString>(f.cuentas.begin(), f.cuentas.end()))
      suma += lineas.value(cuenta);
    if (suma != f.cuota)
      lista += enFactura(
          f, QStringLiteral("Registro %1, factura %2: la cuota es %3 y sus partidas suman %4")
                 .arg(f.codigo, f.factura, l.importe(f.cuota), l.importe(suma)));
  }
  return lista;
}

// The side on which an account's balance stands, by its longest prefix; null where any will do.
QChar ladoDe(const QString& subcuenta) {
  static const QHash<QString, QString> tabla = [] {
    QHash<QString, QString> lados;
    for (const QStringList& fila : leeTablaFija(QStringLiteral("signos.csv")))
      lados.insert(fila[0], fila[1]);
    return lados;
  }();
  for (qsizetype n = 3; n > 0; --n)
    if (const auto lado = tabla.constFind(subcuenta.left(n)); lado != tabla.constEnd())
      return lado->isEmpty() ? QChar() : lado->front();
  return {};
}

Hallazgos signos(const Libros& l) {
  Hallazgos lista;
  for (const auto& [subcuenta, saldo] : l.saldos) {
    const QChar lado = ladoDe(subcuenta);
    const bool alReves = (lado == u'D' && saldo < 0) || (lado == u'H' && saldo > 0);
    if (alReves)
      lista += enExtracto(
          subcuenta, QStringLiteral("%1: saldo %2 de %3")
                         .arg(l.conNombre(subcuenta),
                              saldo < 0 ? QStringLiteral("acreedor") : QStringLiteral("deudor"),
                              l.importe(std::llabs(saldo))));
  }
  return lista;
}

Hallazgos sinNombre(const Libros& l) {
  Hallazgos lista;
  for (const auto& [subcuenta, saldo] : l.saldos) {
    const auto fila = l.plan.find(subcuenta);
    if (subcuenta.isEmpty())
      lista += enAsiento(l.primeros.value(subcuenta), QStringLiteral("Una partida no tiene "
                                                                     "subcuenta"));
    else if (fila == l.plan.end())
      lista += enExtracto(
          subcuenta,
          QStringLiteral("Hay partidas de la subcuenta «%1», que no existe").arg(subcuenta));
    else if (fila->second.nombre.trimmed().isEmpty())
      lista += enSubcuenta(
          subcuenta,
          QStringLiteral("Hay partidas de la subcuenta «%1», que no tiene nombre").arg(subcuenta));
  }
  return lista;
}

Hallazgos descuadres(const Libros& l) {
  Hallazgos lista;
  for (const auto& [asiento, resto] : l.asientos)
    if (resto != 0)
      lista += enAsiento(asiento, QStringLiteral("El asiento %1 no cuadra: diferencia de %2")
                                      .arg(asiento)
                                      .arg(l.importe(resto)));
  return lista;
}

Hallazgos fechas(const Libros& l) {
  Hallazgos lista;
  for (const LineaRara& linea : l.fueraDeAno)
    lista += enAsiento(
        linea.asiento,
        linea.fecha.isEmpty()
            ? QStringLiteral("Una partida de %1 no tiene fecha").arg(linea.subcuenta)
            : QStringLiteral("Una partida de %1 es del %2").arg(linea.subcuenta, linea.fecha));
  return lista;
}

Hallazgos sinLinea(const Libros& l) {
  Saldos saldos;
  for (const auto& [subcuenta, saldo] : l.saldos) saldos.insert(subcuenta, double(saldo) / 100);
  std::map<QString, double> sueltas;
  for (const Estado estado : {Estado::Balance, Estado::Resultados}) {
    const EstadoOficial suyo = calculaEstado(estado, saldos);
    for (auto it = suyo.sinLinea.begin(); it != suyo.sinLinea.end(); ++it)
      sueltas[it.key()] = it.value();
  }
  Hallazgos lista;
  for (const auto& [subcuenta, saldo] : sueltas)
    lista += enExtracto(subcuenta,
                        QStringLiteral("%1: no está en ninguna línea del balance ni de resultados")
                            .arg(l.conNombre(subcuenta)));
  return lista;
}

constexpr struct {
  const char* titulo;
  Hallazgos (*control)(const Libros&);
} kControles[] = {
    {"NIF", nifs},
    {"IBAN", ibans},
    {"Facturas repetidas", repetidas},
    {"Huecos en la serie", huecos},
    {"Registro y diario", registroYDiario},
    {"Saldos al revés", signos},
    {"Subcuentas sin nombre", sinNombre},
    {"Asientos descuadrados", descuadres},
    {"Fechas de otro año", fechas},
    {"Sin línea en los estados", sinLinea},
};

// An invoice's number within its text: what stands before, the figures, what stands after.
struct NumeroDeSerie {
  QString antes, despues;
  qint64 numero = 0;
  int cifras = 0;
};

bool esAno(const QString& cifras, int ano) {
  return cifras == QString::number(ano) || cifras == QString::number(ano % 100);
}

std::optional<NumeroDeSerie> numeroDe(const QString& factura, int ano) {
  static const QRegularExpression grupo(QStringLiteral("[0-9]+"));
  std::vector<QRegularExpressionMatch> grupos;
  for (auto it = grupo.globalMatch(factura); it.hasNext();) grupos.push_back(it.next());
  if (grupos.empty()) return std::nullopt;
  const bool delAno = grupos.size() > 1 && esAno(grupos.back().captured(), ano) &&
                      !esAno(grupos[grupos.size() - 2].captured(), ano);
  const auto& cual = delAno ? grupos[grupos.size() - 2] : grupos.back();
  constexpr int kMasLargo = 15;
  if (cual.capturedLength() > kMasLargo) return std::nullopt;
  return NumeroDeSerie{factura.left(cual.capturedStart()), factura.mid(cual.capturedEnd()),
                       cual.captured().toLongLong(), static_cast<int>(cual.capturedLength())};
}

}  // namespace

QStringList controlesDeRevision() {
  QStringList titulos;
  for (const auto& uno : kControles) titulos += QString::fromUtf8(uno.titulo);
  return titulos;
}

QList<Hallazgo> revisa(Database& empresa, int ano, const QString& mascara) {
  Libros libros{empresa, ano, mascara, {}, {}, {}, {}, {}, {}, {}};
  {
    const auto estado = empresa.hold();
    leePlan(libros);
    leeRegistro(libros);
    leeDiario(libros);
  }
  QList<Hallazgo> lista;
  for (const auto& uno : kControles)
    for (Hallazgo hallazgo : uno.control(libros)) {
      hallazgo.control = QString::fromUtf8(uno.titulo);
      lista += hallazgo;
    }
  return lista;
}

QList<HuecoDeSerie> huecosDeSerie(const QStringList& facturas, int ano) {
  struct Una {
    int cifras;
    QString factura;
  };
  std::map<std::pair<QString, QString>, std::map<qint64, Una>> series;
  for (const QString& factura : facturas)
    if (const auto n = numeroDe(factura.trimmed().toUpper(), ano))
      series[{n->antes, n->despues}][n->numero] = {n->cifras, factura};
  QList<HuecoDeSerie> huecos;
  for (const auto& [serie, numeros] : series) {
    const auto texto = [&serie = serie](qint64 numero, int cifras) {
      return serie.first + QString::number(numero).rightJustified(cifras, u'0') + serie.second;
    };
    for (auto it = numeros.begin(); std::next(it) != numeros.end(); ++it) {
      const qint64 desde = it->first + 1, hasta = std::next(it)->first - 1;
      const auto& [cifras, factura] = it->second;
      if (desde > hasta) continue;
      huecos.append({factura, desde == hasta ? texto(desde, cifras)
                                             : texto(desde, cifras) + QStringLiteral(" a ") +
                                                   texto(hasta, cifras)});
    }
  }
  return huecos;
}
