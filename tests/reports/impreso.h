// Books opened without a dialog.
#pragma once

#include "reports/informe.h"

// Opens the book of a template over a company's file. `plantilla` is a file of impresos, or the
// full path of another one.
void abreInforme(DBEngine& motor, const QString& fichero, const QString& plantilla,
                 const QString& seleccion, Informe::Destino destino);
std::shared_ptr<reports::Documento> abreLibro(DBEngine& motor, const QString& fichero,
                                              const QString& plantilla,
                                              const QString& seleccion = {});
// The texts of a laid-out page, in order.
QStringList textosDe(const reports::Pagina& pagina);
