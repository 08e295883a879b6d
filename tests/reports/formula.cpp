#include "reports/formula.h"

#include "reports/consulta.h"
#include "reports/errores.h"
#include "soporte/prueba.h"

namespace {

using Clase = Formula::Clase;

QString condicionDe(const QString& texto, Clase clase) {
  return Formula(texto, clase).condicion([](const Formula::Referencia& c, bool) {
    return c.tabla.isEmpty() ? '@' + c.campo : c.tabla + '.' + c.campo;
  });
}

TEST(Formula, SonCondicionesOSeRechazan) {
  EXPECT_EQ(condicionDe("  ", Clase::Lineas), "");
  QStringList lineas = lineasDeDatos("formulas.txt");
  while (!lineas.isEmpty()) {
    const QString linea = lineas.takeFirst(), texto = linea.section(": ", 1);
    const Clase clase = linea.startsWith("grupos: ") ? Clase::Grupos : Clase::Lineas;
    if (linea.startsWith("no: "))
      EXPECT_ERROR(err::kFormulaRechazada, condicionDe(texto, clase)) << qPrintable(linea);
    else
      EXPECT_EQ(condicionDe(texto, clase), lineas.takeFirst()) << qPrintable(linea);
  }
  EXPECT_ERROR(err::kFormulaRechazada, condicionDe(QString(500, '(') + "{T.A}=1", Clase::Lineas));
  for (const char* texto : {"{T.F}>=date(2004,2,31)", "{T.F}>=date(2004,13,1)"})
    EXPECT_ERROR(err::kTiposNoCoinciden, condicionDe(texto, Clase::Lineas));
  // What a book is chosen by is told if it is a code, and not the letter of a register.
  EXPECT_EQ(Formula("{D.S}='43000001' and {D.F}>=date(2004,1,1)").codigos(), "43000001");
  EXPECT_EQ(Formula("{D.T}='S' and {D.N}>=1 and {D.N}<=9").codigos(), "");
  // The text of a date box.
  EXPECT_EQ(fechaDeFormula("01/02/2004"), "date(2004,2,1)");
  EXPECT_ERROR(err::kTiposNoCoinciden, fechaDeFormula("hola"));
}

// Counting asks for some columns only, with those that they are made from.
TEST(Consulta, leeSoloLasColumnasPedidas) {
  const auto plantilla = reports::leePlantilla(
      "[origen T]\ncolumnas = A, IIf(B='x, (y',A,0) AS [C], [C]*2 AS E, T.F\ndesde = T\n"
      "[detalle]\nalto = 4\n",
      {});
  const auto consulta = reports::consultaDe(plantilla, {}, {});
  std::vector<int> sitio;
  EXPECT_EQ(consulta.sentenciaCorta({2}, &sitio),
            "SELECT IIf(B='x, (y',A,0) AS [C], [C]*2 AS E FROM T");
  EXPECT_EQ(sitio, std::vector<int>({-1, 0, 1, -1}));
  EXPECT_EQ(consulta.sentenciaCorta({3, 0}, &sitio), "SELECT A, T.F FROM T");
}

// The selection chooses the source, and goes into its clauses.
TEST(Consulta, LaSeleccionEligeElOrigen) {
  const auto plantilla = reports::leePlantilla(R"([origen Diario]
columnas = Subcuenta, Sum(Debe) AS D
desde = Meses
donde = Mes < 13
campo Diario.Subcuenta = Meses.Subcuenta
formula Mes = Meses.Mes
agrupado = Year(X), [meses.subcuenta]
orden = 1
[origen Niveles, Otra]
columnas = *
desde = Niveles
[detalle]
alto = 4
)",
                                               {});
  const auto sentencia = [&](const char* lineas, const char* grupos = "") {
    return reports::consultaDe(plantilla, lineas, grupos).sentencia();
  };
  EXPECT_EQ(
      sentencia("{diario.subcuenta}>='1' and {@MES}=2", "Sum({Diario.Debe},{Diario.Subcuenta})>5"),
      "SELECT Subcuenta, Sum(Debe) AS D FROM Meses WHERE (Mes < 13) AND "
      "((Meses.Subcuenta) >= '1') AND ((Meses.Mes) = 2) GROUP BY Year(X), [meses.subcuenta] "
      "HAVING "
      "(Sum([Diario].[Debe]) > 5) ORDER BY 1");
  EXPECT_EQ(sentencia("{Niveles.NNivel}='1'"),
            "SELECT * FROM Niveles WHERE ([Niveles].[NNivel] = '1')");
  for (const auto& falta : {std::pair{"{Ajena.X}=1", ""},
                            {"{Diario.X}=1 and {Niveles.X}=1", ""},
                            {"{@Dia}=1", ""},
                            {"", "Sum({Diario.Debe},{Diario.Mes})>5"}})
    EXPECT_ERROR(err::kFormulaRechazada, sentencia(falta.first, falta.second))
        << falta.first << falta.second;
}

}  // namespace
