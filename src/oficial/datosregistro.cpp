#include "oficial/datosregistro.h"

#include <algorithm>

#include "common/comillas.h"
#include "common/conversion.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"
#include "engine/store.h"
#include "oficial/deriva.h"
#include "oficial/identificadores.h"
#include "oficial/registrofijo.h"
#include "oficial/tablafija.h"
#include "oficial/tablasoficiales.h"

namespace {

const QString kTabla = QStringLiteral("DatosRegistros");

constexpr DatoDeRegistro kDatos[] = {
    {"TipoFactura", "Tipo", 5, "F1 F2 F3 F4 R1 R2 R3 R4 R5 DV AJ",
     "F1 F2 F3 F4 F5 F6 R1 R2 R3 R4 R5 LC SF", "Tipo de factura"},
    {"Clave", "Clave", 6, "01 02 03 04 05 06 07 08 09 10 11 12 13 14 15 17 18 19",
     "01 02 03 04 05 06 07 08 09 12 13 18 19", "Clave de la operación"},
    {"Calificacion", "Calif.", 6, "S1 S2 N1 N2", "-", "Calificación de la operación"},
    {"Exenta", "Exenta", 7, "E1 E2 E3 E4 E5 E6", "-", "Causa de la exención"},
    {"BienInversion", "B. inv.", 7, "S N", "S N", "Bien de inversión"},
    {"Inversion", "Inv. s.p.", 8, "-", "S N", "Inversión del sujeto pasivo"},
    {"TipoNif", "T. NIF", 6, "01 02 03 04 05 06", "01 02 03 04 05 06",
     "Clase de NIF: 01 español, 02 de la Unión, 03 pasaporte, 04 del país, 05 residencia, 06 otro"},
    {"Pais", "País", 5, "", "", "País del NIF, dos letras"},
    {"Nif", "NIF", 15, "", "", "Número de identificación fiscal"},
    {"Nombre", "Nombre", 28, "", "", "Nombre o razón social"},
    {"FechaOperacion", "F. oper.", 11, "", "", "Fecha de la operación, si no es la de la factura"},
    {"Base", "Base", 12, "", "", "Base, si la fila no la lleva"},
    {"Deducible", "Deducible", 12, "-", "", "Cuota deducible"},
    {"Retencion", "Ret.", 5, "S N", "S N", "Con retención de IRPF"},
    {"Local", "Local", 6, "S N", "S N", "Arrendamiento de local de negocio"},
};

const DatoDeRegistro& datoDe(const QString& campo) {
  for (const DatoDeRegistro& dato : kDatos)
    if (campo == QLatin1String(dato.campo)) return dato;
  throw ErrorEjecucion(err::kElementoNoEncontrado, campo);
}

// What was typed for a row: whose it was when it was typed, and the values.
struct Escrito {
  QString codigo, cliPro, factura;
  QDate fecha;
  QHash<QString, Variant> valores;
  bool puesto = false;

