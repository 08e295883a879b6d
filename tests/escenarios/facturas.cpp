// A day of invoices over the quarter's books, by keys: after each of them the register, the
// journal, the counters and the trial balance are what they must be.
#include "escenarios/herramientas.h"

namespace {

const QString kPregunta =
    "La partida que introduce corresponde a un apunte de IVA ¿desea crear un asiento de Iva "
    "%1 en este momento?";
const QString kDeAlmirel =
    "Atención esta factura se ha creado con Almirel, No sera posible su modificación, solo desde "
    "Almirel.";
const QString kActivar =
    "¿ Desea activar el boton de aceptar para modificar esta partida ?, bajo su responsabilidad "
    "puesto que esta partida ha sido creada con Almirel";

class Facturas : public DiarioDelTrimestre {
 protected:
  // What is typed for a supplier's or customer's invoice: the subcuenta is finished after its
  // cuenta, the day of the asiento is that of the invoice.
  static Campos tecleado(const QString& quien, const QString& numero, const QString& base,
                         const QString& tipo) {
    return {{"TxtCodigoProveedor", quien},
            {"TxtNumFactura", numero},
            {"TxtFecha", "1503"},
            {"TxtBase", base},
            {"TxtIva", tipo}};
  }
  void factura(const char* entrada, const Campos& campos) {
    herramienta(entrada, [&](Teclado& d) {
      rellena(d, campos);
      acepta(d);
    });
  }
  // A row of the register, its fields joined.
  QString fila(const QString& codigo) const {
    const auto leidas = filas(
        "Select CliPro, Factura, Base, TipoIVA, Asiento, CtaIVA, FechaC, Fecha, CtaRE, CtaCon, "
        "IVA, Recargo, PorcenIVA, PorcenREC, Neto from RSIVA where Codigo='" +
        codigo + "'");
    return leidas.size() == 1 ? leidas[0].join('|') : QString::number(leidas.size()) + " filas";
  }
  QString contadores() const {
    return Escenario::fila("Select Asiento, NLinDiario, NLinIVAS, NLinIVAR from Empresa");
  }
  // The journal's line of an asiento opened for change as a bookkeeper does, by Enter on it.
  void modifica(int asiento, const std::function<void(Teclado&)>& paso) {
    enLinea(asiento, 0);
    guion.esperaDialogo("FrmIVASR", paso);
    t->intro();
  }
  static QStringList cuentas(const Teclado& d) {
    QStringList textos;
    for (const char* campo : {"TxtBase", "TxtImporteIva", "TxtRecargo", "TxtTotal"})
      textos << d.textoDe(campo).trimmed();
    return textos;
  }
};

TEST_F(Facturas, UnaCompraDesdeLaLineaDeEntrada) {
  // The line of the purchase and that of its IVA are begun as if there were no invoice.
  teclea({{}, "15/03/2024", "60000001", "Compra", "900", {}});
  ASSERT_EQ(t->textoDe("TxtAsiento"), "121");
  t->teclea("47200001");
  t->enfoca("TxtAsiento");
  guion.esperaPregunta(kPregunta.arg("Soportado"), true, "IVA");
  guion.esperaDialogo("FrmIVASR", [&](Teclado& d) {
    EXPECT_EQ(d.forma().windowTitle(), "Asiento de IVA Soportado (Alta)");
    EXPECT_EQ(d.textosDe({"LblProveedor", "TxtAsientoContable", "TxtNOrden", "TxtContDescripcion"}),
              (QStringList{"Código proveedor", "121", "1", "Compras"}));
    EXPECT_EQ(lee().size(), 312u);  // what was begun is gone, but for its number
    siguiente = 313;
    // By Enter alone, from box to box.
    EXPECT_EQ(d.enfocado(), "TxtNOrden");
    for (const char* texto : {"", "00003", "A-100", "1503", "", "1000.5", "03", "", "", "", "", "",
                              "", "1803", "", ""}) {
      d.teclea(texto);
      if (d.enfocado() == "TxtImporteIva") {
        EXPECT_EQ(d.textoDe("TXTIVADescripcion"), "Normal S/R");
        EXPECT_EQ(d.textoDe("TxtPorcenIVA"), "16 %");
        EXPECT_EQ(d.textoDe("LblAvisoTipo"),  // told, and posted all the same
                  "El 16 % de IVA rigió hasta el 30/06/2010, no el 15/03/2024 (fechas sin "
                  "confirmar)");
        EXPECT_EQ(cuentas(d), QStringList({"1.000,50", "160,08", "0,00", "1.160,58"}));
      }
      d.intro();
    }
  });
  t->intro();
  anota(121, "18/03/2024", "De su fra.A-100 Papelera del Norte, S.A.",
        {{"60000001", 1000.5}, {"47200001", 160.08}, {"40000003", -1160.58}});
  comprueba();
  EXPECT_EQ(fila("S0000000001"),
            "40000003|A-100|1000,5|03|121|47200001|18/03/2024|15/03/2024|47500001|60000001|160,08|"
            "0|16|0|1160,58");
  EXPECT_EQ(contadores(), "122|316|1|0");
  // The asiento is on show and every panel tells what is in the file.
  EXPECT_EQ(rejilla().filas(), 3);
  EXPECT_EQ(t->textosDe({"TxtAsientoDescuadre", "TxtMarcadoDebe", "TxtTotalDescuadre"}),
            (QStringList{"0,00 ", "1.160,58 ", "0,00 "}));

  // The first asiento is the opening: a Yes there takes no line of it away.
  for (const char* clase : {"Soportado", "Repercutido"}) {
    t->escribe("TxtSubcuenta", *clase == 'S' ? "47200001" : "47700001");
    t->escribe("TxtAsiento", "1");
    guion.esperaPregunta(kPregunta.arg(clase), true, "IVA");
    guion.esperaDialogo("FrmIVASR", [&](Teclado& d) {
      EXPECT_EQ(d.forma().windowTitle(), QString("Asiento de IVA %1 (Alta)").arg(clase));
      EXPECT_EQ(d.textoDe("TxtAsientoContable"), "1");
      d.escape();
    });
    t->intro();
    comprueba();
  }
}

TEST_F(Facturas, UnTotalHaciaAtrasYUnaCuotaTecleadaEncima) {
  herramienta("MnuGrabarIVASoportado", [&](Teclado& d) {
    rellena(d, tecleado("00001", "T-1", "", "07"));
    rellena(d, {{"TxtTotal", "99.99"}});
    d.intro();
    EXPECT_EQ(cuentas(d), QStringList({"83,33", "13,33", "3,33", "99,99"}));
    // One whose base comes out a cent off; passing through the field again leaves it alone.
    d.atras();
    d.entra("0.19");
    EXPECT_EQ(cuentas(d), QStringList({"0,16", "0,03", "0,01", "0,20"}));
    d.atras();
    d.intro();
    EXPECT_EQ(cuentas(d), QStringList({"0,16", "0,03", "0,01", "0,20"}));
    // The account of the recargo takes no point, and Cancelar no look-up.
    rellena(d, {{"TxtCuentaRecargo", "475.1"}});
    guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.escape(); });
    d.intro();
    EXPECT_EQ(d.enfocado(), "TxtCuentaRecargo");
    EXPECT_EQ(d.textoDe("TxtCuentaRecargo"), "475.1");
    d.pulsa("CmdCancelar");
  });
  EXPECT_EQ(contadores(), "121|312|0|0");

  herramienta("MnuGrabarIVASoportado", [&](Teclado& d) {
    d.pulsa("ChkNoCalcula");
    rellena(d, tecleado("00001", "T-2", "100", "03"));
    // The paper says another quota: nothing else follows it, and nothing the total.
    rellena(d, {{"TxtImporteIva", "16.01"}});
    d.intro();
    EXPECT_EQ(cuentas(d), QStringList({"100,00", "16,01", "0,00", "116,00"}));
    rellena(d, {{"TxtTotal", "116.01"}});
    d.intro();
    EXPECT_EQ(cuentas(d), QStringList({"100,00", "16,01", "0,00", "116,01"}));
    d.enfoca("TxtRecargo");
    // What is no amount becomes zero.
    rellena(d, {{"TxtRecargo", ""}});
    acepta(d);
  });
  anota(121, "15/03/2024", "De su fra.T-2 Suministros Ebro, S.L.",
        {{"60000001", 100}, {"47200001", 16.01}, {"40000001", -116.01}});
  comprueba();
  // Opened again the quota is what follows from the base.
  modifica(121, [&](Teclado& d) {
    EXPECT_EQ(cuentas(d), QStringList({"100,00", "16,00", "0,00", "116,00"}));
    d.llega("CmdCancelar");
    d.intro();
  });
  comprueba();
}

