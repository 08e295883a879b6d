// The cards over the books of the commercial program, by keys.
#include <gtest/gtest.h>

#include "soporte/escenario.h"
#include "soporte/gestion.h"
#include "soporte/otropuesto.h"

namespace {

class Fichas : public testing::Test, protected Escenario {
 protected:
  Fichas() { registraFormularios(*formularios); }

  std::vector<QStringList> articulos(const QString& campos) {
    motor.flush();
    std::vector<QStringList> todos;
    const auto base = ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.DirDatos + "Gestion.MDB");
    const auto lee = base->OpenRecordset("Select " + campos + " from articulos order by Codigo");
    for (; !lee->Eof(); lee->MoveNext()) {
      QStringList fila;
      for (int i = 0; i < lee->FieldCount(); ++i) fila << lee->Fields(i).display();
      todos.push_back(fila);
    }
    return todos;
  }
  void cambiaEnGestion(const QString& campo, const Variant& valor) {
    const auto base = ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.DirDatos + "Gestion.MDB");
    const auto filas = base->OpenRecordset("articulos");
    filas->Edit();
    filas->Fields(campo) = valor;
    filas->Update();
    motor.flush();
  }
  static void enEstado(const Teclado& t, bool consulta, bool hay = true) {
    const std::tuple<const char*, bool> debidos[] = {{"CmdNuevo", consulta},
                                                     {"CmdSalir", consulta},
                                                     {"CmdEditar", consulta && hay},
                                                     {"CmdElimina", consulta && hay},
                                                     {"CmdImprimir", consulta && hay},
                                                     {"CmdVerlista", consulta && hay},
                                                     {"CmdLocalizar", consulta && hay},
                                                     {"CmdGuardar", !consulta},
                                                     {"CmdCancelar", !consulta},
                                                     {"TxtCodigo", !consulta}};
    for (const auto& [boton, activo] : debidos)
      EXPECT_EQ(t.control(boton).isEnabled(), activo) << boton;
  }
};

TEST_F(Fichas, SeMiranEnOrdenYSeBuscan) {
  creaGestion(motor, ctx.sesion.DirDatos);
  Teclado t(abre("FrmArticulos"));
  enEstado(t, true);
  EXPECT_EQ(t.textoDe("CmdCampoLocalizar"), "Descripcion");
  EXPECT_EQ(t.textoDe("TxtNombre"), "Barniz");
  EXPECT_EQ(t.textoDe("LblPosicion"), "1/3");
  EXPECT_EQ(t.textoDe("TxtVenta"), "8,80");
  EXPECT_EQ(t.textoDe("TxtTipoNombre"), "Litros");
  EXPECT_EQ(t.textoDe("TxtProveNombre"), "Maderas Duero");
  t.pulsa("CmdUltimo");
  EXPECT_EQ(t.textoDe("LblPosicion"), "3/3");
  EXPECT_EQ(t.textoDe("TxtNombre"), "Tablero de pino");
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
  EXPECT_EQ(t.textoDe("CmdLocalizar"), "Ver todos");
  EXPECT_EQ(t.textoDe("LblPosicion"), "0/0");
  EXPECT_EQ(t.textoDe("TxtNombre"), "");
  EXPECT_FALSE(t.control("CmdEditar").isEnabled());
  t.pulsa("CmdLocalizar");
  EXPECT_EQ(t.textoDe("LblPosicion"), "1/3");
  guion.esperaEntrada("Introduzca el/la Descripcion", "AVO");
  t.pulsa("CmdLocalizar");
  EXPECT_EQ(t.textoDe("TxtNombre"), "Clavos");
}

