#include "oficial/deriva.h"

#include <cmath>
#include <QSet>

#include "engine/dbengine.h"
#include "engine/rowreader.h"
#include "oficial/identificadores.h"
#include "oficial/registrofijo.h"
#include "oficial/tablafija.h"

namespace {

// A third party as its subcuenta tells.
struct Tercero {
  QString nombre, nif;
  Pais pais;
  QString tipoNif;
};

Tercero terceroDe(const QString& nombre, const QString& nif, const QString& pais) {
  Tercero t;
  t.nombre = nombre;
  t.nif = normalizaIdentificador(nif);
  t.pais = paisDe(pais);
  const Pais dePrefijo = paisDePrefijo(t.nif.left(2));
  const bool espanol = compruebaNif(nif) != Comprobacion::Malo;
  // A number with the letters of another member state tells it even where the country wasn't typed.
  if (!espanol && !dePrefijo.codigo.isEmpty() &&
      (pais.trimmed().isEmpty() || t.pais.codigo.isEmpty()))
    t.pais = dePrefijo;
  if (t.pais.esEspana() || t.nif.isEmpty()) {
    if (espanol) t.nif = nifDeNueve(nif);
    if (t.nif.size() == 11 && t.nif.startsWith(QLatin1String("ES")) &&
        compruebaNif(t.nif.mid(2)) != Comprobacion::Malo)
      t.nif.remove(0, 2);
    return t;
  }
  // A foreigner with a Spanish number is declared under that.
  if (!espanol) t.tipoNif = t.pais.deLaUnion() ? QStringLiteral("02") : QStringLiteral("04");
  return t;
}

// Prefixes of subcuentas that tell what an invoice is of, in the plan of any year.
bool empiezaPor(const QString& subcuenta, std::initializer_list<const char*> prefijos) {
  return std::ranges::any_of(prefijos,
                             [&](const char* p) { return subcuenta.startsWith(QLatin1String(p)); });
}

bool sinDeduccion(const LineaRegistro& l) {
  static const QStringList kClaves = {QStringLiteral("03"), QStringLiteral("05"),
                                      QStringLiteral("13"), QStringLiteral("18"),
                                      QStringLiteral("19")};
  return l.recargo != 0 || l.tipoFactura == QLatin1String("F2") || kClaves.contains(l.clave);
}

QString tipoDe(const LineaRegistro& l) {
  const bool sinNombre = l.emitida() && l.nif.isEmpty();
  if (l.negativa()) return sinNombre ? QStringLiteral("R5") : QStringLiteral("R1");
  return sinNombre ? QStringLiteral("F2") : QStringLiteral("F1");
}

void derivaAdquisicion(LineaRegistro& l) {
  l.autorrepercusion = l.emitida();
  l.nif.clear();
  l.nombre.clear();
  l.pais.clear();
  if (l.porcenIVA <= 0) return;
  l.base = std::llround(double(l.iva) * 100 / l.porcenIVA);
  l.baseDeducida = true;
}

}  // namespace

struct Derivador::Privado {
  Database& empresa;
  QHash<QString, Tercero> terceros;
  QHash<QString, QString> tiposIVA;  // names, as they are looked for
  QSet<int> conRetencion;

  void leeTerceros() {
    for (RowReader r(empresa,
                     QStringLiteral("Select Subcuenta, Descripcion, Nif, Pais from Subcuentas"));
         r.next();)
      terceros.insert(r.text(0), terceroDe(r.text(1), r.text(2), r.text(3)));
  }
  void leeTipos() {
    for (RowReader r(empresa, QStringLiteral("Select Codigo, Descripcion from TiposIVA"));
         r.next();)
      tiposIVA.insert(r.text(0), llanoOficial(r.text(1)));
  }
  void leeRetenciones() {
    for (const auto& [desde, hasta] : {std::pair{"4751", "4752"}, std::pair{"473", "474"}}) {
      RowReader r(empresa, QStringLiteral("Select NAsiento from Diario where Subcuenta >= '%1' and "
                                          "Subcuenta < '%2'")
                               .arg(QLatin1String(desde), QLatin1String(hasta)));
      while (r.next()) conRetencion.insert(static_cast<int>(r.number(0)));
    }
  }