TEST_F(Facturas, VariosTiposEnUnAsientoYUnCambioPosterior) {
  factura("MnuIVARepercutido", tecleado("00002", "20", "100", "03"));
  Campos segunda = tecleado("00002", "20", "200", "02");
  segunda.insert(segunda.begin() + 3, {"TxtAsientoContable", "121"});
  factura("MnuIVARepercutido", segunda);
  anota(121, "15/03/2024", "De su fra.20 Colegio San Blas",
        {{"70000001", -100},
         {"47700001", -16},
         {"43000002", 116},
         {"70000001", -200},
         {"47700001", -14},
         {"43000002", 214}});
  comprueba();
  EXPECT_EQ(contadores(), "122|318|0|2");

  // The rate has risen since. The change takes the asiento whole, and the first row only.
  cambia("Select * from TiposIVA where Codigo='03'", "IVA", 18);
  modifica(121, [&](Teclado& d) {
    EXPECT_EQ(d.forma().windowTitle(), "Asiento de IVA Repercutido (Modificación)");
    EXPECT_EQ(d.textosDe({"LblProveedor", "TxtNOrden"}), (QStringList{"Código cliente", "1"}));
    for (const char* campo : {"TxtNOrden", "TxtAsientoContable"})
      EXPECT_FALSE(d.control(campo).isEnabled()) << campo;
    EXPECT_EQ(cuentas(d), QStringList({"100,00", "18,00", "0,00", "118,00"}));
    rellena(d, {{"TxtNumFactura", "-bis"}, {"TxtFecha", "1603"}});
    EXPECT_EQ(d.textoDe("TxtCDescripcion"), "Colegio San Blas");
    acepta(d);
  });
  sinAsiento(121);
  anota(121, "16/03/2024", "De su fra.20-bis Colegio San Blas",
        {{"70000001", -100}, {"47700001", -18}, {"43000002", 118}});
  comprueba();
  EXPECT_EQ(fila("R0000000001"),
            "43000002|20-bis|-100|03|121|47700001|16/03/2024|16/03/2024|47300001|70000001|-18|0|18|"
            "0|-118");
  EXPECT_EQ(fila("R0000000002").section('|', 2, 4), "-200|02|121");
  EXPECT_EQ(contadores(), "122|321|0|2");
  EXPECT_EQ(t->textoDe("TxtMarcadoDebe"), "118,00 ");
}