  int parecido(const LineaRegistro& l) const {
    return (cliPro == l.cliPro) + (factura == l.factura) + (fecha == l.fecha);
  }
};

Escrito escritoDe(Recordset& filas) {
  Escrito uno;
  uno.codigo = filas.Fields(QStringLiteral("Codigo")).display();
  uno.cliPro = filas.Fields(QStringLiteral("CliPro")).display();
  uno.factura = filas.Fields(QStringLiteral("Factura")).display();
  const FieldRef fecha = filas.Fields(QStringLiteral("Fecha"));
  if (!fecha.isNull()) uno.fecha = fecha.Value().date();
  for (const DatoDeRegistro& dato : kDatos) {
    const Variant valor = filas.Fields(QLatin1String(dato.campo)).Value();
    if (!valor.isNull() && !valor.display().isEmpty())
      uno.valores.insert(QLatin1String(dato.campo), valor);
  }
  return uno;
}

std::vector<Escrito> leeEscritos(Database& empresa) {
  std::vector<Escrito> lista;
  const auto filas = leeTablaOficial(empresa, kTabla, QStringLiteral("Select * from ") + kTabla);
  for (; filas && !filas->Eof(); filas->MoveNext()) lista.push_back(escritoDe(*filas));
  return lista;
}

// A row's own data are those typed under its code for the same invoice; if its code has changed,
// those of the same invoice under another code; and if the invoice was corrected, those under its
// code that agree in two of third party, number and date.
QString facturaDe(QChar lado, const QString& cliPro, const QString& factura, QDate fecha) {
  return lado + cliPro + u'|' + factura + u'|' + QString::number(fecha.toJulianDay());
}

int reparte(std::vector<Escrito>& escritos, std::vector<LineaRegistro>& lineas) {
  if (escritos.empty()) return 0;
  QHash<QString, LineaRegistro*> porCodigo;
  QMultiHash<QString, LineaRegistro*> porFactura;
  for (LineaRegistro& l : lineas) {
    porCodigo.insert(l.codigo, &l);
    porFactura.insert(facturaDe(l.codigo[0], l.cliPro, l.factura, l.fecha), &l);
  }
  const auto pon = [](Escrito& uno, LineaRegistro* linea) {
    if (!linea || !linea->escritoComo.isEmpty()) return;
    linea->escrito = uno.valores;
    linea->escritoComo = uno.codigo;
    uno.puesto = true;
  };
  const auto suya = [&](const Escrito& uno, int parecido) -> LineaRegistro* {
    LineaRegistro* const linea = porCodigo.value(uno.codigo);
    return linea && uno.parecido(*linea) >= parecido ? linea : nullptr;
  };
  for (Escrito& uno : escritos) pon(uno, suya(uno, 3));
  int perdidos = 0;
  for (Escrito& uno : escritos) {
    if (uno.puesto) continue;
    const auto iguales =
        porFactura.values(facturaDe(uno.codigo[0], uno.cliPro, uno.factura, uno.fecha));
    for (LineaRegistro* linea : iguales)
      if (!uno.puesto) pon(uno, linea);
    if (!uno.puesto) pon(uno, suya(uno, 2));
    if (!uno.puesto) ++perdidos;
  }
  return perdidos;
}

LineaRegistro lineaDe(const RowReader& r) {
  LineaRegistro l;
  l.codigo = r.text(0);
  l.libro = l.codigo.startsWith(letraDe(LibroIVA::Soportado)) ? LibroIVA::Soportado
                                                              : LibroIVA::Repercutido;
  const int signo = l.emitida() ? -1 : 1;
  l.cliPro = r.text(1);
  l.factura = r.text(2);
  l.tipoIVA = r.text(3);
  l.asiento = static_cast<int>(r.number(4));
  l.ctaIVA = r.text(5);
  l.ctaRE = r.text(6);
  l.ctaCon = r.text(7);
  if (!r.isNull(8)) l.fechaC = r.value(8).date();
  if (!r.isNull(9)) l.fecha = r.value(9).date();
  l.baseDeFila = l.base = signo * centimosDe(r.number(10));
  l.iva = signo * centimosDe(r.number(11));
  l.recargo = signo * centimosDe(r.number(12));
  l.porcenIVA = r.number(13);
  l.porcenRE = r.number(14);
  l.adquisicion = l.base == 0 && l.iva != 0 && l.cliPro == l.ctaIVA;
  return l;
}

// A date as the statement language knows it: month, day and year between signs.
QString literal(QDate fecha) {
  return u'#' + Format(fecha, QStringLiteral("m-d-yyyy")) + u'#';
}

// Rows that may fall between two dates, by either of theirs.
QString sentenciaDe(const FiltroRegistros& filtro) {
  QString sentencia = QStringLiteral(
      "Select Codigo, CliPro, Factura, TipoIVA, Asiento, CtaIVA, CtaRE, CtaCon, FechaC, Fecha, "
      "Base, IVA, Recargo, PorcenIVA, PorcenREC from RSIVA");
  if (filtro.desde.isValid())
    sentencia +=
        QStringLiteral(" where (Fecha >= %1 and Fecha <= %2) or (FechaC >= %1 and FechaC <= %2)")
            .arg(literal(filtro.desde), literal(filtro.hasta));
  return sentencia;
}

bool esta(const std::vector<LineaRegistro>& lineas, const QString& codigo) {
  return std::ranges::any_of(lineas, [&](const LineaRegistro& l) { return l.codigo == codigo; });
}

// Rows that only what was typed brings into the period: their day of operation.
void leeTraidas(Database& empresa, const std::vector<Escrito>& escritos,
                const FiltroRegistros& filtro, std::vector<LineaRegistro>& lineas) {
  if (!filtro.desde.isValid()) return;
  for (const Escrito& uno : escritos) {
    const Variant dia = uno.valores.value(QStringLiteral("FechaOperacion"));
    if (dia.isNull() || dia.date() < filtro.desde || dia.date() > filtro.hasta) continue;
    if (esta(lineas, uno.codigo)) continue;
    const QString sentencia =
        sentenciaDe({}) + QStringLiteral(" where Codigo=") + entreComillas(uno.codigo);
    for (RowReader r(empresa, sentencia); r.next();) lineas.push_back(lineaDe(r));
  }
}

Variant leido(const DatoDeRegistro& dato, const LineaRegistro& linea, const QString& texto) {
  const QString campo = QLatin1String(dato.campo);
  const auto noVale = [&](const QString& como) {
    throw ErrorEjecucion(
        err::kConversionDeDatos,
        QStringLiteral("«%1» no vale como %2%3").arg(texto, QLatin1String(dato.titulo), como));
  };
  if (campo == QLatin1String("FechaOperacion")) {
    const auto fecha = parseDate(texto);
    if (!fecha) noVale(QString());
    return fecha ? Variant(fecha->date()) : Variant();
  }
  if (campo == QLatin1String("Base") || campo == QLatin1String("Deducible")) {
    const auto importe = parseNumber(texto);
    if (!importe) noVale(QString());
    return importe ? Variant(*importe) : Variant();
  }
  const QString valor = campo == QLatin1String("Nombre") ? texto.trimmed() : texto.toUpper();
  const QString valores = QLatin1String(linea.emitida() ? dato.emitidas : dato.recibidas);
  if (valores == QLatin1String("-"))
    throw ErrorEjecucion(
        err::kConversionDeDatos,
        QStringLiteral("«%1» no es de este libro").arg(QLatin1String(dato.titulo)));
  if (!valores.isEmpty() && !valores.split(u' ').contains(valor))
    noVale(QStringLiteral(" (%1)").arg(valores));
  if (campo == QLatin1String("Pais") && paisDe(valor).codigo != valor) noVale(QString());
  return campo == QLatin1String("Nif") ? normalizaIdentificador(valor) : valor;
}

}  // namespace

