#include "reports/formula.h"

#include <gtest/gtest.h>

#include "foundation/data/errorejecucion.h"
#include "reports/consulta.h"
#include "reports/errores.h"

namespace {

QString traduce(const Formula::Referencia& c, bool) {
  return c.tabla.isEmpty() ? u'@' + c.campo : c.tabla + u'.' + c.campo;
}

int numeroDe(const QString& texto, Formula::Clase clase) {
  try {
    Formula(texto, clase).condicion(traduce);
  } catch (const ErrorEjecucion& e) {
    return e.numero();
  }
  return 0;
}

TEST(Formula, lasAceptadasSonCondiciones) {
  const auto lineas = Formula::Clase::Lineas, grupos = Formula::Clase::Grupos;
  const struct {
    Formula::Clase clase;
    const char* texto;
    const char* condicion;
  } casos[] = {
      {lineas, "", ""},
      {lineas, "  ", ""},
      {lineas, "{D.S}='43000001' and {D.F} >= date(2004,1,1) and {D.F} <= date(2004,12,31)",
       "((D.S = '43000001') and (D.F >= #1/1/2004#) and (D.F <= #12/31/2004#))"},
      {lineas, "{D.N}>=0 and {D.N}<=9999999999999", "((D.N >= 0) and (D.N <= 9999999999999))"},
      {lineas, "Left({Diario.Subcuenta},3) >= '000' and left({Diario.Subcuenta},3) <= '999'",
       "((Left(Diario.Subcuenta,3) >= '000') and (Left(Diario.Subcuenta,3) <= '999'))"},
      {lineas, "{@mes} >= 01 and {@Mes} <= 12", "((@mes >= 1) and (@Mes <= 12))"},
      {lineas, "{Sql con saldo.Subcuenta}>='a b (c), and {d}'",
       "(Sql con saldo.Subcuenta >= 'a b (c), and {d}')"},
      {lineas, "{T.A}='' or not ({T.B} > -2.50 and {T.C}<>'x')",
       "((T.A = '') or (not ((T.B > -2.50) and (T.C <> 'x'))))"},
      {lineas, "{T.A}=1 or {T.B}=2 and {T.C}=3", "((T.A = 1) or ((T.B = 2) and (T.C = 3)))"},
      {lineas, "({T.A}) = ({T.B})", "(T.A = T.B)"},
      {lineas, "{S.TipoSR}> 'A' and {@Mes}>=1", "((S.TipoSR > 'A') and (@Mes >= 1))"},
      {grupos, "Sum ({Q.B}, {Q.C})>=3005,06 and Sum ({Q.B}, {Q.C})>0",
       "((Sum(Q.B) >= 3005.06) and (Sum(Q.B) > 0))"},
      {grupos, "(Sum ({Q.B}, {Q.C}))<=-100 and Sum ({Q.B}, {Q.C})<0",
       "((Sum(Q.B) <= -100) and (Sum(Q.B) < 0))"},
  };
  for (const auto& c : casos) {
    EXPECT_EQ(Formula(QString::fromUtf8(c.texto), c.clase).condicion(traduce).toStdString(),
              c.condicion)
        << c.texto;
  }
}

TEST(Formula, lasRechazadasDanSuNumero) {
  const auto lineas = Formula::Clase::Lineas, grupos = Formula::Clase::Grupos;
  const struct {
    Formula::Clase clase;
    const char* texto;
    int numero;
  } casos[] = {
      // A quote that was typed into a value.
      {lineas, "{T.A}>='D'Ors' and {T.A}<='x'", err::kFormulaRechazada},
      {lineas, "{T.A}='O''Brien'", err::kFormulaRechazada},
      {lineas, "{T.A}='x' or '1'='1'", err::kFormulaRechazada},
      {lineas, "{T.A}='x' or 1=1", err::kFormulaRechazada},
      {lineas, "{T.A}='x'; DELETE FROM Diario", err::kFormulaRechazada},
      {lineas, "{T.A}='x", err::kFormulaRechazada},
      // A box left empty.
      {lineas, "{T.N}>= and {T.N}<=9", err::kFormulaRechazada},
      {grupos, "Sum ({Q.B}, {Q.C})>= and Sum ({Q.B}, {Q.C})>0", err::kFormulaRechazada},
      // Names that would leave their brackets, or aren't there.
      {lineas, "{T.A] or [T.B}=1", err::kFormulaRechazada},
      {lineas, "{SoloTabla}=1", err::kFormulaRechazada},
      {lineas, "{T.A=1", err::kFormulaRechazada},
      {lineas, "{@}=1", err::kFormulaRechazada},
      // Not conditions.
      {lineas, "{T.A}", err::kFormulaRechazada},
      {lineas, "{T.A}=1 and {T.B}", err::kFormulaRechazada},
      {lineas, "({T.A}=1)=({T.B}=2)", err::kFormulaRechazada},
      {lineas, "{T.A}=1 {T.B}=2", err::kFormulaRechazada},
      {lineas, "Sum({T.A},{T.B})>1", err::kFormulaRechazada},
      {lineas, "Shell('x')=1", err::kFormulaRechazada},
      {lineas, "Left({T.A},x)='1'", err::kFormulaRechazada},
      // Dates that aren't.
      {lineas, "{T.F}>=date(2004,2,31)", err::kTiposNoCoinciden},
      {lineas, "{T.F}>=date(2004,13,1)", err::kTiposNoCoinciden},
      {lineas, "{T.F}>=date(2004,2)", err::kFormulaRechazada},
  };
  for (const auto& c : casos) {
    EXPECT_EQ(numeroDe(QString::fromUtf8(c.texto), c.clase), c.numero) << c.texto;
  }
  EXPECT_EQ(numeroDe(QString(500, u'(') + QStringLiteral("{T.A}=1"), lineas),
            err::kFormulaRechazada);
}

TEST(Formula, unaFechaDeVentana) {
  EXPECT_EQ(fechaDeFormula(QStringLiteral("01/02/2004")), QStringLiteral("date(2004,2,1)"));
  for (const char* texto : {"", "31/02/2004", "hola"}) {
    try {
      fechaDeFormula(QString::fromLatin1(texto));
      ADD_FAILURE() << texto;
    } catch (const ErrorEjecucion& e) {
      EXPECT_EQ(e.numero(), err::kTiposNoCoinciden) << texto;
    }
  }
}

// The selection chooses the source, and goes into its clauses.
TEST(Consulta, laSeleccionEligeElOrigen) {
  const auto plantilla = reports::leePlantilla(QStringLiteral(R"([origen Diario]
columnas = Subcuenta, Sum(Debe) AS D
desde = Meses
donde = Mes < 13
campo Diario.Subcuenta = Meses.Subcuenta
formula Mes = Meses.Mes
agrupado = Meses.Subcuenta
orden = 1
[origen Niveles, Otra]
columnas = *
desde = Niveles
[detalle]
alto = 4
)"),
                                               {});
  const auto sentencia = [&](const char* lineas, const char* grupos = "") {
    return reports::consultaDe(plantilla, QString::fromUtf8(lineas), QString::fromUtf8(grupos))
        .sentencia.toStdString();
  };
  EXPECT_EQ(
      sentencia("{diario.subcuenta}>='1' and {@MES}=2", "Sum({Diario.Debe},{Diario.Subcuenta})>5"),
      "SELECT Subcuenta, Sum(Debe) AS D FROM Meses WHERE (Mes < 13) AND "
      "(((Meses.Subcuenta) >= '1') and ((Meses.Mes) = 2)) GROUP BY Meses.Subcuenta HAVING "
      "(Sum([Diario].[Debe]) > 5) ORDER BY 1");
  EXPECT_EQ(sentencia("{Niveles.NNivel}='1'"),
            "SELECT * FROM Niveles WHERE ([Niveles].[NNivel] = '1')");
  EXPECT_EQ(sentencia(""),
            "SELECT Subcuenta, Sum(Debe) AS D FROM Meses WHERE (Mes < 13) GROUP BY "
            "Meses.Subcuenta ORDER BY 1");
  for (const auto& [lineas, grupos] : {std::pair{"{Ajena.X}=1", ""},
                                       {"{Diario.X}=1 and {Niveles.X}=1", ""},
                                       {"{@Dia}=1", ""},
                                       {"", "Sum({Diario.Debe},{Diario.Mes})>5"}}) {
    try {
      sentencia(lineas, grupos);
      ADD_FAILURE() << lineas << grupos;
    } catch (const ErrorEjecucion& e) {
      EXPECT_EQ(e.numero(), err::kFormulaRechazada) << lineas << grupos;
    }
  }
}

}  // namespace
