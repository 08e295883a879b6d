// One page of a book on screen: at the width of the window, whole, or at a percentage.
#pragma once

#include <optional>
#include <QAbstractScrollArea>

#include "reports/documento.h"

class VistaPagina : public QAbstractScrollArea {
  Q_OBJECT
 public:
  enum class Ajuste { Ancho, Entera, Porcentaje };

  VistaPagina(const reports::Documento& documento, QWidget* padre);

  // Another page, from its top; nullptr for a blank one.
  void setPagina(std::shared_ptr<const reports::Pagina> pagina);
  const reports::Pagina* pagina() const { return pagina_.get(); }
  void setZoom(Ajuste ajuste, int porcentaje = 100);
  // What is shown, in per cent of paper.
  int porcentaje() const;
  // Marks a text of the page and brings it into view.
  void marca(int texto);

 Q_SIGNALS:
  void pasa(int paginas);         // the wheel or an arrow went beyond the page
  void pideZoom(int porcentaje);  // Ctrl and the wheel

 protected:
  void paintEvent(QPaintEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;
  void wheelEvent(QWheelEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  double escala() const;  // pixels of the widget in a unit of the page
  QSize papel() const;
  void recoloca();
  QPoint origen() const;
  void desplaza(int pixeles);

  const reports::Documento& documento_;
  std::shared_ptr<const reports::Pagina> pagina_;
  Ajuste ajuste_ = Ajuste::Ancho;
  int porcentaje_ = 100;
  std::optional<int> marcado_;
  int rueda_ = 0;
};
