#include "reports/exporta.h"

#include <xlsxwriter.h>

#include <filesystem>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/rutas.h"

namespace reports {
namespace {
constexpr int kFilasPorPaso = 1000;

std::vector<ColumnaHoja> columnasDe(const Documento& documento) {
  std::vector<ColumnaHoja> todas = documento.plantilla().hoja;
  if (!todas.empty()) return todas;
  for (int c = 0; c < documento.fuente().columnas(); ++c) {
    const FieldType tipo = documento.fuente().tipo(c);
    const QString& nombre = documento.fuente().nombre(c);
    ColumnaHoja columna{nombre, nombre, Formato::Texto, 15, c};
    if (tipo == FieldType::Double) columna.formato = Formato::Importe;
    if (tipo == FieldType::Long) columna.formato = Formato::Entero;
    if (tipo == FieldType::Date) columna.formato = Formato::Fecha;
    todas.push_back(columna);
  }
  return todas;
}

// What a cell of the sheet holds: nothing, a number, a date or a text.
Variant celda(const Cursor& cursor, const ColumnaHoja& columna) {
  Variant v = cursor.valor(columna.ordinal);
  if (v.isNull() || !esDeImporte(columna.formato)) return v;
  const auto mostrado = importeMostrado(v.number(), columna.formato);
  return mostrado ? Variant(*mostrado) : Variant();
}

[[noreturn]] void noSePuede(const QString& ruta) {
  throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(ruta));
}

class TareaFilas : public TareaFija {
 public:
  explicit TareaFilas(std::shared_ptr<Documento> documento)
      : TareaFija(documento), columnas_(columnasDe(*documento)) {}
  int hecho() const override { return fila_; }
  int total() const override { return 0; }

 protected:
  bool pasoFijo() override {
    if (!cursor_)
      cursor_ = std::make_unique<CursorAvance>(documento().fuente(), std::vector<int>());
    for (int i = 0; i < kFilasPorPaso; ++i) {
      if (!cursor_->situa(fila_)) {
        acaba();
        return false;
      }
      pon(*cursor_);
      ++fila_;
    }
    return true;
  }
  virtual void pon(const Cursor& cursor) = 0;
  virtual void acaba() = 0;
  const std::vector<ColumnaHoja>& columnas() const { return columnas_; }

 private:
  std::vector<ColumnaHoja> columnas_;
  std::unique_ptr<CursorAvance> cursor_;
  int fila_ = 0;
};

class Libro {
 public:
  Libro(const QByteArray& ruta, QByteArray carpeta, const std::vector<ColumnaHoja>& columnas,
        const QString& mascara)
      : columnas_(columnas) {
    lxw_workbook_options opciones{};
    opciones.constant_memory = LXW_TRUE;
    opciones.tmpdir = carpeta.data();
    libro_ = workbook_new_opt(ruta.constData(), &opciones);
    titulo_ = formato("", true);
    fecha_ = formato("dd/mm/yyyy", false);
    importe_ = formato(mascara.toUtf8().constData(), false);
  }
  ~Libro() {
    if (libro_) lxw_workbook_free(libro_);
  }
  Libro(const Libro&) = delete;
  Libro& operator=(const Libro&) = delete;

  void fila(const Cursor& cursor) {
    if (!hoja_ || fila_ == LXW_ROW_MAX) nuevaHoja();
    for (size_t c = 0; c < columnas_.size(); ++c) {
      escribe(static_cast<lxw_col_t>(c), celda(cursor, columnas_[c]), columnas_[c].formato);
    }
    ++fila_;
  }
  bool cierra() {
    if (!hoja_) nuevaHoja();
    lxw_workbook* const libro = std::exchange(libro_, nullptr);
    return workbook_close(libro) == LXW_NO_ERROR;
  }

 private:
  lxw_format* formato(const char* mascara, bool negrita) {
    lxw_format* const f = workbook_add_format(libro_);
    if (*mascara) format_set_num_format(f, mascara);
    if (negrita) format_set_bold(f);
    return f;
  }

  void nuevaHoja() {
    hoja_ = workbook_add_worksheet(libro_, nullptr);
    for (size_t c = 0; c < columnas_.size(); ++c) {
      const auto n = static_cast<lxw_col_t>(c);
      worksheet_set_column(hoja_, n, n, columnas_[c].ancho, nullptr);
      worksheet_write_string(hoja_, 0, n, columnas_[c].titulo.toUtf8().constData(), titulo_);
    }
    worksheet_freeze_panes(hoja_, 1, 0);
    fila_ = 1;
  }

