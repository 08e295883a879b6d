// The preview window under real keys.
#include "reports/widgets/vistaprevia.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QtWidgets/QtWidgets>

#include "foundation/data/datacontrol.h"
#include "reports/errores.h"
#include "reports/frmlistado.h"
#include "reports/impreso.h"
#include "reports/widgets/impresion.h"
#include "reports/widgets/vistapagina.h"
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

// What the real dialog prints to a file is what the preview shows and saves.
TEST_F(Vista, imprimeSusPaginas) {
  Teclado t(*vista);
  const QString fichero = QDir(e.carpetaDatos()).filePath(QStringLiteral("impreso.pdf"));
  const auto imprime = [&](const std::function<void(Teclado&)>& elige) {
    QFile::remove(fichero);
    e.guion.esperaDialogo(QStringLiteral("Impresion"), [&](Teclado& dialogo) {
      auto& impresoras = dialogo.control<QComboBox>("printers");
      impresoras.setCurrentIndex(impresoras.count() - 1);  // to a file, after those of the machine
      dialogo.escribe("filename", fichero);
      elige(dialogo);
    });
    t.tecla(Qt::Key_P, Qt::ControlModifier);
    espera();
    return QFile::exists(fichero) ? paginasDePdf(fichero) : QList<QStringList>();
  };
  const auto opcion = [](Teclado& dialogo, const char* cual) {
    for (auto* boton : dialogo.forma().findChildren<QPushButton*>())
      if (boton->text().contains(u">>")) boton->click();
    dialogo.marca(cual);
  };
  const auto todas = imprime([](Teclado& dialogo) { dialogo.intro(); });
  EXPECT_EQ(estado(), QStringLiteral("Enviado a la impresora"));
  EXPECT_EQ(t.textoDe("LblPaginas"), QStringLiteral("de %1").arg(todas.size()));
  for (int n = 1; n <= todas.size(); ++n) {
    vista->irA(n);
    const QString impresa = todas[n - 1].join(u' ');
    for (const QString& texto : textosDe(*t.control<VistaPagina>("Vista").pagina()))
      EXPECT_TRUE(impresa.contains(texto.simplified())) << n << qPrintable(texto);
  }
  vista->irA(4);
  EXPECT_EQ(imprime([&](Teclado& dialogo) {
              opcion(dialogo, "printRange");
              dialogo.control<QSpinBox>("from").setValue(2);
              dialogo.control<QSpinBox>("to").setValue(3);
              dialogo.pulsa("filename");
              dialogo.intro();
            }),
            todas.mid(1, 2));
  EXPECT_EQ(imprime([&](Teclado& dialogo) {
              opcion(dialogo, "printCurrentPage");
              dialogo.intro();
            }),
            todas.mid(3, 1));
  EXPECT_TRUE(imprime([](Teclado& dialogo) { dialogo.escape(); }).isEmpty());
  vista->irA(1);
  EXPECT_EQ(leeVista(e.guion).paginas, todas);
}

TEST(Impresion, sinImpresoraYSinFichero) {
  Escenario e;
  struct Ventana : FrmListado {
    using FrmListado::FrmListado;
    void falla(int numero) {
      lanza([=]() -> Listado { throw ErrorEjecucion(numero); });
    }
  };
  e.guion.esperaMensaje(QStringLiteral("No tiene ninguna impresora instalada en su sistema"),
                        QStringLiteral("Error de Windows"));
  Ventana(e.ctx).falla(err::kSinImpresora);

  Libros libros;
  const Impreso libro(libros, QStringLiteral("Diario.rpt"), {});
  auto impresora = std::make_unique<QPrinter>();
  impresora->setOutputFileName(QStringLiteral("/no/hay/libro.pdf"));
  try {
    TareaImpresion(libro.compartido(), std::move(impresora), 1, 1);
    ADD_FAILURE();
  } catch (const ErrorEjecucion& fallo) {
    EXPECT_EQ(fallo.numero(), err::kErrorDeRuta);
  }
}

}  // namespace
