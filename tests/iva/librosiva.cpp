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
  // Of each kind of line, those that the data tell.
  static void compara(const QString& clase, const LibroImpreso& libro) {
    for (const QStringList& c : casosDeDatos("librosiva.txt", clase))
      EXPECT_EQ(con(libro, c[0]), c.mid(1)) << qPrintable(c[0]);
  }
};

TEST_F(LibrosIVA, CadaLibroConSuSignoYSusTotalesPorTipos) {
  const auto soportado =
      libro("MnuLibroSR", "FrmIVASRLibros", [](Teclado& t) { t.elige("TxtHasta", "03-Marzo"); });
  EXPECT_EQ(soportado.titulo, "Acumulados de IVA");
  EXPECT_EQ(soportado.paginas.size(), 1);
  compara("soportado", soportado);

  const auto ambos =
      libro("MnuLibroSR", "FrmIVASRLibros", [](Teclado& t) { t.pulsa("OptLibro_2"); });
  EXPECT_EQ(ambos.paginas.size(), 2);
  compara("ambos", ambos);

  const auto vacio = libro("MnuLibroSR", "FrmIVASRLibros", [](Teclado& t) {
    t.elige("TxtDesde", "06-Junio");
    t.elige("TxtHasta", "03-Marzo");
  });
  EXPECT_EQ(con(vacio, "No hay nada").size(), 1);
}

TEST_F(LibrosIVA, AcumuladosPorMesesYTipos) {
  const auto acumulados = libro("MnuAcumuladosIVA", "FrmIVAAcumulados", [](Teclado&) {});
  EXPECT_EQ(acumulados.titulo, "Acumulados de IVA");
  compara("acumulados", acumulados);
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
