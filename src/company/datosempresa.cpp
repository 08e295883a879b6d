#include "company/datosempresa.h"

#include "common/errorejecucion.h"
#include "common/ignorar.h"
#include "engine/recordset.h"

namespace {

constexpr struct {
  int ordinal;
  QString DatosEmpresa::*texto;
} kTextos[] = {
    {1, &DatosEmpresa::NombreEmpresa},
    {2, &DatosEmpresa::Ano},
    {3, &DatosEmpresa::FechaCreacion},
    {4, &DatosEmpresa::Direccion},
    {5, &DatosEmpresa::Provincia},
    {6, &DatosEmpresa::CP},
    {7, &DatosEmpresa::Poblacion},
    {8, &DatosEmpresa::Pais},
    {9, &DatosEmpresa::Nif},
    {10, &DatosEmpresa::Telefono},
    {11, &DatosEmpresa::Fax},
    {12, &DatosEmpresa::Gerente},
    {13, &DatosEmpresa::CapitalSocial},
    {14, &DatosEmpresa::MayorN01},
    {15, &DatosEmpresa::SubCuN01},
    {16, &DatosEmpresa::IVASSub},
    {17, &DatosEmpresa::IVASPro},
    {18, &DatosEmpresa::IVASCom},
    {19, &DatosEmpresa::IVARSub},
    {20, &DatosEmpresa::IVARCli},
    {21, &DatosEmpresa::IVARVen},
    {22, &DatosEmpresa::MesInicio},
    {23, &DatosEmpresa::NoModificar},
    {24, &DatosEmpresa::Asiento},
    {27, &DatosEmpresa::Mascara},
    {28, &DatosEmpresa::Simbolo},
    {32, &DatosEmpresa::IVASRE},
    {33, &DatosEmpresa::IVARRE},
};

constexpr struct {
  int ordinal;
  bool DatosEmpresa::*marca;
} kMarcas[] = {{25, &DatosEmpresa::Limpiar}, {26, &DatosEmpresa::Controlar}};

}  // namespace

DatosEmpresa leeDatosEmpresa(Recordset& empresa) {
  DatosEmpresa datos;
  for (const auto& campo : kTextos)
    ignorando([&] { datos.*campo.texto = empresa.Fields(campo.ordinal).text(); });
  for (const auto& campo : kMarcas)
    ignorando([&] { datos.*campo.marca = empresa.Fields(campo.ordinal).Value().toBool(); });
  return datos;
}

void escribeDatosEmpresa(Recordset& empresa, const DatosEmpresa& datos) {
  for (const auto& campo : kTextos)
    ignorando([&] { empresa.Fields(campo.ordinal) = datos.*campo.texto; });
  for (const auto& campo : kMarcas)
    ignorando([&] { empresa.Fields(campo.ordinal) = datos.*campo.marca; });
}

CuentasIVA CalculaCuentas(int digitosCuenta, int digitosSubcuenta) {
  const int ceros = digitosSubcuenta - digitosCuenta - 1;
  if (ceros < 0) throw ErrorEjecucion(err::kLlamadaNoValida);
  const auto cuenta = [=](const char* modelo) {
    return QString(QLatin1String(modelo)).left(digitosCuenta);
  };
  const auto subcuenta = [=](const char* modelo) {
    return cuenta(modelo) + QString(ceros, u'0') + u'1';
  };
  return {.IVASSub = subcuenta("472000000"),
          .IVASPro = cuenta("400000000"),
          .IVASCom = subcuenta("600000000"),
          .IVARSub = subcuenta("477000000"),
          .IVARCli = cuenta("430000000"),
          .IVARVen = subcuenta("700000000"),
          .IVASRE = subcuenta("475000000"),
          .IVARRE = subcuenta("473000000")};
}
