#include "reports/muestra.h"

#include <cmath>

#include "common/errorejecucion.h"
#include "common/formato.h"

namespace reports {
namespace {
constexpr qint64 kMillon = 1'000'000;
constexpr double kMayor = 9e12;

// dd/mm/yyyy without going through a mask: there is one on each line of a book.
QString fechaCorta(QDate d) {
  const auto cifra = [](int n) { return QChar(u'0' + n % 10); };
  const int a = d.year();
  const QChar letras[] = {cifra(d.day() / 10),
                          cifra(d.day()),
                          u'/',
                          cifra(d.month() / 10),
                          cifra(d.month()),
                          u'/',
                          cifra(a / 1000),
                          cifra(a / 100),
                          cifra(a / 10),
                          cifra(a)};
  return QString(letras, std::size(letras));
}
}  // namespace

// The whole part apart: a number of many figures times a million would lose its last ones.
qint64 millonesimas(double importe) {
  if (!(std::abs(importe) < kMayor)) throw ErrorEjecucion(err::kDesbordamiento);
  const double entero = std::trunc(importe);
  return static_cast<qint64>(entero) * kMillon + std::llround((importe - entero) * kMillon);
}

qint64 sumado(qint64 a, qint64 b) {
  if (b > 0 ? a > INT64_MAX - b : a < INT64_MIN - b) throw ErrorEjecucion(err::kDesbordamiento);
  return a + b;
}

double importeDe(qint64 millonesimas) {
  return static_cast<double>(millonesimas / kMillon) +
         static_cast<double>(millonesimas % kMillon) / kMillon;
}

Muestra::Muestra(const QString& mascara) : mascara_(mascara), cero_(Format(0.0, mascara)) {}

QString Muestra::valor(const Variant& valor, Formato formato) const {
  if (valor.isNull()) return {};
  switch (formato) {
    case Formato::Fecha:
      return valor.isDate() ? fechaCorta(valor.date()) : valor.display();
    case Formato::Entero:
      return valor.isNumber() ? QString::number(std::llround(valor.number())) : valor.display();
    case Formato::Natural:
    case Formato::Texto:
      return valor.display();
    default:
      return importe(valor.number(), formato);
  }
}

QString Muestra::importe(double valor, Formato formato) const {
  if (formato == Formato::Entero) return QString::number(std::llround(valor));
  const auto mostrado = importeMostrado(valor, formato);
  if (!mostrado) return {};
  const QString texto = Format(*mostrado, mascara_);
  const bool siempre = formato == Formato::Importe || formato == Formato::Negado;
  return !siempre && texto == cero_ ? QString() : texto;
}

bool Muestra::esCero(double importe) const {
  return importe == 0 || Format(importe, mascara_) == cero_;
}

}  // namespace reports
