#include "transfer/importarcontanet.h"

#include <QFileInfo>

#include "common/comillas.h"
#include "common/formato.h"
#include "common/funciones.h"
#include "common/ignorar.h"
#include "common/rutas.h"
#include "company/datosempresa.h"
#include "company/indices.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "iva/filarsiva.h"
#include "journal/apunte.h"
#include "transfer/lectorcampos.h"

namespace {

// Whether failures are passed over at the moment: each step by itself, so that what comes after it
// is still done.
class Cepo {
 public:
  template <class Paso>
  void operator()(Paso&& paso) {
    if (puesto_) {
      saltando(paso);
    } else {
      paso();
    }
  }
  void pon() { puesto_ = true; }
  void quita() { puesto_ = false; }

 private:
  bool puesto_ = true;
};

// A record, its fields counted from 1.
class Registro {
 public:
  explicit Registro(QStringList campos) : campos_(std::move(campos)) {}
  const QString& campo(int numero) const { return campos_[numero - 1]; }
  // The number that a field begins with, without the zeros before it.
  Variant numero(int numero) const { return Val(campo(numero)); }

 private:
  QStringList campos_;
};

// How a file is read: the fields of a record, its stretch of the bar, and who is told.
struct Lectura {
  int campos;
  int desde;
  int hasta;
  const Avance& avance;
};

struct Tarea {
  Database& empresa;
  const contanet::Destino& destino;
  const Avance& avance;
  Cepo cepo;
};

// Goes through the records of a file. One that is cut short by the file's end is no record.
template <class PorRegistro>
void recorre(Tarea& tarea, const QString& ruta, const Lectura& lectura, PorRegistro&& porRegistro) {
  constexpr int kTodo = 100;
  std::optional<LectorCampos> lector;
  tarea.cepo([&] { lector.emplace(ruta); });
  while (lector && !lector->fin()) {
    const auto recorrido = (lectura.hasta - lectura.desde) * lector->leido() / lector->total();
    lectura.avance(lectura.desde + static_cast<int>(recorrido), kTodo);
    std::optional<Registro> registro;
    tarea.cepo([&] { registro.emplace(lector->lee(lectura.campos)); });
    if (!registro) return;
    porRegistro(*registro);
  }
}

std::unique_ptr<Recordset> filasCon(Database& empresa, const QString& tabla,
                                    const QString& codigo) {
  const QString campo = tabla.chopped(1);  // the table is the plural of its key
  return empresa.OpenRecordset(QStringLiteral("Select * from %1 Where %2=").arg(tabla, campo) +
                               entreComillas(codigo));
}

int cuantas(Recordset& filas) {
  if (filas.Eof()) return 0;
  filas.MoveLast();
  return filas.RecordCount();
}

using Valores = std::initializer_list<std::pair<const char*, Variant>>;

// Sets the fields of the row being written and saves it, as far as failures are passed over.
void escribe(Cepo& cepo, Recordset& filas, const Valores& valores) {
  try {
    for (const auto& [campo, valor] : valores)
      cepo([&, c = campo, &v = valor] { filas.Fields(QLatin1String(c)) = v; });
    cepo([&] { filas.Update(); });
  } catch (...) {
    filas.CancelUpdate();
    throw;
  }
  filas.CancelUpdate();  // one that wasn't saved is dropped
}

QString importe(const QString& campo, const QString& mascara) {
  return Format(PuntoAComa(campo), mascara);
}

// --- plan ---------------------------------------------------------------------------------------

void altaEnPlan(Tarea& tarea, const Registro& registro) {
  const QString& codigo = registro.campo(1);
  const int digitosCuenta = tarea.destino.digitosCuenta;
  const bool esSubcuenta = codigo.size() == tarea.destino.digitosSubcuenta;
  if (!esSubcuenta && codigo.size() != digitosCuenta) return;
  const auto filas =
      filasCon(tarea.empresa,
               esSubcuenta ? QStringLiteral("Subcuentas") : QStringLiteral("Cuentas"), codigo);
  if (!filas->Eof()) return;
  filas->AddNew();
  // Kept: a code is written as the number that it is, without the zeros it begins with.
  if (esSubcuenta) {
    escribe(tarea.cepo, *filas,
            {{"Subcuenta", registro.numero(1)},
             {"Cuenta", codigo.left(digitosCuenta)},
             {"Descripcion", registro.campo(2)}});
  } else {
    escribe(tarea.cepo, *filas,
            {{"Cuenta", registro.numero(1)},
             {"Descripcion", registro.campo(2)},
             {"GrupoN", codigo.left(1)},
             {"SubGrupoN", codigo.left(2)},
             {"DatosAuxiliares", "0"}});
  }
}

void importaPlan(Tarea& tarea, const QString& ruta) {
  constexpr int kCampos = 41;
  recorre(tarea, ruta, {kCampos, 25, 50, tarea.avance}, [&](const Registro& registro) {
    tarea.cepo([&] { altaEnPlan(tarea, registro); });
    tarea.cepo.quita();
  });
}

// --- journal ------------------------------------------------------------------------------------

struct Columna {
  Columna(Recordset& filas, const char* campo)
      : tipo(filas.Fields(QLatin1String(campo)).Type()),
        ancho(filas.Fields(QLatin1String(campo)).Size()) {}
  FieldType tipo;
  int ancho;
};

// Those that a line is checked against, looked up once for all lines.
struct ColumnasDiario {
  explicit ColumnasDiario(Recordset& diario)
      : NAsiento(diario, "NAsiento"),
        Fecha(diario, "Fecha"),
        Subcuenta(diario, "Subcuenta"),
        Descripcion(diario, "Descripcion"),
        TipoDiario(diario, "TipoDiario"),
        Importe(diario, "Importe") {}
  Columna NAsiento, Fecha, Subcuenta, Descripcion, TipoDiario, Importe;
};

Apunte apunteDe(Tarea& tarea, const ColumnasDiario& diario, const Registro& registro) {
  // A value as its column will have it; Null for one that it doesn't take, if that is passed over.
  const auto de = [&](const Columna& columna, const Variant& valor) {
    Variant suyo;
    tarea.cepo([&] { suyo = convertTo(columna.tipo, columna.ancho, valor); });
    return suyo;
  };
  Apunte apunte;
  apunte.NAsiento = de(diario.NAsiento, registro.numero(6));
  apunte.Fecha = de(diario.Fecha, registro.campo(1));
  apunte.Subcuenta = de(diario.Subcuenta, registro.campo(2));
  apunte.Descripcion = de(diario.Descripcion, registro.campo(7));
  if (!registro.campo(4).isEmpty()) apunte.Punteo = "X";
  apunte.TipoDiario = de(diario.TipoDiario, registro.campo(5));
  apunte.DH = registro.campo(8) == QLatin1String("1") ? "D" : "H";
  // Kept: the sign stands as it is, since the file has that of the haber already.
  const QString& mascara = tarea.destino.mascara;
  apunte.Importe = de(diario.Importe, importeEscrito(importe(registro.campo(9), mascara), mascara));
  return apunte;
}

void importaDiario(Tarea& tarea, const QString& ruta) {
  constexpr int kCampos = 22;
  constexpr qint64 kBytesDeLinea = 100;  // about as many as one takes
  IndicesAparte aparte(tarea.empresa,
                       static_cast<int>(QFileInfo(rutaSistema(ruta)).size() / kBytesDeLinea));
  ApuntesEnSerie serie(tarea.empresa);
  const ColumnasDiario columnas(serie.diario());
  const Avance entreSeries = [&](int posicion, int total) {
    if (!serie.abierta()) tarea.avance(posicion, total);
  };
  recorre(tarea, ruta, {kCampos, 50, 75, entreSeries}, [&](const Registro& registro) {
    tarea.cepo([&] { serie.graba(apunteDe(tarea, columnas, registro)); });
  });
  serie.cierra();
  aparte.repone();
}

// --- addresses ----------------------------------------------------------------------------------

void ponDatos(Tarea& tarea, const Registro& registro) {
  const QString& codigo = registro.campo(1);
  if (codigo.size() != tarea.destino.digitosSubcuenta) return;
  const auto filas = filasCon(tarea.empresa, QStringLiteral("Subcuentas"), codigo);
  if (cuantas(*filas) != 1) return;
  filas->Edit();
  escribe(tarea.cepo, *filas,
          {{"Direccion", registro.campo(4)},
           {"Provincia", registro.campo(7)},
           {"CP", registro.campo(5)},
           {"Poblacion", registro.campo(6)},
           {"Pais", registro.campo(8)},
           {"Nif", registro.campo(3)},
           {"Telefono", registro.campo(11)},
           {"Fax", registro.campo(12)}});
}

void importaDatos(Tarea& tarea, const QString& ruta) {
  constexpr int kCampos = 20;
  recorre(tarea, ruta, {kCampos, 75, 95, tarea.avance}, [&](const Registro& registro) {
    tarea.cepo([&] { ponDatos(tarea, registro); });
    tarea.cepo.quita();
  });
}

// --- register -----------------------------------------------------------------------------------

// The base of a sale is kept negative.
Variant baseDe(const Registro& registro, LibroIVA libro, const QString& mascara) {
  const QString base = importe(registro.campo(5), mascara);
  const bool tal = libro == LibroIVA::Soportado || base.startsWith(u'-');
  return importeEscrito(tal ? base : u'-' + base, mascara);
}

void importaIVA(Tarea& tarea, const QString& ruta) {
  constexpr int kCampos = 20;
  const auto contadores = tarea.empresa.OpenRecordset(QStringLiteral("Select * from Empresa"));
  const CuentasIVA cuentas = leeDatosEmpresa(*contadores);
  const auto filas =
      tarea.empresa.OpenRecordset(QStringLiteral("Select * from RSIVA where Codigo=''"));
  recorre(tarea, ruta, {kCampos, 95, 100, tarea.avance}, [&](const Registro& registro) {
    const LibroIVA libro =
        registro.campo(10) == QLatin1String("S") ? LibroIVA::Soportado : LibroIVA::Repercutido;
    filas->AddNew();
    const auto orden = contadores->Fields(contadorDe(libro)).toLong() + 1;
    const QString codigo = codigoRegistro(letraDe(libro), QString::number(orden));
    const QString& factura = registro.campo(11);
    tarea.cepo.pon();
    escribe(tarea.cepo, *filas,
            {{"Codigo", codigo},
             {"CliPro", registro.campo(1)},
             {"Factura", registro.campo(4)},
             {"Base", baseDe(registro, libro, tarea.destino.mascara)},
             {"TipoIVA", registro.campo(6)},
             {"Asiento", registro.numero(8)},
             {"CtaIVA", registro.campo(9)},
             {"FechaC", registro.campo(19)},
             {"Fecha", factura.isEmpty() ? registro.campo(19) : factura},
             {"CtaRE", cuentas.IVASRE},
             {"CtaCon", libro == LibroIVA::Soportado ? cuentas.IVASCom : cuentas.IVARVen}});
    tarea.cepo.quita();
    ponCodigoEnAsiento(tarea.empresa, registro.numero(8), codigo);
    tomaContador(*contadores, contadorDe(libro));
  });
}

}  // namespace

void contanet::importa(Database& empresa, const Ficheros& ficheros, const Destino& destino,
                       const Avance& avance) {
  Tarea tarea{empresa, destino, avance, {}};
  const std::tuple<const std::optional<QString>&, void (*)(Tarea&, const QString&), int> pasos[] = {
      {ficheros.plan, importaPlan, 25},
      {ficheros.diario, importaDiario, 50},
      {ficheros.datos, importaDatos, 75},
      {ficheros.iva, importaIVA, 95}};
  for (const auto& [ruta, paso, desde] : pasos) {
    avance(desde, 100);
    if (ruta) paso(tarea, *ruta);
  }
  avance(100, 100);
}
