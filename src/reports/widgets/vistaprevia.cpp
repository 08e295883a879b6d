#include "reports/widgets/vistaprevia.h"

#include <QtPrintSupport/QPrintDialog>
#include <QtPrintSupport/QPrinterInfo>
#include <QtWidgets/QtWidgets>

#include "common/errorejecucion.h"
#include "engine/dbengine.h"
#include "reports/errores.h"
#include "reports/exporta.h"
#include "reports/pintor.h"
#include "reports/widgets/impresion.h"
#include "reports/widgets/vistapagina.h"
#include "toolkit/cajas.h"
#include "toolkit/contexto.h"
#include "toolkit/fallo.h"
#include "toolkit/tema.h"

using namespace reports;

namespace {
constexpr qint64 kTurno = 25;  // milliseconds of work between two looks at the keys
constexpr qint64 kFilasPorTurno = 2000;
constexpr int kZooms[] = {50, 75, 100, 125, 150, 200, 300, 400};

// Counts the pages up to one that is asked for.
class TareaCuenta : public Tarea {
 public:
  TareaCuenta(std::shared_ptr<Documento> documento, int hasta)
      : documento_(std::move(documento)), hasta_(hasta) {}
  bool paso() override {
    return !documento_->cuenta(kFilasPorTurno) && documento_->paginas() < hasta_;
  }
  int hecho() const override { return documento_->paginas(); }
  int total() const override { return 0; }

 private:
  std::shared_ptr<Documento> documento_;
  int hasta_;
};
}  // namespace

VistaPrevia::VistaPrevia(Contexto& contexto, std::shared_ptr<Documento> documento,
                         const QString& titulo, QWidget* padre)
    : QWidget(padre, Qt::Window),
      ctx_(contexto),
      documento_(std::move(documento)),
      titulo_(titulo) {
  Q_INIT_RESOURCE(iconosinforme);
  setObjectName(QStringLiteral("VistaPrevia"));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(titulo);
  vista_ = new VistaPagina(*documento_, this);
  vista_->setObjectName(QStringLiteral("Vista"));
  montaBarra();
  auto* const orden = new QVBoxLayout(this);
  orden->setContentsMargins(0, 0, 0, 0);
  orden->setSpacing(0);
  orden->addWidget(barra_);
  orden->addWidget(vista_, 1);
  montaPie();
  connect(vista_, &VistaPagina::pasa, this, [this](int n) { irA(pagina_ + n); });
  connect(vista_, &VistaPagina::pideZoom, this, &VistaPrevia::zoom);
  sigueAlDialogo(padre);

  const QRect pantalla = screen()->availableGeometry();
  resize(std::min(1000, pantalla.width() * 9 / 10), pantalla.height() * 9 / 10);
  connect(&turno_, &QTimer::timeout, this, &VistaPrevia::trabaja);
  irA(1);
  turno_.start(0);
  vista_->setFocus();
}

VistaPrevia::~VistaPrevia() = default;

QAction* VistaPrevia::accion(const char* nombre, const QString& texto, const QString& dibujo,
                             const QList<QKeySequence>& teclas, void (VistaPrevia::*reaccion)()) {
  auto* const a = new QAction(icono(dibujo), texto, this);
  a->setObjectName(QString::fromLatin1(nombre));
  a->setShortcuts(teclas);
  if (!teclas.isEmpty()) {
    a->setToolTip(texto +
                  QStringLiteral(" (%1)").arg(teclas[0].toString(QKeySequence::NativeText)));
  }
  connect(a, &QAction::triggered, this,
          [this, reaccion] { protege([&] { (this->*reaccion)(); }); });
  addAction(a);
  barra_->addAction(a);
  return a;
}

