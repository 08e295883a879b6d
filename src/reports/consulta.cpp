#include "reports/consulta.h"

#include "common/errorejecucion.h"
#include "reports/errores.h"
#include "reports/expresiones.h"
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

bool agrupaPor(const Origen& origen, const QString& expresion) {
  const QStringList grupos = partesDe(origen.agrupado);
  return std::any_of(grupos.begin(), grupos.end(),
                     [&](const QString& g) { return mismaExpresion(g, expresion); });
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

  QString resto = QStringLiteral(" FROM ") + o.desde;
  if (!donde.isEmpty()) resto += QStringLiteral(" WHERE ") + donde.join(QStringLiteral(" AND "));
  if (!o.agrupado.isEmpty()) resto += QStringLiteral(" GROUP BY ") + o.agrupado;
  if (!teniendo.isEmpty()) resto += QStringLiteral(" HAVING ") + teniendo;
  if (!o.orden.isEmpty()) resto += QStringLiteral(" ORDER BY ") + o.orden;
  Consulta c;
  c.origen = o;
  c.columnas = partesDe(o.columnas);
  c.resto = resto;
  c.codigos = lineas.codigos();
  return c;
}

QString Consulta::sentenciaDe(const QStringList& lista) const {
  return QStringLiteral("SELECT ") + lista.join(QStringLiteral(", ")) + resto;
}

QString Consulta::sentenciaCorta(const std::vector<int>& solo, std::vector<int>* sitio) const {
  const auto cuantas = static_cast<size_t>(columnas.size());
  sitio->clear();
  if (solo.empty() || !origen.agrupado.isEmpty() || columnas.contains(QStringLiteral("*")))
    return sentencia();
  std::vector<bool> entra(cuantas, false);
  for (const int c : solo) entra[size_t(c)] = true;
  // An expression brings along the columns that it calls by the names they are given here.
  for (bool cambia = true; cambia;) {
    cambia = false;
    for (size_t c = 0; c < cuantas; ++c) {
      const QString alias = entra[c] ? QString() : aliasDe(columnas[int(c)]);
      for (size_t otra = 0; otra < cuantas && !alias.isEmpty() && !entra[c]; ++otra) {
        entra[c] = entra[otra] && nombra(columnas[int(otra)], alias);
        cambia = cambia || entra[c];
      }
    }
  }
  QStringList pedidas;
  sitio->assign(cuantas, -1);
  for (size_t c = 0; c < cuantas; ++c) {
    if (!entra[c]) continue;
    (*sitio)[c] = static_cast<int>(pedidas.size());
    pedidas << columnas[int(c)];
  }
  return sentenciaDe(pedidas);
}

}  // namespace reports