  void emitida(LineaRegistro& l, const Pais& pais) const;
  void recibida(LineaRegistro& l, const Pais& pais) const;
};

Derivador::Derivador(Database& empresa, bool retenciones) : p_(new Privado{empresa, {}, {}, {}}) {
  p_->leeTerceros();
  p_->leeTipos();
  if (retenciones) p_->leeRetenciones();
}

Derivador::~Derivador() = default;

// A sale without quota is exempt, unless its rate says otherwise: to the Union, out of it, inside.
void Derivador::Privado::emitida(LineaRegistro& l, const Pais& pais) const {
  l.clave = QStringLiteral("01");
  if (l.iva != 0 || l.recargo != 0 || l.porcenIVA != 0) {
    l.calificacion = QStringLiteral("S1");
    return;
  }
  if (pais.deLaUnion() && !pais.esEspana()) {
    l.exenta = QStringLiteral("E5");
    return;
  }
  if (!pais.codigo.isEmpty() && !pais.esEspana()) {
    l.exenta = QStringLiteral("E2");
    l.clave = QStringLiteral("02");
    return;
  }
  const QString tipo = tiposIVA.value(l.tipoIVA);
  if (tipo.contains(QLatin1String("no suj"))) {
    l.calificacion = QStringLiteral("N1");
  } else if (tipo.contains(QLatin1String("0 %")) || tipo.contains(QLatin1String("0%"))) {
    l.calificacion = QStringLiteral("S1");
  } else {
    l.exenta = QStringLiteral("E1");
  }
}

void Derivador::Privado::recibida(LineaRegistro& l, const Pais& pais) const {
  const bool deFuera = pais.deLaUnion() && !pais.esEspana() && l.iva == 0;
  l.clave = l.recargo != 0             ? QStringLiteral("18")
            : deFuera || l.adquisicion ? QStringLiteral("09")
                                       : QStringLiteral("01");
  l.bienInversion = empiezaPor(l.ctaCon, {"20", "21", "22", "23"});
}

void Derivador::deriva(LineaRegistro& l) {
  static const Tercero kNadie;
  const auto tercero = p_->terceros.constFind(l.cliPro);
  const Tercero& t = tercero == p_->terceros.constEnd() ? kNadie : *tercero;
  l.base = l.baseDeFila;
  l.baseDeducida = false;
  l.nif = t.nif;
  l.nombre = t.nombre;
  l.pais = t.pais.codigo;
  l.tipoNif = t.tipoNif;
  l.calificacion.clear();
  l.exenta.clear();
  l.bienInversion = l.inversion = false;
  l.fechaOperacion = {};
  l.local = empiezaPor(l.ctaCon, {"621", "752"});
  l.retencion = p_->conRetencion.contains(l.asiento);
  if (l.adquisicion) derivaAdquisicion(l);
  const auto escrito = [&](const char* campo) {
    return l.escrito.isEmpty() ? Variant() : l.escrito.value(QLatin1String(campo));
  };
  const auto texto = [&](const char* campo, QString& destino) {
    if (const Variant v = escrito(campo); !v.isNull()) destino = v.display();
  };
  const auto siNo = [&](const char* campo, bool& destino) {
    if (const Variant v = escrito(campo); !v.isNull()) destino = v.display() == QLatin1String("S");
  };
  texto("Nif", l.nif);
  texto("Nombre", l.nombre);
  texto("Pais", l.pais);
  texto("TipoNif", l.tipoNif);
  if (l.tipoNif == QLatin1String("01")) l.tipoNif.clear();
  if (const Variant base = escrito("Base"); !base.isNull()) {
    l.base = centimosDe(base.number());
    l.baseDeducida = false;
  }
  const Pais pais = l.escrito.isEmpty() && !l.adquisicion ? t.pais : paisDe(l.pais);
  l.emitida() ? p_->emitida(l, pais) : p_->recibida(l, pais);
  l.tipoFactura = tipoDe(l);
  texto("TipoFactura", l.tipoFactura);
  texto("Clave", l.clave);
  if (!escrito("Exenta").isNull()) l.calificacion.clear();
  if (!escrito("Calificacion").isNull()) l.exenta.clear();
  texto("Exenta", l.exenta);
  texto("Calificacion", l.calificacion);
  siNo("BienInversion", l.bienInversion);
  siNo("Inversion", l.inversion);
  siNo("Retencion", l.retencion);
  siNo("Local", l.local);
  if (const Variant dia = escrito("FechaOperacion"); !dia.isNull()) l.fechaOperacion = dia.date();
  l.deducible = l.emitida() || sinDeduccion(l) ? 0 : l.iva;
  if (const Variant importe = escrito("Deducible"); !importe.isNull())
    l.deducible = centimosDe(importe.number());
  const bool soloBase = l.inversion || l.clave == QLatin1String("09");
  l.total = soloBase ? l.base : l.base + l.iva + l.recargo;
}

