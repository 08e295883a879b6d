// The cards over the books of the commercial program, by keys.
#include "soporte/escenario.h"
#include "soporte/gestion.h"

namespace {

class Fichas : public testing::Test, protected Escenario {
 protected:
  Fichas() { registraFormularios(*formularios); }

  // What another program reads and writes of the articles meanwhile.
  QString fuera(const QString& sql) {
    motor.flush();
    return preguntaFuera(carpetaDatos() + "/Gestion.MDB", sql);
  }
  QString articulos(const QString& campos) {
    return fuera("SELECT " + campos + " FROM articulos ORDER BY Codigo");
  }
  static void enEstado(const Teclado& t, bool consulta, bool hay = true) {
    const auto activos = [&](std::initializer_list<const char*> botones, bool si) {
      for (const char* boton : botones) EXPECT_EQ(t.control(boton).isEnabled(), si) << boton;
    };
    activos({"CmdNuevo", "CmdSalir"}, consulta);
    activos({"CmdEditar", "CmdElimina", "CmdImprimir", "CmdVerlista", "CmdLocalizar"},
            consulta && hay);
    activos({"CmdGuardar", "CmdCancelar", "TxtCodigo"}, !consulta);
  }
};

TEST_F(Fichas, SeMiranEnOrdenYSeBuscan) {
  creaGestion(carpetaDatos());
  Teclado t(abre("FrmArticulos"));
  enEstado(t, true);
  EXPECT_EQ(t.textosDe({"CmdCampoLocalizar", "TxtNombre", "LblPosicion", "TxtVenta",
                        "TxtTipoNombre", "TxtProveNombre"}),
            (QStringList{"Descripcion", "Barniz", "1/3", "8,80", "Litros", "Maderas Duero"}));
  t.pulsa("CmdUltimo");
  EXPECT_EQ(t.textosDe({"LblPosicion", "TxtNombre"}), (QStringList{"3/3", "Tablero de pino"}));
  t.elige("CmdCampoLocalizar", "Codigo");
  EXPECT_EQ(t.textoDe("TxtCodigo"), "0001");
  t.pulsa("CmdVerlista");
  EXPECT_EQ(t.textoDe("CmdVerlista"), "Ver ficha");
  EXPECT_TRUE(t.visible("FrmLista"));
  t.enfoca("GrdLista");
  t.tecla(Qt::Key_Down);
  t.pulsa("CmdVerlista");
  EXPECT_EQ(t.textoDe("TxtNombre"), "Clavos");
  EXPECT_FALSE(t.visible("FrmLista"));

  t.elige("CmdCampoLocalizar", "Descripcion");
  for (const std::optional<QString>& nada :
       {std::optional<QString>(), std::optional<QString>("")}) {
    guion.esperaEntrada("Introduzca el/la Descripcion", nada);
    t.pulsa("CmdLocalizar");
    EXPECT_EQ(t.textoDe("CmdLocalizar"), "Localizar");
  }
  guion.esperaEntrada("Introduzca el/la Descripcion", "no'hay");
  t.pulsa("CmdLocalizar");
  EXPECT_EQ(t.textosDe({"CmdLocalizar", "LblPosicion", "TxtNombre"}),
            (QStringList{"Ver todos", "0/0", ""}));
  EXPECT_FALSE(t.control("CmdEditar").isEnabled());
  t.pulsa("CmdLocalizar");
  EXPECT_EQ(t.textoDe("LblPosicion"), "1/3");
  guion.esperaEntrada("Introduzca el/la Descripcion", "AVO");
  t.pulsa("CmdLocalizar");
  EXPECT_EQ(t.textoDe("TxtNombre"), "Clavos");
}

TEST_F(Fichas, SeDanDeAltaSeCambianYSeEliminan) {
  creaGestion(carpetaDatos());
  fuera("DELETE FROM articulos");
  Teclado t(abre("FrmArticulos"));
  enEstado(t, true, false);
  t.mnemonico('N');
  enEstado(t, false);
  EXPECT_EQ(t.enfocado(), "TxtCodigo");
  EXPECT_EQ(t.textoDe("TxtIvaSR") + t.textoDe("TxtIvaCR"), "37");
  for (const char* cero : {"TxtCosto", "TxtPorcentaje", "TxtMargenImporte", "TxtTipoCodigo"})
    EXPECT_EQ(t.textoDe(cero), "0,00");
  t.teclea("A1");
  t.escribe("TxtNombre", "Cola");
  t.escribe("TxtCosto", "1234.5");
  t.elige("TxtTipoNombre", "Litros");
  t.elige("TxtProveNombre", "Aceros del Norte");
  guion.esperaPregunta("Desea guardar los cambios", false, "Atención");
  t.mnemonico('G');
  enEstado(t, false);
  EXPECT_EQ(articulos("Codigo"), "");
  guion.esperaPregunta("Desea guardar los cambios", true, "Atención");
  t.mnemonico('G');
  enEstado(t, true);
  EXPECT_EQ(articulos("Codigo, Descripcion, IvaSR, IvaCR, Costo, Tipo, Proveedor"),
            "A1|Cola|3|7|1234.5|3|P2");

  // A code that is there is refused, and the card stays to be put right or dropped.
  t.mnemonico('N');
  t.teclea("A1");
  guion.esperaPregunta("Desea guardar los cambios", true);
  guion.esperaMensaje(errorEnCaja(3022));
  t.mnemonico('G');
  enEstado(t, false);
  t.escape();
  enEstado(t, true);
  EXPECT_EQ(t.textoDe("TxtNombre"), "Cola");
  EXPECT_EQ(articulos("Codigo"), "A1");

  t.mnemonico('D');
  t.escribe("TxtNombre", "Cola blanca");
  t.mnemonico('C');
  EXPECT_EQ(t.textoDe("TxtNombre"), "Cola");
  // What isn't touched stays as it is in the file, whatever the mask shows of it and whoever
  // changed it meanwhile.
  t.mnemonico('D');
  t.escribe("TxtNombre", "Cola roja");
  fuera("UPDATE articulos SET MargenPorcentaje = 33.3333");
  guion.esperaPregunta("Desea guardar los cambios", true);
  t.mnemonico('G');
  EXPECT_EQ(t.textoDe("TxtPorcentaje"), "33,33");
  t.mnemonico('D');
  t.escribe("TxtCosto", "2");
  guion.esperaPregunta("Desea guardar los cambios", true);
  t.mnemonico('G');
  EXPECT_EQ(articulos("Descripcion, Costo, MargenPorcentaje"), "Cola roja|2.0|33.3333");
  guion.esperaPregunta("Desea eliminar el registro actual", false, "Atención");
  t.mnemonico('E');
  EXPECT_EQ(articulos("Codigo"), "A1");
  guion.esperaPregunta("Desea eliminar el registro actual", true, "Atención");
  t.mnemonico('E');
  EXPECT_EQ(articulos("Codigo"), "");
  enEstado(t, true, false);
  EXPECT_EQ(t.textoDe("TxtNombre"), "");
}

// It can't be saved, and giving it up shows the one that follows it.
TEST_F(Fichas, UnaQueSeVaMientrasSeCambiaNoDejaLoEscrito) {
  creaGestion(carpetaDatos());
  Teclado t(abre("FrmArticulos"));
  t.mnemonico('D');
  t.escribe("TxtNombre", "Nadie");
  fuera("DELETE FROM articulos WHERE Codigo='0003'");
  guion.esperaPregunta("Desea guardar los cambios", true);
  guion.esperaMensaje(errorEnCaja(3167));
  t.mnemonico('G');
  enEstado(t, false);
  t.mnemonico('C');
  enEstado(t, true);
  EXPECT_EQ(t.textosDe({"TxtNombre", "LblPosicion"}), (QStringList{"Clavos", "1/2"}));
}

TEST_F(Fichas, LasFacturasRecorrenLosArticulosYSinFicheroSoloSeSale) {
  guion.esperaMensaje(errorEnCaja(3024, ctx.sesion.DirDatos + "Gestion.MDB"));
  {
    Teclado t(abre("FrmGesFacCli"));
    EXPECT_TRUE(t.control("CmdSalir").isEnabled());
    for (const char* boton : {"CmdNuevo", "CmdEditar", "CmdLocalizar", "CmdGuardar", "CmdPrimero"})
      EXPECT_FALSE(t.control(boton).isEnabled()) << boton;
    cierra();
  }
  creaGestion(carpetaDatos());
  Teclado t(abre("FrmGesFacCli"));
  EXPECT_EQ(t.forma().windowTitle(), "Gestión de facturas a clientes");
  EXPECT_EQ(t.textosDe({"TxtNombre", "LblPosicion"}), (QStringList{"Barniz", "1/3"}));
  // What was typed for one invoice is nothing of the next one's.
  t.mnemonico('N');
  t.elige("TxtProveNombre", "Bar D'Ors");
  EXPECT_EQ(t.textoDe("TxtProveCodigo"), "C1");
  t.mnemonico('C');
  EXPECT_EQ(t.textoDe("TxtProveCodigo") + t.textoDe("TxtProveNombre"), "");
}

}  // namespace
