#include "company/sesionempresa.h"

#include <utility>

#include "common/ignorar.h"
#include "engine/filas.h"

namespace {

constexpr int kNombre = 1;

struct CampoTexto {
  int ordinal;
  QString Sesion::*variable;
};

constexpr CampoTexto kTextos[] = {
    {kNombre, &Sesion::EmpresaActual}, {4, &Sesion::DireccionEmpresa},
    {5, &Sesion::ProvinciaEmpresa},    {6, &Sesion::CPEmpresa},
    {7, &Sesion::PoblacionEmpresa},    {8, &Sesion::PaisEmpresa},
    {9, &Sesion::NifEmpresa},          {10, &Sesion::TelefonoEmpresa},
    {11, &Sesion::FaxEmpresa},         {12, &Sesion::GerenteEmpresa},
    {16, &Sesion::CuentaIVA1},         {17, &Sesion::CuentaProveedores},
    {18, &Sesion::SubcuentaCompras},   {19, &Sesion::CuentaIVA2},
    {20, &Sesion::CuentaClientes},     {21, &Sesion::SubcuentaVentas},
    {23, &Sesion::FechaNoModificar},   {27, &Sesion::MascaraImporte},
    {28, &Sesion::SimboloMoneda},      {32, &Sesion::CuentaIVA3},
    {33, &Sesion::CuentaIVA4},
};

struct CampoNumero {
  int ordinal;
  int Sesion::*variable;
};

constexpr CampoNumero kNumeros[] = {
    {2, &Sesion::AnoActual},  {14, &Sesion::DigitosCuenta},   {15, &Sesion::DigitosSubcuenta},
    {22, &Sesion::MesInicio}, {24, &Sesion::ContadorAsiento},
};

}  // namespace

void leeEmpresa(Recordset& empresa, Sesion& sesion) {
  sesion.FechaNoModificar.clear();
  for (const CampoTexto& campo : kTextos)
    ignorando([&] { sesion.*campo.variable = empresa.Fields(campo.ordinal).text(); });
  for (const CampoNumero& campo : kNumeros) {
    ignorando(
        [&] { sesion.*campo.variable = static_cast<int>(empresa.Fields(campo.ordinal).toLong()); });
  }
  ignorando([&] { sesion.FechaCreacionEmpresa = empresa.Fields(3).Value().date(); });
  ignorando([&] { sesion.CapitalSocialEmpresa = empresa.Fields(13).number(); });
  ignorando([&] { sesion.LimpiarAsiento = empresa.Fields(25).Value().toBool(); });
  ignorando([&] { sesion.ControlarAsiento = empresa.Fields(26).Value().toBool(); });
}

QString leeEmpresa(Recordset& empresa, Sesion& sesion, const QString& elegida) {
  sesion.EmpresaActual = elegida;
  leeEmpresa(empresa, sesion);
  const QString escrita = std::exchange(sesion.EmpresaActual, elegida);
  if (escrita.compare(elegida, Qt::CaseInsensitive) == 0) {
    sesion.EmpresaActual = escrita;
    return {};
  }
  ignorando([&] {
    empresa.Edit();
    completa(empresa, [&] { empresa.Fields(kNombre) = elegida; });
  });
  return escrita;
}

bool empresaCerrada(const Sesion& sesion) {
  return sesion.FechaNoModificar == QStringLiteral("31/12/%1").arg(sesion.AnoActual);
}