QDate LineaRegistro::fechaDeRegistro() const {
  if (emitida()) return fechaOperacion.isValid() ? fechaOperacion : fecha;
  return fechaC.isValid() && (!fecha.isValid() || fechaC > fecha) ? fechaC : fecha;
}

std::vector<LineaRegistro> leeRegistros(Database& empresa, const FiltroRegistros& filtro,
                                        int* perdidos) {
  const auto estado = empresa.hold();
  std::vector<LineaRegistro> lineas;
  for (RowReader r(empresa, sentenciaDe(filtro)); r.next();) lineas.push_back(lineaDe(r));
  std::vector<Escrito> escritos = leeEscritos(empresa);
  leeTraidas(empresa, escritos, filtro, lineas);
  const int sueltos = reparte(escritos, lineas);
  if (perdidos) *perdidos = sueltos;
  Derivador derivador(empresa, filtro.retenciones);
  for (LineaRegistro& linea : lineas) derivador.deriva(linea);
  if (filtro.desde.isValid())
    std::erase_if(lineas, [&](const LineaRegistro& l) {
      const QDate dia = l.fechaDeRegistro();
      return dia < filtro.desde || dia > filtro.hasta;
    });
  std::stable_partition(lineas.begin(), lineas.end(),
                        [](const LineaRegistro& l) { return l.libro == LibroIVA::Soportado; });
  return lineas;
}

std::span<const DatoDeRegistro> datosDeRegistro() {
  return kDatos;
}

QString valorDeDato(const LineaRegistro& l, const QString& campo, const QString& mascara) {
  const auto siNo = [](bool si) { return si ? QStringLiteral("S") : QString(); };
  const auto importe = [&](qint64 centimos) { return textoDeCentimos(centimos, mascara); };
  const QHash<QString, QString> valores = {
      {QStringLiteral("TipoFactura"), l.tipoFactura},
      {QStringLiteral("Clave"), l.clave},
      {QStringLiteral("Calificacion"), l.calificacion},
      {QStringLiteral("Exenta"), l.exenta},
      {QStringLiteral("BienInversion"), siNo(l.bienInversion)},
      {QStringLiteral("Inversion"), siNo(l.inversion)},
      {QStringLiteral("TipoNif"), l.tipoNif},
      {QStringLiteral("Pais"), l.pais},
      {QStringLiteral("Nif"), l.nif},
      {QStringLiteral("Nombre"), l.nombre},
      {QStringLiteral("FechaOperacion"),
       l.fechaOperacion.isValid() ? Format(l.fechaOperacion, QStringLiteral("dd/mm/yyyy"))
                                  : QString()},
      {QStringLiteral("Base"), importe(l.base)},
      {QStringLiteral("Deducible"), l.emitida() ? QString() : importe(l.deducible)},
      {QStringLiteral("Retencion"), siNo(l.retencion)},
      {QStringLiteral("Local"), siNo(l.local)}};
  return valores.value(campo);
}

void escribeDato(Database& empresa, LineaRegistro& linea, const QString& campo,
                 const QString& texto) {
  const DatoDeRegistro& dato = datoDe(campo);
  const Variant valor = texto.trimmed().isEmpty() ? Variant() : leido(dato, linea, texto.trimmed());
  aseguraTablaOficial(empresa, kTabla);
  const auto filas = empresa.OpenRecordset(QStringLiteral("Select * from %1 where Codigo=%2")
                                               .arg(kTabla, entreComillas(linea.escritoComo)));
  // Under that code may also stand the data of another invoice, which bears it now.
  while (!filas->Eof() && escritoDe(*filas).parecido(linea) < 2) filas->MoveNext();
  linea.escrito.remove(campo);
  if (!valor.isNull()) linea.escrito.insert(campo, valor);
  if (filas->Eof()) {
    filas->AddNew();
  } else {
    filas->Edit();
  }
  completa(*filas, [&] {
    filas->Fields(QStringLiteral("Codigo")) = linea.codigo;
    filas->Fields(QStringLiteral("CliPro")) = linea.cliPro;
    filas->Fields(QStringLiteral("Factura")) = linea.factura;
    if (linea.fecha.isValid()) filas->Fields(QStringLiteral("Fecha")) = linea.fecha;
    // All that is known of it: what was typed under an earlier code moves here with its invoice.
    for (const DatoDeRegistro& uno : kDatos)
      filas->Fields(QLatin1String(uno.campo)) = linea.escrito.value(QLatin1String(uno.campo));
  });
  linea.escritoComo = linea.codigo;
  Derivador(empresa, true).deriva(linea);
}
