#include "reports/impreso.h"

#include "foundation/rutas.h"

void abreInforme(DBEngine& motor, const QString& fichero, const QString& plantilla,
                 const QString& seleccion, Informe::Destino destino) {
  const Reloj reloj;
  Informe informe(motor, reloj, std::move(destino));
  informe.WindowTitle = "Listado de diario";
  informe.ReportFileName = plantilla.contains('\\')
                               ? plantilla
                               : rutaPrograma(LIBRANO_FUENTES) + "\\impresos\\" + plantilla;
  informe.DataFiles(0) = fichero;
  informe.SelectionFormula = seleccion;
  informe.PrintReport();
}

std::shared_ptr<reports::Documento> abreLibro(DBEngine& motor, const QString& fichero,
                                              const QString& plantilla, const QString& seleccion) {
  std::shared_ptr<reports::Documento> abierto;
  abreInforme(motor, fichero, plantilla, seleccion,
              {[] { return QStringList("PDF"); },
               [&](auto documento, const QString&) { abierto = std::move(documento); }});
  return abierto;
}

QStringList textosDe(const reports::Pagina& pagina) {
  QStringList todos;
  for (const reports::Texto& t : pagina.textos) todos << t.texto.trimmed();
  return todos;
}
