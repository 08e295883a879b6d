#include "oficial/inmuebles347.h"

#include "engine/dbengine.h"
#include "engine/filas.h"
#include "oficial/identificadores.h"
#include "oficial/tablasoficiales.h"

namespace {

const QString kTabla = QStringLiteral("Inmuebles347");
const QString kImporte = QStringLiteral("Importe");

constexpr DatoDeInmueble kDatos[] = {
    {"Nif", "NIF del arrendatario", "NIF arrend.", 12},
    {"Nombre", "Apellidos y nombre o razón social", "Arrendatario", 26},
    {"Importe", "Importe de la operación", "Importe", 13},
    {"Situacion", "Situación del inmueble", "Sit.", 4},
    {"Referencia", "Referencia catastral", "Ref. catastral", 22},
    {"TipoVia", "Tipo de vía", "Vía", 5},
    {"Via", "Nombre de la vía", "Nombre de la vía", 26},
    {"Numeracion", "Tipo de numeración", "Num.", 5},
    {"Numero", "Número de casa", "Número", 7},
    {"Calificador", "Calificador del número", "Calif.", 6},
    {"Bloque", "Bloque", "Bloque", 6},
    {"Portal", "Portal", "Portal", 6},
    {"Escalera", "Escalera", "Esc.", 5},
    {"Planta", "Planta", "Planta", 6},
    {"Puerta", "Puerta", "Puerta", 6},
    {"Complemento", "Complemento", "Complemento", 16},
    {"Localidad", "Localidad", "Localidad", 18},
    {"Municipio", "Municipio", "Municipio", 18},
    {"CodigoMunicipio", "Código de municipio", "Cód. mun.", 8},
    {"Provincia", "Código de provincia", "Prov.", 5},
    {"CP", "Código postal", "C.P.", 6},
};

// Where it lies: 1 in Spain with a cadastral number, 2 in the Basque Country or Navarra, 3 in
// either without number, 4 abroad.
constexpr QLatin1String kConReferencia[] = {QLatin1String("1"), QLatin1String("2")};
constexpr QLatin1String kEnElExtranjero("4");

}  // namespace

std::span<const DatoDeInmueble> datosDeInmueble() {
  return kDatos;
}

QStringList Inmueble347::faltas() const {
  const auto vacio = [&](const char* nombre) {
    return valores.value(QString::fromUtf8(nombre)).display().isEmpty();
  };
  const QString situacion = valores.value(QStringLiteral("Situación del inmueble")).display();
  QStringList faltas;
  if (nif.isEmpty()) faltas += QStringLiteral("Falta el NIF del arrendatario");
  if (!nif.isEmpty() && compruebaNif(nif) == Comprobacion::Malo)
    faltas += QStringLiteral("El NIF del arrendatario no es correcto");
  if (nombre.isEmpty()) faltas += QStringLiteral("Falta el nombre del arrendatario");
  if (importe == 0) faltas += QStringLiteral("Falta el importe");
  if (situacion.isEmpty()) faltas += QStringLiteral("Falta la situación (1 a 4)");
  const bool conReferencia = situacion == kConReferencia[0] || situacion == kConReferencia[1];
  if (conReferencia && vacio("Referencia catastral"))
    faltas += QStringLiteral("Falta la referencia catastral");
  if (situacion == kEnElExtranjero) return faltas;
  if (vacio("Nombre de la vía")) faltas += QStringLiteral("Falta la dirección");
  if (vacio("Código de provincia")) faltas += QStringLiteral("Falta la provincia");
  return faltas;
}

std::vector<Inmueble347> leeInmuebles(Database& empresa) {
  std::vector<Inmueble347> lista;
  const auto filas = leeTablaOficial(empresa, kTabla, QStringLiteral("Select * from ") + kTabla);
  for (; filas && !filas->Eof(); filas->MoveNext()) {
    Inmueble347 uno;
    for (const DatoDeInmueble& dato : kDatos) {
      const Variant valor = filas->Fields(QLatin1String(dato.campo)).Value();
      if (!valor.isNull() && QLatin1String(dato.campo) != kImporte)
        uno.valores.insert(QString::fromUtf8(dato.nombre), valor.display().trimmed());
      else if (!valor.isNull())
        uno.importe = centimosDe(valor.number());
    }
    uno.nif = normalizaIdentificador(filas->Fields("Nif").display());
    uno.nombre = filas->Fields("Nombre").display();
    uno.valores.insert(QStringLiteral("NIF del arrendatario"), uno.nif);
    uno.valores.insert(QStringLiteral("Importe de la operación"), uno.importe);
    lista.push_back(uno);
  }
  return lista;
}

void aseguraInmuebles(Database& empresa) {
  aseguraTablaOficial(empresa, kTabla);
}

void anadeInmueble(Database& empresa, const Inmueble347& inmueble) {
  aseguraInmuebles(empresa);
  const auto filas = empresa.OpenRecordset(kTabla);
  filas->AddNew();
  completa(*filas, [&] {
    filas->Fields("Nif") = inmueble.nif;
    filas->Fields("Nombre") = inmueble.nombre.left(40);
    filas->Fields("Importe") = double(inmueble.importe) / 100;
  });
}
