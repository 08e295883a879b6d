#include "reports/filasfijas.h"

#include <QDir>

#include "common/errorejecucion.h"
#include "common/rutas.h"

namespace reports {
namespace {
enum class Clase : quint8 { Nulo, SiNo, Entero, Numero, Fecha, Texto };

void escribe(QDataStream& s, const Variant& v) {
  const auto clase = [&](Clase c) -> QDataStream& { return s << static_cast<quint8>(c); };
  if (v.isNull()) {
    clase(Clase::Nulo);
  } else if (v.isBoolean()) {
    clase(Clase::SiNo) << v.toBool();
  } else if (v.isInteger()) {
    clase(Clase::Entero) << v.integer();
  } else if (v.isNumber()) {
    clase(Clase::Numero) << v.number();
  } else if (v.isDate()) {
    const QDateTime d = v.dateTime();
    clase(Clase::Fecha) << d.date().toJulianDay() << d.time().msecsSinceStartOfDay();
  } else {
    clase(Clase::Texto) << v.text();
  }
}

template <class T>
T leido(QDataStream& s) {
  T x{};
  s >> x;
  return x;
}

Variant lee(QDataStream& s) {
  switch (static_cast<Clase>(leido<quint8>(s))) {
    case Clase::Nulo:
      return {};
    case Clase::SiNo:
      return leido<bool>(s);
    case Clase::Entero:
      return leido<qint64>(s);
    case Clase::Numero:
      return leido<double>(s);
    case Clase::Fecha: {
      const QDate dia = QDate::fromJulianDay(leido<qint64>(s));
      return QDateTime(dia, QTime::fromMSecsSinceStartOfDay(leido<qint32>(s)));
    }
    case Clase::Texto:
      break;
  }
  return leido<QString>(s);
}

class LecturaFija : public Lectura {
 public:
  LecturaFija(std::shared_ptr<const FilasFijas> filas, const QString& ruta)
      : filas_(std::move(filas)), fichero_(ruta), celdas_(size_t(filas_->columnas())) {
    if (!fichero_.open(QIODevice::ReadOnly))
      throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(ruta));
    entrada_.setDevice(&fichero_);
  }
  bool siguiente() override {
    if (leidas_ == filas_->filas()) return false;
    ++leidas_;
    for (Variant& c : celdas_) c = lee(entrada_);
    if (entrada_.status() != QDataStream::Ok)
      throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(fichero_.fileName()));
    return true;
  }
  Variant valor(int columna) const override { return celdas_[size_t(columna)]; }
  QString texto(int columna) const override { return celdas_[size_t(columna)].display(); }
  double numero(int columna) const override {
    const Variant& v = celdas_[size_t(columna)];
    return v.isNull() ? 0 : v.number();
  }

 private:
  std::shared_ptr<const FilasFijas> filas_;
  QFile fichero_;
  QDataStream entrada_;
  std::vector<Variant> celdas_;
  qint64 leidas_ = 0;
};
}  // namespace

FilasFijas::FilasFijas(int columnas) : columnas_(columnas) {
  if (!fichero_.open()) throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(QDir::tempPath()));
  salida_.setDevice(&fichero_);
}

void FilasFijas::pon(const Lectura& fila) {
  for (int c = 0; c < columnas_; ++c) escribe(salida_, fila.valor(c));
  if (salida_.status() != QDataStream::Ok) throw ErrorEjecucion(err::kSinEspacio);
  ++filas_;
}

void FilasFijas::acaba() {
  if (!fichero_.flush()) throw ErrorEjecucion(err::kSinEspacio);
}

std::unique_ptr<Lectura> FilasFijas::lectura() const {
  return std::make_unique<LecturaFija>(shared_from_this(), fichero_.fileName());
}

}  // namespace reports
