// Books opened without a dialog.
#pragma once

#include "common/rutas.h"
#include "reports/informe.h"
#include "soporte/ficheros.h"

// Opens the book of a template over a company's file. `plantilla` is a file of impresos, or the
// full path of another one.
inline void abreInforme(DBEngine& motor, const QString& fichero, const QString& plantilla,
                        Informe::Destino destino, const QString& seleccion = {}) {
  const Reloj reloj;
  const QString impresos = rutaPrograma(rutaFuente("impresos")) + u'\\';
  Informe informe(motor, reloj, std::move(destino));
  informe.WindowTitle = "Listado de diario";
  informe.ReportFileName = plantilla.contains('\\') ? plantilla : impresos + plantilla;
  informe.DataFiles(0) = fichero;
  informe.SelectionFormula = seleccion;
  informe.PrintReport();
}

inline std::shared_ptr<reports::Documento> abreLibro(DBEngine& motor, const QString& fichero,
                                                     const QString& plantilla,
                                                     const QString& seleccion = {}) {
  std::shared_ptr<reports::Documento> abierto;
  abreInforme(motor, fichero, plantilla,
              {[] { return QStringList("PDF"); },
               [&](auto documento, const QString&) { abierto = std::move(documento); }},
              seleccion);
  return abierto;
}

// The texts of a laid-out page, in order.
inline QStringList textosDe(const reports::Pagina& pagina) {
  QStringList todos;
  for (const reports::Texto& t : pagina.textos) todos << t.texto.trimmed();
  return todos;
}