TEST_F(Facturas, UnaFacturaDelProgramaComercial) {
  factura("MnuIVARepercutido", tecleado("00001", "Z9", "10", "03"));
  anota(121, "15/03/2024", "De su fra.Z9 Almacenes Ruiz",
        {{"70000001", -10}, {"47700001", -1.6}, {"43000001", 11.6}});
  cambiaLinea(312, "FacturaZuri", "Z9");
  cambiaLinea(312, "EmpresaZuri", "Zuri");
  const auto mira = [&](Teclado& d) {
    EXPECT_FALSE(d.control("CmdAceptar").isEnabled());
    EXPECT_EQ(d.control("LblNOrden").toolTip(),
              "Pulsando <Ctrl>+Click editara facturas creadas con Almirel");
  };
  const auto pulsaRotulo = [](Teclado& d, Qt::KeyboardModifiers modificadores) {
    QTest::mouseClick(&d.control("LblNOrden"), Qt::LeftButton, modificadores);
  };
  enLinea(121, 0);
  guion.esperaDialogo("FrmIVASR", [&](Teclado& d) {
    mira(d);
    pulsaRotulo(d, Qt::NoModifier);
    pulsaRotulo(d, Qt::ControlModifier | Qt::ShiftModifier);
    for (const bool si : {false, true}) {
      guion.esperaPregunta(kActivar, si, "Atención");
      pulsaRotulo(d, Qt::ControlModifier);
      EXPECT_EQ(d.control("CmdAceptar").isEnabled(), si);
    }
    pulsaRotulo(d, Qt::ControlModifier);  // asks nothing any more
    acepta(d);
  });
  guion.esperaMensaje(kDeAlmirel, "Almirel");
  t->intro();
  sinAsiento(121);
  anota(121, "15/03/2024", "De su fra.Z9 Almacenes Ruiz",
        {{"70000001", -10}, {"47700001", -1.6}, {"43000001", 11.6}});
  comprueba();
  EXPECT_EQ(filas("Select FacturaZuri, EmpresaZuri from Diario where NAsiento=121"),
            Filas(3, {"Z9", "Zuri"}));

  // For the review of the bases it opens without a word.
  ctx.sesion.CodigoLlamada = 99;
  ctx.sesion.ValorElegido = "121";
  guion.esperaDialogo("FrmIVASR", [&](Teclado& d) {
    mira(d);
    d.cierra();
  });
  formularios->mostrar("FrmIVASR");

  // Lines without a row in the register can't be opened as an invoice.
  cambia("Select * from RSIVA", "Asiento", 999);
  enLinea(121, 0);
  guion.esperaDialogo("FrmIVASR", [](Teclado&) {});
  guion.esperaMensaje(
      "Este registro no tiene un IVA asociado seguramente habra habido un error en el traspaso de "
      "Almirel, se procede a la modificacion manual",
      "Error");
  t->intro();
  comprueba();
}

