// The six locates, by their keys.
#include "journal/herramientas.h"

namespace {

struct Buscado : Herramientas {
  Buscado() { linea("57000001", "12.5", {}, "12/06/2003"); }
};

TEST(FrmBusca, NarrowsTheJournalToWhatIsAsked) {
  const struct {
    const char* entrada;
    const char* forma;
    const char* campo;
    const char* texto;
    int filas;
    const char* asiento;
  } casos[] = {
      {"MnuLocCodigo", "FrmBusSub", "TxtSubcuenta", "43.1", 2, "1"},
      // From the given one on.
      {"MnuLocAsiento", "FrmBusAsi", "TxtAsiento", "2", 3, "2"},
      {"MnuLocDescripcion", "FrmBusDes", "TxtDescripcion", "pun", 5, "1"},
      // On either side.
      {"MnuLocImporte", "FrmBusImp", "TxtImporte", "30", 2, "2"},
      {"MnuLocImporte", "FrmBusImp", "TxtImporte", "12.5", 1, "3"},
      // The third of January: the month goes first where it can.
      {"MnuLocFecha", "FrmBusFec", "TxtFecha", "0103", 3, "2"},
      {"MnuLocFecha", "FrmBusFec", "TxtFecha", "1302", 1, "3"},
  };
  Buscado e;
  const auto saldos = e.balance();
  for (const auto& caso : casos) {
    e.dialogo(caso.entrada, caso.forma, [&caso](Teclado& busca) {
      busca.escribe(caso.campo, QString::fromUtf8(caso.texto));
      busca.pulsa("CmdAceptar");
    });
    EXPECT_EQ(e.rejilla().filas(), caso.filas) << caso.forma << ' ' << caso.texto;
    EXPECT_EQ(e.t->textoDe("TxtAsiento"), caso.asiento) << caso.forma << ' ' << caso.texto;
    e.t->pulsa("CmdRecargar");
    EXPECT_EQ(e.rejilla().filas(), 5);
  }
  EXPECT_EQ(e.balance(), saldos);
}

TEST(FrmBusca, FindsTheMarkedLines) {
  Buscado e;
  e.t->pulsa("CmdPrimero");
  e.t->enfoca("GrdApuntes");
  e.t->tecla(Qt::Key_Space);
  const char* const kNinguna = "No se ha encontrado ninguna partida con el punteo seleccionado";
  // None is chosen at the start, and a mark that no line bears isn't found either.
  e.dialogo("MnuLocApuntes", "FrmBusApu", [&](Teclado& busca) {
    EXPECT_EQ(busca.enfocado(), "CmdAceptar");
    busca.marca("OptPunteo_1");
    e.guion.esperaMensaje(kNinguna, "Error");
    busca.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.rejilla().filas(), 0);
  e.dialogo("MnuLocApuntes", "FrmBusApu", [](Teclado& busca) {
    busca.marca("OptPunteo_0");
    busca.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.rejilla().filas(), 1);
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "1");
}

TEST(FrmBusca, SaysWhatIsNotThere) {
  const struct {
    const char* entrada;
    const char* forma;
    const char* campo;
    const char* texto;
    const char* aviso;  // null: closes without a word, and the number stays
  } casos[] = {
      {"MnuLocCodigo", "FrmBusSub", "TxtSubcuenta", "43.9", "La subcuenta introducida no existe"},
      {"MnuLocAsiento", "FrmBusAsi", "TxtAsiento", "99", "El asiento introducido no existe"},
      {"MnuLocDescripcion", "FrmBusDes", "TxtDescripcion", "xyz",
       "Ninguna partida tiene los caracteres introducidos"},
      {"MnuLocImporte", "FrmBusImp", "TxtImporte", "31", "El importe introducido no existe"},
      {"MnuLocFecha", "FrmBusFec", "TxtFecha", "3112", nullptr},
  };
  Buscado e;
  for (const auto& caso : casos) {
    e.t->escribe("TxtAsiento", "3");
    e.dialogo(caso.entrada, caso.forma, [&](Teclado& busca) {
      busca.escribe(caso.campo, QString::fromUtf8(caso.texto));
      if (caso.aviso) e.guion.esperaMensaje(QString::fromUtf8(caso.aviso), "Error");
      busca.pulsa("CmdAceptar");
    });
    EXPECT_EQ(e.rejilla().filas(), 0) << caso.forma;
    EXPECT_EQ(e.t->textoDe("TxtAsiento"), caso.aviso ? "" : "3") << caso.forma;
    e.t->pulsa("CmdRecargar");
  }
}

TEST(FrmBusca, RefusesWhatCanNotBeLookedFor) {
  const struct {
    const char* entrada;
    const char* forma;
    const char* campo;
    const char* texto;
    const char* aviso;  // null: nothing happens
  } casos[] = {
      {"MnuLocCodigo", "FrmBusSub", "TxtSubcuenta", "", "No tiene ninguna cuenta introducida"},
      {"MnuLocCodigo", "FrmBusSub", "TxtSubcuenta", "430",
       "La cuenta introducida no tiene los digitos correspondientes"},
      {"MnuLocCodigo", "FrmBusSub", "TxtSubcuenta", "ABCDEFGH", nullptr},
      {"MnuLocAsiento", "FrmBusAsi", "TxtAsiento", "", "No tiene ningun asiento introducido"},
      {"MnuLocImporte", "FrmBusImp", "TxtImporte", "", "No tiene ningun importe introducido"},
  };
  Buscado e;
  for (const auto& caso : casos) {
    e.dialogo(caso.entrada, caso.forma, [&](Teclado& busca) {
      busca.escribe(caso.campo, QString::fromUtf8(caso.texto));
      if (!*caso.texto) busca.tecla(Qt::Key_Delete);
      if (caso.aviso) e.guion.esperaMensaje(QString::fromUtf8(caso.aviso), "Error");
      busca.pulsa("CmdAceptar");
      EXPECT_TRUE(busca.forma().isVisible()) << caso.forma;
      busca.escape();
    });
    EXPECT_EQ(e.rejilla().filas(), 5) << caso.forma;
  }
  // Letters don't get into a number, and the keypad's point is the decimal sign.
  e.dialogo("MnuLocImporte", "FrmBusImp", [](Teclado& busca) {
    busca.escribe("TxtImporte", "1x2.5");
    EXPECT_EQ(busca.textoDe("TxtImporte"), "12,5");
    busca.cierra();
  });
  // The subcuenta being typed is the one proposed.
  e.t->escribe("TxtSubcuenta", "57200001");
  e.dialogo("MnuLocCodigo", "FrmBusSub", [](Teclado& busca) {
    EXPECT_EQ(busca.textoDe("TxtSubcuenta"), "57200001");
    busca.intro();
    EXPECT_EQ(busca.enfocado(), "CmdAceptar");
    busca.intro();
  });
  EXPECT_EQ(e.rejilla().filas(), 1);
}

}  // namespace
