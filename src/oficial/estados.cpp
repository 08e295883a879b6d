#include "oficial/estados.h"

#include <algorithm>
#include <cmath>

#include "common/formato.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"
#include "oficial/tablafija.h"
#include "oficial/tablasoficiales.h"

namespace {

constexpr int kMasLargo = 4;  // digits of the prefixes
const QString kDesgloses = QStringLiteral("DesglosesEstados");

// Which balances a prefix takes.
enum class Signo { Todos, Deudor, Acreedor };

struct Destino {
  Signo signo;
  qsizetype linea;  // its place in the list
};

bool admite(Signo signo, double saldo) {
  return signo == Signo::Todos || (signo == Signo::Deudor) == (saldo > 0);
}

// A statement's table: its lines, where each prefix goes, what each total adds.
struct Modelo {
  QList<LineaDeEstado> lineas;
  QHash<QString, QList<Destino>> prefijos;
  QHash<int, QList<int>> sumas;  // by the number of the total
};

// "(280)", "61*", "551:D": parentheses and asterisk tell how the form prints it, and no more.
void anadePrefijos(Modelo& modelo, const QString& texto, qsizetype linea) {
  for (QString prefijo : texto.split(u' ', Qt::SkipEmptyParts)) {
    const Signo signo = prefijo.endsWith(QLatin1String(":D"))   ? Signo::Deudor
                        : prefijo.endsWith(QLatin1String(":H")) ? Signo::Acreedor
                                                                : Signo::Todos;
    prefijo = prefijo.section(u':', 0, 0);
    prefijo.removeIf([](QChar c) { return !c.isDigit(); });
    modelo.prefijos[prefijo].append({signo, linea});
  }
}

const Modelo& modeloDe(Estado cual) {
  static const auto lee = [](const QString& fichero) {
    Modelo modelo;
    // The account of results has one column more: the headings of two forms.
    const bool conRegistro = fichero.startsWith(QLatin1String("pyg"));
    for (QStringList fila : leeTablaFija(fichero)) {
      if (conRegistro) fila.removeAt(3);
      const LineaDeEstado linea{fila[0].toInt(), fila[1].toInt(), fila[2],
                                fila[3],         fila[4],         fila[5] == QLatin1String("S")};
      anadePrefijos(modelo, fila[6] + u' ' + fila[7], modelo.lineas.size());
      for (const QString& sumando : fila[8].split(u' ', Qt::SkipEmptyParts))
        modelo.sumas[linea.orden].append(sumando.toInt());
      modelo.lineas.append(linea);
    }
    return modelo;
  };
  static const Modelo balance = lee(QStringLiteral("balance-pymes.csv"));
  static const Modelo resultados = lee(QStringLiteral("pyg-pymes.csv"));
  return cual == Estado::Balance ? balance : resultados;
}

// A line that is no sum of balances: a part of the line `de`, what the typed one leaves of it, or
// what goes from there to the line `a`.
enum class Como { Parte, Resto, Traspaso };
struct LineaTecleada {
  int linea;
  Como como;
  int de, a;
};

QString letraDe(Estado cual) {
  return cual == Estado::Balance ? QStringLiteral("B") : QStringLiteral("R");
}

const QList<LineaTecleada>& tecleadasDe(Estado cual) {
  static const auto lee = [](Estado cual) {
    QList<LineaTecleada> lista;
    for (const QStringList& fila : leeTablaFija(QStringLiteral("desgloses.csv"))) {
      const Como como = fila[2] == QLatin1String("parte")   ? Como::Parte
                        : fila[2] == QLatin1String("resto") ? Como::Resto
                                                            : Como::Traspaso;
      if (fila[0] == letraDe(cual))
        lista.append({fila[1].toInt(), como, fila[3].toInt(), fila[4].toInt()});
    }
    return lista;
  };
  static const QList<LineaTecleada> balance = lee(Estado::Balance);
  static const QList<LineaTecleada> resultados = lee(Estado::Resultados);
  return cual == Estado::Balance ? balance : resultados;
}

// Puts what was typed into a column, before its totals are added. The rest of a line is only told
// where a part of it was.
void ponDesgloses(Estado cual, const Desgloses& desgloses, QList<LineaDeEstado>& lineas,
                  double LineaDeEstado::*columna) {
  const auto importe = [&](int orden) -> double& {
    return (*std::ranges::find(lineas, orden, &LineaDeEstado::orden)).*columna;
  };
  for (const LineaTecleada& t : tecleadasDe(cual)) {
    const double tecleado = desgloses.value(t.linea);
    if (t.como == Como::Resto || tecleado == 0) continue;
    importe(t.linea) = tecleado;
    if (t.como == Como::Parte) continue;
    importe(t.de) -= tecleado;
    if (t.a != t.linea) importe(t.a) += tecleado;
  }
  for (const LineaTecleada& t : tecleadasDe(cual))
    if (t.como == Como::Resto && importe(t.a) != 0) importe(t.linea) = importe(t.de) - importe(t.a);
}

// The place of the line that a subcuenta goes to; -1 for none.
qsizetype lineaDe(const Modelo& modelo, const QString& subcuenta, double saldo) {
  for (int largo = kMasLargo; largo > 0; --largo) {
    const auto hallados = modelo.prefijos.constFind(subcuenta.left(largo));
    if (hallados == modelo.prefijos.cend()) continue;
    for (const Destino& destino : *hallados)
      if (admite(destino.signo, saldo)) return destino.linea;
  }
  return -1;
}

bool esDeResultados(const QString& subcuenta) {
  return subcuenta.startsWith(u'6') || subcuenta.startsWith(u'7');
}

// Puts the balances into a column of the lines; the result is what falls in none of them.
Saldos reparte(Estado cual, const Saldos& saldos, QList<LineaDeEstado>& lineas,
               double LineaDeEstado::*columna) {
  const Modelo& modelo = modeloDe(cual);
  Saldos sinLinea;
  // In order of code, so that the same books always give the same last cent.
  QStringList subcuentas = saldos.keys();
  std::ranges::sort(subcuentas);
  for (const QString& subcuenta : subcuentas) {
    if (cual == Estado::Resultados && !esDeResultados(subcuenta)) continue;
    const double saldo = saldos.value(subcuenta);
    if (saldo == 0) continue;
    const qsizetype sitio = lineaDe(modelo, subcuenta, saldo);
    if (sitio < 0) {
      sinLinea.insert(subcuenta, saldo);
      continue;
    }
    LineaDeEstado& linea = lineas[sitio];
    const bool deudora = cual == Estado::Balance && linea.orden <= lineaestado::kActivo;
    linea.*columna += deudora ? saldo : -saldo;
  }
  return sinLinea;
}

// A total may add totals that stand below it.
double total(const Modelo& modelo, QList<LineaDeEstado>& lineas, int orden,
             double LineaDeEstado::*columna) {
  const auto linea = std::ranges::find(lineas, orden, &LineaDeEstado::orden);
  const auto sumandos = modelo.sumas.constFind(orden);
  if (sumandos == modelo.sumas.cend()) return (*linea).*columna;
  double suma = 0;
  for (const int sumando : *sumandos) suma += total(modelo, lineas, sumando, columna);
  return (*linea).*columna = suma;
}

}  // namespace