  void escribe(lxw_col_t c, const Variant& v, Formato formato) {
    if (v.isNull()) return;
    if (v.isNumber()) {
      worksheet_write_number(hoja_, fila_, c, v.number(),
                             esDeImporte(formato) ? importe_ : nullptr);
    } else if (v.isDate()) {
      const QDate d = v.date();
      lxw_datetime dia{d.year(), d.month(), d.day(), 0, 0, 0};
      worksheet_write_datetime(hoja_, fila_, c, &dia, fecha_);
    } else {
      worksheet_write_string(hoja_, fila_, c, v.display().toUtf8().constData(), nullptr);
    }
  }

  const std::vector<ColumnaHoja>& columnas_;
  lxw_workbook* libro_ = nullptr;
  lxw_worksheet* hoja_ = nullptr;
  lxw_format *titulo_ = nullptr, *fecha_ = nullptr, *importe_ = nullptr;
  lxw_row_t fila_ = 0;
};

QByteArray campoCsv(const Variant& v, Formato formato) {
  QString t = v.display();
  if (v.isDate()) {
    t = Format(v, QStringLiteral("dd/mm/yyyy"));
  } else if (v.isNumber() && esDeImporte(formato)) {
    t = Format(v, QStringLiteral("0.00####"));
  }
  static const QRegularExpression delicados(QStringLiteral("[;\"\r\n]"));
  if (t.contains(delicados)) t = u'"' + t.replace(u'"', QStringLiteral("\"\"")) + u'"';
  return t.toUtf8();
}

// The file beside the result that grows until it is whole. Taken at once: that it can't be written
// is told before the rows are read, not after.
QString parcialDe(const QString& ruta) {
  QFile parcial(ruta + QStringLiteral(".parcial"));
  if (!parcial.open(QIODevice::WriteOnly)) noSePuede(ruta);
  return parcial.fileName();
}

class TareaXlsx : public TareaFilas {
 public:
  TareaXlsx(std::shared_ptr<Documento> documento, const QString& ruta)
      : TareaFilas(std::move(documento)),
        ruta_(ruta),
        parcial_(parcialDe(ruta)),
        // The sheets under way stand beside the result: there is room where it is to be.
        libro_(QFile::encodeName(parcial_), QFile::encodeName(QFileInfo(ruta).absolutePath()),
               columnas(), this->documento().datos().mascara) {}
  ~TareaXlsx() override { QFile::remove(parcial_); }

 protected:
  void pon(const Cursor& cursor) override { libro_.fila(cursor); }
  void acaba() override {
    if (!libro_.cierra()) noSePuede(ruta_);
    // In one step: whatever happens, one of the two workbooks bears the name.
    std::error_code fallo;
    std::filesystem::rename(QFileInfo(parcial_).filesystemFilePath(),
                            QFileInfo(ruta_).filesystemFilePath(), fallo);
    if (fallo) noSePuede(ruta_);
  }

 private:
  QString ruta_, parcial_;
  Libro libro_;
};

class TareaCsv : public TareaFilas {
 public:
  TareaCsv(std::shared_ptr<Documento> documento, const QString& ruta)
      : TareaFilas(std::move(documento)), fichero_(ruta) {
    if (!fichero_.open(QIODevice::WriteOnly)) noSePuede(ruta);
    linea_ = "\xEF\xBB\xBF";
    for (const ColumnaHoja& c : columnas()) anade(c.titulo, Formato::Texto);
    escribe();
  }

 protected:
  void pon(const Cursor& cursor) override {
    for (const ColumnaHoja& c : columnas()) anade(celda(cursor, c), c.formato);
    escribe();
  }
  void acaba() override {
    if (!fichero_.commit()) noSePuede(fichero_.fileName());
  }

 private:
  void anade(const Variant& valor, Formato formato) {
    if (!primera_) linea_ += ';';
    primera_ = false;
    linea_ += campoCsv(valor, formato);
  }
  void escribe() {
    fichero_.write(linea_ + "\r\n");
    linea_.clear();
    primera_ = true;
  }

  QSaveFile fichero_;
  QByteArray linea_;
  bool primera_ = true;
};
}  // namespace

std::unique_ptr<Tarea> exportaXlsx(std::shared_ptr<Documento> documento, const QString& ruta) {
  return std::make_unique<TareaXlsx>(std::move(documento), ruta);
}

std::unique_ptr<Tarea> exportaCsv(std::shared_ptr<Documento> documento, const QString& ruta) {
  return std::make_unique<TareaCsv>(std::move(documento), ruta);
}

}  // namespace reports
