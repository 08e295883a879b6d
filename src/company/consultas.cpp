#include "company/consultas.h"

namespace {

constexpr Consulta kConsultas[] = {
    {"SqlDiarioBuscaDescuadres",
     "SELECT SqlDiarioPrincipal.NAsiento, Sum(SqlDiarioPrincipal.Importe) AS SumaDeImporte From "
     "SqlDiarioPrincipal GROUP BY SqlDiarioPrincipal.NAsiento HAVING "
     "(((Sum(SqlDiarioPrincipal.Importe))<>0));"},
    {"SqlDiarioPrincipal",
     "SELECT Diario.NLinea, Diario.NAsiento, Diario.Fecha, Diario.Subcuenta, Diario.Descripcion, "
     "Diario.DH, Diario.Importe, Diario.Punteo, Diario.ApunteIVA, Diario.ApunteCartera, "
     "Diario.TipoDiario, IIf([DH]='D',[Importe],0) AS Debe, IIf([DH]='D',0,[Importe]) AS Haber, "
     "Diario.Saldo FROM Diario;"},
    {"SqlDiarioSaldosCuentasMeses",
     "SELECT SqlDiarioPrincipal.Subcuenta, Month([Fecha]) AS Mes, Sum(SqlDiarioPrincipal.Debe) AS "
     "SumaDeDebe, Sum(SqlDiarioPrincipal.Haber) AS SumaDeHaber From SqlDiarioPrincipal GROUP BY "
     "SqlDiarioPrincipal.Subcuenta, Month([Fecha]);"},
    {"SqlSumaDiario",
     "SELECT Sum(SqlDiarioPrincipal.Debe) AS SumaDeDebe, Sum(SqlDiarioPrincipal.Haber) AS "
     "SumaDeHaber FROM SqlDiarioPrincipal;"},
    {"SqlSumaDiarioPorAsientos",
     "SELECT SqlDiarioPrincipal.NAsiento, Sum(SqlDiarioPrincipal.Debe) AS SumaDeDebe, "
     "Sum(SqlDiarioPrincipal.Haber) AS SumaDeHaber From SqlDiarioPrincipal GROUP BY "
     "SqlDiarioPrincipal.NAsiento;"},
    {"SqlDiarioPrincipalBlanco",
     "SELECT Diario.NLinea, Diario.NAsiento, Diario.Fecha, Diario.Subcuenta, Diario.Descripcion, "
     "Diario.DH, Diario.Importe, Diario.Punteo, Diario.ApunteIVA, Diario.ApunteCartera, "
     "Diario.FacturaZuri, Diario.EmpresaZuri, Diario.TipoFactura, IIf([DH]='D',[Importe],'') AS "
     "Debe, IIf([DH]='D','',[Importe]) AS Haber, Diario.TipoDiario FROM Diario;"},
    {"SqlSumasSaldosN1",
     "SELECT Nivel01.NNivel, Nivel01.Descripcion, Sum(SqlDiarioPrincipal.Debe) AS SumaDeDebe, "
     "Sum(SqlDiarioPrincipal.Haber) AS SumaDeHaber, [Sumadedebe]+[Sumadehaber] AS SumaDeSaldo, "
     "IIf([SumaDeSaldo]>0,[SumaDeSaldo],0) AS SDeudor, IIf([SumaDeSaldo]<0,[SumaDeSaldo],0) AS "
     "SAcreedor, Month([Fecha]) AS Mes FROM Nivel01 INNER JOIN (Nivel02 INNER JOIN "
     "((SqlDiarioPrincipal INNER JOIN Subcuentas ON SqlDiarioPrincipal.Subcuenta = "
     "Subcuentas.Subcuenta) INNER JOIN Cuentas ON Subcuentas.Cuenta = Cuentas.Cuenta) ON "
     "Nivel02.NNivel = Cuentas.SubGrupoN) ON Nivel01.NNivel = Nivel02.NNivel01 GROUP BY "
     "Nivel01.NNivel, Nivel01.Descripcion, Month([Fecha]);"},
    {"SqlSumasSaldosN2",
     "SELECT Nivel02.NNivel, Nivel02.Descripcion, Sum(SqlDiarioPrincipal.Debe) AS SumaDeDebe, "
     "Sum(SqlDiarioPrincipal.Haber) AS SumaDeHaber, [Sumadedebe]+[Sumadehaber] AS SumaDeSaldo, "
     "IIf([SumaDeSaldo]>0,[SumaDeSaldo],0) AS SDeudor, IIf([SumaDeSaldo]<0,[SumaDeSaldo],0) AS "
     "SAcreedor, Month([Fecha]) AS Mes FROM Nivel02 INNER JOIN ((SqlDiarioPrincipal INNER JOIN "
     "Subcuentas ON SqlDiarioPrincipal.Subcuenta = Subcuentas.Subcuenta) INNER JOIN Cuentas ON "
     "Subcuentas.Cuenta = Cuentas.Cuenta) ON Nivel02.NNivel = Cuentas.SubGrupoN GROUP BY "
     "Nivel02.NNivel, Nivel02.Descripcion, Month([Fecha]) ORDER BY Nivel02.NNivel;"},
    {"SqlSumasSaldosN3",
     "SELECT Cuentas.Cuenta, Cuentas.Descripcion, Sum(SqlDiarioPrincipal.Debe) AS SumaDeDebe, "
     "Sum(SqlDiarioPrincipal.Haber) AS SumaDeHaber, [Sumadedebe]+[Sumadehaber] AS SumaDeSaldo, "
     "IIf([SumaDeSaldo]>0,[SumaDeSaldo],0) AS SDeudor, IIf([SumaDeSaldo]<0,[SumaDeSaldo],0) AS "
     "SAcreedor, Month([Fecha]) AS Mes FROM (SqlDiarioPrincipal INNER JOIN Subcuentas ON "
     "SqlDiarioPrincipal.Subcuenta = Subcuentas.Subcuenta) INNER JOIN Cuentas ON Subcuentas.Cuenta "
     "= Cuentas.Cuenta GROUP BY Cuentas.Cuenta, Cuentas.Descripcion, Month([Fecha]);"},
    {"SqlSumasSaldosN4",
     "SELECT SqlDiarioPrincipal.Subcuenta, Subcuentas.Descripcion, Sum(SqlDiarioPrincipal.Debe) AS "
     "SumaDeDebe, Sum(SqlDiarioPrincipal.Haber) AS SumaDeHaber, [Sumadedebe]+[Sumadehaber] AS "
     "SumaDeSaldo, IIf([SumaDeSaldo]>0,[SumaDeSaldo],0) AS SDeudor, "
     "IIf([SumaDeSaldo]<0,[SumaDeSaldo],0) AS SAcreedor, Month([Fecha]) AS Mes FROM "
     "SqlDiarioPrincipal INNER JOIN Subcuentas ON SqlDiarioPrincipal.Subcuenta = "
     "Subcuentas.Subcuenta GROUP BY SqlDiarioPrincipal.Subcuenta, Subcuentas.Descripcion, "
     "Month([Fecha]);"},
    {"SqlIva",
     "SELECT Left([RSIVA].[Codigo],1) AS TipoSR, RSIVA.Codigo, RSIVA.CliPro, "
     "Subcuentas.Descripcion, Subcuentas.Nif, RSIVA.Factura, RSIVA.Asiento, RSIVA.CtaIVA, "
     "RSIVA.FechaC, RSIVA.Fecha, RSIVA.CtaRE, RSIVA.CtaCon, RSIVA.Base, RSIVA.TipoIVA, "
     "TiposIVA.Descripcion, RSIVA.Base, RSIVA.PorcenIVA, RSIVA.IVA, RSIVA.PorcenREC, "
     "RSIVA.Recargo, RSIVA.Neto FROM (RSIVA INNER JOIN TiposIVA ON RSIVA.TipoIVA = "
     "TiposIVA.Codigo) INNER JOIN Subcuentas ON RSIVA.CliPro = Subcuentas.Subcuenta ORDER BY "
     "Left([RSIVA].[Codigo],1), RSIVA.Codigo, RSIVA.FechaC;"},
    {"SqlAcumulados",
     "SELECT Left([SqlIVA].[Codigo],1) AS Tipo, SqlIva.TipoIVA, SqlIva.TiposIVA.Descripcion, "
     "Month([Fecha]) AS Mes, Sum(SqlIva.Base) AS SumaDeBase, SqlIva.IVA, Sum(SqlIva.IVAImporte) AS "
     "SumaDeIVAImporte, SqlIva.RE, Sum(SqlIva.REImporte) AS SumaDeREImporte, Sum(SqlIva.Total) AS "
     "SumaDeTotal From SqlIva GROUP BY Left([SqlIVA].[Codigo],1), SqlIva.TipoIVA, "
     "SqlIva.TiposIVA.Descripcion, Month([Fecha]), SqlIva.IVA, SqlIva.RE ORDER BY "
     "Left([SqlIVA].[Codigo],1), SqlIva.TipoIVA, Month([Fecha]);"},
    {"SqlSubcuentas con saldo",
     "SELECT Subcuentas.Subcuenta, Subcuentas.Cuenta, Cuentas.Descripcion AS DescripcionCta, "
     "Subcuentas.Descripcion, Subcuentas.Direccion, Subcuentas.Provincia, Subcuentas.CP, "
     "Subcuentas.Poblacion, Subcuentas.Pais, Subcuentas.Nif, Subcuentas.Telefono, Subcuentas.Fax, "
     "Subcuentas.Gerente, SqlSubcuentasSaldosCuentas.SumaDeDebe, "
     "SqlSubcuentasSaldosCuentas.SumaDeHaber, SqlSubcuentasSaldosCuentas.SaldoFinal FROM "
     "(Subcuentas INNER JOIN SqlSubcuentasSaldosCuentas ON Subcuentas.Subcuenta = "
     "SqlSubcuentasSaldosCuentas.Subcuenta) INNER JOIN Cuentas ON Subcuentas.Cuenta = "
     "Cuentas.Cuenta;"},
    {"SqlSubcuentasSaldosCuentas",
     "SELECT SqlDiarioPrincipal.Subcuenta, Sum(SqlDiarioPrincipal.Debe) AS SumaDeDebe, "
     "Sum(SqlDiarioPrincipal.Haber) AS SumaDeHaber, "
     "Sum([SqlDiarioPrincipal].[Debe]+[SqlDiarioPrincipal].[Haber]) AS SaldoFinal From "
     "SqlDiarioPrincipal GROUP BY SqlDiarioPrincipal.Subcuenta;"},
    {"SqlDiarioSaldosCuentasTotal",
     "SELECT SqlDiarioPrincipal.Subcuenta, Left([Subcuenta],1) AS SubcuentaDos, "
     "Sum(SqlDiarioPrincipal.Debe) AS SumaDeDebe, Sum(SqlDiarioPrincipal.Haber) AS SumaDeHaber, "
     "Sum([Debe]+[Haber]) AS SaldoFinal From SqlDiarioPrincipal GROUP BY "
     "SqlDiarioPrincipal.Subcuenta, Left([Subcuenta],1);"},
    {"SqlPerdidasyGanancias",
     "SELECT SqlDiarioSaldosCuentasMeses.Mes, SqlDiarioSaldosCuentasMeses.Subcuenta, "
     "Subcuentas.Descripcion, Cuentas.Cuenta, Cuentas.Descripcion, Nivel02.NNivel, "
     "Nivel02.Descripcion, Nivel01.NNivel, Nivel01.Descripcion, "
     "SqlDiarioSaldosCuentasMeses.SumaDeDebe, SqlDiarioSaldosCuentasMeses.SumaDeHaber, "
     "[SumaDeDebe]+[SumaDeHaber] AS Saldo FROM (Nivel02 INNER JOIN Nivel01 ON Nivel02.NNivel01 = "
     "Nivel01.NNivel) INNER JOIN (Cuentas INNER JOIN (SqlDiarioSaldosCuentasMeses INNER JOIN "
     "Subcuentas ON SqlDiarioSaldosCuentasMeses.Subcuenta = Subcuentas.Subcuenta) ON "
     "Cuentas.Cuenta = Subcuentas.Cuenta) ON Nivel02.NNivel = Cuentas.SubGrupoN WHERE "
     "(((Nivel01.NNivel)>'5'));"},
    {"SqlBalance",
     "SELECT SqlDiarioSaldosCuentasMeses.Mes, SqlDiarioSaldosCuentasMeses.Subcuenta, "
     "Subcuentas.Descripcion, Cuentas.Cuenta, Cuentas.Descripcion, Nivel02.NNivel, "
     "Nivel02.Descripcion, Nivel01.NNivel, Nivel01.Descripcion, ActPas.Descripcion, "
     "SqlDiarioSaldosCuentasMeses.SumaDeDebe, SqlDiarioSaldosCuentasMeses.SumaDeHaber, "
     "[SumaDeDebe]+[SumaDeHaber] AS Saldo FROM ((Nivel02 INNER JOIN Nivel01 ON Nivel02.NNivel01 = "
     "Nivel01.NNivel) INNER JOIN (Cuentas INNER JOIN (SqlDiarioSaldosCuentasMeses INNER JOIN "
     "Subcuentas ON SqlDiarioSaldosCuentasMeses.Subcuenta = Subcuentas.Subcuenta) ON "
     "Cuentas.Cuenta = Subcuentas.Cuenta) ON Nivel02.NNivel = Cuentas.SubGrupoN) INNER JOIN ActPas "
     "ON Nivel01.ActPas = ActPas.ActPas WHERE (((Nivel01.NNivel)<'6'));"},
    {"Sql347",
     "SELECT RSIVA.CliPro, Subcuentas.Descripcion, Month([Fecha]) AS MiFecha, RSIVA.Factura, "
     "Sum(RSIVA.Base) AS SumaDeBase, TiposIVA.IVA, TiposIVA.RE, Subcuentas.Direccion, "
     "Subcuentas.Provincia, Subcuentas.CP, Subcuentas.Poblacion, Subcuentas.Pais, Subcuentas.Nif, "
     "Subcuentas.Telefono, Subcuentas.Fax, Subcuentas.Gerente FROM (RSIVA INNER JOIN TiposIVA ON "
     "RSIVA.TipoIVA = TiposIVA.Codigo) INNER JOIN Subcuentas ON RSIVA.CliPro = "
     "Subcuentas.Subcuenta GROUP BY RSIVA.CliPro, Subcuentas.Descripcion, Month([Fecha]), "
     "RSIVA.Factura, TiposIVA.IVA, TiposIVA.RE, Subcuentas.Direccion, Subcuentas.Provincia, "
     "Subcuentas.CP, Subcuentas.Poblacion, Subcuentas.Pais, Subcuentas.Nif, Subcuentas.Telefono, "
     "Subcuentas.Fax, Subcuentas.Gerente;"},
    {"SqlRecibos",
     "SELECT Recibos.Vencimiento, Recibos.Subcuenta, Subcuentas.Descripcion, Recibos.Titulo, "
     "Recibos.Factura, Recibos.Tipo, Recibos.Banco, Subcuentas_1.Descripcion, Recibos.Importe, "
     "Recibos.FraZuri, Recibos.CA FROM (Recibos INNER JOIN Subcuentas ON Recibos.Subcuenta = "
     "Subcuentas.Subcuenta) INNER JOIN Subcuentas AS Subcuentas_1 ON Recibos.Banco = "
     "Subcuentas_1.Subcuenta;"},
    {"SqlRegularizaStock",
     "SELECT Subcuentas.Subcuenta, Subcuentas.Descripcion, Diario.DH, Diario.Importe, "
     "IIf([DH]='D',[Importe],'0') AS Debe, IIf([DH]='D','0',[Importe]) AS Haber FROM Diario RIGHT "
     "JOIN Subcuentas ON Diario.Subcuenta = Subcuentas.Subcuenta GROUP BY Subcuentas.Subcuenta, "
     "Subcuentas.Descripcion, Diario.DH, Diario.Importe HAVING (((Subcuentas.Subcuenta) Like "
     "'30*'));"},
};

}  // namespace

std::span<const Consulta> consultasDeEmpresa() {
  return kConsultas;
}
