#include "toolkit/tema.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTranslator>

// The drawings lie in a static library: nothing would pull them into the program by itself.
static void cargarDibujos() {
  Q_INIT_RESOURCE(iconos);
}

namespace {
constexpr int kLetraUsual = 20;  // height of a line beyond which drawings grow

// A keyboard program shows at any time where the keyboard is, and never makes it wait.
class Estilo : public QProxyStyle {
 public:
  Estilo() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

  int styleHint(StyleHint cosa, const QStyleOption* opcion, const QWidget* control,
                QStyleHintReturn* mas) const override {
    switch (cosa) {
      case SH_UnderlineShortcut:
        return 1;
      case SH_Widget_Animation_Duration:
      case SH_RequestSoftwareInputPanel:
        return 0;
      default:
        return QProxyStyle::styleHint(cosa, opcion, control, mas);
    }
  }

  // Drawings grow with the letters.
  int pixelMetric(PixelMetric medida, const QStyleOption* opcion,
                  const QWidget* control) const override {
    const int lado = QProxyStyle::pixelMetric(medida, opcion, control);
    switch (medida) {
      case PM_ButtonIconSize:
      case PM_SmallIconSize:
      case PM_ToolBarIconSize:
      case PM_IndicatorWidth:
      case PM_IndicatorHeight:
      case PM_ExclusiveIndicatorWidth:
      case PM_ExclusiveIndicatorHeight: {
        const int letra = QFontMetrics(QApplication::font()).height();
        return letra > kLetraUsual ? lado * letra / kLetraUsual : lado;
      }
      default:
        return lado;
    }
  }

  void drawPrimitive(PrimitiveElement elemento, const QStyleOption* opcion, QPainter* pintor,
                     const QWidget* control) const override {
    if (elemento == PE_FrameFocusRect) return marcarFoco(*opcion, *pintor);
    QProxyStyle::drawPrimitive(elemento, opcion, pintor, control);
  }

  // The style below marks a button only when it was reached by Tab.
  void drawControl(ControlElement elemento, const QStyleOption* opcion, QPainter* pintor,
                   const QWidget* control) const override {
    QProxyStyle::drawControl(elemento, opcion, pintor, control);
    if (elemento == CE_PushButton && opcion->state & State_HasFocus) marcarFoco(*opcion, *pintor);
  }

  void drawComplexControl(ComplexControl elemento, const QStyleOptionComplex* opcion,
                          QPainter* pintor, const QWidget* control) const override {
    QProxyStyle::drawComplexControl(elemento, opcion, pintor, control);
    if (elemento == CC_ToolButton && opcion->state & State_HasFocus) marcarFoco(*opcion, *pintor);
  }

 private:
  static void marcarFoco(const QStyleOption& opcion, QPainter& pintor) {
    pintor.save();
    pintor.setRenderHint(QPainter::Antialiasing);
    // On the current row of a list the usual colour is the ground.
    const bool enFila = opcion.state & State_Item && opcion.state & State_Selected;
    pintor.setPen(
        QPen(opcion.palette.color(enFila ? QPalette::HighlightedText : QPalette::Highlight), 1.5));
    pintor.setBrush(Qt::NoBrush);
    pintor.drawRoundedRect(QRectF(opcion.rect).adjusted(1, 1, -1, -1), 2, 2);
    pintor.restore();
  }
};

void cargarTextos(QApplication& aplicacion) {
  QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
  const QStringList carpetas = {QLibraryInfo::path(QLibraryInfo::TranslationsPath),
                                QCoreApplication::applicationDirPath() + QStringLiteral("/textos")};
  auto* textos = new QTranslator(&aplicacion);
  for (const auto& carpeta : carpetas) {
    if (textos->load(QStringLiteral("qtbase_es"), carpeta)) {
      aplicacion.installTranslator(textos);
      return;
    }
  }
}
}  // namespace

void aplicarTema(QApplication& aplicacion) {
  QApplication::setStyle(new Estilo);
  cargarTextos(aplicacion);
  QApplication::setWindowIcon(icono(QStringLiteral("librano")));
}

QIcon icono(const QString& nombre) {
  cargarDibujos();
  return nombre.isEmpty() ? QIcon() : QIcon(QStringLiteral(":/iconos/%1.svg").arg(nombre));
}
