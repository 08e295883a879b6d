#include "oficial/modelo347fichero.h"

#include <algorithm>

#include "common/comillas.h"
#include "common/conversion.h"
#include "common/errorejecucion.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"
#include "oficial/identificadores.h"
#include "oficial/periodo.h"
#include "oficial/registrofijo.h"
#include "oficial/tablafija.h"
#include "oficial/tablasoficiales.h"

namespace {

const QString kTabla = QStringLiteral("Modelo347");
const QString kFueraDeEspana = QStringLiteral("99");
constexpr int kPrimerEjercicio = 2014, kConConvocatoria = 2025;
constexpr qint64 kLimiteMetalico = 600000;

constexpr const char* kCampos[] = {"Metalico", "EjercicioMetalico", "Provincia", "Pais",
                                   "Excluido"};

QString tercero(const LineaRegistro& l) {
  return l.nif.isEmpty() ? l.cliPro : l.nif;
}

// The quarter is that of the entry in the register: of a sale, the day of its invoice.
int trimestreDe(const LineaRegistro& l) {
  const QDate dia = l.emitida() ? l.fecha : l.fechaDeRegistro();
  return (dia.month() + 2) / 3 - 1;
}

// Operations that the declarations of the Union, of customs, or nobody asks for.
bool esDeOtraDeclaracion(const LineaRegistro& l) {
  if (l.adquisicion || l.clave == QLatin1String("09") || l.clave == QLatin1String("13"))
    return true;
  static const QStringList kTipos = {QStringLiteral("F5"), QStringLiteral("LC"),
                                     QStringLiteral("SF"), QStringLiteral("DV"),
                                     QStringLiteral("AJ")};
  if (kTipos.contains(l.tipoFactura)) return true;
  if (!l.emitida()) return false;
  static const QStringList kExentas = {QStringLiteral("E2"), QStringLiteral("E3"),
                                       QStringLiteral("E4"), QStringLiteral("E5")};
  const bool servicio = l.calificacion == QLatin1String("N2") && l.tipoNif == QLatin1String("02");
  return kExentas.contains(l.exenta) || servicio || l.clave == QLatin1String("02") ||
         l.clave == QLatin1String("17");
}

}  // namespace

QStringList Tercero347::faltas() const {
  QStringList faltas;
  const Comprobacion estado = tipoNif.isEmpty() ? compruebaNif(nif) : Comprobacion::Bueno;
  if (nif.isEmpty()) faltas += QStringLiteral("Falta el NIF");
  if (!nif.isEmpty() && estado == Comprobacion::Malo)
    faltas += QStringLiteral("El NIF no es correcto");
  if (nombre.trimmed().isEmpty()) faltas += QStringLiteral("Falta el nombre");
  if (provincia.isEmpty()) faltas += QStringLiteral("Falta la provincia");
  if (provincia == kFueraDeEspana && pais.isEmpty()) faltas += QStringLiteral("Falta el país");
  if (caja) faltas += QStringLiteral("Criterio de caja: compruebe lo cobrado o pagado");
  if (metalico > 0 && metalico <= kLimiteMetalico)
    faltas += QStringLiteral("En metálico sólo se declara lo que pasa de 6.000,00");
  return faltas;
}

Modelo347::Modelo347(Database& empresa, int ejercicio, qint64 limite) : ejercicio_(ejercicio) {
  suma(leeRegistros(empresa, {QDate(ejercicio, 1, 1), QDate(ejercicio, 12, 31), true}));
  QHash<QString, qint64> totales;  // the limit is of the person and side, whatever its records
  for (const Tercero347& t : terceros_) totales[t.clave + t.tercero] += t.total;
  std::erase_if(terceros_, [&](const Tercero347& t) {
    return std::llabs(totales.value(t.clave + t.tercero)) <= limite;
  });
  completaDatos(empresa);
  inmuebles_ = leeInmuebles(empresa);
  std::ranges::stable_sort(terceros_, [](const Tercero347& a, const Tercero347& b) {
    return a.clave != b.clave ? a.clave < b.clave : a.nombre.localeAwareCompare(b.nombre) < 0;
  });
}

