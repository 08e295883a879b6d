#include "oficial/conversion.h"

#include <algorithm>
#include <cmath>
#include <QMap>
#include <QSet>

#include "accounts/plangeneral.h"
#include "common/errorejecucion.h"
#include "common/ignorar.h"
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
        if (nombre != QLatin1String("Subcuentas")) fila.usada = true;
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

namespace {

void anota(FilaConversion& fila, const QString& nota) {
  fila.nota += (fila.nota.isEmpty() ? QString() : QStringLiteral(". ")) + nota;
}

// An account of the company's own keeps its code; it may mean something in 2007.
void proponePropia(FilaConversion& fila, bool esDelPlan) {
  fila.dudosa = esDelPlan;
  (fila.dudosa ? fila.corriente : fila.nuevo) = fila.codigo;
  anota(fila, fila.dudosa ? QStringLiteral("No es del plan anterior, y en 2007 significa algo")
                          : QStringLiteral("Cuenta propia"));
}

void propone(FilaConversion& fila, const Paso& paso, const QSet<QString>& delPlan) {
  fila.nota = paso.nota;
  const QString convertido = codigoConvertido(fila.codigo, paso.destino);
  const bool esta = delPlan.contains(paso.destino.left(kDigitosDelPlan));
  fila.dudosa = paso.destino.isEmpty() || paso.clase == QLatin1String("dudosa") || !esta;
  if (!fila.dudosa) {
    fila.nuevo = paso.clase == QLatin1String("igual") ? fila.codigo : convertido;
    return;
  }
  if (paso.destino.isEmpty()) return;
  if (!esta) return anota(fila, paso.destino + QStringLiteral(" no está en este modelo"));
  fila.corriente = convertido;
  anota(fila, QStringLiteral("Lo corriente sería ") + convertido);
}

}  // namespace

QList<FilaConversion> proponeConversion(Database& empresa, Modelo2007 modelo) {
  QList<FilaConversion> filas = codigosDe(empresa).values();
  const QSet<QString> delPlan = codigosDelPlan(modelo);
  QSet<QString> tomados;
  for (FilaConversion& fila : filas) {
    const QString cuenta = fila.codigo.left(kDigitosDelPlan);
    const auto paso = pasos().constFind(cuenta);
    if (paso == pasos().cend())
      proponePropia(fila, delPlan.contains(cuenta));
    else
      propone(fila, *paso, delPlan);
    if (fila.dudosa && !fila.usada) anota(fila, QStringLiteral("No se usa"));
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

int decideNoUsadas(QList<FilaConversion>& filas) {
  QSet<QString> tomados;
  for (const FilaConversion& fila : filas) tomados.insert(fila.nuevo);
  int decididas = 0;
  for (FilaConversion& fila : filas) {
    if (fila.usada || fila.decidida()) continue;
    fila.nuevo = fila.corriente;
    if (tomados.contains(fila.nuevo) && !fila.nuevo.isEmpty())
      fila.nuevo = libre(fila.nuevo, kDigitosDelPlan, tomados);
    fila.seBorra = fila.nuevo.isEmpty();
    tomados.insert(fila.nuevo);
    ++decididas;
  }
  return decididas;
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
    if (fila.seBorra && fila.usada)
      faltas += QStringLiteral("%1: se usa, no puede borrarse").arg(fila.codigo);
    if (fila.seBorra) continue;
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
    for (const FilaConversion& fila : conversion.filas) {
      if (fila.seBorra)
        borradas_.insert(fila.codigo);
      else
        mapa_.insert(fila.codigo, fila.nuevo);
    }
  }

  void convierteCodigos(Convertido& hecho, const Avance& avance);
  void convierteCuentas();
  QMap<QString, SumasConversion> sumas() const;
  QString nuevo(const QString& codigo) const { return mapa_.value(codigo, codigo); }

 private:
  QString cuentaNueva(const QString& cuenta) const;
  void convierteSubcuentas(Convertido& hecho);

  Database& empresa_;
  Modelo2007 modelo_;
  int digitosCuenta_;
  QHash<QString, QString> mapa_;
  QSet<QString> borradas_;
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
    if (borradas_.contains(codigo)) {
      filas->Delete();
      ++hecho.borradas;
    }
    if (borradas_.contains(codigo) || nuevo(codigo) == codigo) continue;
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

// Of each code of the journal, as the file keeps them.
QMap<QString, SumasConversion> Obra::sumas() const {
  QMap<QString, SumasConversion> porCodigo;
  RowReader filas(empresa_, QStringLiteral("Select Subcuenta, SumaDeDebe, SumaDeHaber from "
                                           "SqlSubcuentasSaldosCuentas"));
  while (filas.next()) porCodigo[filas.text(0)] = {filas.number(1), filas.number(2)};
  return porCodigo;
}

bool iguales(double a, double b) {
  constexpr double kMillonesimas = 1e6;  // in which they are kept
  return std::round(a * kMillonesimas) == std::round(b * kMillonesimas);
}

bool cuadra(const FilaDeSumas& fila) {
  return iguales(fila.antes.debe, fila.despues.debe) &&
         iguales(fila.antes.haber, fila.despues.haber);
}

}  // namespace

FilaDeSumas Convertido::total() const {
  FilaDeSumas total;
  for (const FilaDeSumas& fila : sumas)
    for (const auto lado : {&FilaDeSumas::antes, &FilaDeSumas::despues}) {
      (total.*lado).debe += (fila.*lado).debe;
      (total.*lado).haber += (fila.*lado).haber;
    }
  return total;
}

Convertido convierteA2007(DBEngine& motor, Database& empresa, const Conversion& conversion,
                          const QDate& desde, const Avance& avance) {
  Convertido hecho;
  Obra obra(empresa, conversion);
  DBEngine::Whole cambio(motor);
  // Written first, so that nobody else writes from here on.
  anotaPlan2007(empresa, conversion.modelo, desde);
  const auto antes = obra.sumas();
  obra.convierteCodigos(hecho, avance);
  obra.convierteCuentas();
  ponNivelesDe2007(empresa, conversion.modelo);
  auto despues = obra.sumas();
  QHash<QString, QString> nombres;
  for (const FilaConversion& fila : conversion.filas) nombres.insert(fila.codigo, fila.nombre);
  for (auto it = antes.cbegin(); it != antes.cend(); ++it) {
    const QString nuevo = obra.nuevo(it.key());
    hecho.sumas.append({it.key(), nuevo, nombres.value(it.key()), *it, despues.take(nuevo)});
  }
  if (!despues.isEmpty() || !std::ranges::all_of(hecho.sumas, cuadra))
    throw ErrorEjecucion(err::kReglaIncumplida,
                         QStringLiteral("las sumas de algún código no son las de antes"));
  cambio.commit();
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

void retiraCopiaSobrante(DBEngine& motor, const QString& rutaEmpresa, const QString& copia,
                         qint64 commits) {
  ignorando([&] {
    const bool igual = commits >= 0 && motor.commits(rutaEmpresa) == commits;
    if (igual && !copia.isEmpty()) motor.DeleteDatabase(copia);
  });
}
