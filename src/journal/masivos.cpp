#include "journal/masivos.h"

#include <array>
#include <optional>

#include "common/formato.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/lang/lexer.h"
#include "journal/apunte.h"
#include "journal/lineatecleada.h"

namespace {

std::unique_ptr<Recordset> lineasDelAsiento(Database& empresa, const QString& asiento) {
  return empresa.OpenRecordset(
      QStringLiteral("Select * from Diario where Nasiento = %1").arg(asiento));
}

std::unique_ptr<Recordset> registroDe(Database& empresa, const QString& codigo) {
  return empresa.OpenRecordset(
      QStringLiteral("Select * from RSIVA where Codigo ='%1'").arg(codigo));
}

void borraTodo(Recordset& filas) {
  for (; !filas.Eof(); filas.MoveNext()) filas.Delete();
}

// Copies the register row that a line names and returns the code of the copy.
QString duplicaRegistro(Database& origen, Recordset& registroDestino, Recordset& contadores,
                        const QString& codigo, const QString& fecha) {
  const auto fila = registroDe(origen, codigo);
  const bool repercutido = codigo.startsWith(QLatin1Char('R'));
  const QString contador = repercutido ? QStringLiteral("NLinIVAR") : QStringLiteral("NLinIVAS");
  registroDestino.AddNew();
  copiaCampos(*fila, registroDestino);
  if (EsFecha(fecha)) registroDestino.Fields("FechaC") = fecha;
  QString nuevo = codigoRegistro(repercutido ? QLatin1Char('R') : QLatin1Char('S'),
                                 QString::number(contadores.Fields(contador).toLong() + 1));
  registroDestino.Fields("Codigo") = nuevo;
  registroDestino.Fields("Asiento") = contadores.Fields("Asiento").Value();
  registroDestino.Update();
  tomaContador(contadores, contador);
  return nuevo;
}

}  // namespace

bool duplicaAsiento(DBEngine& motor, Database& origen, Database& destino,
                    const Duplicado& duplicado) {
  const QString& fecha = duplicado.fecha;
  const auto diario = destino.OpenRecordset(QStringLiteral("Select * from diario"));
  const auto contadores = destino.OpenRecordset(QStringLiteral("Select * from Empresa"));
  const auto registro = destino.OpenRecordset(QStringLiteral("Select * from RSIVA"));
  const auto lineas = lineasDelAsiento(origen, QString::number(duplicado.asiento));
  if (contadores->Fields("SubCuN01").toLong() != duplicado.digitosSubcuenta) return false;

  QString codigoViejo;
  QString codigoNuevo;
  for (; !lineas->Eof(); lineas->MoveNext()) {
    const QString codigo = lineas->Fields("ApunteIVA").display();
    if (!codigo.isEmpty() && codigoNuevo.isEmpty()) {
      codigoViejo = codigo;
      codigoNuevo = duplicaRegistro(origen, *registro, *contadores, codigo, fecha);
    }
    diario->AddNew();
    copiaCampos(*lineas, *diario);
    diario->Fields("NLinea") = contadores->Fields("NLinDiario").Value();
    diario->Fields("NAsiento") = contadores->Fields("Asiento").Value();
    if (EsFecha(fecha)) diario->Fields("Fecha") = fecha;
    if (!codigoNuevo.isEmpty()) diario->Fields("ApunteIVA") = codigoNuevo;
    diario->Update();
    tomaContador(*contadores, QStringLiteral("NLinDiario"));
  }
  tomaContador(*contadores, QStringLiteral("Asiento"));
  if (duplicado.eliminar) {
    motor.save();  // nothing goes before its copy stands
    // The rows read at first: the copy may have got the same number, where one typed by hand had
    // run ahead of the counter.
    if (lineas->RecordCount() > 0) lineas->MoveFirst();
    borraTodo(*lineas);
    if (!codigoViejo.isEmpty()) borraTodo(*registroDe(origen, codigoViejo));
  }
  return true;
}

// --- how a change is read

namespace {

// A day told so that nobody takes it month first.
QString dia(const QDate& fecha) {
  return Format(fecha, QStringLiteral("d mmmm yyyy"));
}

std::optional<QDate> diaDeLiteral(const QString& texto, int ano) {
  const auto fecha = lang::dateLiteral(texto, ano);
  return fecha ? std::optional(fecha->date()) : std::nullopt;
}

// The number that stands in a statement, if it is one word of it, sign apart.
std::optional<double> numeroDeLiteral(const QString& texto, int ano) {
  const bool menos = texto.trimmed().startsWith(QLatin1Char('-'));
  const QString cifras = menos ? texto.trimmed().mid(1) : texto;
  try {
    const auto palabras = lang::tokens(cifras);
    if (palabras.size() != 2 || palabras[0].kind != lang::TokenKind::Number) return std::nullopt;
    const double numero = lang::literalOf(palabras[0], ano).value.number();
    return menos ? -numero : numero;
  } catch (const ErrorEjecucion&) {
    return std::nullopt;
  }
}

QString numero(CampoCambio campo, double valor, const QString& mascara) {
  return campo == CampoCambio::Importe ? Format(valor, mascara).trimmed() : Variant(valor).text();
}

QString leidoAlBuscar(const CambioMasivo& cambio, const QString& mascara, int ano) {
  const QString noSeEntiende = QStringLiteral("no se entiende");
  const QString seBusca = QStringLiteral("se buscará ");
  switch (cambio.campo) {
    case CampoCambio::NAsiento:
    case CampoCambio::Importe:
      if (const auto valor = numeroDeLiteral(cambio.localizar, ano))
        return seBusca + numero(cambio.campo, *valor, mascara);
      return cambio.localizar.contains(QLatin1Char(','))
                 ? noSeEntiende + QStringLiteral(": los decimales van aquí con punto")
                 : noSeEntiende;
    case CampoCambio::Fecha:
      if (const auto fecha = diaDeLiteral(Format(cambio.localizar, QStringLiteral("m-d-yy")), ano))
        return seBusca + dia(*fecha);
      return noSeEntiende;
    case CampoCambio::Subcuenta:
    case CampoCambio::Descripcion:
      break;
  }
  return cambio.localizar.contains(QLatin1Char('\'')) ? noSeEntiende : seBusca + cambio.localizar;
}

QString leidoAlGuardar(const CambioMasivo& cambio, const QString& mascara) {
  const QString seGuarda = QStringLiteral("se guardará ");
  try {
    switch (cambio.campo) {
      case CampoCambio::NAsiento:
        return seGuarda + convertTo(FieldType::Long, 0, cambio.cambiar).text();
      case CampoCambio::Fecha:
        return seGuarda + dia(convertTo(FieldType::Date, 0, cambio.cambiar).date());
      case CampoCambio::Importe:
        compruebaImporte(importeNuevo(cambio.cambiar));
        return seGuarda + numero(cambio.campo, importeNuevo(cambio.cambiar), mascara);
      case CampoCambio::Subcuenta:
      case CampoCambio::Descripcion:
        break;
    }
  } catch (const ErrorEjecucion&) {
    return QStringLiteral("no se puede guardar en este campo");
  }
  return seGuarda + cambio.cambiar;
}

}  // namespace