void VistaPrevia::montaBarra() {
  using V = VistaPrevia;
  barra_ = new QToolBar(this);
  barra_->setToolButtonStyle(Qt::ToolButtonIconOnly);
  irAtras_[0] = accion("CmdPrimera", tr("Primera página"), QStringLiteral("primero"),
                       {Qt::CTRL | Qt::Key_Home}, &V::primera);
  irAtras_[1] = accion("CmdAnterior", tr("Página anterior"), QStringLiteral("anterior"),
                       {Qt::Key_PageUp}, &V::anterior);
  TxtPagina = new QLineEdit(barra_);
  TxtPagina->setObjectName(QStringLiteral("TxtPagina"));
  TxtPagina->setAlignment(Qt::AlignRight);
  TxtPagina->setValidator(new QIntValidator(0, 9999999, TxtPagina));
  TxtPagina->installEventFilter(this);
  TxtPagina->setFixedWidth(TxtPagina->fontMetrics().horizontalAdvance(QStringLiteral("0000000")) +
                           16);
  TxtPagina->setToolTip(tr("Página"));
  connect(TxtPagina, &QLineEdit::returnPressed, this,
          [this] { protege([this] { vaAEscrita(); }); });
  barra_->addWidget(TxtPagina);
  LblPaginas = new QLabel(barra_);
  LblPaginas->setObjectName(QStringLiteral("LblPaginas"));
  LblPaginas->setContentsMargins(6, 0, 6, 0);
  barra_->addWidget(LblPaginas);
  irAdelante_[0] = accion("CmdSiguiente", tr("Página siguiente"), QStringLiteral("siguiente"),
                          {Qt::Key_PageDown}, &V::siguiente);
  irAdelante_[1] = accion("CmdUltima", tr("Última página"), QStringLiteral("ultimo"),
                          {Qt::CTRL | Qt::Key_End}, &V::ultima);
  barra_->addSeparator();
  CboZoom = new QComboBox(barra_);
  CboZoom->setObjectName(QStringLiteral("CboZoom"));
  CboZoom->setToolTip(tr("Tamaño"));
  CboZoom->addItems({tr("Ancho de página"), tr("Página entera")});
  for (const int z : kZooms) CboZoom->addItem(QStringLiteral("%1 %").arg(z), z);
  connect(CboZoom, &QComboBox::activated, this, &V::eligeZoom);
  barra_->addWidget(CboZoom);
  barra_->addSeparator();
  TxtBuscar = new QLineEdit(barra_);
  TxtBuscar->setObjectName(QStringLiteral("TxtBuscar"));
  TxtBuscar->setPlaceholderText(tr("Buscar"));
  TxtBuscar->setClearButtonEnabled(true);
  TxtBuscar->setMaximumWidth(220);
  TxtBuscar->installEventFilter(this);
  connect(TxtBuscar, &QLineEdit::returnPressed, this, [this] { protege([this] { busca(); }); });
  barra_->addWidget(TxtBuscar);
  salidas_ << accion("CmdBuscar", tr("Buscar el siguiente"), QStringLiteral("buscar-descripcion"),
                     {Qt::Key_F3}, &V::busca);
  barra_->addSeparator();
  salidas_ << accion("CmdImprimir", tr("Imprimir"), QStringLiteral("imprimir"),
                     {Qt::CTRL | Qt::Key_P}, &V::imprime);
  salidas_ << accion("CmdPdf", tr("Guardar como PDF"), QStringLiteral("pdf"),
                     {Qt::CTRL | Qt::Key_S}, &V::guardaPdf);
  salidas_ << accion("CmdXlsx", tr("Exportar a hoja de cálculo"), QStringLiteral("excel"),
                     {Qt::CTRL | Qt::Key_E}, &V::exportaXlsx);
  salidas_ << accion("CmdCsv", tr("Exportar a CSV"), QStringLiteral("csv"),
                     {Qt::CTRL | Qt::SHIFT | Qt::Key_E}, &V::exportaCsv);
  auto* const buscar = new QAction(this);
  buscar->setShortcut(Qt::CTRL | Qt::Key_F);
  connect(buscar, &QAction::triggered, this, &V::irABuscar);
  addAction(buscar);
}

void VistaPrevia::montaPie() {
  auto* const pie = new QHBoxLayout;
  pie->setContentsMargins(8, 4, 8, 4);
  LblEstado = new QLabel(this);
  LblEstado->setObjectName(QStringLiteral("LblEstado"));
  Bar = new QProgressBar(this);
  Bar->setObjectName(QStringLiteral("Bar"));
  Bar->setMaximumWidth(320);
  CmdDetener = new QPushButton(tr("Detener"), this);
  CmdDetener->setObjectName(QStringLiteral("CmdDetener"));
  CmdDetener->setFocusPolicy(Qt::TabFocus);
  connect(CmdDetener, &QPushButton::clicked, this, &VistaPrevia::detiene);
  pie->addWidget(LblEstado, 1);
  pie->addWidget(Bar);
  pie->addWidget(CmdDetener);
  static_cast<QVBoxLayout*>(layout())->addLayout(pie);
  Bar->hide();
  CmdDetener->hide();
}