TEST_F(Fichas, SeDanDeAltaSeCambianYSeEliminan) {
  creaGestion(motor, ctx.sesion.DirDatos, false);
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
  EXPECT_TRUE(articulos("Codigo").empty());
  guion.esperaPregunta("Desea guardar los cambios", true, "Atención");
  t.mnemonico('G');
  enEstado(t, true);
  const std::vector<QStringList> cola = {{"A1", "Cola", "3", "7", "1234,5", "3", "P2"}};
  EXPECT_EQ(articulos("Codigo, Descripcion, IvaSR, IvaCR, Costo, Tipo, Proveedor"), cola);

  // A code that is there is refused, and the card stays to be put right or dropped.
  t.mnemonico('N');
  t.teclea("A1");
  guion.esperaPregunta("Desea guardar los cambios", true);
  guion.esperaMensaje("Error 3022: " + ErrorEjecucion(err::kClaveDuplicada).descripcion());
  t.mnemonico('G');
  enEstado(t, false);
  t.escape();
  enEstado(t, true);
  EXPECT_EQ(t.textoDe("TxtNombre"), "Cola");
  EXPECT_EQ(articulos("Codigo").size(), 1u);

  t.mnemonico('D');
  t.escribe("TxtNombre", "Cola blanca");
  t.mnemonico('C');
  EXPECT_EQ(t.textoDe("TxtNombre"), "Cola");
  // What isn't touched stays as it is in the file, whatever the mask shows of it and whoever
  // changed it meanwhile.
  t.mnemonico('D');
  t.escribe("TxtNombre", "Cola roja");
  cambiaEnGestion("MargenPorcentaje", 33.3333);
  guion.esperaPregunta("Desea guardar los cambios", true);
  t.mnemonico('G');
  EXPECT_EQ(t.textoDe("TxtPorcentaje"), "33,33");
  t.mnemonico('D');
  t.escribe("TxtCosto", "2");
  guion.esperaPregunta("Desea guardar los cambios", true);
  t.mnemonico('G');
  EXPECT_EQ(articulos("Descripcion, Costo, MargenPorcentaje"),
            (std::vector<QStringList>{{"Cola roja", "2", "33,3333"}}));
  guion.esperaPregunta("Desea eliminar el registro actual", false, "Atención");
  t.mnemonico('E');
  EXPECT_EQ(articulos("Codigo").size(), 1u);
  guion.esperaPregunta("Desea eliminar el registro actual", true, "Atención");
  t.mnemonico('E');
  EXPECT_TRUE(articulos("Codigo").empty());
  enEstado(t, true, false);
  EXPECT_EQ(t.textoDe("TxtNombre"), "");
}

// It can't be saved, and giving it up shows the one that follows it.
TEST_F(Fichas, UnaQueSeVaMientrasSeCambiaNoDejaLoEscrito) {
  creaGestion(motor, ctx.sesion.DirDatos);
  Teclado t(abre("FrmArticulos"));
  t.mnemonico('D');
  t.escribe("TxtNombre", "Nadie");
  OtroPuesto(carpetaDatos() + "/Gestion.MDB").ejecuta("DELETE FROM articulos WHERE Codigo='0003';");
  guion.esperaPregunta("Desea guardar los cambios", true);
  guion.esperaMensaje("Error 3167: " + ErrorEjecucion(err::kRegistroEliminado).descripcion());
  t.mnemonico('G');
  enEstado(t, false);
  t.mnemonico('C');
  enEstado(t, true);
  EXPECT_EQ(t.textoDe("TxtNombre"), "Clavos");
  EXPECT_EQ(t.textoDe("LblPosicion"), "1/2");
}

TEST_F(Fichas, LasFacturasRecorrenLosArticulosYSinFicheroSoloSeSale) {
  guion.esperaMensaje(
      "Error 3024: " +
      ErrorEjecucion(err::kBaseNoEncontrada, ctx.sesion.DirDatos + "Gestion.MDB").descripcion());
  {
    Teclado t(abre("FrmGesFacCli"));
    EXPECT_TRUE(t.control("CmdSalir").isEnabled());
    for (const char* boton : {"CmdNuevo", "CmdEditar", "CmdLocalizar", "CmdGuardar", "CmdPrimero"})
      EXPECT_FALSE(t.control(boton).isEnabled()) << boton;
    cierra();
  }
  creaGestion(motor, ctx.sesion.DirDatos);
  Teclado t(abre("FrmGesFacCli"));
  EXPECT_EQ(t.forma().windowTitle(), "Gestión de facturas a clientes");
  EXPECT_EQ(t.textoDe("TxtNombre"), "Barniz");
  EXPECT_EQ(t.textoDe("LblPosicion"), "1/3");
  // What was typed for one invoice is nothing of the next one's.
  t.mnemonico('N');
  t.elige("TxtProveNombre", "Bar D'Ors");
  EXPECT_EQ(t.textoDe("TxtProveCodigo"), "C1");
  t.mnemonico('C');
  EXPECT_EQ(t.textoDe("TxtProveCodigo") + t.textoDe("TxtProveNombre"), "");
}

}  // namespace
