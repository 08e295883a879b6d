// A book printed from a company's file, as its reader sees it: the text of its PDF, page by page.
#pragma once

#include <ostream>

#include "reports/informe.h"
#include "soporte/libroimpreso.h"
#include "soporte/libros.h"
#include "soporte/textos.h"

class Impreso {
 public:
  // `plantilla` is a file of impresos, or the full path of another one.
  Impreso(Libros& libros, const QString& plantilla, const QString& seleccion,
          const QString& limites = {}, const QString& grupos = {});

  reports::Documento& documento() const { return *documento_; }
  std::shared_ptr<reports::Documento> compartido() const { return documento_; }
  const QString& titulo() const { return libro_.titulo; }
  // The lines of each page, with single blanks.
  const QList<QStringList>& paginas();
  // All of them.
  QStringList lineas();
  // The first line that begins so, empty if there is none; on one page or on all.
  QString linea(const QString& comienzo, int pagina = 0);

 private:
  std::shared_ptr<reports::Documento> documento_;
  LibroImpreso libro_;
};

// The texts of a laid-out page, in order.
QStringList textosDe(const reports::Pagina& pagina);
// The folder of the delivered templates, as the program writes paths.
QString carpetaImpresos();
