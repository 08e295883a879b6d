// The window in which a book is looked at, printed, saved and exported.
//
// It opens on the first page at once, however long the book: pages are laid out as they are looked
// at and counted behind. Long output advances in slices, so the dialog that opened the window, and
// the rest of the program, stay in use meanwhile.
#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "common/errorejecucion.h"
#include "reports/informe.h"
#include "reports/tarea.h"

struct Contexto;
class ErrorEjecucion;
class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QPrinter;
class QProgressBar;
class QPushButton;
class QToolBar;
class VistaPagina;

class VistaPrevia : public QWidget {
  Q_OBJECT
 public:
  // A window of its own over `padre`, which may be a modal dialog. It outlives a dialog that is
  // closed.
  VistaPrevia(Contexto& contexto, std::shared_ptr<reports::Documento> documento,
              const QString& titulo, QWidget* padre);
  ~VistaPrevia() override;

  // Shows a page, counting on to it when need be; the last one for a number beyond it.
  void irA(int pagina);
  int pagina() const { return pagina_; }
  bool ocupada() const { return tarea_ != nullptr; }

 protected:
  void keyPressEvent(QKeyEvent* evento) override;
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  QAction* accion(const char* nombre, const QString& texto, const QString& dibujo,
                  const QList<QKeySequence>& teclas, void (VistaPrevia::*reaccion)());
  void montaBarra();
  void montaPie();
  void sigueAlDialogo(QWidget* padre);

  void primera() { irA(1); }
  void anterior() { irA(pagina_ - 1); }
  void siguiente() { irA(pagina_ + 1); }
  void ultima();
  void vaAEscrita();
  void muestra(int pagina);
  void ponAlDia();
  void eligeZoom(int indice);
  void zoom(int porcentaje);
  void busca();
  void irABuscar();
  void imprime();
  void imprimeContado();
  void guardaPdf();
  void exportaXlsx();
  void exportaCsv();
  void detiene();

  QString nombreDelLibro() const;
  QString pideFichero(const QString& titulo, const QString& extension, const QString& clase);
  void lanza(std::unique_ptr<reports::Tarea> tarea, const QString& rotulo,
             std::function<void()> alAcabar);
  void trabaja();
  void atiende();
  void muestraEstado(const QString& texto);
  void protege(const std::function<void()>& reaccion);

  Contexto& ctx_;
  std::shared_ptr<reports::Documento> documento_;
  QString titulo_;
  int pagina_ = 0;
  int version_ = 0;  // of the document, as last looked at
  reports::TareaBusqueda::Sitio buscado_;
  QString ultimoBuscado_;

  QTimer turno_;
  std::unique_ptr<reports::Tarea> tarea_;
  std::function<void()> alAcabar_;
  QString rotulo_, aviso_;

  QToolBar* barra_ = nullptr;
  VistaPagina* vista_ = nullptr;
  QLineEdit* TxtPagina = nullptr;
  QLabel* LblPaginas = nullptr;
  QComboBox* CboZoom = nullptr;
  QLineEdit* TxtBuscar = nullptr;
  QLabel* LblEstado = nullptr;
  QProgressBar* Bar = nullptr;
  QPushButton* CmdDetener = nullptr;
  QList<QAction*> salidas_;  // what can't be asked for while something else is going on
  QAction* irAtras_[2] = {};
  QAction* irAdelante_[2] = {};
};

// Tells what went wrong with a book, in its dialog and in its preview alike.
void avisaDeFallo(const Contexto& contexto, QWidget* padre, const ErrorEjecucion& fallo);

// What a dialog's report object does with an opened book: previews it over the dialog. The printers
// known to the system include "PDF" wherever printing is supported at all.
Informe::Destino destinoDePantalla(Contexto& contexto, QWidget* padre);