// A window over a modal dialog must belong to it to be usable; when the dialog closes, the window
// passes to the one below instead of going with it.
void VistaPrevia::sigueAlDialogo(QWidget* padre) {
  auto* const dialogo = qobject_cast<QDialog*>(padre);
  if (!dialogo) return;
  connect(dialogo, &QDialog::finished, this, [this, dialogo] {
    const bool vista = isVisible();
    const QRect sitio = geometry();
    setParent(dialogo->parentWidget(), Qt::Window);
    setGeometry(sitio);
    setVisible(vista);
    sigueAlDialogo(parentWidget());
  });
}

void VistaPrevia::protege(const std::function<void()>& reaccion) {
  try {
    reaccion();
  } catch (const ErrorEjecucion& e) {
    tarea_.reset();
    atiende();
    avisaDeFallo(ctx_, this, e);
  }
}

// --- pages
// ----------------------------------------------------------------------------------------

void VistaPrevia::irA(int pagina) {
  protege([&] {
    pagina = std::max(1, pagina);
    ponAlDia();
    if (pagina > documento_->paginas() && !documento_->contado()) {
      if (tarea_) return;
      lanza(std::make_unique<TareaCuenta>(documento_, pagina), tr("Contando páginas"),
            [this, pagina] { irA(pagina); });
      return;
    }
    muestra(pagina);
    atiende();
  });
}

void VistaPrevia::muestra(int pagina) {
  pagina_ = std::min(pagina, documento_->paginas());
  vista_->setPagina(documento_->pagina(pagina_));
}

// What was written since the book was opened is in it from here on.
void VistaPrevia::ponAlDia() {
  documento_->alDia();
  if (version_ == documento_->version()) return;
  version_ = documento_->version();
  buscado_ = {};
  aviso_ = tr("Los libros han cambiado: el informe se ha vuelto a contar");
  muestraEstado(aviso_);
  turno_.start(0);
}

void VistaPrevia::ultima() {
  irA(INT_MAX);
}

void VistaPrevia::vaAEscrita() {
  irA(TxtPagina->text().toInt());
  vista_->setFocus();
}

// The page box never keeps a number that isn't the page's, and Escape takes back what was typed
// before it closes anything.
bool VistaPrevia::eventFilter(QObject* objeto, QEvent* evento) {
  const auto* const tecla =
      evento->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(evento) : nullptr;
  const bool escape = tecla && tecla->key() == Qt::Key_Escape && !tarea_;
  if (objeto == TxtPagina) {
    if (evento->type() == QEvent::FocusOut) QTimer::singleShot(0, this, &VistaPrevia::atiende);
    if (!escape) return false;
    vista_->setFocus();
    return true;
  }
  if (objeto != TxtBuscar || !escape || TxtBuscar->text().isEmpty()) return false;
  TxtBuscar->clear();
  return true;
}

void VistaPrevia::eligeZoom(int indice) {
  if (indice < 2) {
    vista_->setZoom(indice == 0 ? VistaPagina::Ajuste::Ancho : VistaPagina::Ajuste::Entera);
  } else {
    vista_->setZoom(VistaPagina::Ajuste::Porcentaje, CboZoom->itemData(indice).toInt());
  }
}

void VistaPrevia::zoom(int porcentaje) {
  porcentaje = std::clamp(porcentaje, 20, 500);
  vista_->setZoom(VistaPagina::Ajuste::Porcentaje, porcentaje);
  CboZoom->setCurrentIndex(CboZoom->findData(porcentaje));
  CboZoom->setPlaceholderText(QStringLiteral("%1 %").arg(porcentaje));
}

// --- search
// ---------------------------------------------------------------------------------------

void VistaPrevia::irABuscar() {
  TxtBuscar->setFocus();
  TxtBuscar->selectAll();
}

void VistaPrevia::busca() {
  const QString texto = TxtBuscar->text().trimmed();
  if (texto.isEmpty()) return irABuscar();
  if (tarea_) return;
  ponAlDia();
  if (texto != ultimoBuscado_ || buscado_.pagina != pagina_) buscado_ = {pagina_, -1};
  ultimoBuscado_ = texto;
  auto tarea = std::make_unique<TareaBusqueda>(documento_, texto, buscado_);
  const TareaBusqueda* const esta = tarea.get();
  lanza(std::move(tarea), tr("Buscando"), [this, esta, texto] {
    const auto hallado = esta->hallado();
    if (!hallado) return muestraEstado(tr("No se encuentra «%1»").arg(texto));
    buscado_ = *hallado;
    irA(hallado->pagina);
    vista_->marca(hallado->texto);
    muestraEstado(tr("Encontrado en la página %1").arg(hallado->pagina));
  });
}

