#include "commercial/frmficha.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "common/comillas.h"
#include "common/formato.h"
#include "common/funciones.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"
#include "journal/apunte.h"
#include "toolkit/rejilla.h"

namespace {

constexpr const char* kDeConsulta[] = {"CmdEditar", "CmdElimina", "CmdImprimir", "CmdVerlista"};
constexpr const char* kDePaso[] = {"CmdPrimero", "CmdAnterior", "CmdSiguiente", "CmdUltimo"};
const QString kLocalizar = QStringLiteral("Localizar");
const QString kVerLista = QStringLiteral("Ver lista");

QString rutaGestion(const Sesion& sesion) {
  return AjustaBarra(sesion.DirDatos) + QStringLiteral("Gestion.MDB");
}

}  // namespace

FrmFicha::FrmFicha(Contexto& contexto) : Formulario(contexto), DtaBase_(contexto.motor) {}

template <class C>
C& FrmFicha::control(const char* nombre) const {
  return *findChild<C*>(QLatin1String(nombre));
}

void FrmFicha::conecta(std::vector<Campo> campos, std::vector<QWidget*> otros) {
  campos_ = std::move(campos);
  otros_ = std::move(otros);
  // A card is there to be read while it is closed.
  QPalette legible = palette();
  legible.setColor(QPalette::Disabled, QPalette::Text, legible.color(QPalette::Text));
  for (const Campo& campo : campos_) {
    if (campo.importe) importe(campo.control);
    alCambiar(campo.control, [this] { alMostrar(); });
    campo.control->setPalette(legible);
  }
  auto& lista = control<Rejilla>("GrdLista");
  lista.enlazar(DtaBase_, {{"Codigo", "Código", 12}, {"Descripcion", "Descripción", 40}});
  control<QComboBox>("CmdCampoLocalizar").addItems({"Codigo", "Descripcion"});
  alElegir(&control<QComboBox>("CmdCampoLocalizar"), [this](int) { abre(); });
  alRecolocar(DtaBase_, [this] { muestra(); });
  const std::pair<const char*, void (FrmFicha::*)()> botones[] = {
      {"CmdNuevo", &FrmFicha::CmdNuevo_Click},        {"CmdEditar", &FrmFicha::CmdEditar_Click},
      {"CmdGuardar", &FrmFicha::CmdGuardar_Click},    {"CmdCancelar", &FrmFicha::CmdCancelar_Click},
      {"CmdElimina", &FrmFicha::CmdElimina_Click},    {"CmdVerlista", &FrmFicha::CmdVerlista_Click},
      {"CmdLocalizar", &FrmFicha::CmdLocalizar_Click}};
  for (const auto& [nombre, reaccion] : botones)
    alPulsar(&control(nombre), [this, r = reaccion] { (this->*r)(); });
  alPulsar(&control("CmdSalir"), [this] { descargar(); });
  constexpr Rejilla::Movimiento kPasos[] = {Rejilla::Primera, Rejilla::Anterior, Rejilla::Siguiente,
                                            Rejilla::Ultima};
  for (std::size_t i = 0; i < std::size(kDePaso); ++i)
    alPulsar(&control(kDePaso[i]), [&lista, paso = kPasos[i]] { lista.mover(paso); });
}

// --- the table ----------------------------------------------------------------------------------

QString FrmFicha::campoElegido() const {
  return control<QComboBox>("CmdCampoLocalizar").currentText();
}

bool FrmFicha::hayFilas() const {
  return DtaBase_.isOpen() && !DtaBase_.Recordset().Eof();
}

// The whole table, or what of it meets a condition, in the chosen order.
void FrmFicha::abre(const QString& condicion) {
  control("CmdLocalizar").setText(condicion.isEmpty() ? kLocalizar : "Ver todos");
  try {
    DtaBase_.bind(rutaGestion(sesion()),
                  "Select * from articulos " + condicion + "order by " + campoElegido());
  } catch (const ErrorEjecucion& error) {
    avisarError(error.numero(), error.descripcion(), "DtaBase_Error");
  }
  muestra();
  pon(Estado::Consulta);
}

void FrmFicha::Form_Load() {
  control<QComboBox>("CmdCampoLocalizar").setCurrentText("Descripcion");
  verLista(false);
  abre();
}

void FrmFicha::Form_Activate() {
  control(DtaBase_.isOpen() ? "CmdNuevo" : "CmdSalir").setFocus();
}

std::vector<std::pair<QString, QString>> FrmFicha::lista(const QString& tabla) {
  std::vector<std::pair<QString, QString>> filas;
  // The commercial program has it or not.
  ignorando([&] {
    const auto base = ctx.motor.Workspaces(0).OpenDatabase(rutaGestion(sesion()));
    RowReader lector(*base, "Select Codigo, Nombre from " + tabla + " order by Nombre");
    while (lector.next()) filas.emplace_back(lector.text(0), lector.text(1));
  });
  return filas;
}

// --- the card -----------------------------------------------------------------------------------

void FrmFicha::muestra() {
  if (estado_ != Estado::Consulta) return;
  try {
    muestraRegistro();
  } catch (const ErrorEjecucion& error) {
    // Another station has taken the record away: the one that follows it comes in its place.
    if (error.numero() != err::kRegistroEliminado) throw;
    relee(DtaBase_.Recordset().AbsolutePosition());
  }
}

