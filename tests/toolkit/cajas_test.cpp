// What the user really sees: boxes with Spanish buttons, modal dialogs, progress, drawings.
#include "toolkit/cajas.h"

#include "engine/libroendisco.h"
#include "toolkit/cajasqt.h"
#include "toolkit/espera.h"
#include "toolkit/formdeprueba.h"
#include "toolkit/progreso.h"
#include "toolkit/tema.h"

namespace {
using Lista = QStringList;

// Does something with the box that comes next, once it is on the screen.
template <class C>
void enLaCaja(std::function<void(C&)> accion) {
  QTimer::singleShot(0, qApp, [accion] {
    auto* caja = qobject_cast<C*>(QApplication::activeModalWidget());
    ASSERT_TRUE(caja);
    activar(*caja);
    accion(*caja);
  });
}

Lista botonesDe(const QWidget& caja) {
  Lista textos;
  const auto botones = caja.findChildren<QAbstractButton*>();
  for (const auto* boton : botones) textos << boton->text().remove(QLatin1Char('&'));
  textos.sort();
  return textos;
}

TEST(CajasQt, LosBotonesVanEnEspanol) {
  DBEngine motor;
  CajasQt cajas(motor);
  enLaCaja<QMessageBox>([](QMessageBox& caja) {
    EXPECT_EQ(botonesDe(caja), Lista{"Aceptar"});
    EXPECT_EQ(caja.text(), "1 < 2 & <b>3</b>");
    EXPECT_EQ(caja.textFormat(), Qt::PlainText);
    QTest::keyClick(&caja, Qt::Key_Return);
  });
  cajas.mensaje(nullptr, "1 < 2 & <b>3</b>", "Error", Icono::Aviso);
  enLaCaja<QInputDialog>([](QInputDialog& caja) {
    EXPECT_EQ(botonesDe(caja), (Lista{"Aceptar", "Cancelar"}));
    caja.accept();
  });
  EXPECT_EQ(cajas.entrada(nullptr, "Fecha", "Localizador", "hoy"), "hoy");
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Cancelar");
}

TEST(CajasQt, PreguntaSiONo) {
  DBEngine motor;
  CajasQt cajas(motor);
  const std::pair<Qt::Key, bool> casos[] = {{Qt::Key_Return, true},
                                            {Qt::Key_S, true},
                                            {Qt::Key_N, false},
                                            {Qt::Key_Escape, false},
                                            {Qt::Key_Close, false}};
  for (const auto& [tecla, respuesta] : casos) {
    SCOPED_TRACE(tecla);
    enLaCaja<QMessageBox>([tecla = tecla](QMessageBox& caja) {
      EXPECT_EQ(botonesDe(caja), (Lista{"No", "Sí"}));
      if (tecla == Qt::Key_Close)
        caja.close();
      else
        QTest::keyClick(&caja, tecla);
    });
    EXPECT_EQ(cajas.pregunta(nullptr, "¿Sigue?", "Salir"), respuesta);
  }
}

TEST(CajasQt, UnDialogoQueSeCierraAlAparecerNoDejaColgadoElPrograma) {
  Prueba p;
  CajasQt cajas(p.e.ctx.motor);
  FormDePrueba::alCargar = [](FormDePrueba& forma) {
    forma.mensaje("cargado", "");
    QTimer::singleShot(0, &forma, [&forma] { forma.descargar(); });
  };
  p.e.guion.esperaMensaje("cargado");
  FormDePrueba tarde(p.e.ctx);
  cajas.modal(tarde);
  FormDePrueba::alCargar = [](FormDePrueba& forma) { forma.descargar(); };
  FormDePrueba enseguida(p.e.ctx);
  cajas.modal(enseguida);
  EXPECT_FALSE(tarde.isVisible() || enseguida.isVisible());
}

// The box that tells of a failed save is shown, and goes, without saving anything itself.
TEST(CajasQt, LoPendienteSeEligeYLaCajaSeVaSolaAlGuardarse) {
  Escenario e;
  CajasQt cajas(e.motor);
  e.ctx.cajas = &cajas;
  e.motor.setLockTimeout(30);
  const QString ruta = rutaSistema(e.ctx.sesion.rutaEmpresa());
  int asiento = 100;
  for (const char* boton : {"Descartar", "Reintentar", ""}) {
    SCOPED_TRACE(boton);
    auto otro = std::make_unique<OtroPuesto>(ruta, "BEGIN; SELECT count(*) FROM Empresa;");
    corrige(*e.abreBase()->OpenRecordset("Empresa"), {{"Asiento", ++asiento}});
    enLaCaja<QMessageBox>([&, boton](QMessageBox& caja) {
      EXPECT_EQ(botonesDe(caja), (Lista{"Descartar", "Reintentar"}));
      EXPECT_TRUE(caja.text().contains("está pendiente")) << caja.text().toStdString();
      if (*boton != 'D') otro.reset();
      if (*boton) QTest::keyClick(&caja, *boton == 'D' ? Qt::Key_D : Qt::Key_R);
    });
    EXPECT_ERROR(*boton == 'D' ? err::kOperacionCancelada : 0, cajas.guardaPendiente(nullptr));
  }
}

TEST(Espera, LoDiceSigueSordaAlRestoYEscapeLaDeja) {
  Prueba p;
  Escenario e;
  Espera espera(e.motor);
  e.motor.setLockTimeout(600'000);
  OtroPuesto otro(rutaSistema(e.ctx.sesion.rutaEmpresa()), "BEGIN EXCLUSIVE;");
  QTimer turno;
  bool dicho = false;
  QObject::connect(&turno, &QTimer::timeout, [&] {
    const auto* letrero = p.f.findChild<QLabel*>("LblEspera");
    if (!letrero) return;
    dicho = letrero->isVisible() && letrero->text().startsWith("Esperando a otro puesto...");
    p.t.control<QLineEdit>("TxtA").setFocus();
    QTest::keyClick(p.f.windowHandle(), Qt::Key_X);
    QTest::keyClick(p.f.windowHandle(), Qt::Key_Escape);
  });
  turno.start(20);
  EXPECT_ERROR(err::kRegistroBloqueado, e.valor("Select * from Empresa"));
  turno.stop();
  EXPECT_TRUE(dicho);
  EXPECT_TRUE(p.f.isVisible());
  EXPECT_EQ(p.t.textoDe("TxtA"), "");
  EXPECT_EQ(p.f.findChild<QLabel*>("LblEspera"), nullptr);
}

TEST(Progreso, MueveLaBarraYNoTomaTeclasHastaQueAcaba) {
  Prueba p;
  QProgressBar barra(&p.f);
  p.t.escribe("TxtA", "x");
  {
    Progreso progreso(p.e.ctx, barra, 100);
    EXPECT_TRUE(barra.isVisible());
    progreso.avanza(40);
    p.t.teclea("abc");
    p.t.escape();
    p.t.cierra();
    progreso.avanza();
    p.e.guion.esperaMensaje("¿Sigue?");
    p.f.mensaje("¿Sigue?", "");  // a box of the process itself works
  }
  EXPECT_EQ(barra.value(), 41);
  ASSERT_TRUE(p.f.isVisible());
  p.t.teclea("y");
  EXPECT_EQ(p.t.textoDe("TxtA"), "xy");
}

// A drawing that can't be read would leave a blank button.
TEST(Tema, CadaDibujoSePinta) {
  aplicarTema(*qApp);
  QDirIterator it(":/iconos");
  int cuantos = 0;
  while (it.hasNext()) {
    it.next();
    ++cuantos;
    for (const int lado : {16, 48}) {
      const QImage imagen = icono(it.fileInfo().completeBaseName()).pixmap(lado).toImage();
      int pintados = 0;
      for (int i = 0; i < imagen.width() * imagen.height(); ++i)
        pintados += qAlpha(imagen.pixel(i % imagen.width(), i / imagen.width())) > 128;
      EXPECT_GT(pintados, lado * lado / 20) << qPrintable(it.fileName()) << " a " << lado;
    }
  }
  EXPECT_GE(cuantos, 25);
}
}  // namespace
