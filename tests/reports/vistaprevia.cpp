// The preview window under real keys.
#include "reports/widgets/vistaprevia.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QtWidgets/QtWidgets>

#include "foundation/data/datacontrol.h"
#include "reports/impreso.h"
#include "reports/widgets/impresion.h"
#include "soporte/escenario.h"

namespace {

class Vista : public testing::Test {
 protected:
  void SetUp() override {
    DataControl diario(e.ctx.motor);
    diario.bind(e.ctx.sesion.rutaEmpresa(), QStringLiteral("Diario"));
    for (int i = 1; i <= 400; ++i) {
      diario.AddNew();
      diario.Fields("NLinea") = i;
      diario.Fields("NAsiento") = (i + 1) / 2;
      diario.Fields("Fecha") = QDate(2003, 1, 1 + i % 28);
      diario.Fields("Subcuenta") = i % 2 ? "57200001" : "43000001";
      diario.Fields("Descripcion") = QStringLiteral("Apunte %1").arg(i);
      diario.Fields("DH") = i % 2 ? "D" : "H";
      diario.Fields("Importe") = i % 2 ? 10.5 : -10.5;
      diario.Update();
    }
    abre(nullptr);
  }

  void abre(QWidget* padre) {
    Informe informe(e.ctx.motor, e.reloj, destinoDePantalla(e.ctx, padre));
    informe.WindowTitle = QStringLiteral("Listado de diario");
    informe.ReportFileName = carpetaImpresos() + QStringLiteral("Diario.rpt");
    informe.DataFiles(0) = e.ctx.sesion.rutaEmpresa();
    informe.PrintReport();
    for (QWidget* w : QApplication::topLevelWidgets()) {
      if (auto* v = qobject_cast<VistaPrevia*>(w); v && v->isVisible()) vista = v;
    }
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

TEST_F(Vista, seVaPorLasPaginasConElTeclado) {
  Teclado t(*vista);
  EXPECT_EQ(vista->windowTitle(), QStringLiteral("Listado de diario"));
  EXPECT_EQ(vista->pagina(), 1);
  t.tecla(Qt::Key_PageDown);
  t.tecla(Qt::Key_PageDown);
  EXPECT_EQ(vista->pagina(), 3);
  t.tecla(Qt::Key_PageUp);
  EXPECT_EQ(vista->pagina(), 2);
  t.tecla(Qt::Key_End);
  espera();
  const int ultima = vista->pagina();
  EXPECT_GT(ultima, 5);
  EXPECT_EQ(t.textoDe("LblPaginas"), QStringLiteral("de %1").arg(ultima));
  t.tecla(Qt::Key_PageDown);
  EXPECT_EQ(vista->pagina(), ultima);
  t.tecla(Qt::Key_Home);
  EXPECT_EQ(vista->pagina(), 1);
  t.escribe("TxtPagina", QStringLiteral("4"));
  t.intro();
  EXPECT_EQ(vista->pagina(), 4);
  EXPECT_EQ(t.enfocado(), QStringLiteral("Vista"));
  t.escape();
  EXPECT_FALSE(vista && vista->isVisible());
}

TEST_F(Vista, buscaEnTodoElLibro) {
  Teclado t(*vista);
  t.tecla(Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(t.enfocado(), QStringLiteral("TxtBuscar"));
  t.teclea(QStringLiteral("apunte 39"));
  t.intro();
  espera();
  EXPECT_EQ(estado(), QStringLiteral("Encontrado en la página 2"));
  t.tecla(Qt::Key_F3);  // the next is Apunte 390
  espera();
  const int lejos = vista->pagina();
  EXPECT_GT(lejos, 4);
  t.escribe("TxtBuscar", QStringLiteral("nada de esto"));
  t.intro();
  espera();
  EXPECT_EQ(estado(), QStringLiteral("No se encuentra «nada de esto»"));
  EXPECT_EQ(vista->pagina(), lejos);
}

TEST_F(Vista, guardaYExporta) {
  Teclado t(*vista);
  const QDir carpeta(e.carpetaDatos());
  const struct {
    const char* accion;
    const char* escrito;
    const char* fichero;
    const char* comienzo;
  } casos[] = {{"CmdPdf", "libro", "libro.pdf", "%PDF-"},
               {"CmdXlsx", "libro.xlsx", "libro.xlsx", "PK"},
               {"CmdCsv", "libro.csv", "libro.csv",
                "\xEF\xBB\xBF"
                "Asiento;Fecha;"}};
  for (const auto& c : casos) {
    e.guion.esperaFichero(carpeta.filePath(QString::fromLatin1(c.escrito)));
    vista->findChild<QAction*>(QString::fromLatin1(c.accion))->trigger();
    espera();
    QFile f(carpeta.filePath(QString::fromLatin1(c.fichero)));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << c.fichero;
    EXPECT_TRUE(f.readAll().startsWith(c.comienzo)) << c.fichero;
    EXPECT_EQ(estado(), QStringLiteral("Guardado en ") + f.fileName());
  }
  // Stopped on its way, and refused at the picker, it leaves nothing.
  e.guion.esperaFichero(carpeta.filePath(QStringLiteral("otro.pdf")));
  t.tecla(Qt::Key_S, Qt::ControlModifier);
  if (vista->ocupada()) t.escape();
  EXPECT_FALSE(vista->ocupada());
  e.guion.esperaFichero(std::nullopt);
  t.tecla(Qt::Key_S, Qt::ControlModifier);
  EXPECT_FALSE(vista->ocupada());
  EXPECT_TRUE(vista->isVisible());

  e.guion.esperaFichero(QStringLiteral("/no/hay/libro.pdf"));
  e.guion.esperaMensaje(
      QStringLiteral("Error numero : 75 ") +
          ErrorEjecucion(75, QStringLiteral("\\no\\hay\\libro.pdf")).descripcion(),
      QStringLiteral("Error controlado"));
  t.tecla(Qt::Key_S, Qt::ControlModifier);
}

TEST_F(Vista, quedaAbiertaCuandoSeCierraElDialogoQueLaAbrio) {
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
  ASSERT_TRUE(vista);
  EXPECT_TRUE(vista->isVisible());
  Teclado(*vista).tecla(Qt::Key_PageUp);
  EXPECT_EQ(vista->pagina(), 1);
}

// The printer gets the same pages, those asked for.
TEST(Impresion, lasPaginasPedidas) {
  Libros libros;
  libros.asientaTrimestre();
  Impreso libro(libros, QStringLiteral("Diario.rpt"), {});
  const QTemporaryDir carpeta;
  const QString pdf = carpeta.filePath(QStringLiteral("impreso.pdf"));
  auto impresora = std::make_unique<QPrinter>(QPrinter::HighResolution);
  impresora->setOutputFormat(QPrinter::PdfFormat);
  impresora->setOutputFileName(pdf);
  TareaImpresion tarea(libro.compartido(), std::move(impresora), QStringLiteral("Diario"), 2, 3);
  while (tarea.paso()) continue;
  QProcess lector;
  lector.start(QStringLiteral("pdftotext"), {"-layout", pdf, "-"});
  lector.waitForFinished();
  const QStringList paginas = QString::fromUtf8(lector.readAllStandardOutput()).split(u'\f');
  ASSERT_EQ(paginas.size(), 3);
  for (int n = 2; n <= 3; ++n) {
    EXPECT_TRUE(paginas[n - 2].contains(
        libro.linea(QStringLiteral("Suma y sigue"), n).section(u' ', 3, 3)));
  }
}

}  // namespace
