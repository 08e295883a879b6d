#include "accounts/buscaplan.h"

#include "common/comillas.h"
#include "common/errorejecucion.h"
#include "engine/datacontrol.h"

OrdenPlan ordenDe(const QString& texto) {
  return texto.at(0) < u'A' ? OrdenPlan::Codigo : OrdenPlan::Nombre;
}

QString fuentePlan(const ListaPlan& lista, OrdenPlan orden) {
  return QStringLiteral("Select * from %1 order by %2")
      .arg(QLatin1String(lista.tabla),
           orden == OrdenPlan::Codigo ? QLatin1String(lista.codigo) : QLatin1String("Descripcion"));
}

bool buscaEnPlan(DataControl& datos, const ListaPlan& lista, const QString& texto) {
  const QString criterio =
      ordenDe(texto) == OrdenPlan::Codigo
          ? QLatin1String(lista.codigo) + QStringLiteral(" Like ") + entreComillas(texto + u'*')
          : QStringLiteral("Ucase([Descripcion]) Like ") +
                nombreEntreComillas(texto.toUpper() + u'*');
  try {
    datos.FindFirst(criterio);
  } catch (const ErrorEjecucion& e) {
    if (e.numero() != err::kErrorDeSintaxis) throw;
    return false;
  }
  return !datos.Recordset().NoMatch();
}