bool Modelo347::vaAparte(const LineaRegistro& l) {
  if (l.autorrepercusion) return true;
  if (esDeOtraDeclaracion(l)) {
    ++deOtros_;
    return true;
  }
  if (l.retencion) ++conRetencion_;
  return l.retencion;
}

void Modelo347::suma(const std::vector<LineaRegistro>& lineas) {
  QHash<QString, size_t> lugares;
  for (const LineaRegistro& l : lineas) {
    if (vaAparte(l)) continue;
    const QString clave = l.emitida() ? QStringLiteral("B") : QStringLiteral("A");
    const bool inversion = !l.emitida() && l.inversion, caja = l.clave == QLatin1String("07");
    const int clase =
        (l.emitida() ? 1 : 0) + (l.local ? 2 : 0) + (inversion ? 4 : 0) + (caja ? 8 : 0);
    const QString cual = QChar(u'a' + clase) + tercero(l);
    const auto it = lugares.constFind(cual);
    const bool nuevo = it == lugares.constEnd();
    const size_t lugar = nuevo ? terceros_.size() : *it;
    if (nuevo) {
      Tercero347 t;
      t.clave = clave;
      t.tercero = tercero(l);
      t.nif = l.nif;
      t.tipoNif = l.tipoNif;
      t.nombre = l.nombre;
      if (l.pais != QLatin1String("ES")) t.pais = l.pais;
      paises_.insert(t.tercero, t.pais);
      t.local = l.local;
      t.inversion = inversion;
      t.caja = caja;
      terceros_.push_back(t);
      lugares.insert(cual, lugar);
      subcuentas_.insert(t.tercero, l.cliPro);
    }
    Tercero347& t = terceros_[lugar];
    t.trimestres[size_t(trimestreDe(l))] += l.total;
    t.total += l.total;
    t.codigos += l.codigo;
  }
}

void Modelo347::completaDatos(Database& empresa) {
  QHash<QString, std::vector<Tercero347*>> deSubcuenta;
  for (Tercero347& t : terceros_) {
    deSubcuenta[subcuentas_.value(t.tercero)].push_back(&t);
    t.pais = paises_.value(t.tercero);
    t.metalico = t.ejercicioMetalico = 0;
    t.excluido = false;
  }
  for (RowReader r(empresa, QStringLiteral("Select Subcuenta, Direccion, CP, Poblacion, Provincia "
                                           "from Subcuentas"));
       r.next();) {
    for (Tercero347* const t : deSubcuenta.value(r.text(0))) {
      t->calle = r.text(1);
      t->pueblo = (r.text(2) + u' ' + r.text(3)).trimmed();
      t->provincia = t->pais.isEmpty() ? codigoDeProvincia(r.text(2), r.text(4)) : kFueraDeEspana;
    }
  }
  const auto filas = leeTablaOficial(empresa, kTabla, QStringLiteral("Select * from ") + kTabla);
  for (; filas && !filas->Eof(); filas->MoveNext()) {
    const auto valor = [&](const char* campo) {
      return filas->Fields(QLatin1String(campo)).Value();
    };
    bool primera = true;  // of its records: the cash goes in one of them
    for (Tercero347& t : terceros_) {
      if (valor("Clave").display() != t.clave || valor("Tercero").display() != t.tercero) continue;
      if (primera && !valor("Metalico").isNull())
        t.metalico = centimosDe(valor("Metalico").number());
      if (primera && !valor("EjercicioMetalico").isNull())
        t.ejercicioMetalico = int(valor("EjercicioMetalico").toLong());
      if (!valor("Provincia").display().isEmpty()) t.provincia = valor("Provincia").display();
      if (!valor("Pais").display().isEmpty()) t.pais = valor("Pais").display();
      t.excluido = !valor("Excluido").isNull() && valor("Excluido").toBool();
      primera = false;
    }
  }
}

int Modelo347::cuantos() const {
  return int(std::ranges::count_if(terceros_, [](const Tercero347& t) { return !t.excluido; }));
}

qint64 Modelo347::importe() const {
  qint64 total = 0;
  for (const Tercero347& t : terceros_)
    if (!t.excluido) total += t.total;
  return total;
}

// Tenants of premises, of what is declared.
std::vector<const Tercero347*> Modelo347::arrendatarios() const {
  std::vector<const Tercero347*> lista;
  for (const Tercero347& t : terceros_)
    if (t.local && !t.excluido && t.clave == QLatin1String("B")) lista.push_back(&t);
  return lista;
}

