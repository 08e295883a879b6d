#include "iva/mantenimientoiva.h"

#include <cmath>
#include <QSet>

#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/ignorar.h"
#include "company/datosempresa.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"
#include "iva/filarsiva.h"
#include "journal/apunte.h"

namespace {

constexpr QLatin1String kTipoSinHallar("99");

CuentasIVA cuentasDe(Database& empresa) {
  const auto fila = empresa.OpenRecordset(QStringLiteral("Select * from Empresa"));
  return leeDatosEmpresa(*fila);
}

int filasDe(Recordset& filas) {
  if (filas.Eof()) return 0;
  filas.MoveLast();
  const int cuantas = filas.RecordCount();
  filas.MoveFirst();
  return cuantas;
}

void cambiaCampo(Recordset& fila, const QString& campo, const Variant& valor) {
  fila.Edit();
  completa(fila, [&] { fila.Fields(campo) = valor; });
}

// --- renumbering --------------------------------------------------------------------------------

// The chosen register that a row belongs to; nothing for a row that stays as it is.
std::optional<LibroIVA> libroElegido(Recordset& fila, RegistrosElegidos elegidos,
                                     const CuentasIVA& cuentas) {
  const QString grupo = fila.Fields("CtaCon").display().left(1);
  if (grupo.isEmpty()) return std::nullopt;
  if (elegidos.repercutido && grupo == cuentas.IVARVen.left(1)) return LibroIVA::Repercutido;
  if (elegidos.soportado && grupo == cuentas.IVASCom.left(1)) return LibroIVA::Soportado;
  return std::nullopt;
}

// --- deleting -----------------------------------------------------------------------------------

void borraTodas(Recordset& filas) {
  for (; !filas.Eof(); filas.MoveNext()) filas.Delete();
}

void borraAsiento(Database& empresa, qint64 asiento) {
  saltando([&] {
    borraTodas(*empresa.OpenRecordset(
        QStringLiteral("Select * from Diario where NAsiento =%1").arg(asiento)));
  });
  // Kept: one row goes for each line on the account, whatever invoice it is of.
  saltando([&] {
    const auto registro = empresa.OpenRecordset(
        QStringLiteral("Select * from RSIVA where asiento =%1").arg(asiento), Opening::FirstRows);
    if (!registro->Eof()) registro->Delete();
  });
}

bool eliminaPorCuenta(Database& empresa, const QString& cuenta, const Avance& avance) {
  const QString fuente = QStringLiteral("Select * from Diario where subcuenta = '%1'").arg(cuenta);
  const int lineas = filasDe(*empresa.OpenRecordset(fuente));
  // As many rounds as there were lines. Those of an asiento go all at once, so the last rounds find
  // none.
  for (int i = 0; i < lineas; ++i) {
    avance(i, lineas);
    saltando([&] {
      const auto quedan = empresa.OpenRecordset(fuente, Opening::FirstRows);
      if (!quedan->Eof()) borraAsiento(empresa, quedan->Fields("NAsiento").toLong());
    });
  }
  return lineas > 0;
}

// The codes that stand in a column, read in one go: asking the other table for each row would read
// it as often as there are rows.
QSet<QString> codigosDe(Database& empresa, const QString& columna, const QString& tabla) {
  QSet<QString> codigos;
  RowReader filas(empresa, QStringLiteral("Select %1 from %2").arg(columna, tabla));
  while (filas.next()) codigos.insert(filas.text(0).toCaseFolded());
  return codigos;
}

bool borraSinPareja(Database& empresa, const QString& fuente, const QString& campo,
                    const QSet<QString>& parejas, const Avance& avance) {
  const auto filas = empresa.OpenRecordset(fuente);
  const int total = filasDe(*filas);
  for (int i = 0; !filas->Eof(); filas->MoveNext()) {
    avance(i++, total);
    saltando([&] {
      if (!parejas.contains(filas->Fields(campo).display().toCaseFolded())) filas->Delete();
    });
  }
  return total > 0;
}

// --- rebuilding ---------------------------------------------------------------------------------

// What the lines of an asiento tell of its invoice.
struct FacturaDeAsiento {
  FilaRSIVA fila;
  double base = 0;
  double cuota = 0;
  double recargo = 0;
};

FacturaDeAsiento leeAsiento(Database& empresa, const Variant& asiento, const CuentasIVA& cuentas) {
  FacturaDeAsiento f;
  const auto lineas = empresa.OpenRecordset(
      QStringLiteral("Select * from Diario where NAsiento=%1").arg(asiento.toLong()));
  for (; !lineas->Eof(); lineas->MoveNext()) {
    const QString subcuenta = lineas->Fields("Subcuenta").display();
    const Variant importe = lineas->Fields("Importe").Value();
    const bool compra = subcuenta == cuentas.IVASCom;
    if (compra || subcuenta == cuentas.IVARVen) {
      f.base = importe.number();
      f.fila.Base = importe;
      f.fila.CtaCon = subcuenta;
      f.fila.Codigo = lineas->Fields("ApunteIVA").Value();
      f.fila.Factura = lineas->Fields("FacturaZuri").Value();
      f.fila.Fecha = f.fila.FechaC = lineas->Fields("Fecha").Value();
      f.fila.Asiento = lineas->Fields("NAsiento").Value();
      f.fila.CtaIVA = compra ? cuentas.IVASSub : cuentas.IVARSub;
      f.fila.CtaRE = compra ? cuentas.IVASRE : cuentas.IVARRE;
    } else if (subcuenta == cuentas.IVASSub || subcuenta == cuentas.IVARSub) {
      f.cuota = importe.number();
    } else if (subcuenta == cuentas.IVASRE || subcuenta == cuentas.IVARRE) {
      f.recargo = importe.number();
    } else {
      f.fila.CliPro = subcuenta;
    }
  }
  return f;
}

// A rate as a percentage, rounded by the company's mask before it is one: whole with two decimals.
double porcentaje(double parte, double base, const QString& mascara) {
  if (base == 0) return 0;
  return ImporteDe(Format(parte / base, mascara), mascara).value_or(0) * 100;
}

// The last rate of the table with both percentages.
QString tipoCon(Database& empresa, double iva, double recargo) {
  const auto igual = [](double a, double b) { return std::abs(a - b) < 1e-9; };
  QString codigo = kTipoSinHallar;
  RowReader tipos(empresa, QStringLiteral("Select Codigo, IVA, RE from TiposIVA"));
  while (tipos.next())
    if (igual(tipos.number(1), iva) && igual(tipos.number(2), recargo)) codigo = tipos.text(0);
  return codigo;
}

// Kept: amounts other than the base, and the rates, stay empty; the review of bases fills them in.
bool creaDeDiario(Database& empresa, const QString& mascara, const Avance& avance) {
  const CuentasIVA cuentas = cuentasDe(empresa);
  QSet<QString> conocidos = codigosDe(empresa, QStringLiteral("Codigo"), QStringLiteral("RSIVA"));
  const auto lineas = empresa.OpenRecordset(
      QStringLiteral("Select * from Diario where Subcuenta Like '6*' or Subcuenta Like '7*'"));
  const auto registro = empresa.OpenRecordset(QStringLiteral("RSIVA"), Opening::FirstRows);
  const int total = filasDe(*lineas);
  for (int i = 0; !lineas->Eof(); lineas->MoveNext()) {
    avance(i++, total);
    const QString codigo = lineas->Fields("ApunteIVA").display();
    if (codigo.isEmpty() || conocidos.contains(codigo.toCaseFolded())) continue;
    saltando([&] {
      FacturaDeAsiento f = leeAsiento(empresa, lineas->Fields("NAsiento").Value(), cuentas);
      f.fila.TipoIVA = tipoCon(empresa, porcentaje(f.cuota, f.base, mascara),
                               porcentaje(f.recargo, f.base, mascara));
      registro->AddNew();
      completa(*registro, [&] { escribe(*registro, f.fila); });
      conocidos.insert(f.fila.Codigo.display().toCaseFolded());
    });
  }
  return total > 0;
}

}  // namespace