// --- output
// ---------------------------------------------------------------------------------------

void VistaPrevia::imprime() {
  if (tarea_) return;
  ponAlDia();
  if (documento_->contado()) return imprimeContado();
  lanza(std::make_unique<TareaCuenta>(documento_, INT_MAX), tr("Contando páginas"),
        [this] { imprimeContado(); });
}

void VistaPrevia::imprimeContado() {
  auto impresora = std::make_unique<QPrinter>(QPrinter::HighResolution);
  impresora->setPageLayout(papelDe(documento_->plantilla()));
  impresora->setDocName(nombreDelLibro());  // printed to a file, the book bears its name
  QPrintDialog dialogo(impresora.get(), this);
  dialogo.setObjectName(QStringLiteral("Impresion"));
  dialogo.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                     QAbstractPrintDialog::PrintCurrentPage |
                     QAbstractPrintDialog::PrintCollateCopies |
                     QAbstractPrintDialog::PrintShowPageSize);
  dialogo.setMinMax(1, documento_->paginas());
  dialogo.setFromTo(1, documento_->paginas());
  ctx_.cajas->modal(dialogo);
  if (dialogo.result() != QDialog::Accepted) return;
  int desde = 1, hasta = documento_->paginas();
  if (dialogo.printRange() == QAbstractPrintDialog::PageRange) {
    desde = dialogo.fromPage();
    hasta = dialogo.toPage();
  } else if (dialogo.printRange() == QAbstractPrintDialog::CurrentPage) {
    desde = hasta = pagina_;
  }
  lanza(std::make_unique<TareaImpresion>(documento_, std::move(impresora), desde, hasta),
        tr("Imprimiendo"), [this] { muestraEstado(tr("Enviado a la impresora")); });
}

// The book's own name, also where its window bears another's, with the company and the year.
QString VistaPrevia::nombreDelLibro() const {
  QStringList partes;
  for (const char* dato : {"libro", "empresa", "año"})
    partes << documento_->datos().textos.value(QString::fromUtf8(dato)).trimmed();
  if (partes[0].isEmpty()) partes[0] = titulo_;
  partes.removeAll(QString());
  return partes.join(QStringLiteral(" - "));
}

QString VistaPrevia::pideFichero(const QString& titulo, const QString& extension,
                                 const QString& clase) {
  if (tarea_) return {};
  static const QRegularExpression prohibidos(QStringLiteral("[\\\\/:*?\"<>|]"));
  const QString nombre = nombreDelLibro().replace(prohibidos, QStringLiteral(" ")).simplified();
  return ctx_.cajas
      ->guardarFichero(this, titulo, nombre + u'.' + extension,
                       QStringLiteral("%1 (*.%2)").arg(clase, extension))
      .value_or(QString());
}

void VistaPrevia::guardaPdf() {
  const QString ruta =
      pideFichero(tr("Guardar como PDF"), QStringLiteral("pdf"), tr("Documento PDF"));
  if (ruta.isEmpty()) return;
  lanza(std::make_unique<TareaPdf>(documento_, ruta, nombreDelLibro(), 1, INT_MAX),
        tr("Guardando PDF"), [this, ruta] { muestraEstado(tr("Guardado en %1").arg(ruta)); });
}

void VistaPrevia::exportaXlsx() {
  const QString ruta =
      pideFichero(tr("Exportar a hoja de cálculo"), QStringLiteral("xlsx"), tr("Hoja de cálculo"));
  if (ruta.isEmpty()) return;
  lanza(reports::exportaXlsx(documento_, ruta), tr("Exportando"),
        [this, ruta] { muestraEstado(tr("Guardado en %1").arg(ruta)); });
}

void VistaPrevia::exportaCsv() {
  const QString ruta =
      pideFichero(tr("Exportar a CSV"), QStringLiteral("csv"), tr("Texto separado"));
  if (ruta.isEmpty()) return;
  lanza(reports::exportaCsv(documento_, ruta), tr("Exportando"),
        [this, ruta] { muestraEstado(tr("Guardado en %1").arg(ruta)); });
}

