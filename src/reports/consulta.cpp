#include "reports/consulta.h"

#include "common/errorejecucion.h"
#include "reports/errores.h"
#include "reports/expresiones.h"

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

  Consulta c;
  c.origen = o;
  c.columnas = partesDe(o.columnas);
  c.codigos = lineas.codigos();
  c.condiciones = lineas.partes([&](const auto& campo, bool) { return expresionDe(o, campo); });
  if (!o.donde.isEmpty()) c.condiciones.insert(c.condiciones.begin(), {u'(' + o.donde + u')', {}});
  c.teniendo = conjuntos.condicion([&](const auto& campo, bool agrupa) {
    QString e = expresionDe(o, campo);
    if (agrupa && !agrupaPor(o, e))
      rechaza(QStringLiteral("el libro no agrupa por ") + campo.campo);
    return e;
  });

  return c;
}

QString Consulta::sentenciaDe(const QString& lista, const QString& ademas,
                              const QString& cola) const {
  QStringList donde;
  for (const Formula::Parte& p : condiciones) donde << p.condicion;
  if (!ademas.isEmpty()) donde << ademas;
  QString todo = QStringLiteral("SELECT ") + lista + QStringLiteral(" FROM ") + origen.desde;
  if (!donde.isEmpty()) todo += QStringLiteral(" WHERE ") + donde.join(QStringLiteral(" AND "));
  return todo + cola;
}

QString Consulta::sentenciaDe(const QStringList& lista, const QString& ademas) const {
  QString cola;
  if (!origen.agrupado.isEmpty()) cola += QStringLiteral(" GROUP BY ") + origen.agrupado;
  if (!teniendo.isEmpty()) cola += QStringLiteral(" HAVING ") + teniendo;
  if (!origen.orden.isEmpty()) cola += QStringLiteral(" ORDER BY ") + origen.orden;
  return sentenciaDe(lista.join(QStringLiteral(", ")), ademas, cola);
}

QString Consulta::sentencia(const QString& ademas) const {
  return sentenciaDe(columnas, ademas);
}

QString Consulta::sentenciaCorta(const std::vector<int>& solo, std::vector<int>* sitio,
                                 const QString& ademas) const {
  const auto cuantas = static_cast<size_t>(columnas.size());
  sitio->clear();
  if (solo.empty() || !origen.agrupado.isEmpty() || columnas.contains(QStringLiteral("*")))
    return sentencia(ademas);
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
  return sentenciaDe(pedidas, ademas);
}

}  // namespace reports
