// The dialog protocol: by which number a caller tells a dialog what it is wanted for.
//
// CodigoLlamada says what a dialog shall do, CodigoAccion which field a look-up answers to. Both
// stand in the session, are set by Formulario::mostrar or Formulario::consultar before the dialog
// is shown and put back after it. The numbers are those of the screens' own tables; one number may
// mean several things, each to a dialog of its own.
#pragma once

namespace llamada {
// Of any dialog that creates and changes rows: companies, cuentas, subcuentas, receipts.
inline constexpr int kAlta = 1;
inline constexpr int kModificacion = 2;
// Of FrmRecibos, besides those.
inline constexpr int kContabilizacion = 4;
// Of FrmIVASR.
inline constexpr int kIVASoportado = 6;
inline constexpr int kIVARepercutido = 7;
inline constexpr int kIVAModificacion = 8;
inline constexpr int kIVARevision = 99;  // a modification that is silent about foreign invoices
// Of FrmSelDirectorios: the setting that takes the folder.
inline constexpr int kCarpetaPrograma = 10;
inline constexpr int kCarpetaDatos = 11;
inline constexpr int kCarpetaCopias = 12;
// Of FrmCalendario: the field that takes the day.
inline constexpr int kFechaDelDiario = 20;
inline constexpr int kFechaDeBusqueda = 21;
inline constexpr int kFechaDePartida = 22;
}  // namespace llamada

namespace accion {
// Of FrmVisualizaPlan; without one the entry line alone takes the subcuenta.
inline constexpr int kIVAProveedor = 20;
inline constexpr int kIVACuenta = 22;
inline constexpr int kIVARecargo = 23;
inline constexpr int kIVAContrapartida = 24;
inline constexpr int kPartida = 25;
inline constexpr int kListadoDesde = 30;
inline constexpr int kListadoHasta = 31;
inline constexpr int kPerdidasYGanancias = 40;
inline constexpr int kCuadrar = 50;
inline constexpr int kReciboCuenta = 60;
inline constexpr int kReciboContrapartida = 61;
inline constexpr int kNominaSueldoBruto = 71;
inline constexpr int kNominaSSCargoEmpresa = 72;
inline constexpr int kNominaOrganismosSS = 73;
inline constexpr int kNominaRetenciones = 74;
inline constexpr int kNominaAnticipos = 75;
inline constexpr int kNominaRemuneraciones = 76;
inline constexpr int kNominaCaja = 77;
inline constexpr int kIntracomunitarioRepercutido = 81;
inline constexpr int kIntracomunitarioSoportado = 82;
inline constexpr int kIntracomunitarioRERepercutido = 83;
inline constexpr int kIntracomunitarioRESoportado = 84;
inline constexpr int kBanco = 91;
inline constexpr int kBancoContrapartida = 92;
// Of FrmTiposIVA.
inline constexpr int kTipoDeIVA = 21;
inline constexpr int kTipoDeIntracomunitario = 22;
}  // namespace accion