TEST_F(Facturas, UnaAdquisicionIntracomunitaria) {
  herramienta("MnuIntercomunitario", [&](Teclado& d) {
    EXPECT_EQ(d.forma().windowTitle(), "Asiento de intercomunitario");
    EXPECT_EQ(d.textoDe("TxtRESoportado"), "47200001");
    EXPECT_EQ(d.textoDe("LblRERepercutido"), "Iva repercutido");
    rellena(d, {{"TxtFecha", "2003"}, {"TxtAsientoContable", "7"}, {"TxtIva", "07"}});
    guion.esperaMensaje("No se puede realizar una partida si no tiene IVA", "Error");
    acepta(d);
    EXPECT_EQ(d.textoDe("TxtPorcenRec"), "4 %");
    EXPECT_TRUE(d.textoDe("LblAvisoTipo").contains(", no el 20/03/2024"));
    EXPECT_EQ(d.textoDe("TxtImporteIva"), "0,00 ");
    d.enfoca("TxtFecha");
    rellena(d, {{"TxtImporteIva", "160"}, {"TxtRecargo", "40"}});
    acepta(d);
  });
  anota(121, "20/03/2024", "Intra.De su fra.Intercomunitario",
        {{"47200001", 160}, {"47200001", 40}, {"47700001", -160}, {"47700001", -40}});
  comprueba();
  EXPECT_EQ(fila("S0000000001"),
            "47200001|Intercomunitario|0|07|121|47200001|20/03/2024|20/03/2024|47200001|47700001|"
            "160|40|16|4|0");
  EXPECT_EQ(fila("R0000000002"),
            "47700001|Intercomunitario|0|07|121|47700001|20/03/2024|20/03/2024|47700001|47200001|"
            "-160|-40|16|4|0");
  EXPECT_EQ(contadores(), "122|316|0|2");
  EXPECT_EQ(rejilla().filas(), 316);

  enLinea(121, 2);
  guion.esperaMensaje(
      "No puede modificar una partida creada con IVA intracomunitario, elimine la partida y cree "
      "una nueva",
      "Partida intracomunitaria");
  t->intro();
}

// Each accept that fails tells it, keeps what was typed, and goes through once the cause is gone.
TEST_F(Facturas, UnaAceptacionQueFallaSeDiceYSePuedeRepetir) {
  factura("MnuGrabarIVASoportado", tecleado("00001", "F-1", "100", "03"));
  anota(121, "15/03/2024", "De su fra.F-1 Suministros Ebro, S.L.",
        {{"60000001", 100}, {"47200001", 16}, {"40000001", -116}});
  herramienta("MnuGrabarIVASoportado", [&](Teclado& d) {
    rellena(d, {{"TxtNOrden", "1"}});
    rellena(d, tecleado("00002", "F-2", "50", "03"));
    const auto sigueIgual = [&] {
      EXPECT_EQ(d.enfocado(), "CmdAceptar");
      EXPECT_EQ(d.textosDe({"TxtNumFactura", "TxtAsientoContable", "TxtTotal"}),
                (QStringList{"F-2", "Auto--", "58,00 "}));
      comprueba();
    };
    guion.esperaMensaje("Error 3022: Ya hay una factura de IVA Soportado con el número de orden 1.",
                        "Librano");
    acepta(d);
    sigueIgual();
    EXPECT_EQ(d.textoDe("TxtNOrden"), "1");
    EXPECT_EQ(contadores(), "123|315|1|0");  // an asiento's number, once taken, is spent

    d.enfoca("TxtNOrden");
    rellena(d, {{"TxtNOrden", "3"}});
    d.llega("CmdAceptar");
    guion.esperaMensaje(errorEnCaja(3043, ctx.sesion.rutaEmpresa()) +
                            ". Se ha deshecho lo último anotado, que no llegó a guardarse (cambios "
                            "deshechos: 0)",
                        "Librano");
    std::optional<DiscoLleno> lleno(std::in_place);
    d.intro();
    lleno.reset();
    sigueIgual();
    EXPECT_EQ(contadores(), "123|315|1|0");
    d.intro();
  });
  anota(123, "15/03/2024", "De su fra.F-2 Textiles Martín e Hijos",
        {{"60000001", 50}, {"47200001", 8}, {"40000002", -58}});
  comprueba();
  EXPECT_EQ(contadores(), "124|318|3|0");
}

}  // namespace
