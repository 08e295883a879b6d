#include "libros.h"

#include <cstdlib>
#include <map>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "company/alta.h"
#include "company/crearbase.h"
#include "engine/recordset.h"
#include "soporte/libros.h"
#include "start/creaini.h"

namespace banco {

namespace {

QTemporaryDir& carpetaComun() {
  static QTemporaryDir carpeta;
  return carpeta;
}

[[noreturn]] void falla(const char* que, sqlite3* db) {
  fprintf(stderr, "%s: %s\n", que, db ? sqlite3_errmsg(db) : "");
  std::exit(1);
}

QString codigo(int i) {
  static const char* const kCuentas[] = {"430", "400", "572", "600", "700", "472"};
  return QString("%1%2")
      .arg(kCuentas[i / 100 % std::size(kCuentas)])
      .arg(i % 100 + (i / 100 == 0 ? 100 : 1) + i / 600 * 1000, 5, 10, QLatin1Char('0'));
}

// What a test of the program calls an ordinary company.
DatosEmpresa datosDelBanco() {
  return ::Libros::datosPorDefecto(kEmpresa, 3, 8);
}

}  // namespace

Libros& Libros::de(int lineas, int subcuentas) {
  static std::map<std::pair<int, int>, std::unique_ptr<Libros>> todos;
  auto& libros = todos[{lineas, subcuentas}];
  if (!libros) libros.reset(new Libros(lineas, subcuentas));
  return *libros;
}

void tamanos(benchmark::internal::Benchmark* b) {
  b->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->UseRealTime()->Unit(benchmark::kMillisecond);
}

void unaVez(benchmark::internal::Benchmark* b) {
  b->Arg(100'000)->Arg(1'000'000)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
}

Libros& libros(const benchmark::State& estado) {
  return Libros::de(static_cast<int>(estado.range(0)));
}

Libros::Libros(int lineas, int subcuentas)
    : lineas_(lineas),
      subcuentas_(subcuentas),
      carpeta_(carpetaComun().path() + QString("/d%1-%2/").arg(lineas).arg(subcuentas)) {
  QDir().mkpath(carpeta_);
  CrearInicio(motor_, carpeta_ + "Inicio.mdb");
  creaEmpresa(motor_, carpeta_, datosDelBanco());
  motor_.flush();
  const QString guardado = qEnvironmentVariable("LIBRANO_LIBROS");
  const QString hecho = guardado + QString("/%1-%2.MDB").arg(lineas).arg(subcuentas);
  if (!guardado.isEmpty() && QFile::exists(hecho)) {
    QFile::remove(rutaSistema());
    if (!QFile::copy(hecho, rutaSistema())) falla("copia", nullptr);
    return;
  }
  llena();
  if (!guardado.isEmpty() && !QFile::copy(rutaSistema(), hecho)) falla("copia", nullptr);
}

void Libros::llena() {
  Directo directo(rutaSistema());
  // A million lines without writing a page twice, nor what each trigger could have to undo.
  directo.ejecuta("PRAGMA cache_size=-600000; PRAGMA temp_store=MEMORY");
  directo.ejecuta("BEGIN");
  directo.ejecuta(
      "INSERT INTO Cuentas(Cuenta,Descripcion,GrupoN,SubGrupoN,DatosAuxiliares) VALUES"
      "('430','Clientes','4','43',0),('400','Proveedores','4','40',0),('572','Bancos','5','57',0),"
      "('600','Compras','6','60',0),('700','Ventas','7','70',0),('472','IVA "
      "soportado','4','47',0)");
  sqlite3_stmt* subcuenta = directo.prepara(
      "INSERT OR IGNORE INTO Subcuentas(Subcuenta,Cuenta,Descripcion) "
      "VALUES(?1,substr(?1,1,3),?2)");
  QList<QByteArray> codigos;
  for (int i = 0; i < subcuentas_; ++i) {
    codigos.append(codigo(i).toUtf8());
    const QByteArray nombre = "Titular de prueba " + QByteArray::number(i);
    sqlite3_bind_text(subcuenta, 1, codigos.last().constData(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(subcuenta, 2, nombre.constData(), -1, SQLITE_TRANSIENT);
    Directo::recorre(subcuenta);
  }
  sqlite3_stmt* linea = directo.prepara(
      "INSERT INTO Diario(NLinea,NAsiento,Fecha,Subcuenta,Descripcion,DH,Importe) "
      "VALUES(?,?,?,?,?,?,?)");
  const QDate primero(2024, 1, 1);
  for (int i = 0; i < lineas_; ++i) {
    const int asiento = i / 3;
    const QByteArray fecha = primero.addDays(static_cast<qint64>(asiento) * 3 * 366 / lineas_ % 366)
                                 .toString(Qt::ISODate)
                                 .toUtf8();
    const double base = 10 + asiento % 997 + (asiento % 100) / 100.0;
    const double importes[] = {base * 2, -base, -base};
    const QByteArray concepto = "Apunte de prueba " + QByteArray::number(asiento);
    sqlite3_bind_int(linea, 1, i);
    sqlite3_bind_int(linea, 2, asiento + 1);
    sqlite3_bind_text(linea, 3, fecha.constData(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(linea, 4, codigos[(i * 7) % subcuentas_].constData(), -1, SQLITE_STATIC);
    sqlite3_bind_text(linea, 5, concepto.constData(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(linea, 6, i % 3 == 0 ? "D" : "H", -1, SQLITE_STATIC);
    sqlite3_bind_double(linea, 7, importes[i % 3]);
    Directo::recorre(linea);
  }
  const QByteArray contadores = "UPDATE Empresa SET NLinDiario=" + QByteArray::number(lineas_) +
                                ", Asiento=" + QByteArray::number(lineas_ / 3 + 2);
  directo.ejecuta(contadores.constData());
  directo.ejecuta("COMMIT");
}

QString Libros::copia(const QString& nombre) const {
  const QString destino = carpeta_ + nombre;
  QFile::remove(destino);
  if (!QFile::copy(rutaSistema(), destino)) falla("copia", nullptr);
  return destino;
}

Directo::Directo(const QString& rutaSistema) {
  if (sqlite3_open(rutaSistema.toUtf8().constData(), &db_) != SQLITE_OK) falla("abrir", db_);
  ejecuta("PRAGMA journal_mode=TRUNCATE");
  ejecuta("PRAGMA synchronous=EXTRA");
}

Directo::~Directo() {
  while (sqlite3_stmt* s = sqlite3_next_stmt(db_, nullptr)) sqlite3_finalize(s);
  sqlite3_close(db_);
}

sqlite3_stmt* Directo::prepara(const char* sql) {
  sqlite3_stmt* sentencia = nullptr;
  if (sqlite3_prepare_v3(db_, sql, -1, SQLITE_PREPARE_PERSISTENT, &sentencia, nullptr) != SQLITE_OK)
    falla(sql, db_);
  return sentencia;
}

void Directo::ejecuta(const char* sql) {
  if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) falla(sql, db_);
}

int Directo::recorre(sqlite3_stmt* sentencia) {
  int filas = 0;
  int rc = SQLITE_ROW;
  while ((rc = sqlite3_step(sentencia)) == SQLITE_ROW) ++filas;
  if (rc != SQLITE_DONE) falla("paso", sqlite3_db_handle(sentencia));
  sqlite3_reset(sentencia);
  return filas;
}

void creaFichero(DBEngine& motor, const QString& ruta) {
  QFile::remove(ruta);
  CrearBase(motor, ruta, 3, 8, 1, datosDelBanco());
  motor.flush();
}

QList<QByteArray> volcado(const QString& rutaSistema) {
  Directo directo(rutaSistema);
  const auto textos = [&](const QByteArray& sql) {
    QList<QByteArray> lista;
    sqlite3_stmt* s = directo.prepara(sql.constData());
    while (sqlite3_step(s) == SQLITE_ROW)
      lista.append(reinterpret_cast<const char*>(sqlite3_column_text(s, 0)));
    return lista;
  };
  QList<QByteArray> ordenes = textos("SELECT sql FROM sqlite_master WHERE type='table'");
  for (const QByteArray& tabla : textos("SELECT name FROM sqlite_master WHERE type='table'")) {
    QByteArrayList valores;
    for (const QByteArray& columna : textos("SELECT name FROM pragma_table_info('" + tabla + "')"))
      valores.append("quote([" + columna + "])");
    ordenes += textos("SELECT 'INSERT INTO [" + tabla + "] VALUES(' || " + valores.join("||','||") +
                      " || ')' FROM [" + tabla + "]");
  }
  return ordenes + textos("SELECT sql FROM sqlite_master WHERE type<>'table' AND sql NOT NULL");
}

}  // namespace banco
