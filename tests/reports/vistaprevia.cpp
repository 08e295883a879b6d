// The preview window under real keys.
#include "reports/widgets/vistaprevia.h"

#include "reports/impreso.h"
#include "reports/pintor.h"
#include "reports/widgets/impresion.h"
#include "reports/widgets/vistapagina.h"
#include "soporte/escenario.h"
#include "soporte/libroimpreso.h"

namespace {

class Vista : public testing::Test {
 protected:
  void SetUp() override {
    asientaDiarioTrimestre(e.ctx.motor, e.ctx.sesion.rutaEmpresa());
    abre(nullptr);
  }
  void abre(QWidget* padre) {
    abreInforme(e.ctx.motor, e.ctx.sesion.rutaEmpresa(), "Diario.rpt",
                destinoDePantalla(e.ctx, padre));
    vista = vistaAbierta();
    ASSERT_NE(vista, nullptr);
    activar(*vista);
  }
  void TearDown() override { delete vista; }

  // Until what is under way has come to its end.
  void espera() {
    while (vista->ocupada()) QCoreApplication::processEvents();
    reposar();
  }
  QString estado() { return Teclado(*vista).textoDe("LblEstado"); }

  Escenario e;
  QPointer<VistaPrevia> vista;
};

TEST_F(Vista, SeVaPorLasPaginasYSeBusca) {
  Teclado t(*vista);
  EXPECT_EQ(vista->windowTitle(), "Listado de diario");
  const std::pair<Qt::Key, int> teclas[] = {{Qt::Key_PageDown, 2},  {Qt::Key_PageDown, 3},
                                            {Qt::Key_PageUp, 2},    {Qt::Key_End, 11},
                                            {Qt::Key_PageDown, 11}, {Qt::Key_Home, 1}};
  for (const auto& [tecla, pagina] : teclas) {
    t.tecla(tecla);
    espera();
    EXPECT_EQ(vista->pagina(), pagina);
  }
  EXPECT_EQ(t.textoDe("LblPaginas"), "de 11");
  // The box shows the page, whatever was typed.
  const std::pair<const char*, int> escritas[] = {{"4", 4}, {"99", 11}, {"0", 1}};
  for (const auto& [texto, pagina] : escritas) {
    t.entra("TxtPagina", texto);
    EXPECT_EQ(vista->pagina(), pagina);
    EXPECT_EQ(t.textoDe("TxtPagina"), QString::number(pagina));
    EXPECT_EQ(t.enfocado(), "Vista");
  }
  t.escribe("TxtPagina", "7");
  t.enfoca("TxtBuscar");
  reposar();
  EXPECT_EQ(t.textoDe("TxtPagina"), "1");

  t.tecla(Qt::Key_Home);
  t.tecla(Qt::Key_F, Qt::ControlModifier);
  t.entra("nominas del mes");
  // Without case and accents, to the end and round again.
  for (const int pagina : {4, 7, 11, 4}) {
    espera();
    EXPECT_EQ(estado(), QString("Encontrado en la página %1").arg(pagina));
    t.tecla(Qt::Key_F3);
  }
  espera();
  t.entra("TxtBuscar", "nada de esto");
  espera();
  EXPECT_EQ(estado(), "No se encuentra «nada de esto»");
  EXPECT_EQ(vista->pagina(), 7);
  t.enfoca("TxtBuscar");
  t.escape();
  EXPECT_EQ(t.textoDe("TxtBuscar"), "");
  EXPECT_TRUE(vista->isVisible());
  t.escape();
  EXPECT_FALSE(vista && vista->isVisible());
}

TEST_F(Vista, GuardaYExporta) {
  Teclado t(*vista);
  const QDir carpeta(e.carpetaDatos());
  const struct {
    Qt::Key tecla;
    Qt::KeyboardModifiers con;
    const char *extension, *comienzo;
  } casos[] = {{Qt::Key_S, Qt::ControlModifier, ".pdf", "%PDF-"},
               {Qt::Key_E, Qt::ControlModifier, ".xlsx", "PK"},
               {Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier, ".csv", "\xEF\xBB\xBF"}};
  for (const auto& c : casos) {
    const QString fichero = carpeta.filePath("libro") + c.extension;
    e.guion.esperaFichero(fichero);
    t.tecla(c.tecla, c.con);
    espera();
    EXPECT_EQ(e.guion.propuesto, QString("Libro diario - Prueba - 2003") + c.extension);
    EXPECT_TRUE(contenidoDe(fichero).startsWith(c.comienzo)) << c.extension;
    EXPECT_EQ(estado(), "Guardado en " + fichero);
  }
  // Stopped on its way, refused at the picker, or by the disk.
  e.guion.esperaFichero(carpeta.filePath("otro.pdf"));
  vista->findChild<QAction*>("CmdPdf")->trigger();
  vista->findChild<QPushButton*>("CmdDetener")->click();
  EXPECT_EQ(estado(), "Detenido");
  EXPECT_FALSE(QFile::exists(carpeta.filePath("otro.pdf")));
  e.guion.esperaFichero(std::nullopt);
  t.tecla(Qt::Key_S, Qt::ControlModifier);
  EXPECT_FALSE(vista->ocupada());
  e.guion.esperaFichero("/no/hay/libro.pdf");
  e.guion.esperaMensaje(
      "Error numero : 75 " + ErrorEjecucion(75, "\\no\\hay\\libro.pdf").descripcion(),
      "Error controlado");
  t.tecla(Qt::Key_S, Qt::ControlModifier);
}

// What the real dialog prints to a file is what the preview shows and saves.
TEST_F(Vista, ImprimeSusPaginas) {
  Teclado t(*vista);
  const QString fichero = QDir(e.carpetaDatos()).filePath("impreso.pdf");
  // The pages printed; `opcion` is the range asked for, if any.
  const auto imprime = [&](const char* opcion, Qt::Key cierre = Qt::Key_Return) {
    QFile::remove(fichero);
    e.guion.esperaDialogo("Impresion", [&](Teclado& dialogo) {
      auto& impresoras = dialogo.control<QComboBox>("printers");
      impresoras.setCurrentIndex(impresoras.count() - 1);  // to a file, after those of the machine
      if (opcion) {
        for (auto* boton : dialogo.forma().findChildren<QPushButton*>())
          if (boton->text().endsWith(">>")) boton->click();
        dialogo.marca(opcion);
        dialogo.control<QSpinBox>("from").setValue(2);
        dialogo.control<QSpinBox>("to").setValue(3);
      }
      dialogo.escribe("filename", fichero);
      dialogo.tecla(cierre);
    });
    t.tecla(Qt::Key_P, Qt::ControlModifier);
    espera();
    return QFile::exists(fichero) ? paginasDePdf(fichero) : QList<QStringList>();
  };
  const auto todas = imprime(nullptr);
  EXPECT_EQ(estado(), "Enviado a la impresora");
  EXPECT_EQ(todas.size(), 11);
  for (int n = todas.size(); n > 0; --n) {
    vista->irA(n);
    const QString impresa = todas[n - 1].join(' ');
    for (const QString& texto : textosDe(*t.control<VistaPagina>("Vista").pagina()))
      EXPECT_TRUE(impresa.contains(texto.simplified())) << n << qPrintable(texto);
  }
  EXPECT_EQ(imprime("printRange"), todas.mid(1, 2));
  EXPECT_EQ(imprime("printCurrentPage"), todas.mid(0, 1));
  EXPECT_TRUE(imprime(nullptr, Qt::Key_Escape).isEmpty());
  EXPECT_EQ(leeVista(e.guion).paginas, todas);

  auto impresora = std::make_unique<QPrinter>();
  impresora->setOutputFileName("/no/hay/libro.pdf");
  const auto libro = abreLibro(e.ctx.motor, e.ctx.sesion.rutaEmpresa(), "Diario.rpt");
  EXPECT_ERROR(err::kErrorDeRuta, TareaImpresion(libro, std::move(impresora), 1, 1));
}

// A journal of any length: its lines are read as they are asked for.
TEST_F(Vista, NoLeeElLibroEnteroParaSuPrimeraPagina) {
  for (const char* plantilla : {"Diario.rpt", "May1.rpt"}) {
    const auto libro = abreLibro(e.ctx.motor, e.ctx.sesion.rutaEmpresa(), plantilla);
    EXPECT_LT(libro->fuente().registros()->rowsKnown(), 312) << plantilla;
  }
}

// Lines are posted while the preview is open, and while its book is being printed.
TEST_F(Vista, SigueALosLibros) {
  Teclado t(*vista);
  espera();
  const auto borra = [&](int desde) {
    DBEngine otro;
    DataControl diario(otro);
    diario.bind(e.ctx.sesion.rutaEmpresa(),
                QString("Select * from Diario where NAsiento>%1").arg(desde));
    for (diario.MoveFirst(); !diario.Eof(); diario.MoveNext()) diario.Delete();
    otro.flush();
  };
  const QString pdf = QDir(e.carpetaDatos()).filePath("libro.pdf");
  reports::TareaPdf tarea(abreLibro(e.ctx.motor, e.ctx.sesion.rutaEmpresa(), "Diario.rpt"), pdf,
                          "Libro", 1, INT_MAX);
  EXPECT_TRUE(tarea.paso());
  borra(20);
  while (tarea.paso()) continue;
  const auto paginas = paginasDePdf(pdf);
  ASSERT_EQ(paginas.size(), 11);
  EXPECT_FALSE(paginas[10].filter("Total asiento 120 ").isEmpty());

  t.tecla(Qt::Key_End);
  espera();
  EXPECT_EQ(vista->pagina(), 2);
  EXPECT_EQ(t.textoDe("LblPaginas"), "de 2");
  EXPECT_TRUE(textosDe(*t.control<VistaPagina>("Vista").pagina()).contains("Total asiento 20"));
  t.tecla(Qt::Key_Home);
  borra(1);
  const LibroImpreso primero = leeVista(e.guion);
  EXPECT_EQ(primero.paginas.size(), 1);
  EXPECT_TRUE(primero.lineas().filter("Descuadrado").isEmpty());

  abre(nullptr);  // and lines that this station posts
  espera();
  DataControl diario(e.ctx.motor);
  diario.bind(e.ctx.sesion.rutaEmpresa(), "Select * from Diario");
  diario.MoveFirst();
  corrige(diario, {{"Importe", diario.Fields("Importe").number() + 0.1}});
  Teclado(*vista).tecla(Qt::Key_Home);
  espera();
  EXPECT_TRUE(textosDe(*Teclado(*vista).control<VistaPagina>("Vista").pagina())
                  .join(u' ')
                  .contains("Descuadrado en 0,10"));
  EXPECT_EQ(leeVista(e.guion).lineas().filter("Descuadrado en 0,10").size(), 1);
}

TEST_F(Vista, QuedaAbiertaCuandoSeCierraElDialogoQueLaAbrio) {
  delete vista;
  {
    QDialog dialogo;
    dialogo.setModal(true);
    dialogo.show();
    abre(&dialogo);
    Teclado(*vista).tecla(Qt::Key_PageDown);
    EXPECT_EQ(vista->pagina(), 2);
    dialogo.reject();
  }
  ASSERT_TRUE(vista && vista->isVisible());
  Teclado(*vista).tecla(Qt::Key_PageUp);
  EXPECT_EQ(vista->pagina(), 1);
}

}  // namespace
