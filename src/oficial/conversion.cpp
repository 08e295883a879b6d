#include "oficial/conversion.h"

#include <algorithm>
#include <cmath>
#include <QMap>
#include <QSet>

#include "accounts/plangeneral.h"
#include "common/errorejecucion.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"
#include "oficial/tablafija.h"
#include "oficial/tablasoficiales.h"

namespace {

constexpr int kDigitosDelPlan = 3;

// What the plan makes of an account of 1990.
struct Paso {
  QString destino;
  QString nota;
  QString clase;
};

const QHash<QString, Paso>& pasos() {
  static const QHash<QString, Paso> mapa = [] {
    QHash<QString, Paso> lista;
    for (const QStringList& fila : leeTablaFija(QStringLiteral("de1990a2007.csv")))
      lista.insert(fila[0], {fila[1], fila[2], fila[3]});
    return lista;
  }();
  return mapa;
}

int anchoDe(const Database& empresa, const char* tabla) {
  return empresa.tableDef(QLatin1String(tabla)).Fields.front().Size;
}

// The columns of a table that hold codes of one width.
QStringList columnasDe(const TablaDeEmpresa& tabla, int ancho) {
  QStringList columnas;
  for (const CampoDeTabla& campo : tabla.campos)
    if (campo.ancho == ancho) columnas += QString::fromUtf8(campo.nombre);
  return columnas;
}

// All tables of the file that hold codes of subcuentas.
QList<const TablaDeEmpresa*> tablasConCodigos(const Database& empresa) {
  QList<const TablaDeEmpresa*> tablas;
  for (const auto& todas : {tablasDeEmpresa(), tablasOficiales()})
    for (const TablaDeEmpresa& tabla : todas)
      if (!columnasDe(tabla, ancho::kSubcuenta).isEmpty() &&
          empresa.TableDefs().contains(QLatin1String(tabla.nombre), Qt::CaseInsensitive))
        tablas += &tabla;
  return tablas;
}

// Every code that stands anywhere, with its name, its lines and its balance.
QMap<QString, FilaConversion> codigosDe(Database& empresa) {
  QMap<QString, FilaConversion> filas;
  for (const TablaDeEmpresa* tabla : tablasConCodigos(empresa)) {
    const QString nombre = QLatin1String(tabla->nombre);
    for (const QString& columna : columnasDe(*tabla, ancho::kSubcuenta)) {
      RowReader codigos(
          empresa,
          QStringLiteral("Select %1, Count(*) AS Veces from %2 group by %1").arg(columna, nombre));
      while (codigos.next()) {
        if (codigos.text(0).isEmpty()) continue;
        FilaConversion& fila = filas[codigos.text(0)];
        fila.codigo = codigos.text(0);
        if (nombre == QLatin1String("Diario")) fila.lineas = static_cast<int>(codigos.number(1));
      }
    }
  }
  RowReader nombres(empresa, QStringLiteral("Select Subcuenta, Descripcion from Subcuentas"));
  while (nombres.next()) filas[nombres.text(0)].nombre = nombres.text(1);
  RowReader saldos(empresa, QStringLiteral("Select Subcuenta, SaldoFinal from "
                                           "SqlSubcuentasSaldosCuentas"));
  while (saldos.next())
    if (filas.contains(saldos.text(0))) filas[saldos.text(0)].saldo = saldos.number(1);
  return filas;
}

// The cuentas that the company may have afterwards: those of the plan and those of its own making.
QSet<QString> cuentasPosibles(Database& empresa, Modelo2007 modelo, int digitosCuenta) {
  QSet<QString> cuentas;
  for (const CuentaDe2007& cuenta : cuentasDe2007(modelo, digitosCuenta))
    cuentas.insert(cuenta.codigo);
  RowReader suyas(empresa, QStringLiteral("Select Cuenta from Cuentas"));
  while (suyas.next())
    if (!pasos().contains(suyas.text(0).left(kDigitosDelPlan))) cuentas.insert(suyas.text(0));
  return cuentas;
}

// With more digits than three, a cuenta stands for itself where its first three are in the plan.
bool hayCuenta(const QSet<QString>& posibles, const QSet<QString>& delPlan, const QString& cuenta) {
  return posibles.contains(cuenta) ||
         (cuenta.size() > kDigitosDelPlan && delPlan.contains(cuenta.left(kDigitosDelPlan)));
}

QSet<QString> codigosDelPlan(Modelo2007 modelo) {
  QSet<QString> codigos;
  for (const CuentaDe2007& cuenta : cuentasDe2007(modelo, kDigitosDelPlan))
    codigos.insert(cuenta.codigo);
  return codigos;
}

// The next code with another ending that nobody has.
QString libre(const QString& codigo, qsizetype fijos, const QSet<QString>& tomados) {
  const qsizetype cifras = codigo.size() - fijos;
  const qint64 todas = static_cast<qint64>(std::pow(10, std::min<qsizetype>(cifras, 9)));
  qint64 numero = codigo.mid(fijos).toLongLong();
  for (qint64 intento = 0; intento < todas; ++intento) {
    numero = (numero + 1) % todas;
    const QString otro =
        codigo.left(fijos) + QString::number(numero).rightJustified(static_cast<int>(cifras), u'0');
    if (!tomados.contains(otro)) return otro;
  }
  return {};
}

}  // namespace

