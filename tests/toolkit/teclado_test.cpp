// The common keyboard: filters, Enter, selection, and when a field counts as left.

#include "toolkit/formdeprueba.h"

namespace {
using Lista = QStringList;

// What each filter takes has its own tables; here, that fields ask them.
TEST(Campos, FiltranLoQueEntraPorTeclasOSePega) {
  Prueba p;
  p.e.ctx.sesion.MascaraImporte = "#,##0.00 €;(#,##0.00 €)";
  p.f.soloNumero(p.f.TxtA);
  p.f.importe(p.f.TxtB);
  p.f.teclaDecimal(p.f.TxtC);
  p.t.escribe("TxtA", "1-2.3,x");
  EXPECT_EQ(p.t.textoDe("TxtA"), "123");
  EXPECT_EQ(p.f.pitidos(), 4);
  // The keypad's point is the decimal sign, a sign goes first, the rest is judged with the cursor.
  p.t.escribe("TxtB", "-1.5.");
  EXPECT_EQ(p.t.textoDe("TxtB"), "-1,5");
  p.t.escribe("TxtC", "a.b");
  EXPECT_EQ(p.t.textoDe("TxtC"), "a,b");
  // A figure in the middle of what the mask has written, and one behind the blank it leaves.
  p.t.enfoca("TxtB");
  p.f.TxtB->setText("1.234,00 €");
  p.f.TxtB->setCursorPosition(1);
  p.t.teclea("5");
  EXPECT_EQ(p.t.textoDe("TxtB"), "15.234,00 €");
  p.f.TxtB->setText("7,0 ");
  p.f.TxtB->end(false);
  p.t.teclea("5");
  EXPECT_EQ(p.t.textoDe("TxtB"), "7,05");
  EXPECT_EQ(p.f.pitidos(), 5);

  const auto pega = [&](const char* texto) {
    QGuiApplication::clipboard()->setText(texto);
    p.f.TxtA->selectAll();
    p.f.TxtA->setFocus();
    p.t.tecla(Qt::Key_V, Qt::ControlModifier);
    return p.t.textoDe("TxtA");
  };
  EXPECT_EQ(pega("12-"), "123");
  EXPECT_EQ(p.f.pitidos(), 6);
  EXPECT_EQ(pega(" 4567 "), "4567");
}

TEST(Campos, EntrarSeleccionaTambienConElRaton) {
  Prueba p;
  p.f.TxtB->setText("dos");
  p.f.TxtC->setText("tres");
  p.f.sinIntro(p.f.TxtA);
  p.f.sinSeleccion(p.f.TxtC);
  p.t.enfoca("TxtA");
  p.t.intro();
  EXPECT_EQ(p.t.enfocado(), "TxtA");
  p.t.pulsa("TxtB");
  EXPECT_EQ(p.f.TxtB->selectedText(), "dos");
  p.t.pulsa("TxtB");  // a second click places the caret as usual
  EXPECT_EQ(p.f.TxtB->selectedText(), "");
  p.t.pulsa("TxtC");
  EXPECT_EQ(p.f.TxtC->selectedText(), "");
  p.f.TxtConcepto->setEditText("cuatro");
  p.t.tecla(Qt::Key_Enter);  // that of the keypad
  EXPECT_EQ(p.f.TxtConcepto->lineEdit()->selectedText(), "cuatro");
}

// --- leaving a field
// ------------------------------------------------------------------------------

TEST(Salir, EsPasarAOtroControlYNoCerrar) {
  const std::tuple<const char*, std::function<void(Prueba&)>, Lista> casos[] = {
      {"Tab", [](Prueba& p) { p.t.tab(); }, {"sale TxtA", "entra TxtB"}},
      {"Intro", [](Prueba& p) { p.t.intro(); }, {"sale TxtA", "entra TxtB"}},
      {"por el programa", [](Prueba& p) { p.f.TxtC->setFocus(); }, {"sale TxtA", "entra TxtC"}},
      {"enfocar", [](Prueba& p) { p.f.enfocar(p.f.TxtC); }, {"entra TxtC"}},
      {"un clic en un botón", [](Prueba& p) { p.t.pulsa("CmdAceptar"); }, {"sale TxtA", "acepta"}},
      {"su mnemónico", [](Prueba& p) { p.t.mnemonico('A'); }, {"sale TxtA", "acepta"}},
      {"cancelar con el ratón", [](Prueba& p) { p.t.pulsa("CmdCancelar"); }, {"cancela"}},
      {"su mnemónico", [](Prueba& p) { p.t.mnemonico('C'); }, {"cancela"}},
      {"pasar por Cancelar y seguir",
       [](Prueba& p) {
         p.f.CmdCancelar->setFocus();
         p.f.TxtB->setFocus();
       },
       {"sale TxtA", "entra TxtB"}},
      {"pasar por Cancelar y volver",
       [](Prueba& p) {
         p.f.CmdCancelar->setFocus();
         p.f.TxtA->setFocus();
       },
       {"entra TxtA"}},
      {"Escape", [](Prueba& p) { p.t.escape(); }, {"cancela"}},
      {"el botón de la ventana", [](Prueba& p) { p.t.cierra(); }, {"cancela"}},
      {"descargar", [](Prueba& p) { p.f.descargar(); }, {}},
      {"una reacción que lleva el foco a otro sitio",
       [](Prueba& p) {
         p.f.alSalir(p.f.TxtA, [&p] { p.f.TxtC->setFocus(); });
         p.t.tab();
       },
       {"sale TxtA", "entra TxtC"}},
      {"una reacción con una caja",
       [](Prueba& p) {
         p.f.alSalir(p.f.TxtA, [&p] { p.f.mensaje("No", "Error"); });
         p.e.guion.esperaMensaje("No", "Error");
         p.t.tab();
       },
       {"sale TxtA", "entra TxtB"}},
  };
  for (const auto& [como, accion, hechos] : casos) {
    SCOPED_TRACE(como);
    Prueba p;
    p.t.enfoca("TxtA");
    p.f.lee();
    accion(p);
    EXPECT_EQ(p.f.lee(), hechos);
    EXPECT_EQ(p.f.isVisible(), !hechos.isEmpty() && hechos.last() != "cancela");
  }
}

TEST(Salir, NoLoEsLoQueVuelveAlMismoCampo) {
  Prueba p;
  p.t.enfoca("TxtA");
  p.f.lee();
  const std::pair<const char*, std::function<void()>> casos[] = {
      {"otra ventana",
       [&] {
         QWidget otra;
         otra.show();
         activar(otra);
         otra.hide();
         activar(p.f);
       }},
      {"un menú desplegado",
       [&] {
         QMenu menu(&p.f);
         menu.addAction("Nada");
         menu.popup(p.f.mapToGlobal(QPoint(5, 5)));
         reposar();
       }},
      {"la barra de menús",
       [&] {
         p.f.findChild<QMenuBar*>()->setFocus(Qt::MenuBarFocusReason);
         reposar();
         p.f.TxtA->setFocus(Qt::MenuBarFocusReason);
       }},
      {"el mismo campo otra vez", [&] { p.f.enfocar(p.f.TxtA); }},
  };
  for (const auto& [como, accion] : casos) {
    SCOPED_TRACE(como);
    accion();
    reposar();
    EXPECT_EQ(p.f.lee(), Lista{});
    EXPECT_EQ(p.t.enfocado(), "TxtA");
  }
}

}  // namespace
