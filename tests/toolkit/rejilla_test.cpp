// Grids and combos over real files: who follows whom, and what editing writes.

#include "engine/libroendisco.h"
#include "toolkit/comboenlazado.h"
#include "toolkit/decimales.h"
#include "toolkit/formdeprueba.h"

namespace {
using Lista = QStringList;

// A form with a grid and a combo, over the company's file.
class FormConRejilla : public FormDePrueba {
  Q_OBJECT
 public:
  explicit FormConRejilla(Contexto& contexto) : FormDePrueba(contexto) {
    Grid->setMinimumHeight(120);
  }
  void ata(const QString& fuente, std::vector<Columna> columnas) {
    Grid->setMascara(ctx.sesion.MascaraImporte);
    Grid->enlazar(Dta, std::move(columnas));
    Dta.bind(ctx.sesion.rutaEmpresa(), fuente);
    reposar();
  }
  DataControl Dta{ctx.motor};
  Rejilla* Grid = pon<Rejilla>("Grid");
  ComboEnlazado* TxtLista = pon<ComboEnlazado>("TxtLista");
};

const std::vector<Columna> kTipos = {
    {.campo = "Codigo", .titulo = "Código"},
    {.campo = "Descripcion", .titulo = "Descripción", .ancho = 30},
    {.campo = "IVA", .titulo = "IVA", .tipo = Columna::Tipo::Importe, .mascara = "0.00"}};

struct PruebaDeRejilla {
  Escenario e;
  FormConRejilla& f = e.abre<FormConRejilla>();
  Teclado t{f};
  Rejilla& g = *f.Grid;

