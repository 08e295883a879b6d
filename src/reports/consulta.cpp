#include "reports/consulta.h"

#include "common/errorejecucion.h"
#include "reports/errores.h"
#include "reports/formula.h"

namespace reports {
namespace {
bool mismo(const QString& a, const QString& b) {
  return a.compare(b, Qt::CaseInsensitive) == 0;
}

[[noreturn]] void rechaza(const QString& motivo) {
  throw ErrorEjecucion(err::kFormulaRechazada, motivo);
}

const Origen& origenPara(const Plantilla& plantilla, const QStringList& tablas) {
  for (const Origen& o : plantilla.origenes) {
    const auto tiene = [&](const QString& t) { return o.tablas.contains(t, Qt::CaseInsensitive); };
    if (std::all_of(tablas.begin(), tablas.end(), tiene)) return o;
  }
  rechaza(QStringLiteral("el libro no lee ") + tablas.join(QStringLiteral(", ")));
}

const QString* busca(const std::vector<Equivalencia>& todas, const QString& nombre) {
  for (const Equivalencia& e : todas) {
    if (mismo(e.nombre, nombre)) return &e.expresion;
  }
  return nullptr;
}

QString expresionDe(const Origen& origen, const Formula::Referencia& campo) {
  if (campo.tabla.isEmpty()) {
    if (const QString* e = busca(origen.formulas, campo.campo)) return u'(' + *e + u')';
    rechaza(QStringLiteral("el libro no tiene la fórmula @") + campo.campo);
  }
  const QString nombre = campo.tabla + u'.' + campo.campo;
  if (const QString* e = busca(origen.campos, nombre)) return u'(' + *e + u')';
  return u'[' + campo.tabla + QStringLiteral("].[") + campo.campo + u']';
}

// Whether an expression is one of the list of GROUP BY, written the same but for blanks and
// brackets.
bool agrupaPor(const Origen& origen, const QString& expresion) {
  const auto llano = [](QString e) {
    for (const QChar c : QStringLiteral("[]() ")) e.remove(c);
    return e.toLower();
  };
  return llano(origen.agrupado).split(u',').contains(llano(expresion));
}
}  // namespace

Consulta consultaDe(const Plantilla& plantilla, const QString& seleccion, const QString& grupos) {
  const Formula lineas(seleccion), conjuntos(grupos, Formula::Clase::Grupos);
  const Origen& o = origenPara(plantilla, lineas.tablas() + conjuntos.tablas());

  QStringList donde;
  if (!o.donde.isEmpty()) donde << u'(' + o.donde + u')';
  if (!lineas.vacia()) {
    donde << lineas.condicion([&](const auto& campo, bool) { return expresionDe(o, campo); });
  }
  const QString teniendo = conjuntos.condicion([&](const auto& campo, bool agrupa) {
    QString e = expresionDe(o, campo);
    if (agrupa && !agrupaPor(o, e))
      rechaza(QStringLiteral("el libro no agrupa por ") + campo.campo);
    return e;
  });

  QString s = QStringLiteral("SELECT ") + o.columnas + QStringLiteral(" FROM ") + o.desde;
  if (!donde.isEmpty()) s += QStringLiteral(" WHERE ") + donde.join(QStringLiteral(" AND "));
  if (!o.agrupado.isEmpty()) s += QStringLiteral(" GROUP BY ") + o.agrupado;
  if (!teniendo.isEmpty()) s += QStringLiteral(" HAVING ") + teniendo;
  if (!o.orden.isEmpty()) s += QStringLiteral(" ORDER BY ") + o.orden;
  return {&o, s};
}

}  // namespace reports
