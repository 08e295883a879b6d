#include <QAction>

#include "common/funciones.h"
#include "journal/frmmenu.h"
#include "start/menu/tablamenu.h"
#include "toolkit/protocolo.h"
#include "toolkit/registro.h"
#include "ui_frmmenu.h"

// Says so if none is open.
bool FrmMenu::hayEmpresa() {
  if (DtaEmpresaActual_.isOpen()) return true;
  mensaje(QStringLiteral("No hay ninguna empresa abierta: elija una, o cree otra con \"Nueva "
                         "empresa\" en el menú Archivo"),
          QStringLiteral("Error"));
  return false;
}

// True when the condition of an entry holds, once the user has read or answered its notice.
bool FrmMenu::permiteEntrada(const EntradaMenu& entrada) {
  // What is for a company that can't be opened still is for one.
  const bool deAlguna = entrada.accion == AccionMenu::Sale && sesion().EmpresaActual.isEmpty();
  if ((pideEmpresa(entrada) || deAlguna) && !hayEmpresa()) return false;
  const QString aviso = entrada.aviso.toString();
  const QString titulo = entrada.titulo.toString();
  switch (entrada.condicion) {
    case CondicionMenu::Ninguna:
      return true;
    case CondicionMenu::SubcuentaEntera:
      if (ui_->TxtSubcuenta->text().size() == sesion().DigitosSubcuenta) return true;
      mensaje(aviso, titulo);
      return false;
    case CondicionMenu::ApunteElegido:
      return apunteElegido();
    case CondicionMenu::Aceptado:
      mensaje(aviso, titulo, Icono::Alto);
      return true;
    case CondicionMenu::Preguntado:
      return pregunta(aviso, titulo);
  }
  return false;
}

void FrmMenu::ejecutaEntrada(const EntradaMenu& entrada) {
  if (!permiteEntrada(entrada)) return;
  const QString destino = entrada.destino.toString();
  switch (entrada.accion) {
    case AccionMenu::Modal:
      mostrar(destino, entrada.codigoLlamada,
              entrada.condicion == CondicionMenu::SubcuentaEntera ? ui_->TxtSubcuenta->text()
                                                                  : QString());
      if (entrada.codigoLlamada == llamada::kIVASoportado ||
          entrada.codigoLlamada == llamada::kIVARepercutido) {
        muestraApuntesNuevos();
      }
      if (destino == u"FrmEmpresas" || destino == u"FrmConfiguracion") refrescaEmpresa();
      return;
    case AccionMenu::Sale:
      ctx.formularios->cambiarA(destino);
      return;
    case AccionMenu::Rutina:
      ejecutaRutina(entrada.control);
      return;
    case AccionMenu::Programa:
    case AccionMenu::ProgramaYTermina:
      if (entrada.control == u"MnuEspeciales") enfocar(ui_->TxtSubcuenta);
      ctx.ejecutar(
          AjustaBarra(sesion().DirPrograma) + destino,
          entrada.argumento.isEmpty() ? QStringList() : QStringList(entrada.argumento.toString()));
      if (entrada.accion == AccionMenu::ProgramaYTermina) termina();
      return;
    case AccionMenu::Menu:
    case AccionMenu::Nada:
      return;
  }
}

void FrmMenu::ejecutaRutina(QStringView control) {
  static constexpr std::pair<QStringView, void (FrmMenu::*)()> kRutinas[] = {
      {u"MnuSalir", &FrmMenu::MnuSalir_Click},
      {u"MnuEliminarapunte", &FrmMenu::MnuEliminarapunte_Click},
      {u"MnuEliminarPartida", &FrmMenu::MnuEliminarPartida_Click},
      {u"MnuModificarApunte", &FrmMenu::MnuModificarApunte_Click},
      {u"MnuDescuadre", &FrmMenu::MnuDescuadre_Click},
      {u"CmdRecargar", &FrmMenu::CmdRecargar_Click},
  };
  for (const auto& [nombre, rutina] : kRutinas) {
    if (nombre == control) (this->*rutina)();
  }
}

// A journal that doesn't square deserves a harder question.
void FrmMenu::MnuSalir_Click() {
  const bool cuadra = totales_.cuadra(PanelTotales::Total, sesion().MascaraImporte);
  const bool salir = cuadra
                         ? pregunta(QStringLiteral("¿ Deseas salir de Librano ?"),
                                    QStringLiteral("Salida de Librano"))
                         : pregunta(QStringLiteral("¿ Tiene descuadres en el diario desea salir ?"),
                                    QStringLiteral("Atención"), Icono::Alto);
  if (salir) termina();
}
