// The session: what the settings file and the open company's row say, read by every form.
//
// Filled from Config.ini at login and from the one row of Empresa at each opening of a company.
// Settings changed later reach it only where a form says so.
#pragma once

#include <QDate>
#include <QString>

struct Sesion {
  // The installation.
  QString VersionPrograma;
  QString DirPrograma;
  QString DirDatos;          // with its final backslash, so that paths are plain concatenations
  QString UsuariosPermitir;  // "Si" or "No"
  QString UltimoUsuario;
  QString UltimaEmpresa;
  QString DecimalOrigen;
  QString DecimalDestino;
  QString VersionConfig;

  QString UsuarioActual;
  QString EmpresaActual;  // name of the company and of its folder

  // The open company.
  int AnoActual = 0;
  QDate FechaCreacionEmpresa;
  QString DireccionEmpresa;
  QString ProvinciaEmpresa;
  QString CPEmpresa;
  QString PoblacionEmpresa;
  QString PaisEmpresa;
  QString NifEmpresa;
  QString TelefonoEmpresa;
  QString FaxEmpresa;
  QString GerenteEmpresa;
  double CapitalSocialEmpresa = 0;
  int DigitosCuenta = 0;
  int DigitosSubcuenta = 0;
  QString CuentaIVA1;
  QString CuentaProveedores;
  QString SubcuentaCompras;
  QString CuentaIVA2;
  QString CuentaClientes;
  QString SubcuentaVentas;
  int MesInicio = 0;
  QString FechaNoModificar;  // text, empty for no limit
  int ContadorAsiento = 0;
  bool LimpiarAsiento = false;
  bool ControlarAsiento = false;
  QString MascaraImporte;
  QString SimboloMoneda;
  QString CuentaIVA3;
  QString CuentaIVA4;

  // The dialog protocol: set by the caller before a dialog is shown, cleared by it afterwards.
  int CodigoLlamada = 0;
  int CodigoAccion = 0;
  QString ValorElegido;
  QString MarcaPunteo;

  QString rutaEmpresa() const { return rutaEmpresa(EmpresaActual); }
  QString rutaEmpresa(const QString& empresa) const {
    return DirDatos + empresa + QStringLiteral("\\Conta.MDB");
  }
  QString rutaCatalogo() const { return DirDatos + QStringLiteral("Inicio.mdb"); }
};