Saldos saldosDelPeriodo(Database& empresa, int desde, int hasta) {
  Saldos saldos;
  const QString meses = QStringLiteral(">=%1 and %3<=%2").arg(desde).arg(hasta);
  RowReader porMeses(empresa, QStringLiteral("Select Subcuenta, SumaDeDebe, SumaDeHaber from "
                                             "SqlDiarioSaldosCuentasMeses where Mes") +
                                  meses.arg(QStringLiteral("Mes")));
  while (porMeses.next()) saldos[porMeses.text(0)] += porMeses.number(1) + porMeses.number(2);
  RowReader cierre(empresa, QStringLiteral("Select Subcuenta, Importe from Diario where "
                                           "(TipoDiario='B' or TipoDiario='C') and Month(Fecha)") +
                                meses.arg(QStringLiteral("Month(Fecha)")));
  while (cierre.next()) saldos[cierre.text(0)] -= cierre.number(1);
  // What a million sums of doubles leave behind is no balance.
  for (double& saldo : saldos) saldo = std::round(saldo * 1e6) / 1e6;
  return saldos;
}

bool seEscribe(Estado cual, int orden) {
  return std::ranges::any_of(tecleadasDe(cual), [&](const LineaTecleada& t) {
    return t.linea == orden && t.como != Como::Resto;
  });
}