QString codigoConvertido(const QString& codigo, const QString& destino) {
  return destino + codigo.mid(std::max<qsizetype>(kDigitosDelPlan, destino.size()));
}

QList<FilaConversion> proponeConversion(Database& empresa, Modelo2007 modelo) {
  QList<FilaConversion> filas = codigosDe(empresa).values();
  const QSet<QString> delPlan = codigosDelPlan(modelo);
  QSet<QString> tomados;
  const auto anota = [](FilaConversion& fila, const QString& nota) {
    fila.nota += (fila.nota.isEmpty() ? QString() : QStringLiteral(". ")) + nota;
  };
  for (FilaConversion& fila : filas) {
    const QString cuenta = fila.codigo.left(kDigitosDelPlan);
    const auto paso = pasos().constFind(cuenta);
    if (paso == pasos().cend()) {
      // An account of the company's own keeps its code; it may mean something in 2007.
      fila.dudosa = delPlan.contains(cuenta);
      if (!fila.dudosa) fila.nuevo = fila.codigo;
      anota(fila, fila.dudosa ? QStringLiteral("No es del plan anterior, y en 2007 significa algo")
                              : QStringLiteral("Cuenta propia"));
      if (!fila.dudosa) tomados.insert(fila.nuevo);
      continue;
    }
    fila.nota = paso->nota;
    const QString& destino = paso->destino;
    fila.dudosa = destino.isEmpty() || paso->clase == QLatin1String("dudosa");
    if (!fila.dudosa && !delPlan.contains(destino.left(kDigitosDelPlan))) {
      fila.dudosa = true;
      anota(fila, destino + QStringLiteral(" no está en este modelo"));
    }
    if (fila.dudosa && !destino.isEmpty())
      anota(fila, QStringLiteral("Lo corriente sería ") + codigoConvertido(fila.codigo, destino));
    if (fila.dudosa) continue;
    fila.nuevo = paso->clase == QLatin1String("igual") ? fila.codigo
                                                       : codigoConvertido(fila.codigo, destino);
    if (fila.nuevo == fila.codigo) tomados.insert(fila.nuevo);
  }
  // Who keeps a code keeps it; who comes to one that is taken gets another ending.
  for (FilaConversion& fila : filas) {
    if (fila.nuevo.isEmpty() || fila.nuevo == fila.codigo) continue;
    if (tomados.contains(fila.nuevo)) {
      const QString destino = pasos().value(fila.codigo.left(kDigitosDelPlan)).destino;
      anota(fila, fila.nuevo + QStringLiteral(" es de otra: cambia la terminación"));
      fila.nuevo = libre(fila.nuevo, destino.size(), tomados);
    }
    tomados.insert(fila.nuevo);
  }
  return filas;
}

QStringList faltasDeConversion(Database& empresa, const Conversion& conversion) {
  const int digitos = anchoDe(empresa, "Subcuentas"), digitosCuenta = anchoDe(empresa, "Cuentas");
  const QSet<QString> posibles = cuentasPosibles(empresa, conversion.modelo, digitosCuenta);
  const QSet<QString> delPlan = codigosDelPlan(conversion.modelo);
  QHash<QString, QString> deQuien;
  QStringList faltas;
  for (const FilaConversion& fila : conversion.filas) {
    const QString& nuevo = fila.nuevo;
    const bool cifras = std::ranges::all_of(nuevo, [](QChar c) { return c >= u'0' && c <= u'9'; });
    const QString cuenta = nuevo.left(digitosCuenta);
    // A code that was never whole stays as it is.
    const bool entera = fila.codigo.size() == digitos;
    if (nuevo.isEmpty())
      faltas += QStringLiteral("%1: falta decidir su código nuevo").arg(fila.codigo);
    else if (!cifras || (entera && nuevo.size() != digitos))
      faltas += QStringLiteral("%1: %2 no tiene %3 cifras").arg(fila.codigo, nuevo).arg(digitos);
    else if (!hayCuenta(posibles, delPlan, cuenta))
      faltas += QStringLiteral("%1: la cuenta %2 no está en el plan").arg(fila.codigo, cuenta);
    else if (deQuien.contains(nuevo))
      faltas += QStringLiteral("%1: %2 es ya el código nuevo de %3")
                    .arg(fila.codigo, nuevo, deQuien.value(nuevo));
    else
      deQuien.insert(nuevo, fila.codigo);
  }
  return faltas;
}

