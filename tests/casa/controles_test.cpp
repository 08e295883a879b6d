// Each screen has its controls under their fixed names: other forms and the look-ups reach them so.

#include "soporte/escenario.h"
#include "soporte/gestion.h"
#include "start/creaini.h"
#include "start/menu/tablamenu.h"
#include "toolkit/principal.h"

namespace {

// The form is made and loaded by the registry as in the program, looked at, and closed.
class Mirada : public Guion {
 public:
  using Guion::Guion;
  std::function<void(QDialog&)> mira;

 protected:
  void ensenaModal(QDialog& dialogo) override { mira(dialogo); }
};

QList<std::pair<QString, QStringList>> catalogo() {
  QList<std::pair<QString, QStringList>> lista;
  for (const QString& linea : lineasDeDatos("controles.txt"))
    lista.append({linea.section(": ", 0, 0), linea.section(": ", 1).split(' ')});
  return lista;
}

// Of the smallest screen, what the frame of a window leaves.
constexpr QRect kPantallaMenor(0, 0, 796, 570);

// All code of the program in one text.
QString todoElCodigo() {
  QString texto;
  QDirIterator it(rutaFuente("src"), {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) texto += QString::fromUtf8(contenidoDe(it.next()));
  return texto;
}

// The rows of the look-up tables: a number, a form, and its control that takes what is chosen.
QMultiHash<QString, QString> destinosDeConsultas() {
  static const QRegularExpression fila(R"re(\{(?:\d+|accion::k\w+),\s*"(Frm\w+)",\s*"(\w+)"\})re");
  QMultiHash<QString, QString> destinos;
  const QString texto = todoElCodigo();
  for (auto it = fila.globalMatch(texto); it.hasNext();) {
    const auto hallada = it.next();
    destinos.insert(hallada.captured(1), hallada.captured(2));
  }
  return destinos;
}

TEST(Controles, CadaPantallaTieneLosSuyos) {
  Escenario e;
  registraFormularios(*e.formularios);
  ASSERT_TRUE(e.formularios->cambiarA("FrmMenu"));
  ASSERT_NE(e.ctx.principal, nullptr);
  // The settings screen manages the catalogue beside the program.
  CrearInicio(e.ctx.motor, e.ctx.carpetaPrograma + "Inicio.mdb");
  // The cards show that of the commercial program.
  creaGestion(e.carpetaDatos());
  Mirada mirada(e.ctx.motor);
  e.ctx.cajas = &mirada;
  const auto destinos = destinosDeConsultas();
  EXPECT_TRUE(destinos.contains("FrmPartida", "TxtSubcuenta"));
  QStringList pendientes = e.formularios->nombres();
  for (const auto& [nombre, controles] : catalogo()) {
    const auto comprueba = [&, pantalla = nombre, suyos = controles](const QObject& forma) {
      pendientes.removeOne(pantalla);
      for (const QString& control : suyos + destinos.values(pantalla))
        EXPECT_NE(forma.findChild<QObject*>(control), nullptr)
            << qPrintable(pantalla + ": " + control);
      const auto& ventana = dynamic_cast<const QWidget&>(forma);
      const QSize menor = ventana.minimumSizeHint().expandedTo(ventana.minimumSize());
      EXPECT_TRUE(kPantallaMenor.contains(QRect({}, menor))) << qPrintable(pantalla);
      EXPECT_LE(ventana.frameSize().width(), ventana.screen()->availableSize().width())
          << qPrintable(pantalla);
    };
    if (nombre == "FrmMenu") {
      comprueba(*e.ctx.principal->ventana());
      continue;
    }
    mirada.mira = comprueba;
    if (nombre == "FrmReindexa")
      mirada.esperaMensaje(
          "Atención el proceso que va a efectuar puede ser lento dependiendo de la velocidad de su "
          "ordenador");
    e.ctx.sesion.CodigoLlamada = 1;
    EXPECT_TRUE(e.formularios->mostrar(nombre)) << qPrintable(nombre);
  }
  e.ctx.cajas = &e.guion;
  EXPECT_TRUE(pendientes.isEmpty()) << "not in controles.txt: " << qPrintable(pendientes.join(' '));
}

// A form is opened by a text: one with a slip opens nothing, and the form that it means is reached
// by nobody.
TEST(Controles, LasPantallasSeLlamanPorSuNombre) {
  Escenario e(Escenario::Carpetas);
  registraFormularios(*e.formularios);
  const QStringList nombres = e.formularios->nombres();
  QStringList conocidos = nombres;
  for (const EntradaMenu& entrada : menuPrincipal()) conocidos << entrada.destino.toString();
  static const QRegularExpression entreComillas(R"re("(Frm\w+)")re");
  const QString texto = todoElCodigo();
  QSet<QString> llamados;
  for (auto it = entreComillas.globalMatch(texto); it.hasNext();)
    llamados.insert(it.next().captured(1));
  for (const QString& nombre : std::as_const(llamados))
    EXPECT_TRUE(conocidos.contains(nombre)) << qPrintable(nombre);
  for (const QString& nombre : nombres)
    EXPECT_TRUE(llamados.contains(nombre)) << qPrintable(nombre);
}

}  // namespace
