// The books of IVA and the 347 as their readers see them, and the table of rates as a look-up.
#include "reports/listadoabierto.h"

namespace {

class LibrosIVA : public ListadoAbierto {
 protected:
  LibrosIVA() {
    for (const auto& [codigo, nombre, nif] :
         {std::tuple("40000001", "Suministros Ebro, S.L.", "B11111111"),
          {"40000002", "Papelera del Sur, S.A.", "A22222222"},
          {"43000002", "Restaurante Casa Pepe", "12345678Z"}})
      inserta("Subcuentas", subcuentaDe(codigo, nombre, {{"Nif", nif}}));
    for (const QStringList& f : leeCsv("rsiva.csv")) {
      const double base = f[4].toDouble(), iva = f[5].toDouble(), re = f[6].toDouble();
      inserta("RSIVA", {{"Codigo", f[0]},
                        {"CliPro", f[1]},
                        {"Factura", "F-" + f[0].right(1)},
                        {"Fecha", f[2]},
                        {"FechaC", f[2]},
                        {"TipoIVA", f[3]},
                        {"CtaIVA", f[1].startsWith("47") ? f[1] : "47200001"},
                        {"Base", base},
                        {"IVA", iva},
                        {"Recargo", re},
                        {"PorcenIVA", f[3] == "02" ? 7 : 16},
                        {"PorcenREC", re == 0 ? 0 : 4},
                        {"Neto", base == 0 ? 0 : base + iva + re}});
    }
  }
  LibroImpreso libro(const char* entrada, const QString& nombre,
                     const std::function<void(Teclado&)>& ajusta) {
    LibroImpreso leido;
    dialogo(entrada, nombre, [&](Teclado& t) {
      ajusta(t);
      leido = lanza(t);
      t.escape();
    });
    return leido;
  }
  // The lines of a book between two of them, by how they begin.
  static QStringList con(const LibroImpreso& libro, const QString& parte) {
    return libro.lineas().filter(parte);
  }
};

TEST_F(LibrosIVA, CadaLibroConSuSignoYSusTotalesPorTipos) {
  const auto soportado =
      libro("MnuLibroSR", "FrmIVASRLibros", [](Teclado& t) { t.elige("TxtHasta", "03-Marzo"); });
  EXPECT_EQ(soportado.titulo, "Acumulados de IVA");
  EXPECT_EQ(soportado.paginas.size(), 1);
  EXPECT_EQ(con(soportado, "Desde : "), QStringList("Desde : 01-Enero ~ Hasta : 03-Marzo"));
  EXPECT_EQ(con(soportado, "S000000000"),
            (QStringList{
                "S0000000001 10/01/2003 F-1 Suministros Ebro, S.L. B11111111 1.000,00 16,00 160,00 "
                "0,00 0,00 1.160,00",
                "S0000000002 10/02/2003 F-2 Suministros Ebro, S.L. B11111111 200,00 16,00 32,00 "
                "4,00 8,00 240,00",
                "S0000000003 11/02/2003 F-3 Papelera del Sur, S.A. A22222222 -50,00 16,00 -8,00 "
                "0,00 0,00 -58,00",
                "S0000000004 01/03/2003 F-4 Adquisición intracomunitaria 0,00 16,00 70,00 0,00 "
                "0,00 0,00"}));
  EXPECT_EQ(soportado.linea("03 Normal S/R"),
            "03 Normal S/R 950,00 16,00 152,00 0,00 0,00 1.102,00");
  EXPECT_EQ(soportado.linea("07 Normal C/R"), "07 Normal C/R 200,00 16,00 32,00 4,00 8,00 240,00");
  EXPECT_EQ(soportado.linea("03 intracomunitarias"),
            "03 intracomunitarias Normal S/R 0,00 16,00 70,00 0,00 0,00 0,00");
  EXPECT_EQ(soportado.linea("Total IVA"), "Total IVA soportado 1.150,00 254,00 8,00 1.342,00");

  const auto ambos =
      libro("MnuLibroSR", "FrmIVASRLibros", [](Teclado& t) { t.pulsa("OptLibro_2"); });
  EXPECT_EQ(ambos.paginas.size(), 2);
  EXPECT_EQ(con(ambos, "Total IVA"),
            (QStringList{"Total IVA repercutido 3.300,00 571,00 0,00 3.801,00",
                         "Total IVA soportado 1.150,00 254,00 8,00 1.342,00"}));
  EXPECT_EQ(
      ambos.linea("R0000000003"),
      "R0000000003 20/04/2003 F-3 Almacenes Ruiz -1.000,00 16,00 -160,00 0,00 0,00 -1.160,00");

  const auto vacio = libro("MnuLibroSR", "FrmIVASRLibros", [](Teclado& t) {
    t.elige("TxtDesde", "06-Junio");
    t.elige("TxtHasta", "03-Marzo");
  });
  EXPECT_EQ(con(vacio, "No hay nada").size(), 1);
}

TEST_F(LibrosIVA, AcumuladosPorMesesYTipos) {
  const auto acumulados = libro("MnuAcumuladosIVA", "FrmIVAAcumulados", [](Teclado&) {});
  EXPECT_EQ(acumulados.titulo, "Acumulados de IVA");
  EXPECT_EQ(con(acumulados, "Total mes 2"),
            (QStringList{"Total mes 2 1 4.000,00 640,00 0,00 4.640,00",
                         "Total mes 2 2 150,00 24,00 8,00 182,00"}));
  EXPECT_EQ(con(acumulados, "02 Reducido S/R"),
            (QStringList{"02 Reducido S/R 1 300,00 7,00 21,00 0,00 0,00 321,00",
                         "02 Reducido S/R 1 300,00 21,00 0,00 321,00"}));
  EXPECT_EQ(con(acumulados, "Total IVA"),
            (QStringList{"Total IVA repercutido 4 3.300,00 571,00 0,00 3.801,00",
                         "Total IVA soportado 4 1.150,00 254,00 8,00 1.342,00"}));
}

// On both sides of its limit; a customer whose rectifying invoices outweigh its sales isn't there.
TEST_F(LibrosIVA, Modelo347) {
  const auto proveedores = [&](const char* limite) {
    return libro("Mnu347", "Frm347", [&](Teclado& t) { t.escribe("TxtImporte", limite); });
  };
  EXPECT_EQ(con(proveedores("1200"), "B11111111"),
            QStringList("B11111111 Suministros Ebro, S.L. 1.200,00 0,00 0,00 0,00 1.200,00"));
  EXPECT_EQ(con(proveedores("1200,01"), "B11111111"), QStringList());
  EXPECT_EQ(proveedores("0").linea("Total Proveedores"),
            "Total Proveedores 1.200,00 0,00 0,00 0,00 1.200,00");

  const auto clientes = libro("Mnu347", "Frm347", [&](Teclado& t) {
    t.pulsa("OptDe_1");
    t.pulsa("OptTipo_1");
    t.escribe("TxtImporte", "100");
  });
  EXPECT_EQ(con(clientes, "N.I.F. 12345678Z"),
            QStringList("43000002 Restaurante Casa Pepe N.I.F. 12345678Z 4.000,00"));
  EXPECT_EQ(con(clientes, "4.000,00").size(), 3);  // the card, its month of February, the total
  EXPECT_EQ(con(clientes, "Almacenes Ruiz").size(), 0);
}

TEST_F(LibrosIVA, LaTablaDeTiposTambienSeConsulta) {
  guion.esperaDialogo("FrmTiposIVA", [&](Teclado& t) {
    auto& rejilla = t.control<Rejilla>("GrdIVA");
    EXPECT_EQ(rejilla.alDia().filas(), 99);
    for (const auto& [tecleado, queda] : {std::pair("210", "4"), {"-4", "4"}, {"21", "21"}}) {
      if (tecleado != queda)
        guion.esperaMensaje("Error 6: El número es demasiado grande: IVA, de 0 a 100");
      rejilla.setCurrentIndex(rejilla.model()->index(0, 2));
      t.tecla(Qt::Key_F2);
      t.tecla(Qt::Key_A, Qt::ControlModifier);
      t.entra(tecleado);
      EXPECT_EQ(rejilla.alDia().texto(0, 2), queda);
    }
    t.tecla(Qt::Key_Down);
    t.intro();
  });
  menu("MnuTiposIVA");
  guion.esperaDialogo("FrmIVASR", [&](Teclado& t) {
    guion.esperaDialogo("FrmTiposIVA", [&](Teclado& tipos) {
      tipos.tecla(Qt::Key_Down);
      tipos.tecla(Qt::Key_Down);
      EXPECT_EQ(t.textoDe("TxtIva"), "03");
      tipos.escape();
    });
    t.escribe("TxtIva", "0");
    t.tab();
    EXPECT_EQ(t.textoDe("TxtIva"), "0");
    guion.esperaDialogo("FrmTiposIVA", [](Teclado& tipos) {
      tipos.tecla(Qt::Key_Down);
      tipos.intro();
    });
    t.enfoca("TxtIva");
    t.tab();
    EXPECT_EQ(t.textoDe("TxtIva"), "02");
    // From a base that is refused nothing is reckoned.
    const QString total = t.textoDe("TxtTotal");
    guion.esperaMensaje("Error 6: El número es demasiado grande: importe");
    t.escribe("TxtBase", "9999999999999");
    t.tab();
    EXPECT_EQ(t.textoDe("TxtTotal"), total);
    EXPECT_EQ(t.enfocado(), "TxtBase");
    t.pulsa("CmdCancelar");
  });
  menu("MnuGrabarIVASoportado");
}

// Both outcomes of each tool on the screen, and the main window afterwards.
TEST_F(LibrosIVA, LasHerramientasDicenComoAcaban) {
  dialogo("MnuRenumerar", "FrmIVARenumera", [&](Teclado& t) {
    t.marca("ChkSoportado");
    guion.esperaMensaje("Tenga paciencia, este proceso puede ser costoso", "Atención");
    guion.esperaMensaje("Proceso terminado con exito", "Fín");
    t.pulsa("CmdAceptar");
  });
  dialogo("MnuEliminaAsientosIVA", "FrmEliminaAsientosIVA", [&](Teclado& t) {
    EXPECT_EQ(t.textosDe({"TxtCompras", "TxtVentas"}), (QStringList{"60000001", "70000001"}));
    t.pulsa("OptRepercutido");
    guion.esperaMensaje("No existen ningun registro en ese rango", "Error");
    t.pulsa("CmdAceptar");
    t.pulsa("OptRevisa");
    guion.esperaMensaje("Proceso terminado con exito", "Fín");
    t.pulsa("CmdAceptar");
  });
  EXPECT_EQ(valor("Select Count(*) from RSIVA"), "0");
  dialogo("MnuRevisarBases", "FrmIVARevisarBases", [&](Teclado& t) {
    guion.esperaMensaje("Tenga paciencia, este proceso puede ser costoso", "Atención");
    guion.esperaMensaje("No existe ningún registro de IVA", "Error");
    t.pulsa("CmdAceptar");
    EXPECT_TRUE(t.control("CmdAceptar").isEnabled());
    t.pulsa("CmdCancelar");
  });
}

}  // namespace