namespace {

// The work itself, once nothing keeps it from being done.
class Obra {
 public:
  Obra(Database& empresa, const Conversion& conversion)
      : empresa_(empresa), modelo_(conversion.modelo), digitosCuenta_(anchoDe(empresa, "Cuentas")) {
    for (const FilaConversion& fila : conversion.filas) mapa_.insert(fila.codigo, fila.nuevo);
  }

  void convierteCodigos(Convertido& hecho, const Avance& avance);
  void convierteCuentas();
  QMap<QString, SumasConversion> sumas(bool conNuevos) const;

 private:
  QString nuevo(const QString& codigo) const { return mapa_.value(codigo, codigo); }
  QString cuentaNueva(const QString& cuenta) const;
  void convierteSubcuentas(Convertido& hecho);

  Database& empresa_;
  Modelo2007 modelo_;
  int digitosCuenta_;
  QHash<QString, QString> mapa_;
};

QString Obra::cuentaNueva(const QString& cuenta) const {
  const auto paso = pasos().constFind(cuenta.left(kDigitosDelPlan));
  if (paso == pasos().cend() || paso->clase == QLatin1String("igual")) return cuenta;
  if (paso->destino.isEmpty()) return {};
  return codigoConvertido(cuenta, paso->destino).left(digitosCuenta_);
}

// Their code is their key: those that move go and come again.
void Obra::convierteSubcuentas(Convertido& hecho) {
  const auto filas = empresa_.OpenRecordset(QStringLiteral("Subcuentas"));
  QList<QList<Variant>> movidas;
  for (; !filas->Eof(); filas->MoveNext()) {
    const QString codigo = filas->Fields(0).display();
    if (nuevo(codigo) == codigo) continue;
    QList<Variant> fila;
    for (int i = 0; i < filas->FieldCount(); ++i) fila += filas->Fields(i).Value();
    fila[0] = nuevo(codigo);
    fila[1] = nuevo(codigo).left(digitosCuenta_);
    movidas += fila;
    filas->Delete();
  }
  for (const QList<Variant>& fila : movidas) {
    filas->AddNew();
    completa(*filas, [&] {
      for (int i = 0; i < fila.size(); ++i) filas->Fields(i) = fila[i];
    });
  }
  hecho.subcuentas = static_cast<int>(movidas.size());
}

void Obra::convierteCodigos(Convertido& hecho, const Avance& avance) {
  convierteSubcuentas(hecho);
  for (const TablaDeEmpresa* tabla : tablasConCodigos(empresa_)) {
    const QString nombre = QLatin1String(tabla->nombre);
    if (nombre == QLatin1String("Subcuentas")) continue;
    const QStringList columnas = columnasDe(*tabla, ancho::kSubcuenta);
    const auto filas = empresa_.OpenRecordset(
        QStringLiteral("Select %1 from %2").arg(columnas.join(u','), nombre));
    const int total = filas->rowTotal();
    for (; !filas->Eof(); filas->MoveNext()) {
      avance(filas->AbsolutePosition(), total);
      QList<std::pair<int, QString>> cambios;
      for (int i = 0; i < columnas.size(); ++i) {
        const QString codigo = filas->Fields(i).display();
        if (nuevo(codigo) != codigo) cambios.append({i, nuevo(codigo)});
      }
      if (cambios.isEmpty()) continue;
      filas->Edit();
      completa(*filas, [&] {
        for (const auto& [columna, codigo] : cambios) filas->Fields(columna) = codigo;
      });
      if (nombre == QLatin1String("Diario")) ++hecho.lineas;
    }
  }
}

// The cuentas of the plan, those of the company's own making, and those that subcuentas need.
void Obra::convierteCuentas() {
  QHash<QString, QString> antes;  // the standing names
  for (const CuentaDelPlan& cuenta : planGeneral())
    antes.insert(QString::fromUtf8(cuenta.codigo).leftJustified(digitosCuenta_, u'0'),
                 QString::fromUtf8(cuenta.nombre));
  QMap<QString, QString> nombres;
  QSet<QString> conFicha;
  for (const CuentaDe2007& cuenta : cuentasDe2007(modelo_, digitosCuenta_))
    nombres.insert(cuenta.codigo, cuenta.nombre);
  QHash<QString, QString> suyos;
  const auto cuentas = empresa_.OpenRecordset(QStringLiteral("Cuentas"));
  for (; !cuentas->Eof(); cuentas->MoveNext()) {
    const QString codigo = cuentas->Fields("Cuenta").display();
    const QString nombre = cuentas->Fields("Descripcion").display();
    const QString nueva = cuentaNueva(codigo);
    if (cuentas->Fields("DatosAuxiliares").Value().toBool()) conFicha.insert(nueva);
    const bool propia = !pasos().contains(codigo.left(kDigitosDelPlan));
    // A name of the company's own stays with an account that stays.
    const bool renombrada = nueva == codigo && antes.value(codigo, nombre) != nombre;
    if (propia || renombrada) nombres.insert(codigo, nombre);
    suyos.insert(nueva, nombre);
    cuentas->Delete();
  }
  const auto subcuentas = empresa_.OpenRecordset(QStringLiteral("Select Cuenta from Subcuentas"));
  for (; !subcuentas->Eof(); subcuentas->MoveNext()) {
    const QString cuenta = subcuentas->Fields(0).display();
    if (cuenta.isEmpty() || nombres.contains(cuenta)) continue;
    nombres.insert(cuenta, suyos.value(cuenta));
  }
  for (auto it = nombres.cbegin(); it != nombres.cend(); ++it) {
    cuentas->AddNew();
    completa(*cuentas, [&] {
      cuentas->Fields("Cuenta") = it.key();
      cuentas->Fields("Descripcion") = it.value();
      cuentas->Fields("GrupoN") = it.key().left(1);
      cuentas->Fields("SubGrupoN") = it.key().left(2);
      cuentas->Fields("DatosAuxiliares") = conFicha.contains(it.key());
    });
  }
  const auto empresa = empresa_.OpenRecordset(QStringLiteral("Select * from Empresa"));
  if (empresa->Eof()) return;
  empresa->Edit();
  completa(*empresa, [&] {
    for (const char* campo : {"IVASPro", "IVARCli"}) {
      const QString nueva = cuentaNueva(empresa->Fields(campo).display());
      if (!nueva.isEmpty()) empresa->Fields(campo) = nueva;
    }
  });
}

// Of each code of the journal, in millionths; by its new one before the change.
QMap<QString, SumasConversion> Obra::sumas(bool conNuevos) const {
  QMap<QString, SumasConversion> porCodigo;
  RowReader filas(empresa_, QStringLiteral("Select Subcuenta, SumaDeDebe, SumaDeHaber from "
                                           "SqlSubcuentasSaldosCuentas"));
  while (filas.next()) {
    SumasConversion& suma = porCodigo[conNuevos ? nuevo(filas.text(0)) : filas.text(0)];
    suma.debe += std::round(filas.number(1) * 1e6);
    suma.haber += std::round(filas.number(2) * 1e6);
  }
  return porCodigo;
}

SumasConversion totalDe(const QMap<QString, SumasConversion>& porCodigo) {
  SumasConversion total;
  for (const SumasConversion& suma : porCodigo) {
    total.debe += suma.debe / 1e6;
    total.haber += suma.haber / 1e6;
  }
  return total;
}

}  // namespace