std::vector<Inmueble347> Modelo347::inmuebles() const {
  const auto suyos = arrendatarios();
  std::vector<Inmueble347> lista;
  std::ranges::copy_if(inmuebles_, std::back_inserter(lista), [&](const Inmueble347& uno) {
    return std::ranges::any_of(suyos, [&](const Tercero347* t) { return t->nif == uno.nif; });
  });
  return lista;
}

QStringList Modelo347::faltasDeInmuebles() const {
  QStringList faltas;
  QHash<QString, qint64> rentas;
  for (const Inmueble347& uno : inmuebles_) {
    rentas[uno.nif] += uno.importe;
    if (const QStringList suyas = uno.faltas(); !suyas.isEmpty())
      faltas += QStringLiteral("Local de %1: %2").arg(uno.nombre, suyas.join(QStringLiteral(". ")));
  }
  for (const Tercero347* const t : arrendatarios()) {
    if (!rentas.contains(t->nif))
      faltas += QStringLiteral("%1: falta el local que se le arrienda").arg(t->nombre);
    else if (rentas.value(t->nif) != t->total)
      faltas += QStringLiteral("%1: sus locales no suman lo de sus facturas").arg(t->nombre);
  }
  const auto fuera = inmuebles_.size() - inmuebles().size();
  if (fuera > 0)
    faltas += QStringLiteral("Locales de quien no se declara como arrendatario: %1").arg(fuera);
  return faltas;
}

int Modelo347::proponeInmuebles(Database& empresa) const {
  int cuantos = 0;
  for (const Tercero347* const t : arrendatarios()) {
    if (std::ranges::find(inmuebles_, t->nif, &Inmueble347::nif) != inmuebles_.end()) continue;
    anadeInmueble(empresa, {t->nif, t->nombre, t->total, {}});
    ++cuantos;
  }
  return cuantos;
}

namespace {

Variant leido(Dato347 dato, const QString& texto) {
  const auto exige = [&](bool vale) {
    if (!vale)
      throw ErrorEjecucion(err::kConversionDeDatos, QStringLiteral("«%1» no vale").arg(texto));
  };
  if (dato == Dato347::Excluido) return texto.toUpper() == QLatin1String("S");
  if (texto.isEmpty()) return {};
  switch (dato) {
    case Dato347::Metalico: {
      const auto importe = parseNumber(texto);
      exige(importe && *importe >= 0);
      return importe.value_or(0);
    }
    case Dato347::EjercicioMetalico:
      exige(texto.toInt() > 1990 && texto.toInt() < 2100);
      return texto.toInt();
    case Dato347::Provincia:
      exige(texto == kFueraDeEspana ||
            codigoDeProvincia(texto + QStringLiteral("000"), {}) == texto);
      return texto;
    default:
      exige(paisDe(texto).codigo == texto.toUpper());
      return texto.toUpper();
  }
}

}  // namespace

void Modelo347::escribe(Database& empresa, size_t lugar, Dato347 dato, const QString& texto) {
  const Tercero347& t = terceros_.at(lugar);
  const Variant valor = leido(dato, texto.trimmed());
  aseguraTablaOficial(empresa, kTabla);
  const auto filas =
      empresa.OpenRecordset(QStringLiteral("Select * from %1 where Clave='%2' and Tercero=%3")
                                .arg(kTabla, t.clave, entreComillas(t.tercero)));
  if (filas->Eof()) {
    filas->AddNew();
  } else {
    filas->Edit();
  }
  completa(*filas, [&] {
    filas->Fields(QStringLiteral("Clave")) = t.clave;
    filas->Fields(QStringLiteral("Tercero")) = t.tercero;
    filas->Fields(QLatin1String(kCampos[int(dato)])) = valor;
    // Cash is of this year unless another is told.
    if (dato == Dato347::Metalico && t.ejercicioMetalico == 0 && !valor.isNull())
      filas->Fields(QStringLiteral("EjercicioMetalico")) = ejercicio_;
  });
  completaDatos(empresa);
}

