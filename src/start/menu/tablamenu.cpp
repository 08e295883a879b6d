#include "start/menu/tablamenu.h"

#include <algorithm>

namespace {

using enum AccionMenu;

constexpr QStringView kRiesgoNiveles =
    u"La modificación de los niveles puede suponer un gran riesgo para el correcto funcionamiento "
    u"de "
    u"Librano";
constexpr QStringView kSinExtracto =
    u"Para visualizar un extracto tiene que tener una cuenta en el diario";
constexpr QStringView kSinAcumulado =
    u"Para visualizar un acumulado tiene que tener una cuenta en el diario";
constexpr QStringView kSeCerrara =
    u"Atención Librano se cerrara ahora, tendrá que volver a reiniciarlo a continuación";

// clang-format off
constexpr EntradaMenu kMenu[] = {
    {.control = u"MnuArchivo", .rotulo = u"&Archivo", .accion = Menu},
    {.control = u"MnuNuevaEmpresa", .rotulo = u"&Nueva empresa", .padre = u"MnuArchivo", .accion = Modal, .destino = u"FrmEmpresas", .codigoLlamada = 1},
    {.control = u"MnuModificaEmpresa", .rotulo = u"&Modifica empresa", .padre = u"MnuArchivo", .accion = Modal, .destino = u"FrmEmpresas", .codigoLlamada = 2},
    {.control = u"MnuGuardarCopiaComo", .rotulo = u"&Guardar empresa como", .padre = u"MnuArchivo", .accion = Sale, .destino = u"FrmGuardarEmpresa"},
    {.control = u"MnuImportarDesde", .rotulo = u"Importar desde", .padre = u"MnuArchivo", .accion = Menu, .separa = true},
    {.control = u"MnuImportContanet", .rotulo = u"ContaNet", .padre = u"MnuImportarDesde", .accion = Modal, .destino = u"FrmImportarContanet"},
    {.control = u"MnuImportContaplus", .rotulo = u"ContaPlus", .padre = u"MnuImportarDesde", .accion = Modal, .destino = u"FrmImportarContaplus"},
    {.control = u"MnuImportaARS", .rotulo = u"Contage ( ARS )", .padre = u"MnuImportarDesde", .accion = Nada},
    {.control = u"MnuExportar", .rotulo = u"Exportar", .padre = u"MnuArchivo", .accion = Sale, .destino = u"FrmExportaEmpresa"},
    {.control = u"MnuSalir", .rotulo = u"Salir", .padre = u"MnuArchivo", .accion = Rutina, .separa = true},

    {.control = u"MnuEdicion", .rotulo = u"&Edición", .accion = Menu},
    {.control = u"MnuEliminarapunte", .rotulo = u"Eliminar apunte marcado", .padre = u"MnuEdicion", .accion = Rutina},
    {.control = u"MnuEliminarPartida", .rotulo = u"Eliminar partida", .padre = u"MnuEdicion", .accion = Rutina},
    {.control = u"MnuModificarApunte", .rotulo = u"Modificar partida", .padre = u"MnuEdicion", .accion = Rutina},
    {.control = u"MnuDuplicaAsiento", .rotulo = u"Duplicar asiento", .padre = u"MnuEdicion", .accion = Modal, .destino = u"FrmDuplicarAsiento", .condicion = CondicionMenu::ApunteElegido, .aviso = kSinApunte, .titulo = u"Error", .separa = true},
    {.control = u"MnuCambiaAsientos", .rotulo = u"Cambia asientos masivamente", .padre = u"MnuEdicion", .accion = Modal, .destino = u"FrmCambiadatos"},
    {.control = u"MnuLocalizarPor", .rotulo = u"Localizar por", .padre = u"MnuEdicion", .accion = Menu, .separa = true},
    {.control = u"MnuLocApuntes", .rotulo = u"Apuntes", .padre = u"MnuLocalizarPor", .accion = Modal, .destino = u"FrmBusApu"},
    {.control = u"MnuLocCodigo", .rotulo = u"Código", .padre = u"MnuLocalizarPor", .accion = Modal, .destino = u"FrmBusSub", .atajo = u"Ctrl+F"},
    {.control = u"MnuLocFecha", .rotulo = u"Fecha", .padre = u"MnuLocalizarPor", .accion = Modal, .destino = u"FrmBusFec"},
    {.control = u"MnuLocAsiento", .rotulo = u"Asiento", .padre = u"MnuLocalizarPor", .accion = Modal, .destino = u"FrmBusAsi"},
    {.control = u"MnuLocDescripcion", .rotulo = u"Descripcion", .padre = u"MnuLocalizarPor", .accion = Modal, .destino = u"FrmBusDes"},
    {.control = u"MnuDescuadre", .rotulo = u"Descuadre", .padre = u"MnuLocalizarPor", .accion = Rutina, .atajo = u"F8"},
    {.control = u"MnuLocImporte", .rotulo = u"Importe", .padre = u"MnuLocalizarPor", .accion = Modal, .destino = u"FrmBusImp"},

    {.control = u"MnuHerramientas", .rotulo = u"&Herramientas", .accion = Menu},
    {.control = u"MnuConfiguracion", .rotulo = u"Configuración", .padre = u"MnuHerramientas", .accion = Modal, .destino = u"FrmConfiguracion"},
    {.control = u"MnuReindexar", .rotulo = u"Reindexar", .padre = u"MnuHerramientas", .accion = Sale, .destino = u"FrmReindexa", .separa = true},
    {.control = u"MnuRepararEmpresa", .rotulo = u"Reparar y compactar empresa", .padre = u"MnuHerramientas", .accion = Sale, .destino = u"FrmReparaEmpresa"},
    {.control = u"CmdCompruebaEmpresa", .rotulo = u"Comprueba empresa", .padre = u"MnuHerramientas", .accion = Modal, .destino = u"FrmCompruebaEmpresa"},
    {.control = u"MnuActualiza", .rotulo = u"Actualizaciones Internet", .padre = u"MnuHerramientas", .accion = ProgramaYTermina, .destino = u"Actualiza.exe", .condicion = CondicionMenu::Preguntado, .aviso = kSeCerrara, .titulo = u"Salir de Librano", .separa = true},
    {.control = u"MnuCopiasSeguridad", .rotulo = u"Copias de seguridad", .padre = u"MnuHerramientas", .accion = Sale, .destino = u"FrmCopias"},

    {.control = u"MnuPlan", .rotulo = u"&Plan", .accion = Menu},
    {.control = u"MnuVisualizarPlan", .rotulo = u"Visualizar plan", .padre = u"MnuPlan", .accion = Modal, .destino = u"FrmVisualizaPlan", .atajo = u"F2"},
    {.control = u"MnuMayores", .rotulo = u"Mayores", .padre = u"MnuPlan", .accion = Menu},
    {.control = u"MnuNivel01", .rotulo = u"Nivel 01", .padre = u"MnuMayores", .accion = Modal, .destino = u"FrmNivel1", .condicion = CondicionMenu::Aceptado, .aviso = kRiesgoNiveles, .titulo = u"Atención"},
    {.control = u"MnuNivel02", .rotulo = u"Nivel 02", .padre = u"MnuMayores", .accion = Modal, .destino = u"FrmNivel2", .condicion = CondicionMenu::Aceptado, .aviso = kRiesgoNiveles, .titulo = u"Atención"},
    {.control = u"MnuCuentas", .rotulo = u"Cuentas", .padre = u"MnuMayores", .accion = Modal, .destino = u"FrmCuentasLista"},
    {.control = u"MnuExtractos", .rotulo = u"Extractos contables", .padre = u"MnuPlan", .accion = Modal, .destino = u"FrmExtractosPantalla", .condicion = CondicionMenu::SubcuentaEntera, .aviso = kSinExtracto, .titulo = u"Error de selección", .atajo = u"F3", .separa = true},
    {.control = u"MnuAcumulados", .rotulo = u"Acumulados de cuenta", .padre = u"MnuPlan", .accion = Modal, .destino = u"FrmAcumulados", .condicion = CondicionMenu::SubcuentaEntera, .aviso = kSinAcumulado, .titulo = u"Error de selección"},

    {.control = u"MnuDiario", .rotulo = u"&Diario", .accion = Menu},
    {.control = u"MnuImprimirDiario", .rotulo = u"Imprimir", .padre = u"MnuDiario", .accion = Modal, .destino = u"FrmDiarioImprimir"},
    {.control = u"MnuCompruebaFechasAsientos", .rotulo = u"Comprobar fechas en diario", .padre = u"MnuDiario", .accion = Modal, .destino = u"FrmCompruebaFechasAsientos", .separa = true},
    {.control = u"MnuCuadrarAsientosAutomaticamente", .rotulo = u"Cuadrar asientos automáticamente", .padre = u"MnuDiario", .accion = Modal, .destino = u"FrmCuadrarAsientos"},
    {.control = u"MnuRegularizacionStock", .rotulo = u"Regularización Stocks", .padre = u"MnuDiario", .accion = Modal, .destino = u"FrmRegularizaStocks", .separa = true},
    {.control = u"MnuRegularizacionPG", .rotulo = u"Regularizacion Perdidas y ganancias", .padre = u"MnuDiario", .accion = Modal, .destino = u"FrmPerdidasyGanacias"},
    {.control = u"MnuCierre", .rotulo = u"Cierre", .padre = u"MnuDiario", .accion = Modal, .destino = u"FrmCierre"},
    {.control = u"MnuRenumeraDiario", .rotulo = u"Renumerar diario", .padre = u"MnuDiario", .accion = Modal, .destino = u"FrmRenumera"},
    {.control = u"MnuInvertirCierre", .rotulo = u"Modificar fecha de cierre", .padre = u"MnuDiario", .accion = Modal, .destino = u"FrmInvertirCierre"},
    {.control = u"MnuApertura", .rotulo = u"Apertura", .padre = u"MnuDiario", .accion = Modal, .destino = u"FrmApertura"},

    {.control = u"MnuBalanceS", .rotulo = u"&Balances", .accion = Menu},
    {.control = u"MnuPerdidasyGanancias", .rotulo = u"Explotación (Perdidas y ganancias)", .padre = u"MnuBalanceS", .accion = Modal, .destino = u"FrmPerdidasYGananciasImpresos"},
    {.control = u"MnuSumasysaldos", .rotulo = u"Sumas y saldos", .padre = u"MnuBalanceS", .accion = Modal, .destino = u"FrmSumasSaldosImpresos"},
    {.control = u"MnuBalanceSituacion", .rotulo = u"Situación ( General )", .padre = u"MnuBalanceS", .accion = Modal, .destino = u"FrmBalanceImpresos"},
    {.control = u"Mnu347", .rotulo = u"347", .padre = u"MnuBalanceS", .accion = Modal, .destino = u"Frm347"},
    {.control = u"MnuEspeciales", .rotulo = u"Especiales en Excel", .padre = u"MnuBalanceS", .accion = Programa, .destino = u"ejecutar", .argumento = u"excel", .separa = true},
    {.control = u"MnuBalMobiles", .rotulo = u"Balances a moviles", .padre = u"MnuBalanceS", .accion = Programa, .destino = u"Durnal.exe"},

    {.control = u"MnuIVA", .rotulo = u"&IVA", .accion = Menu},
    {.control = u"MnuGrabarIVASoportado", .rotulo = u"Grabar IVA Soportado", .padre = u"MnuIVA", .accion = Modal, .destino = u"FrmIVASR", .codigoLlamada = 6, .atajo = u"F6"},
    {.control = u"MnuIVARepercutido", .rotulo = u"Grabar IVA Repercutido", .padre = u"MnuIVA", .accion = Modal, .destino = u"FrmIVASR", .codigoLlamada = 7, .atajo = u"F7"},
    {.control = u"MnuIntercomunitario", .rotulo = u"Grabar Intercomunitario", .padre = u"MnuIVA", .accion = Modal, .destino = u"FrmIVAIntercomunitario"},
    {.control = u"MnuAcumuladosIVA", .rotulo = u"Acumulados", .padre = u"MnuIVA", .accion = Modal, .destino = u"FrmIVAAcumulados", .separa = true},
    {.control = u"MnuLibroSR", .rotulo = u"Libros Soportado/Repercutido", .padre = u"MnuIVA", .accion = Modal, .destino = u"FrmIVASRLibros"},
    {.control = u"MnuTiposIVA", .rotulo = u"Tipos de IVA", .padre = u"MnuIVA", .accion = Modal, .destino = u"FrmTiposIVA"},
    {.control = u"MnuRenumerar", .rotulo = u"Renumerar IVA", .padre = u"MnuIVA", .accion = Modal, .destino = u"FrmIVARenumera", .separa = true},
    {.control = u"MnuEliminaAsientosIVA", .rotulo = u"Eliminar asientos con IVA", .padre = u"MnuIVA", .accion = Modal, .destino = u"FrmEliminaAsientosIVA"},
    {.control = u"MnuRevisarBases", .rotulo = u"Revisar bases de IVA", .padre = u"MnuIVA", .accion = Modal, .destino = u"FrmIVARevisarBases"},

    {.control = u"MnuExtra", .rotulo = u"E&xtra", .accion = Menu},
    {.control = u"MnuNominas", .rotulo = u"Crea asiento de nomina", .padre = u"MnuExtra", .accion = Modal, .destino = u"FrmNomina"},
    {.control = u"MnuCartera", .rotulo = u"Cartera de efectos", .padre = u"MnuExtra", .accion = Modal, .destino = u"FrmRecibosLista"},

    {.control = u"MnuGestionComercial", .rotulo = u"Gestión comercial", .accion = Menu},
    {.control = u"MnuArticulos", .rotulo = u"Articulos", .padre = u"MnuGestionComercial", .accion = Modal, .destino = u"FrmArticulos"},
    {.control = u"MnuVenFacturas", .rotulo = u"Facturas clientes", .padre = u"MnuGestionComercial", .accion = Modal, .destino = u"FrmGesFacCli"},
    {.control = u"MnuComFacturas", .rotulo = u"Facturas proveedores", .padre = u"MnuGestionComercial", .accion = Nada},
    {.control = u"MnuAlmacen", .rotulo = u"Almacen", .padre = u"MnuGestionComercial", .accion = Nada},
    {.control = u"MnuRupturasdeStock", .rotulo = u"Rupturas de stock", .padre = u"MnuGestionComercial", .accion = Nada},
    {.control = u"MnuImpresos", .rotulo = u"Impresos", .padre = u"MnuGestionComercial", .accion = Nada},
    {.control = u"MnuGesConfig", .rotulo = u"Configuración", .padre = u"MnuGestionComercial", .accion = Nada},

    {.control = u"MnuOficial", .rotulo = u"&Oficial", .accion = Menu},
    {.control = u"MnuPlan2007", .rotulo = u"Plan de 2007", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmPlan2007"},
    {.control = u"MnuConversion2007", .rotulo = u"Conversión al plan de 2007", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmConversion2007"},
    {.control = u"MnuBalancePymes", .rotulo = u"Balance (PYMES)", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmEstados", .codigoLlamada = 1, .separa = true},
    {.control = u"MnuResultadosPymes", .rotulo = u"Pérdidas y ganancias (PYMES)", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmEstados", .codigoLlamada = 2},
    {.control = u"MnuTiposPorFechas", .rotulo = u"Tipos de IVA por fechas", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmTiposPorFechas", .separa = true},
    {.control = u"MnuDatosRegistros", .rotulo = u"Datos de los registros de IVA", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmDatosRegistros"},
    {.control = u"MnuModelo303", .rotulo = u"Modelo 303", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmModelo303"},
    {.control = u"MnuModelo347", .rotulo = u"Modelo 347 (fichero)", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmModelo347"},
    {.control = u"MnuLibrosRegistro", .rotulo = u"Libros registro", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmLibrosRegistro"},
    {.control = u"MnuNorma43", .rotulo = u"Norma 43", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmNorma43", .separa = true},
    {.control = u"MnuRevision", .rotulo = u"Lista de revisión", .padre = u"MnuOficial", .accion = Modal, .destino = u"FrmRevision"},

    // Both stand in the bar itself: a menu that held the second would start the help each time it opened.
    {.control = u"MnuAyuda", .rotulo = u"&Ayuda", .accion = Programa, .destino = u"Ejecutar", .argumento = u"Librano.chm", .atajo = u"F1"},
    {.control = u"MnuAcercade", .rotulo = u"Acerca de...", .accion = Modal, .destino = u"FrmAcercaDe"},
};

constexpr BotonMenu kBotones[] = {
    {.control = u"CmdPlan", .ayuda = u"Visualiza Plan", .igualQue = u"MnuVisualizarPlan", .icono = u":/iconos/plan.svg"},
    {.control = u"CmdExtractos", .ayuda = u"Visualiza extractos", .igualQue = u"MnuExtractos", .icono = u":/iconos/extracto.svg"},
    {.control = u"CmdAcumulados", .ayuda = u"Visualiza acumulados", .igualQue = u"MnuAcumulados", .icono = u":/iconos/acumulado.svg"},
    {.control = u"CmdIVASoportado", .ayuda = u"Apunte de IVA soportado", .igualQue = u"MnuGrabarIVASoportado", .icono = u":/iconos/iva-soportado.svg", .separa = true},
    {.control = u"CmdIVARepercutido", .ayuda = u"Apunte de IVA Repercutido", .igualQue = u"MnuIVARepercutido", .icono = u":/iconos/iva-repercutido.svg"},
    {.control = u"CmdRecibo", .ayuda = u"Gestión de recibos", .igualQue = u"MnuCartera", .icono = u":/iconos/recibo.svg"},
    {.control = u"Command13", .ayuda = u"Crea asiento de nomina", .igualQue = u"MnuNominas", .icono = u":/iconos/nomina.svg"},
    {.control = u"CmdModificaApunte", .ayuda = u"Modifica una partida", .igualQue = u"MnuModificarApunte", .icono = u":/iconos/modificar.svg", .separa = true},
    {.control = u"CmdEliminarPartida", .ayuda = u"Elimina la partida marcada", .igualQue = u"MnuEliminarPartida", .icono = u":/iconos/eliminar-partida.svg"},
    {.control = u"CmdEliminarApunte", .ayuda = u"Elimina el apunte marcado", .igualQue = u"MnuEliminarapunte", .icono = u":/iconos/eliminar-apunte.svg"},
    {.control = u"CmdRecargar", .ayuda = u"Visualizar todo el diario", .igualQue = u"CmdRecargar", .icono = u":/iconos/recargar.svg", .separa = true, .atajo = u"F5"},
    {.control = u"CmdCopias", .ayuda = u"Copias de seguridad", .igualQue = u"MnuCopiasSeguridad", .icono = u":/iconos/copia.svg", .separa = true},
    {.control = u"CmdConfiguracion", .ayuda = u"Configuración", .igualQue = u"MnuConfiguracion", .icono = u":/iconos/configuracion.svg"},
    {.control = u"CmdSalir", .ayuda = u"Salir", .igualQue = u"MnuSalir", .icono = u":/iconos/salir.svg"},

    {.control = u"CmdPunteo", .ayuda = u"Localice los asientos no punteados", .igualQue = u"MnuLocApuntes", .icono = u":/iconos/buscar-punteo.svg", .sitio = SitioBoton::Columna, .rotulo = u"P"},
    {.control = u"CmdCodigo", .ayuda = u"Localiza por una subcuenta", .igualQue = u"MnuLocCodigo", .icono = u":/iconos/buscar-codigo.svg", .sitio = SitioBoton::Columna, .rotulo = u"Código"},
    {.control = u"CmdFecha", .ayuda = u"Localiza por una fecha", .igualQue = u"MnuLocFecha", .icono = u":/iconos/buscar-fecha.svg", .sitio = SitioBoton::Columna, .rotulo = u"Fecha"},
    {.control = u"CmdAsiento", .ayuda = u"Localiza por un numero de asiento", .igualQue = u"MnuLocAsiento", .icono = u":/iconos/buscar-asiento.svg", .sitio = SitioBoton::Columna, .rotulo = u"Asiento"},
    {.control = u"CmdDescripcion", .ayuda = u"Localiza por una descripción", .igualQue = u"MnuLocDescripcion", .icono = u":/iconos/buscar-descripcion.svg", .sitio = SitioBoton::Columna, .rotulo = u"Descripción"},
    {.control = u"CmdDescuadres", .ayuda = u"Localiza descuadres", .igualQue = u"MnuDescuadre", .icono = u":/iconos/buscar-descuadre.svg", .sitio = SitioBoton::Columna, .rotulo = u"Descuadres"},
    {.control = u"CmdImporte", .ayuda = u"Localiza importes", .igualQue = u"MnuLocImporte", .icono = u":/iconos/buscar-importe.svg", .sitio = SitioBoton::Columna, .rotulo = u"Importe"},
};
// clang-format on

}  // namespace

std::span<const EntradaMenu> menuPrincipal() {
  return kMenu;
}

const EntradaMenu* entradaMenu(QStringView control) {
  const auto it = std::ranges::find(kMenu, control, &EntradaMenu::control);
  return it == std::end(kMenu) ? nullptr : it;
}

bool pideEmpresa(const EntradaMenu& entrada) {
  static constexpr QStringView kDeLaEmpresa[] = {
      u"MnuModificaEmpresa", u"MnuGuardarCopiaComo", u"MnuImportarDesde",
      u"MnuExportar",        u"MnuEdicion",          u"MnuPlan",
      u"MnuDiario",          u"MnuBalanceS",         u"MnuIVA",
      u"MnuExtra",           u"MnuGestionComercial", u"MnuOficial",
      u"MnuReindexar",       u"CmdCompruebaEmpresa"};
  for (const EntradaMenu* e = &entrada; e; e = entradaMenu(e->padre))
    if (std::ranges::find(kDeLaEmpresa, e->control) != std::end(kDeLaEmpresa)) return true;
  return false;
}

std::span<const BotonMenu> botonesPrincipal() {
  return kBotones;
}
