// Grids and combos over real files: who follows whom, and what editing writes.
#include "foundation/toolkit/rejilla.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QScrollBar>
#include <QSignalSpy>

#include "foundation/data/datacontrol.h"
#include "foundation/toolkit/comboenlazado.h"
#include "foundation/toolkit/formdeprueba.h"
#include "soporte/escenario.h"

namespace {
using Lista = QStringList;

// A form with a grid and a combo, over the company's file.
class FormConRejilla : public FormDePrueba {
  Q_OBJECT
 public:
  explicit FormConRejilla(Contexto& contexto) : FormDePrueba(contexto) {
    for (auto* control : std::initializer_list<QWidget*>{Grid, TxtLista}) {
      layout()->addWidget(control);
    }
    Grid->setObjectName("Grid");
    TxtLista->setObjectName("TxtLista");
    Grid->setMinimumHeight(120);
  }
  void ata(const QString& fuente, std::vector<Columna> columnas) {
    Grid->setMascara(ctx.sesion.MascaraImporte);
    Grid->enlazar(Dta, std::move(columnas));
    Dta.bind(ctx.sesion.rutaEmpresa(), fuente);
    reposar();
  }
  DataControl Dta{ctx.motor};
  Rejilla* Grid = new Rejilla(this);
  ComboEnlazado* TxtLista = new ComboEnlazado(this);
};

const std::vector<Columna> kTipos = {
    {.campo = "Codigo", .titulo = "Código"},
    {.campo = "Descripcion", .titulo = "Descripción", .ancho = 30},
    {.campo = "IVA", .titulo = "IVA", .tipo = Columna::Tipo::Importe, .mascara = "0.00"}};

struct Prueba {
  Escenario e;
  FormConRejilla& f = e.abre<FormConRejilla>();
  Teclado t{f};
  Rejilla& g = *f.Grid;