void renumeraIVA(Database& empresa, RegistrosElegidos elegidos, const Avance& avance) {
  const CuentasIVA cuentas = cuentasDe(empresa);
  const auto registro = empresa.OpenRecordset(QStringLiteral("Select * from RSIVA order by Fecha"));
  const int total = filasDe(*registro);
  // Plain numbers first, which clear the way: no new code can meet an old one.
  int paso = 0;
  for (int numero = total; !registro->Eof(); registro->MoveNext()) {
    avance(paso++, 2 * total);
    ++numero;
    if (libroElegido(*registro, elegidos, cuentas))
      cambiaCampo(*registro, "Codigo", QString::number(numero));
  }
  int numeros[2] = {0, 0};  // by register
  if (total > 0) registro->MoveFirst();
  for (; !registro->Eof(); registro->MoveNext()) {
    avance(paso++, 2 * total);
    const auto libro = libroElegido(*registro, elegidos, cuentas);
    if (!libro) continue;
    int& numero = numeros[static_cast<int>(*libro)];
    const QString codigo = codigoRegistro(letraDe(*libro), QString::number(++numero));
    cambiaCampo(*registro, "Codigo", codigo);
    ponCodigoEnAsiento(empresa, registro->Fields("Asiento").Value(), codigo);
  }
  const auto contadores = empresa.OpenRecordset(QStringLiteral("Select * from Empresa"));
  for (const LibroIVA libro : {LibroIVA::Soportado, LibroIVA::Repercutido})
    if (const int numero = numeros[static_cast<int>(libro)]; numero > 0)
      cambiaCampo(*contadores, contadorDe(libro), numero);
}

bool mantieneIVA(Database& empresa, TareaIVA tarea, const QString& cuenta, const QString& mascara,
                 const Avance& avance) {
  switch (tarea) {
    case TareaIVA::EliminaPorCuenta:
      return eliminaPorCuenta(empresa, cuenta, avance);
    case TareaIVA::EliminaIVASinAsiento:
      return borraSinPareja(empresa, QStringLiteral("Select * from RSIVA"), "Codigo",
                            codigosDe(empresa, "ApunteIVA", "Diario"), avance);
    case TareaIVA::EliminaLineasSinIVA:
      return borraSinPareja(empresa, QStringLiteral("Select * from Diario where ApunteIva <> ''"),
                            "ApunteIVA", codigosDe(empresa, "Codigo", "RSIVA"), avance);
    case TareaIVA::CreaIVADeDiario:
      return creaDeDiario(empresa, mascara, avance);
  }
  return false;
}
