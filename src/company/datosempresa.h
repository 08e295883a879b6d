// The settings of a company as its screen holds them: texts, one for each field of Empresa.
#pragma once

#include <QString>

class Recordset;

// The accounts that a company's entries of IVA go to, by field of Empresa.
struct CuentasIVA {
  QString IVASSub;
  QString IVASPro;
  QString IVASCom;
  QString IVARSub;
  QString IVARCli;
  QString IVARVen;
  QString IVASRE;
  QString IVARRE;

  bool operator==(const CuentasIVA&) const = default;
};

struct DatosEmpresa : CuentasIVA {
  QString NombreEmpresa;
  QString Ano;
  QString FechaCreacion;
  QString Direccion;
  QString Provincia;
  QString CP;
  QString Poblacion;
  QString Pais;
  QString Nif;
  QString Telefono;
  QString Fax;
  QString Gerente;
  QString CapitalSocial;
  QString MayorN01;  // digits of a cuenta
  QString SubCuN01;  // digits of a subcuenta
  QString MesInicio;
  QString NoModificar;  // empty for no limit
  QString Asiento;
  bool Limpiar = false;
  bool Controlar = false;
  QString Mascara;
  QString Simbolo;

  bool operator==(const DatosEmpresa&) const = default;
};

// The row on show as texts. A field that can't be read is empty.
DatosEmpresa leeDatosEmpresa(Recordset& empresa);

// Sets the fields of a row being added or edited. A value that its field refuses, such as letters
// in the tax number, is lost without a word and the rest is kept.
void escribeDatosEmpresa(Recordset& empresa, const DatosEmpresa& datos);

// The accounts that a company of these widths begins with.
//
// A cuenta is the first `digitosCuenta` digits of its place in the national plan; a subcuenta adds
// zeros and a 1 up to `digitosSubcuenta`. Raises 5 when there is no room for that 1.
//   CalculaCuentas(3, 8).IVASSub == "47200001"
CuentasIVA CalculaCuentas(int digitosCuenta, int digitosSubcuenta);