  explicit Prueba(const QString& fuente = "Select * from TiposIVA order by Codigo",
                  const std::vector<Columna>& columnas = kTipos) {
    f.ata(fuente, columnas);
    t.enfoca("Grid");
  }
  Lista columna(int cual) const {
    Lista textos;
    for (int i = 0; i < g.filas(); ++i) textos << g.texto(i, cual);
    return textos;
  }
};

TEST(Rejilla, MuestraCadaTipoASuModo) {
  Prueba p("Diario", {{.campo = "Fecha", .titulo = "Fecha", .tipo = Columna::Tipo::Fecha},
                      {.campo = "Descripcion", .titulo = "Descripción"},
                      {.campo = "Importe", .titulo = "Importe", .tipo = Columna::Tipo::Importe},
                      {.campo = "NoHay", .titulo = "No hay"}});
  p.e.inserta("Diario", {{"NLinea", 1},
                         {"NAsiento", 1},
                         {"Fecha", QDate(2003, 2, 1)},
                         {"DH", "D"},
                         {"Importe", 1234.5}});
  p.f.Dta.Refresh();
  EXPECT_EQ(p.g.filas(), 1);
  EXPECT_EQ(p.g.texto(0, 0), "01/02/2003");
  EXPECT_EQ(p.g.texto(0, 1), "");  // Null
  EXPECT_EQ(p.g.texto(0, 2), "1.234,50 ");
  EXPECT_EQ(p.g.texto(0, 3), "");
}

TEST(Rejilla, PideElAnchoDeSusColumnasConCualquierLetra) {
  for (const double veces : {1.0, 1.5}) {
    const LetraAumentada letra(veces);
    Prueba p;
    p.f.resize(p.f.sizeHint());
    reposar();
    EXPECT_EQ(p.g.horizontalScrollBar()->maximum(), 0) << veces;
  }
}

TEST(Rejilla, UnImporteQueEsTextoVacioSeVeVacio) {
  Prueba p("SqlDiarioPrincipalBlanco",
           {{.campo = "Debe", .titulo = "Debe", .tipo = Columna::Tipo::Importe},
            {.campo = "Haber", .titulo = "Haber", .tipo = Columna::Tipo::Importe}});
  p.e.inserta("Diario", {{"NLinea", 1}, {"NAsiento", 1}, {"DH", "H"}, {"Importe", -2.0}});
  p.f.Dta.Refresh();
  EXPECT_EQ(p.g.texto(0, 0), "");
  EXPECT_EQ(p.g.texto(0, 1), "-2,00");
}

TEST(Rejilla, SigueAlConjuntoYElConjuntoALaRejilla) {
  Prueba p;
  EXPECT_EQ(p.g.filaActual(), 0);
  QSignalSpy cambios(&p.g, &Rejilla::filaCambiada);
  p.t.tecla(Qt::Key_Down);
  p.t.tecla(Qt::Key_Down);
  EXPECT_EQ(p.f.Dta.Fields("Codigo").text(), p.g.texto(2, 0));
  EXPECT_EQ(p.g.valor("codigo"), p.g.texto(2, 0));
  EXPECT_EQ(cambios.size(), 2);

  p.f.Dta.MoveLast();
  EXPECT_EQ(p.g.filaActual(), p.g.filas() - 1);
  p.f.Dta.setRecordSource("Select * from TiposIVA where Codigo = '03'");
  p.f.Dta.Refresh();
  EXPECT_EQ(p.g.filas(), 1);
  EXPECT_EQ(p.g.filaActual(), 0);
  p.f.Dta.setRecordSource("Select * from TiposIVA where Codigo = 'ZZ'");
  p.f.Dta.Refresh();
  EXPECT_EQ(p.g.filas(), 0);
  EXPECT_EQ(p.g.filaActual(), -1);
  EXPECT_EQ(p.g.valor("Codigo"), "");
  EXPECT_EQ(p.g.textoDeCelda(), "");
}

TEST(Rejilla, UnaFilaBorradaDesapareceYLasDemasSiguenEnSuSitio) {
  Prueba p;
  const Lista antes = p.columna(0);
  for (const int cual : {5, 2, 3, 0}) {  // positions, in any order
    p.f.Dta.setAbsolutePosition(cual);
    p.f.Dta.Delete();
  }
  p.f.Dta.setAbsolutePosition(4);
  Lista despues = antes;
  for (const int cual : {5, 3, 2, 0}) despues.removeAt(cual);
  EXPECT_EQ(p.columna(0), despues);
  EXPECT_EQ(p.g.filaActual(), 1);
  p.t.tecla(Qt::Key_Down);
  EXPECT_EQ(p.g.valor("Codigo"), antes[6]);
}

TEST(Rejilla, DaSenalesDeTeclasYRaton) {
  Prueba p;
  QSignalSpy intro(&p.g, &Rejilla::intro);
  QSignalSpy mas(&p.g, &Rejilla::mas);
  QSignalSpy espacio(&p.g, &Rejilla::espacio);
  QSignalSpy doble(&p.g, &Rejilla::dobleClic);
  QSignalSpy derecho(&p.g, &Rejilla::botonDerecho);
  p.t.intro();
  p.t.teclea("+ a");
  p.t.dobleClic("Grid");
  const QPoint donde = p.g.visualRect(p.g.model()->index(1, 0)).center();
  QContextMenuEvent menu(QContextMenuEvent::Mouse, donde, p.g.viewport()->mapToGlobal(donde));
  QCoreApplication::sendEvent(p.g.viewport(), &menu);
  EXPECT_EQ(intro.size(), 1);
  EXPECT_EQ(mas.size(), 1);
  EXPECT_EQ(espacio.size(), 1);
  EXPECT_EQ(doble.size(), 1);
  EXPECT_EQ(derecho.size(), 1);
  EXPECT_EQ(p.g.filaActual(), 1);
  p.t.tab();  // leaves the grid
  EXPECT_NE(p.t.enfocado(), "Grid");
}

// --- editing in place
// -----------------------------------------------------------------------------

TEST(RejillaEdicion, LoEscritoSeGuardaAlDejarLaCelda) {
  Prueba p;
  p.g.permitirEdicion(Rejilla::Cambios);
  reposar();
  p.t.tecla(Qt::Key_Right);
  p.t.teclea("General");
  p.t.intro();  // on to the next cell
  p.t.teclea("16,5");
  p.t.tecla(Qt::Key_Tab);
  EXPECT_EQ(
      p.e.filas("Select Descripcion, IVA from TiposIVA where Codigo='" + p.g.texto(0, 0) + "'"),
      (std::vector<Lista>{{"General", "16,5"}}));
  EXPECT_EQ(p.g.texto(0, 2), "16,50");
}

TEST(RejillaEdicion, LoQueSeEscribiaAlCerrarLaVentanaSeGuarda) {
  Prueba p;
  p.g.permitirEdicion(Rejilla::Cambios);
  reposar();
  p.t.tecla(Qt::Key_Right);
  p.t.teclea("General");
  p.t.cierra();
  EXPECT_EQ(p.e.valor("Select Descripcion from TiposIVA where Codigo='01'"), "General");
}

TEST(RejillaEdicion, EscapeDejaLaCeldaComoEstabaYElFormularioAbierto) {
  Prueba p;
  p.g.permitirEdicion(Rejilla::Cambios);
  reposar();
  p.t.tecla(Qt::Key_Right);
  const QString antes = p.g.textoDeCelda();
  p.t.teclea("Otra");
  p.t.escape();
  EXPECT_EQ(p.g.textoDeCelda(), antes);
  EXPECT_TRUE(p.f.isVisible());
}

TEST(RejillaEdicion, LoQueElMotorRechazaSeDiceYLaCeldaVuelve) {
  Prueba p;
  p.g.permitirEdicion(Rejilla::Cambios);
  reposar();
  const QString codigo = p.g.texto(0, 0);
  p.t.teclea("123");
  p.e.guion.esperaMensaje(
      "Error 3163: " + ErrorEjecucion(err::kTextoDemasiadoLargo, "123").descripcion(), "Librano");
  p.t.intro();
  EXPECT_EQ(p.g.texto(0, 0), codigo);
  EXPECT_EQ(p.f.Dta.Recordset().editMode(), Recordset::EditMode::None);
  EXPECT_EQ(p.t.enfocado(), "Grid");
}

TEST(RejillaEdicion, SuprVaciaLaCeldaOBorraLaFila) {
  Prueba p;
  p.g.permitirEdicion(Rejilla::Cambios);
  reposar();
  p.t.tecla(Qt::Key_Right);
  p.t.teclea("General");
  p.t.intro();
  p.t.tecla(Qt::Key_Left);
  p.t.tecla(Qt::Key_Delete);
  EXPECT_EQ(p.g.textoDeCelda(), "");
  const Lista antes = p.columna(0);

  p.g.permitirEdicion(Rejilla::Cambios | Rejilla::Bajas);
  p.t.tecla(Qt::Key_Delete);
  EXPECT_EQ(p.columna(0), antes.mid(1));
  EXPECT_EQ(p.e.valor("Select Count(*) from TiposIVA"), QString::number(antes.size() - 1));
  EXPECT_EQ(p.g.valor("Codigo"), antes[1]);
}

struct PruebaDeAltas : Prueba {
  PruebaDeAltas() : Prueba("Select * from TiposIVA where Codigo >= '98' order by Codigo") {
    g.permitirEdicion(Rejilla::Cambios | Rejilla::Altas | Rejilla::Bajas);
    reposar();
    t.tecla(Qt::Key_Down);
    t.tecla(Qt::Key_Down);  // 98, 99, and the empty row
  }
};

TEST(RejillaAltas, SeGuardaAlPasarAOtraFila) {
  PruebaDeAltas p;
  EXPECT_EQ(p.g.valor("Codigo"), "");
  p.t.teclea("A1");
  p.t.intro();
  p.t.teclea("Nuevo");
  p.t.intro();
  EXPECT_EQ(p.e.valor("Select Count(*) from TiposIVA where Codigo='A1'"), "0");
  p.t.tecla(Qt::Key_Up);
  EXPECT_EQ(p.e.filas("Select Codigo, Descripcion, IVA from TiposIVA where Codigo='A1'"),
            (std::vector<Lista>{{"A1", "Nuevo", "0"}}));
  EXPECT_EQ(p.columna(0), (Lista{"98", "99", "A1"}));
  EXPECT_EQ(p.g.valor("Codigo"), "99");
}

TEST(RejillaAltas, SeGuardaAlPasarAOtroControlOCerrar) {
  const struct {
    const char* como;
    std::function<void(PruebaDeAltas&)> accion;
  } casos[] = {
      {"Tab", [](PruebaDeAltas& p) { p.t.tab(); }},
      {"desde la celda", [](PruebaDeAltas& p) { p.t.teclea("x"), p.t.enfoca("TxtA"); }},
      {"un botón", [](PruebaDeAltas& p) { p.t.pulsa("CmdCancelar"); }},
      {"el botón de la ventana", [](PruebaDeAltas& p) { p.t.cierra(); }},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.como);
    PruebaDeAltas p;
    p.t.teclea("A1");
    p.t.intro();
    caso.accion(p);
    EXPECT_EQ(p.e.valor("Select Count(*) from TiposIVA where Codigo='A1'"), "1");
  }
}

