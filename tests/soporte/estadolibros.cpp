#include "soporte/estadolibros.h"

#include <sqlite3.h>
#include <QtCore>

namespace {

constexpr const char* kContenido =
    "SELECT * FROM Diario ORDER BY NLinea; SELECT * FROM RSIVA ORDER BY Codigo; "
    "SELECT Asiento, NLinDiario, NLinIVAS, NLinIVAR FROM Empresa";

// The bank's movements with their lines; a complaint, and always the same, where none was read yet.
constexpr const char* kBanco = "SELECT Numero, Apunte FROM MovimientosBanco ORDER BY Numero";

// The sums that a company keeps against a recount of its lines, both ways.
constexpr const char* kSumas =
    "CREATE TEMP TABLE cuenta AS SELECT count(*) AS n, "
    "sum(iif(DH='D', coalesce(CAST(round(Importe*1000000) AS INTEGER), 0), 0)) AS d, "
    "sum(iif(DH='D', 0, coalesce(CAST(round(Importe*1000000) AS INTEGER), 0))) AS h, "
    "NAsiento, lower(Subcuenta) AS s, CAST(substr(Fecha, 6, 2) AS INTEGER) AS m "
    "FROM Diario GROUP BY NAsiento, s, m;"
    "SELECT 'sumas del diario', * FROM (SELECT NumeroLineas, SumaDebe, SumaHaber FROM "
    "librano_sumas_1 EXCEPT SELECT sum(n), sum(d), sum(h) FROM cuenta);"
    "SELECT 'sumas por asiento', * FROM (SELECT NAsiento, NumeroLineas, SumaDebe, SumaHaber FROM "
    "librano_sumas_2 EXCEPT SELECT NAsiento, sum(n), sum(d), sum(h) FROM cuenta GROUP BY NAsiento);"
    "SELECT 'falta asiento', * FROM (SELECT NAsiento FROM Diario EXCEPT SELECT NAsiento FROM "
    "librano_sumas_2);"
    "SELECT 'sumas por mes', * FROM (SELECT lower(Subcuenta), MesFecha, NumeroLineas, SumaDebe, "
    "SumaHaber FROM librano_sumas_3 EXCEPT SELECT s, m, sum(n), sum(d), sum(h) FROM cuenta GROUP "
    "BY s, m);"
    "SELECT 'falta mes', * FROM (SELECT s, m FROM cuenta EXCEPT SELECT lower(Subcuenta), MesFecha "
    "FROM librano_sumas_3);"
    "SELECT 'contador', NLinDiario FROM Empresa WHERE NLinDiario <= (SELECT max(NLinea) FROM "
    "Diario)";

// What the library gives for some statements, or its complaint.
QString pregunta(const QString& ruta, const char* sql) {
  sqlite3* base = nullptr;
  sqlite3_open_v2(ruta.toUtf8().constData(), &base, SQLITE_OPEN_READWRITE, nullptr);
  QStringList filas;
  const auto fila = [](void* todas, int columnas, char** valores, char**) {
    QStringList celdas;
    for (int i = 0; i < columnas; ++i) celdas << QString::fromUtf8(valores[i] ? valores[i] : "-");
    static_cast<QStringList*>(todas)->append(celdas.join(u'|'));
    return 0;
  };
  if (sqlite3_exec(base, sql, fila, &filas, nullptr) != SQLITE_OK)
    filas << QString::fromUtf8(sqlite3_errmsg(base));
  sqlite3_close(base);
  return filas.join(u'\n');
}

// The catalogue, and what a rebuilding that was broken off has left.
bool noSonLibros(const QString& ruta) {
  return ruta.endsWith("Inicio.mdb") || ruta.endsWith("Conta2.MDB");
}

QStringList empresas(const QString& carpeta) {
  QStringList rutas;
  QDirIterator it(carpeta, {"*.MDB"}, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext())
    if (const QString ruta = it.next(); !noSonLibros(ruta)) rutas << ruta;
  rutas.sort();
  return rutas;
}

}  // namespace

QString contenidoDeLibros(const QString& carpeta) {
  QStringList todo;
  for (const QString& ruta : empresas(carpeta))
    todo << ruta.mid(carpeta.size()) << pregunta(ruta, kContenido) << pregunta(ruta, kBanco);
  return todo.join(u'\n');
}

QString quejasDeLibros(const QString& carpeta) {
  QStringList quejas;
  for (const QString& ruta : empresas(carpeta)) {
    QString suyas = pregunta(ruta, "PRAGMA integrity_check");
    if (suyas == "ok") suyas = pregunta(ruta, kSumas);
    if (!suyas.isEmpty()) quejas << ruta.mid(carpeta.size()) << suyas;
  }
  return quejas.join(u'\n');
}
