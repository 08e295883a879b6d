#include "iva/tiposfechas.h"

#include <algorithm>
#include <QSet>

#include "common/conversion.h"
#include "common/formato.h"
#include "common/tablacsv.h"
#include "company/tablas.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"

// Outside any namespace: the macro declares the function that the resource compiler writes.
static void abreTipos() {
  Q_INIT_RESOURCE(iva);
}

namespace {

// Once a company keeps its own.
constexpr CampoDeTabla kCampos[] = {
    {"IVA", FieldType::Double, 0, "0"}, {"RE", FieldType::Double, 0, "0"},
    {"Desde", FieldType::Date},         {"Hasta", FieldType::Date},
    {"Bienes", FieldType::Text, 50},    {"Dudoso", FieldType::Boolean},
};
constexpr TablaDeEmpresa kDeEmpresa = {"TiposPorFechas", kCampos, 0};
const QString kTabla = QLatin1String(kDeEmpresa.nombre);
constexpr double kIgual = 0.005;  // rates have two decimals

bool sonIguales(double a, double b) {
  return std::abs(a - b) < kIgual;
}

QDate fechaDe(const QString& texto) {
  return QDate::fromString(texto, QStringLiteral("dd/MM/yyyy"));
}

QString porciento(double tipo) {
  return numberText(tipo) + QStringLiteral(" %");
}

QString dia(QDate fecha) {
  return Format(fecha, QStringLiteral("dd/mm/yyyy"));
}

QList<TipoConFechas> tiposDelPrograma() {
  QList<TipoConFechas> tipos;
  abreTipos();
  for (const QStringList& f : leeTablaCsv(QStringLiteral(":/iva/tipos.csv")))
    tipos.append({Variant(f[0]).number(), Variant(f[1]).number(), fechaDe(f[2]), fechaDe(f[3]),
                  f[5], f[4] == QLatin1String("S")});
  return tipos;
}

QString vigencia(const TipoConFechas& tipo) {
  if (!tipo.Hasta.isValid()) return QStringLiteral("rige desde el ") + dia(tipo.Desde);
  if (!tipo.Desde.isValid()) return QStringLiteral("rigió hasta el ") + dia(tipo.Hasta);
  return QStringLiteral("rigió del %1 al %2").arg(dia(tipo.Desde), dia(tipo.Hasta));
}

// A rate as it stands among those of the entry screens: without recargo and with it.
struct TipoDeEntrada {
  QString nombre;
  double iva;
  double recargo;
};

QList<TipoDeEntrada> paraEntrada(const QList<TipoConFechas>& tipos) {
  QList<TipoDeEntrada> lista;
  const auto anade = [&](const TipoConFechas& tipo, double recargo, const char* cola) {
    const bool repetido = std::ranges::any_of(lista, [&](const TipoDeEntrada& otro) {
      return sonIguales(otro.iva, tipo.IVA) && sonIguales(otro.recargo, recargo);
    });
    if (!repetido)
      lista.append({QStringLiteral("%1 (%2) %3")
                        .arg(tipo.Bienes.left(30), porciento(tipo.IVA), QLatin1String(cola)),
                    tipo.IVA, recargo});
  };
  for (const TipoConFechas& tipo : tipos) {
    anade(tipo, 0, "S/R");
    if (tipo.RE > 0) anade(tipo, tipo.RE, "C/R");
  }
  return lista;
}

}  // namespace

TiposPorFechas::TiposPorFechas() : tipos_(tiposDelPrograma()) {}

TiposPorFechas::TiposPorFechas(Database& empresa) : TiposPorFechas() {
  if (!empresa.TableDefs().contains(kTabla, Qt::CaseInsensitive)) return;
  const auto filas = empresa.OpenRecordset(kTabla);
  if (filas->Eof()) return;
  tipos_.clear();
  const auto numero = [&](const char* campo) {
    const FieldRef valor = filas->Fields(QLatin1String(campo));
    return valor.isNull() ? 0 : valor.number();
  };
  const auto fecha = [&](const char* campo) {
    const FieldRef valor = filas->Fields(QLatin1String(campo));
    return valor.isNull() ? QDate() : valor.Value().date();
  };
  for (; !filas->Eof(); filas->MoveNext()) {
    const FieldRef dudoso = filas->Fields(QStringLiteral("Dudoso"));
    tipos_.append({numero("IVA"), numero("RE"), fecha("Desde"), fecha("Hasta"),
                   filas->Fields(QStringLiteral("Bienes")).display(),
                   !dudoso.isNull() && dudoso.Value().toBool()});
  }
}

QList<TipoConFechas> TiposPorFechas::enVigor(QDate fecha) const {
  QList<TipoConFechas> lista;
  std::ranges::copy_if(tipos_, std::back_inserter(lista),
                       [&](const TipoConFechas& tipo) { return tipo.enVigor(fecha); });
  return lista;
}