double importeNuevo(const QString& texto) {
  return convertTo(FieldType::Double, 0, texto).number();
}

LecturaDeCambio lecturaDe(const CambioMasivo& cambio, const QString& mascara, int ano) {
  LecturaDeCambio lectura;
  if (!cambio.localizar.isEmpty()) lectura.localizar = leidoAlBuscar(cambio, mascara, ano);
  if (!cambio.cambiar.isEmpty()) lectura.cambiar = leidoAlGuardar(cambio, mascara);
  for (const auto& [limite, leido] :
       {std::pair(cambio.fechaDesde, &lectura.desde), {cambio.fechaHasta, &lectura.hasta}}) {
    if (limite.isEmpty()) continue;
    const auto fecha = diaDeLiteral(limite, ano);
    *leido = fecha ? QStringLiteral("se leerá ") + dia(*fecha) : QStringLiteral("no se entiende");
  }
  return lectura;
}

QString sentenciaDeCambio(const CambioMasivo& cambio) {
  QString condicion;
  switch (cambio.campo) {
    case CampoCambio::NAsiento:
      condicion = QStringLiteral("NAsiento = ") + cambio.localizar;
      break;
    case CampoCambio::Fecha:
      condicion = QStringLiteral("Fecha = #") + Format(cambio.localizar, QStringLiteral("m-d-yy")) +
                  QLatin1Char('#');
      break;
    case CampoCambio::Subcuenta:
      condicion = QStringLiteral("Subcuenta = '") + cambio.localizar + QLatin1Char('\'');
      break;
    case CampoCambio::Descripcion:
      condicion = QStringLiteral("Descripcion like '") + cambio.localizar + QLatin1Char('\'');
      break;
    case CampoCambio::Importe:
      condicion = QStringLiteral("Importe = ") + cambio.localizar;
      break;
  }
  return QStringLiteral("Select * from Diario where ") + condicion +
         QStringLiteral(" and fecha >= #") + cambio.fechaDesde +
         QStringLiteral("# and fecha <= #") + cambio.fechaHasta + QLatin1Char('#');
}

void cambiaDatos(Database& empresa, const CambioMasivo& cambio, const Avance& avance) {
  static const std::array<QString, 5> kCampos = {"NAsiento", "Fecha", "Subcuenta", "Descripcion",
                                                 "Importe"};
  const QString& campo = kCampos.at(static_cast<size_t>(cambio.campo));
  const auto lineas = empresa.OpenRecordset(sentenciaDeCambio(cambio));
  lineas->MoveLast();
  const int total = lineas->RecordCount();
  for (lineas->MoveFirst(); !lineas->Eof(); lineas->MoveNext()) {
    avance(lineas->AbsolutePosition(), total);
    // A line of an asiento that an earlier line has taken away. It is asked, not left to fail: each
    // failure puts what was done on the disk first.
    if (lineas->isDeleted(lineas->AbsolutePosition())) continue;
    try {
      if (cambio.eliminar) {
        borraTodo(*lineasDelAsiento(empresa, lineas->Fields("NAsiento").text()));
      } else {
        lineas->Edit();
        lineas->Fields(campo) = cambio.cambiar;
        lineas->Update();
      }
    } catch (const ErrorEjecucion& e) {
      // Another station has just taken it away.
      if (e.numero() != err::kRegistroEliminado) throw;
    }
  }
}

void eliminaAsiento(Database& empresa, int asiento, const Avance& avance) {
  const auto lineas = lineasDelAsiento(empresa, QString::number(asiento));
  if (lineas->Eof()) return;
  lineas->MoveLast();
  const int total = lineas->RecordCount();
  for (lineas->MoveFirst(); !lineas->Eof(); lineas->MoveNext()) {
    avance(lineas->AbsolutePosition(), total);
    const QString codigo = lineas->Fields("ApunteIVA").display();
    lineas->Delete();
    if (codigo.isEmpty()) continue;
    // Lines of one invoice share its row: after the first it is gone already.
    ignorando([&] { registroDe(empresa, codigo)->Delete(); });
  }
}
