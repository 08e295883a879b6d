// Each screen has its controls under their fixed names: other forms and the look-ups reach them so.
#include <gtest/gtest.h>

#include <QFile>

#include "engine/dbengine.h"
#include "soporte/escenario.h"
#include "start/creaini.h"
#include "toolkit/principal.h"

namespace {

// The form is made and loaded by the registry as in the program, looked at, and closed.
class Mirada : public Guion {
 public:
  using Guion::Guion;
  std::function<void(QDialog&)> mira;
  void modal(QDialog& dialogo) override { mira(dialogo); }
};

QList<std::pair<QString, QStringList>> catalogo() {
  QList<std::pair<QString, QStringList>> lista;
  QFile fichero(LIBRANO_DATOS "/controles.txt");
  if (!fichero.open(QIODevice::ReadOnly)) return lista;
  for (const QString& linea : QString::fromUtf8(fichero.readAll()).split('\n')) {
    if (linea.isEmpty() || linea.startsWith('#')) continue;
    lista.append({linea.section(": ", 0, 0), linea.section(": ", 1).split(' ')});
  }
  return lista;
}

TEST(Controles, CadaPantallaTieneLosSuyos) {
  Escenario e;
  registraFormularios(*e.formularios);
  ASSERT_TRUE(e.formularios->cambiarA("FrmMenu"));
  ASSERT_NE(e.ctx.principal, nullptr);
  // The settings screen manages the catalogue beside the program.
  CrearInicio(e.ctx.motor, e.ctx.carpetaPrograma + "Inicio.mdb");
  Mirada mirada(e.ctx.motor);
  e.ctx.cajas = &mirada;
  int pantallas = 0;
  for (const auto& [nombre, controles] : catalogo()) {
    const auto comprueba = [&, pantalla = nombre, suyos = controles](const QObject& forma) {
      ++pantallas;
      for (const QString& control : suyos)
        EXPECT_NE(forma.findChild<QObject*>(control), nullptr)
            << qPrintable(pantalla + ": " + control);
    };
    if (nombre == "FrmMenu") {
      comprueba(*e.ctx.principal->ventana());
      continue;
    }
    mirada.mira = comprueba;
    e.ctx.sesion.CodigoLlamada = 1;
    EXPECT_TRUE(e.formularios->mostrar(nombre)) << qPrintable(nombre);
  }
  e.ctx.cajas = &e.guion;
  EXPECT_EQ(pantallas, catalogo().size());
}

}  // namespace
