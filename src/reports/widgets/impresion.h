// Pages on their way to a printer.
#pragma once

#include <QPainter>
#include <QPrinter>

#include "reports/tarea.h"

class TareaImpresion : public reports::TareaPaginas {
 public:
  // Prints on the printer as the user has set it. Raises 28663 when it can't be begun, 75 when it
  // prints to a file that can't be written.
  TareaImpresion(std::shared_ptr<reports::Documento> documento, std::unique_ptr<QPrinter> impresora,
                 int desde, int hasta);
  ~TareaImpresion() override;

 protected:
  void pon(const reports::Pagina& pagina, bool primera) override;
  void acaba() override { pintor_.end(); }

 private:
  std::unique_ptr<QPrinter> impresora_;
  QPainter pintor_;
};