  explicit PruebaDeRejilla(const QString& fuente = "Select * from TiposIVA order by Codigo",
                           const std::vector<Columna>& columnas = kTipos) {
    f.ata(fuente, columnas);
    t.enfoca("Grid");
  }
  Lista columna(int cual) const {
    g.alDia();
    Lista textos;
    for (int i = 0; i < g.filas(); ++i) textos << g.texto(i, cual);
    return textos;
  }
  Lista fila(int cual) const {
    Lista textos;
    for (int i = 0; i < g.model()->columnCount(); ++i) textos << g.texto(cual, i);
    return textos;
  }
};

TEST(Rejilla, PideElAnchoDeSusColumnasConCualquierLetra) {
  for (const double veces : {1.0, 1.5}) {
    const LetraAumentada letra(veces);
    PruebaDeRejilla p;
    p.f.resize(p.f.sizeHint());
    reposar();
    EXPECT_EQ(p.g.horizontalScrollBar()->maximum(), 0) << veces;
  }
}

TEST(Rejilla, SinSitioCedeElTextoYNoLosImportes) {
  PruebaDeRejilla p;
  p.f.resize(p.f.sizeHint() - QSize(p.g.fontMetrics().horizontalAdvance('0') * 15, 0));
  const int importe = p.g.columnWidth(2);
  p.f.ata("Select * from TiposIVA", kTipos);
  EXPECT_EQ(p.g.horizontalScrollBar()->maximum(), 0);
  EXPECT_GE(p.g.columnWidth(2), importe);
}

TEST(Rejilla, MientrasOtroTieneElFicheroSePintaLoQueHayYNoSeEditaLoQueNoSeLee) {
  PruebaDeRejilla p;
  p.g.permitirEdicion(Rejilla::Cambios);
  p.g.setCurrentIndex(p.g.model()->index(1, 1));
  const QImage antes = p.g.grab().toImage();
  p.e.motor.setLockTimeout(30);
  auto otro =
      std::make_unique<OtroPuesto>(rutaSistema(p.e.ctx.sesion.rutaEmpresa()), "BEGIN EXCLUSIVE;");
  EXPECT_EQ(p.g.grab().toImage(), antes);
  p.e.guion.esperaMensaje(
      "Error 3260: Los datos están bloqueados por otro puesto; inténtelo de "
      "nuevo: " +
      p.e.ctx.sesion.rutaEmpresa());
  p.t.tecla(Qt::Key_F2);
  EXPECT_EQ(QApplication::focusWidget(), &p.g);
  otro.reset();
  p.t.tecla(Qt::Key_F2);
  p.t.entra("Otra");
  EXPECT_EQ(p.g.texto(1, 1), "Otra");
}

TEST(Rejilla, UnaFilaBorradaDesapareceYLasDemasSiguenEnSuSitio) {
  PruebaDeRejilla p;
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

// Until the recordset moves on, nothing is highlighted; every way on goes from where the row was.
TEST(Rejilla, TrasBorrarLaFilaActualNoHayOtraHastaQueSeElige) {
  using Paso = std::function<void(PruebaDeRejilla&)>;
  const auto clic = [](int fila) -> Paso {
    return [fila](PruebaDeRejilla& p) {
      const QPoint sitio = p.g.visualRect(p.g.model()->index(fila, 0)).center();
      QTest::mouseClick(p.g.viewport(), Qt::LeftButton, {}, sitio);
    };
  };
  const auto tecla = [](Qt::Key cual) -> Paso {
    return [cual](PruebaDeRejilla& p) { p.t.tecla(cual); };
  };
  const auto mueve = [](Rejilla::Movimiento cual) -> Paso {
    return [cual](PruebaDeRejilla& p) { p.g.mover(cual); };
  };
  const struct {
    Paso paso;
    int fila;  // of the rows before the deletion
  } casos[] = {{clic(1), 1},
               {clic(2), 3},  // where the next one has moved up
               {tecla(Qt::Key_Down), 3},
               {tecla(Qt::Key_Up), 1},
               {tecla(Qt::Key_Home), 0},
               {mueve(Rejilla::Siguiente), 3},
               {mueve(Rejilla::Anterior), 1}};
  for (const auto& caso : casos) {
    PruebaDeRejilla p;
    const Lista antes = p.columna(0);
    p.f.Dta.setAbsolutePosition(2);
    p.f.Dta.Delete();
    reposar();
    EXPECT_EQ(p.g.filaActual(), -1);
    EXPECT_FALSE(p.g.selectionModel()->hasSelection());
    EXPECT_EQ(p.g.valor("Codigo"), "");
    caso.paso(p);
    EXPECT_EQ(p.f.Dta.Fields("Codigo").text(), antes[caso.fila]);
    EXPECT_EQ(p.g.valor("Codigo"), p.g.texto(p.g.filaActual(), 0));
  }
}

// In points from the right edge, for whatever stands behind the decimals.
TEST(Rejilla, LosDecimalesDeUnaColumnaEstanUnosBajoOtros) {
  const QFontMetrics letra{QFont()};
  for (const char* mascara :
       {"#,##0.00 ;-#,##0.00", "#,##0.00;(#,##0.00)", "#,##0.00 €;-#,##0.00 €", "0.00 ;0.00-;\"\"",
        "$0.00;($0.00);0.00 nada"}) {
    QSet<int> sitios, enCampos;
    for (const double valor : {1234.5, -0.25, 0.0}) {
      const QString importe = Format(valor, mascara);
      if (importe.isEmpty()) continue;
      const auto cola = importe.mid(importe.lastIndexOf(QRegularExpression("[0-9]")) + 1);
      sitios << sangriaDecimal(importe, mascara, letra) +
                    letra.horizontalAdvance(sinBlancoFinal(cola));
      enCampos << margenDecimal(importe, mascara, letra) + letra.horizontalAdvance(cola);
    }
    EXPECT_EQ(sitios.size(), 1) << mascara;
    EXPECT_EQ(enCampos.size(), 1) << mascara;
  }
}

// --- editing in place
// -----------------------------------------------------------------------------

struct PruebaDeEdicion : PruebaDeRejilla {
  explicit PruebaDeEdicion(int cambios, const QString& fuente = "Select * from TiposIVA")
      : PruebaDeRejilla(fuente) {
    g.permitirEdicion(cambios);
    reposar();
  }
  QString guardado(const QString& codigo) const {
    const auto filas = e.filas("Select * from TiposIVA where Codigo='" + codigo + "'");
    return filas.empty() ? QString() : filas[0].join('|');
  }
};

TEST(RejillaEdicion, LoEscritoSeGuardaAlDejarLaCeldaSalvoPorEscapeOUnRechazo) {
  PruebaDeEdicion p(Rejilla::Cambios);
  p.t.tecla(Qt::Key_Right);
  p.t.teclea("Otra");
  p.t.escape();
  EXPECT_EQ(p.g.textoDeCelda(), "Super reducido S/R");
  EXPECT_TRUE(p.f.isVisible());
  p.t.teclea("General");
  p.t.intro();  // on to the next cell
  p.t.teclea("16,5");
  p.t.tecla(Qt::Key_Tab);
  EXPECT_EQ(p.guardado("01"), "01|General|16,5|0");
  EXPECT_EQ(p.g.texto(0, 2), "16,50");
  p.t.tecla(Qt::Key_Home);  // in the next row
  p.t.teclea("A73");        // no more than the column takes
  p.t.intro();
  EXPECT_EQ(p.guardado("A7"), "A7|Reducido S/R|7|0");

  for (const bool cierra : {false, true}) {
    p.t.tecla(Qt::Key_End);
    p.t.teclea("doce");
    p.e.guion.esperaMensaje(errorEnCaja(3421, "doce"), "Librano");
    if (cierra)
      p.t.cierra();
    else
      p.t.intro();
    EXPECT_EQ(p.g.texto(1, 2), "7,00");
    EXPECT_EQ(p.f.Dta.Recordset().editMode(), Recordset::EditMode::None);
    EXPECT_EQ(p.t.enfocado(), "Grid");
    EXPECT_TRUE(p.f.isVisible());
  }
}

TEST(RejillaEdicion, SuprVaciaLaCeldaOBorraLaFila) {
  PruebaDeEdicion p(Rejilla::Cambios);
  p.t.tecla(Qt::Key_Right);
  p.t.tecla(Qt::Key_Delete);
  EXPECT_EQ(p.guardado("01"), "01||4|0");
  const Lista antes = p.columna(0);
  p.g.permitirEdicion(Rejilla::Cambios | Rejilla::Bajas);
  p.t.tecla(Qt::Key_Delete);
  EXPECT_EQ(p.columna(0), antes.mid(1));
  EXPECT_EQ(p.guardado("01"), "");
  EXPECT_EQ(p.g.valor("Codigo"), antes[1]);
}

struct PruebaDeAltas : PruebaDeEdicion {
  PruebaDeAltas()
      : PruebaDeEdicion(Rejilla::Cambios | Rejilla::Altas | Rejilla::Bajas,
                        "Select * from TiposIVA where Codigo >= '98' order by Codigo") {
    t.tecla(Qt::Key_Down);
    t.tecla(Qt::Key_Down);  // 98, 99, and the empty row
    t.entra("A1");
    EXPECT_EQ(guardado("A1"), "");
  }
};

TEST(RejillaAltas, SeGuardaAlPasarAOtraFilaOControlOCerrar) {
  const std::pair<const char*, std::function<void(PruebaDeAltas&)>> casos[] = {
      {"Arriba", [](PruebaDeAltas& p) { p.t.tecla(Qt::Key_Up); }},
      {"Intro y Tab", [](PruebaDeAltas& p) { p.t.intro(), p.t.tab(); }},
      {"desde la celda", [](PruebaDeAltas& p) { p.t.enfoca("TxtA"); }},
      {"un botón", [](PruebaDeAltas& p) { p.t.pulsa("CmdCancelar"); }},
      {"el botón de la ventana", [](PruebaDeAltas& p) { p.t.cierra(); }},
  };
  for (const auto& [como, accion] : casos) {
    SCOPED_TRACE(como);
    PruebaDeAltas p;
    p.t.teclea("Nuevo");
    accion(p);
    EXPECT_EQ(p.guardado("A1"), "A1|Nuevo|0|0");
    EXPECT_EQ(p.columna(0), (Lista{"98", "99", "A1"}));
  }
}

TEST(RejillaAltas, UnaClaveRepetidaSeDiceYSeCorrigeYEscapeLaDeja) {
  PruebaDeAltas p;
  p.t.tecla(Qt::Key_Home);
  p.t.entra("99");
  p.e.guion.esperaMensaje(errorEnCaja(3022));
  p.t.tecla(Qt::Key_Up);
  EXPECT_EQ(p.g.filaActual(), 2);
  EXPECT_EQ(p.g.valor("Codigo"), "99");
  p.t.tecla(Qt::Key_Home);
  p.t.entra("A2");
  p.t.escape();
  EXPECT_TRUE(p.f.isVisible());
  EXPECT_EQ(p.g.textoDeCelda(), "");
  p.t.escape();
  EXPECT_FALSE(p.f.isVisible());
  EXPECT_EQ(p.guardado("A2"), "");
}

// --- combos
// ---------------------------------------------------------------------------------------

TEST(ComboEnlazado, ElegirMueveElConjuntoYEscribirNo) {
  for (const bool editable : {true, false}) {
    SCOPED_TRACE(editable);
    PruebaDeRejilla p("Select * from Nivel01 order by NNivel");
    ComboEnlazado& c = *p.f.TxtLista;
    c.setEditable(editable);
    c.enlazar(p.f.Dta, "Descripcion");
    const QString segunda = c.itemText(1), tercera = c.itemText(2);
    QSignalSpy elegidos(&c, &ComboEnlazado::elegido);
    p.t.elige("TxtLista", segunda);
    EXPECT_EQ(p.f.Dta.Fields("Descripcion").text(), segunda);
    EXPECT_EQ(elegidos.size(), 1);
    EXPECT_TRUE(c.ponerTexto(tercera.toUpper()));
    EXPECT_EQ(c.texto(), tercera);
    EXPECT_FALSE(c.ponerTexto("no está"));
    EXPECT_EQ(c.texto(), editable ? "no está" : "");
    if (editable) p.t.escribe("TxtLista", "texto libre");
    EXPECT_EQ(p.f.Dta.Fields("Descripcion").text(), tercera);

    // Filled anew, it keeps what is written.
    const int antes = c.count();
    p.f.Dta.MoveLast();
    p.f.Dta.Delete();
    c.showPopup();
    EXPECT_EQ(c.count(), antes - 1);
    c.hidePopup();
    p.f.Dta.setRecordSource("Select * from Nivel01 where NNivel = '1'");
    p.f.Dta.Refresh();
    EXPECT_EQ(c.count(), 1);
    EXPECT_EQ(c.texto(), editable ? "texto libre" : "");
  }
}
}  // namespace

#include "rejilla_test.moc"