void FrmFicha::muestraRegistro() {
  const bool hay = hayFilas();
  vaciaOtros();
  for (auto& [campo, nombre, importe, mostrado] : campos_) {
    const Variant valor = hay ? DtaBase_.Fields(QLatin1String(nombre)).Value() : Variant();
    campo->setText(importe ? Format(valor, sesion().MascaraImporte).trimmed() : valor.display());
    campo->setCursorPosition(0);
    mostrado = campo->text();
  }
  const ::Recordset* filas = DtaBase_.isOpen() ? &DtaBase_.Recordset() : nullptr;
  control<QLabel>("LblPosicion")
      .setText(hay ? QString("%1/%2").arg(filas->AbsolutePosition() + 1).arg(filas->rowTotal())
                   : "0/0");
  alMostrar();
}

// What no field of the table keeps is nothing of the next record's.
void FrmFicha::vaciaOtros() {
  for (QWidget* otro : otros_) {
    if (auto* texto = qobject_cast<QLineEdit*>(otro)) texto->clear();
    if (auto* opciones = qobject_cast<QComboBox*>(otro)) opciones->setCurrentIndex(-1);
  }
}

// The table as it stands now, at a place of it or at its end.
void FrmFicha::relee(int posicion) {
  DtaBase_.Refresh();
  if (hayFilas())
    DtaBase_.setAbsolutePosition(std::min(posicion, DtaBase_.Recordset().rowTotal() - 1));
  muestra();
}

void FrmFicha::EsconderCampos() {
  for (const Campo& campo : campos_) campo.control->setEnabled(false);
  for (QWidget* otro : otros_) otro->setEnabled(false);
}

void FrmFicha::MostrarCampos() {
  for (const Campo& campo : campos_) campo.control->setEnabled(true);
  for (QWidget* otro : otros_) otro->setEnabled(true);
}

// What can be done: while a card is written nothing but saving it or dropping it.
void FrmFicha::pon(Estado estado) {
  estado_ = estado;
  const bool consulta = estado == Estado::Consulta;
  const bool hay = hayFilas();
  const bool buscando = control("CmdLocalizar").text() != kLocalizar;
  if (consulta) {
    EsconderCampos();
  } else {
    verLista(false);
    MostrarCampos();
  }
  for (const char* boton : kDeConsulta) control(boton).setEnabled(consulta && hay);
  for (const char* boton : kDePaso) control(boton).setEnabled(consulta && hay);
  control("CmdNuevo").setEnabled(consulta && DtaBase_.isOpen());
  control("CmdLocalizar").setEnabled(consulta && (hay || buscando));
  control<QWidget>("CmdCampoLocalizar").setEnabled(consulta && (hay || buscando));
  control("CmdSalir").setEnabled(consulta);
  control("CmdGuardar").setEnabled(!consulta);
  control("CmdCancelar").setEnabled(!consulta);
  setBotonDeCierre(&control(consulta ? "CmdSalir" : "CmdCancelar"));
}

void FrmFicha::CmdNuevo_Click() {
  pon(Estado::Alta);
  for (const Campo& campo : campos_) campo.control->clear();
  vaciaOtros();
  alNuevo();
  enfocar(campos_.front().control);
}

void FrmFicha::CmdEditar_Click() {
  pon(Estado::Cambio);
  enfocar(campos_.front().control);
}

// Of a record that stands, what was changed alone: an amount has more decimals in the file than the
// mask shows, and another station may have changed another field meanwhile.
void FrmFicha::escribe() {
  const bool alta = estado_ == Estado::Alta;
  if (alta) {
    DtaBase_.AddNew();
  } else {
    DtaBase_.Edit();
  }
  completa(DtaBase_, [this, alta] {
    for (const auto& [campo, nombre, importe, mostrado] : campos_) {
      const QString texto = campo->text();
      if (!alta && texto == mostrado) continue;
      DtaBase_.Fields(QLatin1String(nombre)) = texto.isEmpty() ? Variant()
                                               : importe
                                                   ? importeEscrito(texto, sesion().MascaraImporte)
                                                   : Variant(texto);
    }
  });
}

// A card that the file refuses stays as it was typed, to be put right.
void FrmFicha::CmdGuardar_Click() {
  if (!pregunta("Desea guardar los cambios", "Atención")) return;
  escribe();
  const QString codigo = campos_.front().control->text();
  DtaBase_.Refresh();
  ignorando([&] { DtaBase_.FindFirst("Codigo = " + nombreEntreComillas(codigo)); });
  pon(Estado::Consulta);
  muestra();
  control("CmdNuevo").setFocus();
}

void FrmFicha::CmdCancelar_Click() {
  estado_ = Estado::Consulta;
  muestra();
  pon(Estado::Consulta);
  control("CmdNuevo").setFocus();
}

void FrmFicha::CmdElimina_Click() {
  if (!pregunta("Desea eliminar el registro actual", "Atención")) return;
  const int posicion = DtaBase_.Recordset().AbsolutePosition();
  DtaBase_.Delete();
  relee(posicion);
  pon(Estado::Consulta);
  if (!hayFilas()) control("CmdNuevo").setFocus();
}

// --- the list -----------------------------------------------------------------------------------

void FrmFicha::verLista(bool si) {
  control("CmdVerlista").setText(si ? "Ver ficha" : kVerLista);
  control<Rejilla>("GrdLista").parentWidget()->setVisible(si);  // the frame FrmLista
  control<QWidget>("Ficha").setVisible(!si);
}

void FrmFicha::CmdVerlista_Click() {
  verLista(control("CmdVerlista").text() == kVerLista);
}

void FrmFicha::CmdLocalizar_Click() {
  if (control("CmdLocalizar").text() != kLocalizar) return abre();
  const QString campo = campoElegido();
  const auto buscado = ctx.cajas->entrada(this, "Introduzca el/la " + campo,
                                          "Localizar por " + campo, "Escriba aquí");
  if (!buscado || buscado->isEmpty()) return;
  abre("where " + campo + " like " + nombreEntreComillas('*' + *buscado + '*') + ' ');
}
