// The main window, where a bookkeeper spends the day: the journal above, one entry line under it,
// the running totals beside it, and every other form a menu entry away.
//
// A line is one partida of the journal, written and safe the moment it is posted; lines of one
// number make an asiento, which may stand out of balance for as long as the bookkeeper likes. What
// the window does at a key costs the same in a journal of ten lines and of a million.
//
// Its reactions stand in a file each: the window and its company, its look, the entries of the
// menu, the entry line, the journal on show, the Ayudante.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "journal/widgets/paneltotales.h"
#include "toolkit/formulario.h"
#include "toolkit/principal.h"

namespace Ui {
class FrmMenu;
}
class CampoSubcuenta;
class MenuPrincipal;
struct EntradaMenu;

class FrmMenu : public Formulario, public Principal {
  Q_OBJECT
 public:
  explicit FrmMenu(Contexto& contexto);
  ~FrmMenu() override;

  void Form_Load() override;
  void Form_Activate() override;
  void done(int resultado) override;
  void resizeEvent(QResizeEvent* evento) override;
  void changeEvent(QEvent* evento) override;

  QWidget* ventana() override { return this; }
  DataControl& DtaEmpresaActual() override { return DtaEmpresaActual_; }
  DataControl& DtaDiarioLista() override { return DtaDiarioLista_; }
  DataControl& DtaIVA() override { return DtaIVA_; }
  QLineEdit& TxtAsiento() override;
  QLineEdit& TxtSubcuenta() override;
  QLineEdit& TxtNombreCuenta() override;
  QProgressBar& Bar() override;
  bool punteoVisible() const override;
  void ATotal() override;
  void ACuenta() override;
  void AAsiento() override;
  void AMarcado() override;
  void diarioCambiado() override;
  void EmpresaCerrada() override;
  void CmdLinAsiento_Click() override;
  void TxtSubcuenta_LostFocus() override;

 protected:
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void conectaVentana();
  void conectaLinea();
  void conectaDiario();
  void conectaAyudante();

  // --- the window and its company (frmmenu.cpp) ---
  void TxtEmpresa_Change();
  void TxtEmpresa_Click();
  void abreEmpresa(const QString& nombre);
  void ofreceConceptos();
  void anotaCambioDeNombre(const QString& otra);
  void refrescaEmpresa();
  void avisaDeVersion();
  void termina();

  // --- its look (frmmenu_aspecto.cpp) ---
  void preparaAspecto();
  void ponGeometria();
  void guardaGeometria();
  void alineaBusqueda();
  void ajustaAnchos();
  void ajustaAlAncho();

  // --- the entries of the menu (frmmenu_menu.cpp) ---
  void ejecutaEntrada(const EntradaMenu& entrada);
  bool permiteEntrada(const EntradaMenu& entrada);
  bool hayEmpresa();
  void ejecutaRutina(QStringView control);
  void MnuSalir_Click();

  // --- the entry line (frmmenu_linea.cpp) ---
  void TxtAsiento_KeyPress(Tecla& tecla);
  void TxtAsiento_LostFocus();
  void TxtFecha_LostFocus();
  void TxtNombreCuenta_KeyPress(Tecla& tecla);
  void TxtNombreCuenta_LostFocus();
  void TxtDebeHaber_GotFocus();
  void TxtDebeHaber_KeyPress(Tecla& tecla);
  void CmdLinFecha_Click();
  void tomaAsientoConElBoton();
  void grabaConElBoton(QChar lado);
  bool compruebaFecha();
  void CmdLinSubcuenta_Click();
  void CmdLinConceptos_Click();
  void graba(QChar lado);
  void ofreceAsientoDeIVA(const QString& codigo, const QString& clase, int codigoLlamada);

  // --- the journal on show (frmmenu_diario.cpp) ---
  void CmdRecargar_Click();
  void MnuModificarApunte_Click();
  void MnuEliminarPartida_Click();
  void MnuEliminarapunte_Click();
  void MnuDescuadre_Click();
  void CmdActivaPunteo_Click();
  void CmdCerrarPunteo_Click();
  void OptPunteo_Click(int indice);
  void puntea();
  bool lineaDeIVA() const;
  bool apunteElegido();  // says so if there is none
  void muestraDiario(const QString& seleccion);
  void muestraAsiento(const QString& numero);
  void muestraApuntesNuevos();
  void muestraTotales();
  void muestraTotal(PanelTotales::Fila fila, const QString& clave,
                    const std::optional<Totales>& totales);

  // --- the Ayudante (frmmenu_ayudante.cpp) ---
  void CmdNumeros_Click(int indice);
  void CmdC_Click();
  void CmdCE_Click();
  void opera(QChar operacion);

  QString cero() const;  // zero by the company's mask

  std::unique_ptr<Ui::FrmMenu> ui_;
  std::unique_ptr<MenuPrincipal> menu_;
  std::unique_ptr<CampoSubcuenta> subcuenta_;
  PanelTotales totales_;
  DataControl DtaEmpresa_;
  DataControl DtaEmpresaActual_;
  DataControl DtaDiarioLista_;
  DataControl DtaConceptos_;
  DataControl DtaTotal_;
  DataControl DtaDescuadres_;
  DataControl DtaIVA_;
  bool recienCargada_ = false;
  bool fechaSinComprobar_ = false;  // set since its field was last left
};