namespace {
QString deDesgloses(Estado cual, int desde, int hasta) {
  return QStringLiteral("Select * from %1 where Estado='%2' and Desde=%3 and Hasta=%4")
      .arg(kDesgloses, letraDe(cual))
      .arg(desde)
      .arg(hasta);
}
}  // namespace

Desgloses desglosesDelPeriodo(Database& empresa, Estado cual, int desde, int hasta) {
  Desgloses desgloses;
  const auto filas = leeTablaOficial(empresa, kDesgloses, deDesgloses(cual, desde, hasta));
  for (; filas && !filas->Eof(); filas->MoveNext())
    desgloses.insert(static_cast<int>(filas->Fields("Linea").toLong()),
                     filas->Fields("Importe").number());
  return desgloses;
}

void escribeDesglose(Database& empresa, const SitioDeDesglose& sitio,
                     std::optional<double> importe) {
  aseguraTablaOficial(empresa, kDesgloses);
  const auto filas = empresa.OpenRecordset(deDesgloses(sitio.cual, sitio.desde, sitio.hasta) +
                                           QStringLiteral(" and Linea=%1").arg(sitio.orden));
  if (!importe) {
    if (!filas->Eof()) filas->Delete();
    return;
  }
  if (filas->Eof()) {
    filas->AddNew();
  } else {
    filas->Edit();
  }
  completa(*filas, [&] {
    filas->Fields("Estado") = letraDe(sitio.cual);
    filas->Fields("Linea") = sitio.orden;
    filas->Fields("Desde") = sitio.desde;
    filas->Fields("Hasta") = sitio.hasta;
    filas->Fields("Importe") = *importe;
  });
}

EstadoOficial calculaEstado(Estado cual, const Saldos& actual, const Saldos& anterior,
                            const Desgloses& desgloses, const Desgloses& desglosesAnteriores) {
  const Modelo& modelo = modeloDe(cual);
  EstadoOficial estado{modelo.lineas, {}, {}};
  estado.sinLinea = reparte(cual, actual, estado.lineas, &LineaDeEstado::importe);
  estado.sinLineaAnterior = reparte(cual, anterior, estado.lineas, &LineaDeEstado::anterior);
  ponDesgloses(cual, desgloses, estado.lineas, &LineaDeEstado::importe);
  ponDesgloses(cual, desglosesAnteriores, estado.lineas, &LineaDeEstado::anterior);
  for (const LineaDeEstado& linea : modelo.lineas)
    for (const auto columna : {&LineaDeEstado::importe, &LineaDeEstado::anterior})
      total(modelo, estado.lineas, linea.orden, columna);
  return estado;
}

double importeDeLinea(const EstadoOficial& estado, int orden, double LineaDeEstado::*columna) {
  const auto linea = std::ranges::find(estado.lineas, orden, &LineaDeEstado::orden);
  return linea == estado.lineas.end() ? 0 : (*linea).*columna;
}

double resultadoDe(const Saldos& saldos) {
  double resultado = 0;
  for (auto it = saldos.cbegin(); it != saldos.cend(); ++it)
    if (esDeResultados(it.key())) resultado -= it.value();
  return resultado;
}

bool seMuestra(const LineaDeEstado& linea, const QString& mascara, bool todas) {
  const QString cero = Format(0.0, mascara);
  const bool conImporte =
      Format(linea.importe, mascara) != cero || Format(linea.anterior, mascara) != cero;
  return conImporte || (linea.nivel <= 1 && !linea.opcional) || (todas && !linea.opcional);
}
