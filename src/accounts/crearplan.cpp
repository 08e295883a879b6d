#include "accounts/crearplan.h"

#include "accounts/plangeneral.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "engine/filas.h"

namespace {

// The same as completa, passing over a row that can't be written.
template <class Cambios>
void completaSiPuede(Recordset& tabla, Cambios&& cambios) {
  ignorando([&] { completa(tabla, cambios); });
}

void creaGrupo(Recordset& cuentas, int digitosCuenta, char grupo) {
  for (const CuentaDelPlan& fila : planGeneral()) {
    if (fila.codigo[0] != grupo) continue;
    const QString codigo = QLatin1String(fila.codigo);
    cuentas.AddNew();
    completaSiPuede(cuentas, [&] {
      cuentas.Fields(QStringLiteral("Cuenta")) = codigo.leftJustified(digitosCuenta, u'0');
      cuentas.Fields(QStringLiteral("Descripcion")) = fila.nombre;
      cuentas.Fields(QStringLiteral("GrupoN")) = codigo.left(1);
      cuentas.Fields(QStringLiteral("SubGrupoN")) = codigo.left(2);
    });
  }
}

enum class SiFalla { Sube, SePasa };

void anadeFilas(Database& origen, Database& destino, const QString& tabla, SiFalla siFalla) {
  const auto filas = origen.OpenRecordset(tabla);
  const auto nuevas = destino.OpenRecordset(tabla);
  for (; !filas->Eof(); filas->MoveNext()) {
    nuevas->AddNew();
    const auto copia = [&] { copiaCampos(*filas, *nuevas); };
    if (siFalla == SiFalla::SePasa)
      completaSiPuede(*nuevas, copia);
    else
      completa(*nuevas, copia);
  }
}

// Kept: the target's row never moves, so each row is written over the one before and the last one
// stays in it. The other rows of the target stay its own.
void sobrescribeFila(Database& origen, Database& destino, const QString& tabla) {
  const auto filas = origen.OpenRecordset(tabla);
  const auto fila = destino.OpenRecordset(tabla);
  for (; !filas->Eof(); filas->MoveNext()) {
    fila->Edit();
    completaSiPuede(*fila, [&] { copiaCampos(*filas, *fila); });
  }
}

}  // namespace

void Crea100(Recordset& cuentas, int digitosCuenta) {
  creaGrupo(cuentas, digitosCuenta, '1');
}
void Crea200(Recordset& cuentas, int digitosCuenta) {
  creaGrupo(cuentas, digitosCuenta, '2');
}
void Crea300(Recordset& cuentas, int digitosCuenta) {
  creaGrupo(cuentas, digitosCuenta, '3');
}
void Crea400(Recordset& cuentas, int digitosCuenta) {
  creaGrupo(cuentas, digitosCuenta, '4');
}
void Crea500(Recordset& cuentas, int digitosCuenta) {
  creaGrupo(cuentas, digitosCuenta, '5');
}
void Crea600(Recordset& cuentas, int digitosCuenta) {
  creaGrupo(cuentas, digitosCuenta, '6');
}
void Crea700(Recordset& cuentas, int digitosCuenta) {
  creaGrupo(cuentas, digitosCuenta, '7');
}

void siembraPlan(Database& empresa, int digitosCuenta) {
  const auto cuentas = empresa.OpenRecordset(QStringLiteral("Cuentas"));
  for (const auto crea : {Crea100, Crea200, Crea300, Crea400, Crea500, Crea600, Crea700})
    crea(*cuentas, digitosCuenta);
}

bool anchurasCopiables(Database& origen, int digitosCuenta, int digitosSubcuenta) {
  const auto empresa = origen.OpenRecordset(QStringLiteral("Select * from Empresa"));
  return empresa->Fields(QStringLiteral("SubCuN01")).toLong() == digitosSubcuenta ||
         empresa->Fields(QStringLiteral("MayorN01")).toLong() == digitosCuenta;
}

void copiaPlan(Database& origen, Database& destino, const CopiaPlan& copia) {
  anadeFilas(origen, destino, QStringLiteral("Cuentas"), SiFalla::Sube);
  if (copia.Subcuentas) anadeFilas(origen, destino, QStringLiteral("Subcuentas"), SiFalla::SePasa);
  if (copia.TiposIva) sobrescribeFila(origen, destino, QStringLiteral("TiposIVA"));
  if (copia.TiposCartera) sobrescribeFila(origen, destino, QStringLiteral("TipoRecibos"));
  if (copia.RestoCartera) anadeFilas(origen, destino, QStringLiteral("Recibos"), SiFalla::SePasa);
}
