#include "journal/widgets/paneltotales.h"

#include <QLabel>

#include "common/formato.h"

namespace {

constexpr std::array kFilas = {"Total", "Cuenta", "Asiento", "Marcado"};
constexpr std::array kColumnas = {"Debe", "Haber", "Descuadre"};
constexpr int kDescuadre = 2;

void destacar(QLabel& texto, bool si) {
  QFont letra = texto.font();
  if (letra.bold() == si) return;
  letra.setBold(si);
  texto.setFont(letra);
  QPalette paleta;
  if (si) {
    const bool oscuro = paleta.color(QPalette::Window).lightness() < 128;
    paleta.setColor(QPalette::WindowText,
                    oscuro ? QColor(0xff, 0x8a, 0x80) : QColor(0xb0, 0, 0x20));
  }
  texto.setPalette(paleta);
}

}  // namespace

void PanelTotales::tomaTextos(const QWidget& formulario) {
  for (size_t f = 0; f < kFilas.size(); ++f) {
    for (size_t c = 0; c < kColumnas.size(); ++c) {
      const QString nombre =
          QStringLiteral("Txt%1%2").arg(QLatin1String(kFilas[f]), QLatin1String(kColumnas[c]));
      textos_[f][c] = formulario.findChild<QLabel*>(nombre);
    }
  }
}

void PanelTotales::poner(Fila fila, const Totales& totales, const QString& mascara) {
  textos_[fila][0]->setText(Format(totales.Debe, mascara));
  textos_[fila][1]->setText(Format(totales.Haber, mascara));
  textos_[fila][kDescuadre]->setText(Format(totales.Descuadre, mascara));
  // The balance of a subcuenta is no fault.
  destacar(*textos_[fila][kDescuadre], fila != Cuenta && !cuadra(fila, mascara));
}

void PanelTotales::ponerCero(const QString& mascara) {
  for (const Fila fila : {Total, Cuenta, Asiento, Marcado}) ponerCero(fila, mascara);
}

QString PanelTotales::descuadre(Fila fila) const {
  return textos_[fila][kDescuadre]->text();
}

bool PanelTotales::cuadra(Fila fila, const QString& mascara) const {
  return descuadre(fila) == Format(QStringLiteral("0"), mascara);
}
