#include "oficial/librosregistro.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <filesystem>
#include <QFile>
#include <QFileInfo>

#include "common/errorejecucion.h"
#include "common/rutas.h"
#include "engine/dbengine.h"
#include "oficial/periodo.h"
#include "oficial/registrofijo.h"
#include "oficial/tablafija.h"

namespace {

const QString kExpedidas = QStringLiteral("EXPEDIDAS"), kRecibidas = QStringLiteral("RECIBIDAS");
const QString kBienes = QStringLiteral("BIENES-INVERSIÓN");
constexpr lxw_row_t kCabeceras = 3;  // groups, titles, types

struct ColumnaLibro {
  QString grupo, titulo, tipo, dato;
};

std::vector<ColumnaLibro> columnasDe(const QString& libro) {
  std::vector<ColumnaLibro> lista;
  for (const QStringList& f : leeTablaFija(QStringLiteral("libros.csv")))
    if (f[0] == libro) lista.push_back({f[1], f[2], f[3], f[4]});
  return lista;
}

QString siNo(bool si) {
  return si ? QStringLiteral("S") : QStringLiteral("N");
}

double importe(qint64 centimos) {
  return double(centimos) / 100;
}

// The data of a row under the names of the columns; what isn't there stays empty.
using Datos = QHash<QString, Variant>;

void ponTercero(Datos& d, const LineaRegistro& l) {
  d[QStringLiteral("TipoNif")] = l.tipoNif;
  // Not wanted with a number of the Union, nor with a Spanish one.
  if (!l.tipoNif.isEmpty() && l.tipoNif != QLatin1String("02")) d[QStringLiteral("Pais")] = l.pais;
  d[QStringLiteral("Nif")] = l.nif;
  const bool anonima = l.emitida() && l.nif.isEmpty();
  d[QStringLiteral("Nombre")] =
      anonima ? QStringLiteral("VENTAS A CONSUMIDOR FINAL") : textoOficial(l.nombre);
}

Datos datosDe(const LineaRegistro& l, const Declarante& declarante, int recepcion) {
  const QDate dia = l.fechaDeRegistro();
  Datos d = {{QStringLiteral("Ejercicio"), dia.year()},
             {QStringLiteral("Periodo"), Periodo::trimestreDe(dia)},
             {QStringLiteral("PeriodoAnual"), QStringLiteral("0A")},
             {QStringLiteral("CodigoActividad"), declarante["Actividad"]},
             {QStringLiteral("TipoActividad"), declarante["TipoActividad"]},
             {QStringLiteral("Epigrafe"), declarante["Epigrafe"]},
             {QStringLiteral("TipoFactura"), l.tipoFactura},
             {QStringLiteral("FechaExpedicion"), l.fecha},
             {QStringLiteral("Factura"), l.factura},
             {QStringLiteral("Codigo"), l.codigo},
             {QStringLiteral("Literal"), textoOficial(l.nombre + u' ' + l.factura)},
             {QStringLiteral("Clave"), l.clave},
             {QStringLiteral("Calificacion"), l.calificacion},
             {QStringLiteral("Exenta"), l.exenta},
             {QStringLiteral("Total"), importe(l.total)},
             {QStringLiteral("Base"), importe(l.base)},
             {QStringLiteral("Computable"), importe(l.base)},
             {QStringLiteral("TipoIVA"), l.porcenIVA},
             {QStringLiteral("Cuota"), importe(l.iva)}};
  ponTercero(d, l);
  if (l.fechaOperacion.isValid() && l.fechaOperacion != l.fecha)
    d[QStringLiteral("FechaOperacion")] = l.fechaOperacion;
  if (l.recargo != 0) {
    d[QStringLiteral("TipoRecargo")] = l.porcenRE;
    d[QStringLiteral("CuotaRecargo")] = importe(l.recargo);
  }
  if (l.emitida()) return d;
  d[QStringLiteral("FechaRecepcion")] = dia;
  d[QStringLiteral("NumeroRecepcion")] = QString::number(recepcion);
  d[QStringLiteral("BienInversion")] = siNo(l.bienInversion);
  d[QStringLiteral("Inversion")] = siNo(l.inversion);
  d[QStringLiteral("Posterior")] = siNo(false);
  d[QStringLiteral("Deducible")] = importe(l.deducible);
  return d;
}

// A workbook that grows beside its place until it is whole.
class Cuaderno {
 public:
  explicit Cuaderno(const QString& ruta)
      : ruta_(ruta), parcial_(ruta + QStringLiteral(".parcial")) {
    // Taken at once: that it can't be written is told before the rows are, not after.
    if (!QFile(parcial_).open(QIODevice::WriteOnly)) noSePuede();
    libro_ = workbook_new(QFile::encodeName(parcial_).constData());
    if (!libro_) noSePuede();
    titulo_ = workbook_add_format(libro_);
    format_set_bold(titulo_);
    numero_ = conMascara("0.00");
    fecha_ = conMascara("dd/mm/yyyy");
  }
  ~Cuaderno() {
    if (libro_) lxw_workbook_free(libro_);
    QFile::remove(parcial_);
  }
  Cuaderno(const Cuaderno&) = delete;
  Cuaderno& operator=(const Cuaderno&) = delete;