TEST(RejillaAltas, UnaClaveRepetidaSeDiceYSeCorrige) {
  PruebaDeAltas p;
  p.t.teclea("99");
  p.t.intro();
  p.e.guion.esperaMensaje("Error 3022: " + ErrorEjecucion(err::kClaveDuplicada).descripcion());
  p.t.tecla(Qt::Key_Up);
  EXPECT_EQ(p.g.filaActual(), 2);
  EXPECT_EQ(p.g.valor("Codigo"), "99");
  p.t.tecla(Qt::Key_Home);
  p.t.teclea("A2");
  p.t.intro();
  p.t.tecla(Qt::Key_Up);
  EXPECT_EQ(p.columna(0), (Lista{"98", "99", "A2"}));
}

TEST(RejillaAltas, EscapeLaDejaSinGuardar) {
  PruebaDeAltas p;
  p.t.teclea("A1");
  p.t.intro();
  p.t.escape();
  EXPECT_TRUE(p.f.isVisible());
  EXPECT_EQ(p.g.textoDeCelda(), "");
  p.t.escape();
  EXPECT_FALSE(p.f.isVisible());
  EXPECT_EQ(p.e.valor("Select Count(*) from TiposIVA where Codigo='A1'"), "0");
}

// --- combos
// ---------------------------------------------------------------------------------------