QStringList avisosDe(const LineaRegistro& l, const TiposPorFechas& tipos) {
  QStringList avisos;
  if (l.autorrepercusion) return avisos;
  static const QStringList kConNif = {QStringLiteral("F1"), QStringLiteral("F3"),
                                      QStringLiteral("R1"), QStringLiteral("R2"),
                                      QStringLiteral("R3"), QStringLiteral("R4")};
  const Comprobacion nif = l.tipoNif.isEmpty() ? compruebaNif(l.nif) : Comprobacion::Bueno;
  if (l.nif.isEmpty() && kConNif.contains(l.tipoFactura)) avisos += QStringLiteral("Falta el NIF");
  if (!l.nif.isEmpty() && nif == Comprobacion::Malo)
    avisos += QStringLiteral("El NIF %1 no es correcto").arg(l.nif);
  if (nif == Comprobacion::Dudoso) avisos += QStringLiteral("Compruebe el NIF %1").arg(l.nif);
  if (l.nombre.isEmpty() && !l.nif.isEmpty()) avisos += QStringLiteral("Falta el nombre");
  if (l.pais.isEmpty() && !l.adquisicion) avisos += QStringLiteral("País desconocido");
  if (l.exenta == QLatin1String("E5") && l.tipoNif != QLatin1String("02"))
    avisos += QStringLiteral("Entrega intracomunitaria sin NIF de la Unión");
  if ((l.exenta == QLatin1String("E2") || l.exenta == QLatin1String("E3")) &&
      l.clave == QLatin1String("01"))
    avisos += QStringLiteral("Una exportación no lleva la clave 01");
  if (l.exenta == QLatin1String("E1") && l.escrito.isEmpty())
    avisos += QStringLiteral("Sin cuota: se toma por exenta (E1)");
  if (l.clave == QLatin1String("09") && l.iva == 0)
    avisos += QStringLiteral("Adquisición intracomunitaria sin cuota");
  if (l.clave == QLatin1String("07"))
    avisos += QStringLiteral("Criterio de caja: sus casillas se escriben a mano");
  if (l.baseDeducida) avisos += QStringLiteral("Base calculada desde la cuota");
  const QDate dia = l.fechaOperacion.isValid() ? l.fechaOperacion : l.fecha;
  const bool rectifica = l.tipoFactura.startsWith(u'R') || l.tipoFactura == QLatin1String("F3");
  const QString tipo = tipos.aviso(l.porcenIVA, l.recargo == 0 ? 0 : l.porcenRE, dia);
  if (!tipo.isEmpty() && !rectifica && !l.negativa()) avisos += tipo;
  const qint64 cuota = std::llround(double(l.base) * l.porcenIVA / 100);
  if (std::llabs(cuota - l.iva) > 1) avisos += QStringLiteral("La cuota no es la base por el tipo");
  return avisos;
}