QString TiposPorFechas::aviso(double iva, double recargo, QDate fecha) const {
  // Without quota it may as well be exempt or not subject.
  if (sonIguales(iva, 0) && sonIguales(recargo, 0)) return {};
  const bool encaja = std::ranges::any_of(tipos_, [&](const TipoConFechas& tipo) {
    return tipo.enVigor(fecha) && sonIguales(tipo.IVA, iva) &&
           (sonIguales(recargo, 0) || sonIguales(tipo.RE, recargo));
  });
  return encaja ? QString() : avisoNuevo(iva, recargo, fecha);
}

// The rate as such, if it isn't of its date; else its recargo.
QString TiposPorFechas::avisoNuevo(double iva, double recargo, QDate fecha) const {
  QStringList vigencias;
  bool delDia = false, dudoso = false;
  for (const TipoConFechas& tipo : tipos_) {
    if (!sonIguales(tipo.IVA, iva)) continue;
    delDia = delDia || tipo.enVigor(fecha);
    dudoso = dudoso || tipo.dudoso;
    if (!vigencias.contains(vigencia(tipo))) vigencias += vigencia(tipo);
  }
  if (delDia)
    return QStringLiteral("Con el %1 de IVA no va el %2 de recargo el %3")
        .arg(porciento(iva), porciento(recargo), dia(fecha));
  if (vigencias.isEmpty())
    return QStringLiteral("El %1 de IVA no está en la tabla de tipos").arg(porciento(iva));
  return QStringLiteral("El %1 de IVA %2, no el %3%4")
      .arg(porciento(iva), vigencias.join(QStringLiteral(" y ")), dia(fecha),
           dudoso ? QStringLiteral(" (fechas sin confirmar)") : QString());
}

void aseguraTiposPorFechas(Database& empresa) {
  aseguraTabla(empresa, kDeEmpresa);
  const auto filas = empresa.OpenRecordset(kTabla);
  if (!filas->Eof()) return;
  for (const TipoConFechas& tipo : tiposDelPrograma()) {
    filas->AddNew();
    completa(*filas, [&] {
      filas->Fields(QStringLiteral("IVA")) = tipo.IVA;
      filas->Fields(QStringLiteral("RE")) = tipo.RE;
      if (tipo.Desde.isValid()) filas->Fields(QStringLiteral("Desde")) = tipo.Desde;
      if (tipo.Hasta.isValid()) filas->Fields(QStringLiteral("Hasta")) = tipo.Hasta;
      filas->Fields(QStringLiteral("Bienes")) = tipo.Bienes;
      filas->Fields(QStringLiteral("Dudoso")) = tipo.dudoso;
    });
  }
}

TiposPuestos ponTiposEnVigor(Database& empresa, const TiposPorFechas& tipos, QDate fecha) {
  QSet<QString> usados;
  for (RowReader r(empresa, QStringLiteral("Select TipoIVA from RSIVA group by TipoIVA"));
       r.next();)
    usados.insert(r.text(0));
  QList<TipoDeEntrada> faltan = paraEntrada(tipos.enVigor(fecha));
  const auto filas =
      empresa.OpenRecordset(QStringLiteral("Select * from TiposIVA order by Codigo"));
  const auto numero = [&](const char* campo) {
    const FieldRef valor = filas->Fields(QLatin1String(campo));
    return valor.isNull() ? 0 : valor.number();
  };
  const auto sinNombre = [&] {
    return filas->Fields(QStringLiteral("Descripcion")).display().trimmed().isEmpty();
  };
  for (; !filas->Eof(); filas->MoveNext()) {
    if (sinNombre()) continue;
    faltan.removeIf([&](const TipoDeEntrada& tipo) {
      return sonIguales(tipo.iva, numero("IVA")) && sonIguales(tipo.recargo, numero("RE"));
    });
  }
  TiposPuestos puestos;
  if (filas->rowTotal() > 0) filas->MoveFirst();
  for (; !filas->Eof() && !faltan.isEmpty(); filas->MoveNext()) {
    const QString codigo = filas->Fields(QStringLiteral("Codigo")).display();
    if (!sinNombre() || numero("IVA") != 0 || numero("RE") != 0 || usados.contains(codigo))
      continue;
    const TipoDeEntrada tipo = faltan.takeFirst();
    filas->Edit();
    completa(*filas, [&] {
      filas->Fields(QStringLiteral("Descripcion")) = tipo.nombre;
      filas->Fields(QStringLiteral("IVA")) = tipo.iva;
      filas->Fields(QStringLiteral("RE")) = tipo.recargo;
    });
    puestos.codigos += codigo;
  }
  puestos.sinCodigo = static_cast<int>(faltan.size());
  return puestos;
}
