#include "soporte/libroimpreso.h"

#include "reports/widgets/vistaprevia.h"
#include "soporte/escenario.h"
#include "start/programas.h"

QStringList LibroImpreso::lineas() const {
  QStringList todas;
  for (const QStringList& p : paginas) todas << p;
  return todas;
}

QString LibroImpreso::linea(const QString& comienzo, int pagina) const {
  for (const QString& l : pagina ? paginas.at(pagina - 1) : lineas()) {
    if (l.startsWith(comienzo)) return l;
  }
  return {};
}

QList<QStringList> paginasDePdf(const QString& pdf) {
  QProcess lector;
  lector.start("pdftotext", {"-layout", "-enc", "UTF-8", pdf, "-"});
  lector.waitForFinished();
  EXPECT_EQ(lector.exitCode(), 0) << lector.readAllStandardError().toStdString();
  QStringList textos = QString::fromUtf8(lector.readAllStandardOutput()).split(u'\f');
  textos.removeLast();  // what follows the last page
  QList<QStringList> paginas;
  for (const QString& texto : textos) {
    QStringList lineas;
    for (const QString& l : texto.split(u'\n')) {
      if (!l.trimmed().isEmpty()) lineas << l.simplified();
    }
    paginas << lineas;
  }
  return paginas;
}

void ponPlantillas(const Contexto& ctx) {
  completaImpresos(rutaPrograma(rutaFuente({})), ctx.sesion.DirDatos);
}

VistaPrevia* vistaAbierta() {
  for (QWidget* w : QApplication::topLevelWidgets()) {
    if (auto* vista = qobject_cast<VistaPrevia*>(w); vista && vista->isVisible()) return vista;
  }
  return nullptr;
}

void guardaVista(Guion& guion, const QString& pdf) {
  VistaPrevia* vista = vistaAbierta();
  ASSERT_TRUE(vista) << "No se ha mostrado ningún libro";
  activar(*vista);
  EXPECT_EQ(vista->pagina(), 1);
  guion.esperaFichero(pdf);
  Teclado teclado(*vista);
  teclado.tecla(Qt::Key_S, Qt::ControlModifier);
  while (vista->ocupada()) QCoreApplication::processEvents();
  teclado.cierra();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

LibroImpreso leeVista(Guion& guion) {
  const QTemporaryDir carpeta;
  const QString titulo = vistaAbierta() ? vistaAbierta()->windowTitle() : QString();
  guardaVista(guion, carpeta.filePath("libro.pdf"));
  if (!guion.libros.isEmpty())
    QFile::copy(carpeta.filePath("libro.pdf"),
                QString("%1/%2 %3").arg(guion.libros).arg(++guion.leidos).arg(guion.propuesto));
  return {titulo, paginasDePdf(carpeta.filePath("libro.pdf"))};
}