namespace {

// The record of a third party, but for what all records share.
ValoresFijos valoresDe(const Tercero347& t) {
  const auto x = [](bool si) { return si ? QStringLiteral("X") : QString(); };
  ValoresFijos v;
  const bool comunitario = t.tipoNif == QLatin1String("02");
  const Pais pais = paisDePrefijo(t.nif.left(2));
  const bool conPrefijo = comunitario && !pais.codigo.isEmpty();
  if (t.tipoNif.isEmpty()) v.insert(QStringLiteral("NIF del declarado"), t.nif);
  if (comunitario) {
    v.insert(QStringLiteral("Operador comunitario: país"),
             conPrefijo ? t.nif.left(2) : paisDe(t.pais).prefijo);
    v.insert(QStringLiteral("Operador comunitario: número"), conPrefijo ? t.nif.mid(2) : t.nif);
  }
  v.insert(QStringLiteral("Apellidos y nombre o razón social"), t.nombre);
  v.insert(QStringLiteral("Código provincia"), t.provincia);
  if (t.provincia == kFueraDeEspana) v.insert(QStringLiteral("Código país"), t.pais);
  v.insert(QStringLiteral("Clave operación"), t.clave);
  v.insert(QStringLiteral("Importe anual de las operaciones"), t.total);
  v.insert(QStringLiteral("Arrendamiento local negocio"), x(t.local));
  v.insert(QStringLiteral("Inversión del sujeto pasivo"), x(t.inversion));
  v.insert(QStringLiteral("Criterio de caja"), x(t.caja));
  if (t.metalico > kLimiteMetalico) {
    v.insert(QStringLiteral("Importe percibido en metálico"), t.metalico);
    v.insert(QStringLiteral("Ejercicio de las operaciones en metálico"), t.ejercicioMetalico);
  }
  // Under cash basis only the year is told.
  for (int q = 0; q < 4 && !t.caja; ++q)
    v.insert(QStringLiteral("Operaciones %1T").arg(q + 1), t.trimestres[size_t(q)]);
  return v;
}

}  // namespace

QByteArray Modelo347::fichero(const Declarante& declarante, const QByteArray& fin) const {
  if (ejercicio_ < kPrimerEjercicio)
    throw ErrorEjecucion(
        err::kLlamadaNoValida,
        QStringLiteral("No hay diseño del 347 para el ejercicio %1").arg(ejercicio_));
  const DisenoFijo diseno(QStringLiteral("347.csv"), ejercicio_ < kConConvocatoria
                                                         ? QStringLiteral("2014")
                                                         : QStringLiteral("2025"));
  const ValoresFijos comunes = {{QStringLiteral("Ejercicio"), QString::number(ejercicio_)},
                                {QStringLiteral("NIF del declarante"), declarante["Nif"]}};
  ValoresFijos cabeza = comunes;
  cabeza.insert(QStringLiteral("Apellidos y nombre o razón social"), declarante["Nombre"]);
  cabeza.insert(QStringLiteral("Teléfono de contacto"), declarante["Telefono"]);
  cabeza.insert(QStringLiteral("Persona de contacto"), declarante["Contacto"]);
  cabeza.insert(QStringLiteral("Número identificativo"), QStringLiteral("3470000000001"));
  cabeza.insert(QStringLiteral("Número total de personas y entidades"), cuantos());
  cabeza.insert(QStringLiteral("Importe total anual"), importe());
  const std::vector<Inmueble347> locales = inmuebles();
  qint64 rentas = 0;
  for (const Inmueble347& uno : locales) rentas += uno.importe;
  cabeza.insert(QStringLiteral("Número total de inmuebles"), int(locales.size()));
  cabeza.insert(QStringLiteral("Importe total arrendamiento de locales"), rentas);
  QByteArray fichero = escribeRegistro(diseno, QStringLiteral("declarante"), cabeza) + fin;
  for (const Tercero347& t : terceros_) {
    if (t.excluido) continue;
    ValoresFijos v = valoresDe(t);
    v.insert(comunes);
    fichero += escribeRegistro(diseno, QStringLiteral("declarado"), v) + fin;
  }
  for (const Inmueble347& uno : locales) {
    ValoresFijos v = uno.valores;
    v.insert(comunes);
    fichero += escribeRegistro(diseno, QStringLiteral("inmueble"), v) + fin;
  }
  return fichero;
}