// --- work in slices
// -------------------------------------------------------------------------------

void VistaPrevia::lanza(std::unique_ptr<Tarea> tarea, const QString& rotulo,
                        std::function<void()> alAcabar) {
  tarea_ = std::move(tarea);
  alAcabar_ = std::move(alAcabar);
  rotulo_ = rotulo;
  LblEstado->setText(rotulo);
  Bar->setRange(0, 0);
  turno_.start(0);
  atiende();
}

// One slice of the task under way or, without one, of the counting of pages.
void VistaPrevia::trabaja() {
  if (ctx_.motor.isWaiting()) return;
  protege([this] {
    const QDeadlineTimer fin(kTurno);
    if (!tarea_) {
      turno_.stop();  // counting that fails isn't begun again
      while (!documento_->contado() && !fin.hasExpired()) documento_->cuenta(kFilasPorTurno);
      if (documento_->contado()) {
        muestra(pagina_);
      } else {
        turno_.start();
      }
      return atiende();
    }
    bool sigue = true;
    while (sigue && !fin.hasExpired()) sigue = tarea_->paso();
    Bar->setRange(0, tarea_->total());
    Bar->setValue(tarea_->hecho());
    if (tarea_->hecho() > 0)
      LblEstado->setText(QStringLiteral("%1: %2").arg(rotulo_).arg(tarea_->hecho()));
    if (sigue) return;
    const auto acabada = std::move(tarea_);         // its result is read below
    LblEstado->setText(std::exchange(aviso_, {}));  // it stands until something else is said
    atiende();
    if (const auto reaccion = std::exchange(alAcabar_, nullptr)) reaccion();
  });
}

void VistaPrevia::detiene() {
  if (!tarea_) return;
  tarea_.reset();
  alAcabar_ = nullptr;
  muestraEstado(tr("Detenido"));
  atiende();
  vista_->setFocus();
}

void VistaPrevia::muestraEstado(const QString& texto) {
  LblEstado->setText(texto);
}

// Shows what is going on and enables what can be asked for now.
void VistaPrevia::atiende() {
  Bar->setVisible(tarea_ != nullptr);
  CmdDetener->setVisible(tarea_ != nullptr);
  for (QAction* a : salidas_) a->setEnabled(!tarea_);
  for (QAction* a : irAtras_) a->setEnabled(pagina_ > 1);
  const bool quedan = !documento_->contado() || pagina_ < documento_->paginas();
  for (QAction* a : irAdelante_) a->setEnabled(quedan);
  if (!TxtPagina->hasFocus()) TxtPagina->setText(QString::number(pagina_));
  LblPaginas->setText(documento_->contado() ? tr("de %1").arg(documento_->paginas())
                                            : tr("de %1…").arg(documento_->paginas()));
}

void VistaPrevia::keyPressEvent(QKeyEvent* evento) {
  switch (evento->key()) {
    case Qt::Key_Escape:
      if (tarea_) {
        detiene();
      } else {
        close();
      }
      return;
    case Qt::Key_Home:
      return irA(1);
    case Qt::Key_End:
      return ultima();
    case Qt::Key_Plus:
      return zoom(vista_->porcentaje() + 10);
    case Qt::Key_Minus:
      return zoom(vista_->porcentaje() - 10);
    default:
      QWidget::keyPressEvent(evento);
  }
}

void avisaDeFallo(const Contexto& contexto, QWidget* padre, const ErrorEjecucion& fallo) {
  const Fallo linea(fallo, QLatin1String(padre->metaObject()->className()));
  if (fallo.numero() == err::kSinImpresora) {
    avisa(contexto, padre, linea,
          QStringLiteral("No tiene ninguna impresora instalada en su sistema"),
          QStringLiteral("Error de Windows"));
  } else {
    avisa(contexto, padre, linea,
          QStringLiteral("Error numero : %1 ").arg(fallo.numero()) + fallo.descripcion(),
          QStringLiteral("Error controlado"));
  }
}

Informe::Destino destinoDePantalla(Contexto& contexto, QWidget* padre) {
  Informe::Destino d;
  d.impresoras = [] { return QPrinterInfo::availablePrinterNames() << QStringLiteral("PDF"); };
  d.muestra = [&contexto, padre](std::shared_ptr<Documento> documento, const QString& titulo) {
    (new VistaPrevia(contexto, std::move(documento), titulo, padre))->show();
  };
  return d;
}
