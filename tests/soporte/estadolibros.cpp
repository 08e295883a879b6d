#include "soporte/estadolibros.h"

#include <sqlite3.h>
#include <QtCore>

#include "soporte/ficheros.h"

namespace {

constexpr const char* kContenido =
    "SELECT * FROM Diario ORDER BY NLinea; SELECT * FROM RSIVA ORDER BY Codigo; "
    "SELECT Subcuenta, Cuenta FROM Subcuentas ORDER BY Subcuenta; "
    "SELECT Asiento, NLinDiario, NLinIVAS, NLinIVAR FROM Empresa";

// The bank's movements with their lines; a complaint, and always the same, where none was read yet.
constexpr const char* kBanco = "SELECT Numero, Apunte FROM MovimientosBanco ORDER BY Numero";

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
    if (suyas == "ok") suyas = pregunta(ruta, contenidoDe(rutaDato("recuento.sql")).constData());
    if (!suyas.isEmpty()) quejas << ruta.mid(carpeta.size()) << suyas;
  }
  return quejas.join(u'\n');
}