struct PruebaDeCombo : Prueba {
  ComboEnlazado& c = *f.TxtLista;
  explicit PruebaDeCombo(bool editable) : Prueba("Select * from Nivel01 order by NNivel") {
    c.setEditable(editable);
    c.enlazar(f.Dta, "Descripcion");
  }
};

TEST(ComboEnlazado, ElegirMueveElConjuntoYEscribirNo) {
  PruebaDeCombo p(true);
  ASSERT_GT(p.c.count(), 2);
  const QString segunda = p.c.itemText(1);
  QSignalSpy elegidos(&p.c, &ComboEnlazado::elegido);
  p.t.elige("TxtLista", segunda);
  EXPECT_EQ(p.f.Dta.Fields("Descripcion").text(), segunda);
  EXPECT_EQ(elegidos.size(), 1);
  p.t.escribe("TxtLista", "texto libre");
  EXPECT_EQ(p.c.texto(), "texto libre");
  EXPECT_EQ(p.f.Dta.Fields("Descripcion").text(), segunda);
}

TEST(ComboEnlazado, PonerTextoEligeLaFilaSiLaHay) {
  for (const bool editable : {true, false}) {
    SCOPED_TRACE(editable);
    PruebaDeCombo p(editable);
    const QString tercera = p.c.itemText(2);
    EXPECT_TRUE(p.c.ponerTexto(tercera.toUpper()));
    EXPECT_EQ(p.c.texto(), tercera);
    EXPECT_EQ(p.f.Dta.Recordset().AbsolutePosition(), 2);
    EXPECT_FALSE(p.c.ponerTexto("no está"));
    EXPECT_EQ(p.c.texto(), editable ? "no está" : "");
    EXPECT_EQ(p.f.Dta.Recordset().AbsolutePosition(), 2);
  }
}

TEST(ComboEnlazado, SeLlenaOtraVezYConservaElTexto) {
  PruebaDeCombo p(true);
  p.c.ponerTexto("texto libre");
  const int antes = p.c.count();
  p.f.Dta.MoveLast();
  p.f.Dta.Delete();
  p.c.showPopup();
  EXPECT_EQ(p.c.count(), antes - 1);
  p.c.hidePopup();
  p.f.Dta.setRecordSource("Select * from Nivel01 where NNivel = '1'");
  p.f.Dta.Refresh();
  EXPECT_LT(p.c.count(), antes - 1);
  EXPECT_EQ(p.c.texto(), "texto libre");
}
}  // namespace

#include "rejilla_test.moc"