Convertido convierteA2007(DBEngine& motor, Database& empresa, const Conversion& conversion,
                          const QDate& desde, const Avance& avance) {
  Convertido hecho;
  Obra obra(empresa, conversion);
  DBEngine::Whole cambio(motor);
  // Written first, so that nobody else writes from here on.
  anotaPlan2007(empresa, conversion.modelo, desde);
  const auto antes = obra.sumas(true);
  obra.convierteCodigos(hecho, avance);
  obra.convierteCuentas();
  ponNivelesDe2007(empresa, conversion.modelo);
  const auto despues = obra.sumas(false);
  const auto iguales = [](const SumasConversion& a, const SumasConversion& b) {
    return a.debe == b.debe && a.haber == b.haber;
  };
  const bool cuadra = antes.keys() == despues.keys() && std::ranges::equal(antes, despues, iguales);
  if (!cuadra)
    throw ErrorEjecucion(err::kReglaIncumplida,
                         QStringLiteral("las sumas de algún código no son las de antes"));
  cambio.commit();
  hecho.antes = totalDe(antes);
  hecho.despues = totalDe(despues);
  return hecho;
}

QString copiaAntesDeConvertir(DBEngine& motor, const QString& rutaEmpresa) {
  const QString carpeta = rutaEmpresa.left(rutaEmpresa.lastIndexOf(u'\\') + 1);
  for (int numero = 1;; ++numero) {
    const QString ruta =
        carpeta + QStringLiteral("Conta antes de 2007%1.MDB")
                      .arg(numero == 1 ? QString() : QStringLiteral(" (%1)").arg(numero));
    if (motor.exists(ruta)) continue;
    motor.CopyDatabase(rutaEmpresa, ruta);
    return ruta;
  }
}