  void empiezaHoja(const QString& nombre, std::vector<ColumnaLibro> columnas) {
    columnas_ = std::move(columnas);
    hoja_ = workbook_add_worksheet(libro_, nombre.toUtf8().constData());
    QString grupo;
    for (size_t c = 0; c < columnas_.size(); ++c) {
      const ColumnaLibro& columna = columnas_[c];
      const auto n = static_cast<lxw_col_t>(c);
      if (columna.grupo != grupo) texto(0, n, columna.grupo, titulo_);
      grupo = columna.grupo;
      texto(1, n, columna.titulo, titulo_);
      texto(2, n, columna.tipo, nullptr);
      worksheet_set_column(hoja_, n, n, double(qMax<qsizetype>(11, columna.titulo.size())),
                           nullptr);
    }
    worksheet_freeze_panes(hoja_, kCabeceras, 0);
    fila_ = kCabeceras;
  }
  void fila(const Datos& datos) {
    for (size_t c = 0; c < columnas_.size(); ++c)
      celda(static_cast<lxw_col_t>(c), columnas_[c], datos.value(columnas_[c].dato));
    ++fila_;
  }
  void cierra() {
    lxw_workbook* const libro = std::exchange(libro_, nullptr);
    if (workbook_close(libro) != LXW_NO_ERROR) noSePuede();
    std::error_code fallo;
    std::filesystem::rename(QFileInfo(parcial_).filesystemFilePath(),
                            QFileInfo(ruta_).filesystemFilePath(), fallo);
    if (fallo) noSePuede();
  }

 private:
  [[noreturn]] void noSePuede() const {
    throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(ruta_));
  }
  lxw_format* conMascara(const char* mascara) {
    lxw_format* const formato = workbook_add_format(libro_);
    format_set_num_format(formato, mascara);
    return formato;
  }
  void texto(lxw_row_t fila, lxw_col_t c, const QString& t, lxw_format* formato) {
    if (!t.isEmpty()) worksheet_write_string(hoja_, fila, c, t.toUtf8().constData(), formato);
  }
  void celda(lxw_col_t c, const ColumnaLibro& columna, const Variant& valor) {
    if (valor.isNull()) return;
    if (columna.tipo.startsWith(QLatin1String("An"))) {
      texto(fila_, c, valor.display().left(columna.tipo.mid(2).toInt()), nullptr);
    } else if (columna.tipo == QLatin1String("F")) {
      const QDate d = valor.date();
      lxw_datetime dia{d.year(), d.month(), d.day(), 0, 0, 0};
      worksheet_write_datetime(hoja_, fila_, c, &dia, fecha_);
    } else {
      const bool entero = columna.tipo == QLatin1String("N");
      worksheet_write_number(hoja_, fila_, c, valor.number(), entero ? nullptr : numero_);
    }
  }

  QString ruta_, parcial_;
  lxw_workbook* libro_ = nullptr;
  lxw_worksheet* hoja_ = nullptr;
  lxw_format *titulo_ = nullptr, *numero_ = nullptr, *fecha_ = nullptr;
  std::vector<ColumnaLibro> columnas_;
  lxw_row_t fila_ = 0;
};

}  // namespace

LibrosRegistro::LibrosRegistro(Database& empresa, int ejercicio, const QString& trimestre)
    : ejercicio_(ejercicio) {
  const Periodo ultimo{ejercicio, trimestre};
  const TiposPorFechas tipos(empresa);
  for (LineaRegistro& l : leeRegistros(empresa, {QDate(ejercicio, 1, 1), ultimo.hasta(), false})) {
    if (l.autorrepercusion) continue;
    for (const QString& texto : avisosDe(l, tipos)) avisos_.push_back({l.codigo, l.factura, texto});
    (l.emitida() ? expedidas_ : recibidas_).push_back(std::move(l));
  }
  for (auto* libro : {&expedidas_, &recibidas_})
    std::ranges::stable_sort(*libro, {}, [](const LineaRegistro& l) {
      return std::pair(l.fechaDeRegistro(), l.codigo);
    });
}

QString LibrosRegistro::nombre(const Declarante& declarante, LibrosDe libros) const {
  QString razon;
  for (const QChar c : textoOficial(declarante["Nombre"]))
    if (c.isLetterOrNumber()) razon += c;
  const char letra = libros == LibrosDe::Iva ? 'C' : 'T';
  return QStringLiteral("%1%2%3%4.xlsx")
      .arg(ejercicio_)
      .arg(declarante["Nif"], QString(QLatin1Char(letra)), razon);
}

void LibrosRegistro::escribe(const QString& ruta, const Declarante& declarante,
                             LibrosDe libros) const {
  const bool unificados = libros == LibrosDe::Unificados;
  const auto columnas = [&](const QString& libro) {
    std::vector<ColumnaLibro> lista = columnasDe(libro);
    // Those of income tax stay empty in books of IVA alone.
    for (ColumnaLibro& c : lista)
      if (!unificados && c.dato == QLatin1String("Computable")) c.dato.clear();
    return lista;
  };
  Cuaderno cuaderno(ruta);
  cuaderno.empiezaHoja(unificados ? QStringLiteral("EXPEDIDAS_INGRESOS") : kExpedidas,
                       columnas(kExpedidas));
  for (const LineaRegistro& l : expedidas_) cuaderno.fila(datosDe(l, declarante, 0));
  cuaderno.empiezaHoja(unificados ? QStringLiteral("RECIBIDAS_GASTOS") : kRecibidas,
                       columnas(kRecibidas));
  int recepcion = 0;
  for (const LineaRegistro& l : recibidas_) cuaderno.fila(datosDe(l, declarante, ++recepcion));
  cuaderno.empiezaHoja(kBienes, columnas(kBienes));
  recepcion = 0;
  for (const LineaRegistro& l : recibidas_) {
    ++recepcion;
    if (l.bienInversion) cuaderno.fila(datosDe(l, declarante, recepcion));
  }
  cuaderno.cierra();
}
