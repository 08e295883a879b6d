#include "journal/widgets/paneltotales.h"

#include <algorithm>

#include "common/formato.h"
#include "toolkit/etiquetaimporte.h"

namespace {

constexpr std::array kFilas = {"Total", "Cuenta", "Asiento", "Marcado"};
constexpr std::array kColumnas = {"Debe", "Haber", "Descuadre"};
constexpr int kDescuadre = 2;
constexpr int kDigitosDeAsiento = 6;
constexpr double kMayor = -999999999.99;  // what the columns are made for

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
    const QLatin1String fila(kFilas[f]);
    rotulos_[f] = formulario.findChild<QLabel*>(QStringLiteral("LblFila") + fila);
    titulos_[f] = rotulos_[f]->text();
    for (size_t c = 0; c < kColumnas.size(); ++c) {
      textos_[f][c] = formulario.findChild<EtiquetaImporte*>(
          QStringLiteral("Txt%1%2").arg(fila, QLatin1String(kColumnas[c])));
    }
  }
}

void PanelTotales::ajustaAnchos(const QString& mascara, int digitosSubcuenta) {
  const QLabel& primera = *textos_[0][0];
  QFont gruesa = primera.font();
  gruesa.setBold(true);
  const int importe = QFontMetrics(gruesa).horizontalAdvance(Format(kMayor, mascara));
  for (const auto& fila : textos_)
    for (EtiquetaImporte* texto : fila) {
      texto->setMascara(mascara);
      texto->setMinimumWidth(importe);
    }
  const QString clave(std::max(digitosSubcuenta, kDigitosDeAsiento), QLatin1Char('0'));
  for (size_t f = 0; f < kFilas.size(); ++f)
    rotulos_[f]->setMinimumWidth(
        primera.fontMetrics().horizontalAdvance(titulos_[f] + QLatin1Char(' ') + clave));
}

void PanelTotales::poner(Fila fila, const QString& clave, const Totales& totales,
                         const QString& mascara) {
  rotulos_[fila]->setText(clave.isEmpty() ? titulos_[fila]
                                          : titulos_[fila] + QLatin1Char(' ') + clave);
  descuadres_[fila] = Format(totales.Descuadre, mascara);
  textos_[fila][0]->setText(Format(totales.Debe, mascara));
  textos_[fila][1]->setText(Format(totales.Haber, mascara));
  textos_[fila][kDescuadre]->setText(descuadres_[fila]);
  // The balance of a subcuenta is no fault.
  destacar(*textos_[fila][kDescuadre], fila != Cuenta && !cuadra(fila, mascara));
}

void PanelTotales::ponerCero(const QString& mascara) {
  for (const Fila fila : {Total, Cuenta, Asiento, Marcado}) ponerCero(fila, mascara);
}

bool PanelTotales::cuadra(Fila fila, const QString& mascara) const {
  return descuadres_[fila] == Format(QStringLiteral("0"), mascara);
}
