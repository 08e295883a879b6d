// What the user does with a movement of the bank: accepts its line, takes that back, posts it.
#include <algorithm>

#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "journal/widgets/lineaapunte.h"
#include "journal/widgets/trabajoendiario.h"
#include "oficial/frmnorma43.h"
#include "ui_frmnorma43.h"

std::optional<Punteo> FrmNorma43::punteo() {
  if (EsFecha(ui_->TxtFecha->text()))
    return Punteo{ui_->TxtMarca->currentText(), Variant(ui_->TxtFecha->text()).date()};
  mensaje("Indique la fecha del punteo", windowTitle(), Icono::Aviso);
  enfocar(ui_->TxtFecha);
  return std::nullopt;
}

// Other books than those on show are shown; after any other failure what was typed stands.
void FrmNorma43::cambia(const std::function<void()>& cambio) {
  try {
    trabajaEnDiario(ctx, cambio);
  } catch (const ErrorEjecucion& fallo) {
    if (fallo.numero() == err::kLlamadaNoValida) ignorando([this] { lee(); });
    throw;
  }
}

void FrmNorma43::GrdMovimientos_KeyPress(int fila) {
  const Fila& f = filas_[size_t(fila)];
  if (esPropuesta(f)) return CmdAceptar_Click();
  if (f.apunte >= 0) {
    const int asiento = conciliacion_.apuntes[size_t(f.apunte)].asiento;
    return void(mostrar("FrmAsiento", 0, QString::number(asiento)));
  }
  if (movimiento(f)->sinAsentar()) enfocar(ui_->TxtContrapartida);
}

void FrmNorma43::acepta(const std::vector<Pareja>& parejas, const Punteo& marca) {
  cambia([&] { aceptaParejas(ctx.motor, *empresa(), conciliacion_, parejas, marca); });
  propone();
}

void FrmNorma43::CmdAceptar_Click() {
  const Fila fila = actual();
  if (!esPropuesta(fila))
    return mensaje("Elija un movimiento con su partida propuesta", windowTitle());
  const auto marca = punteo();
  if (!marca) return;
  const int antes = ui_->GrdMovimientos->fila();
  acepta({{fila.movimiento, fila.apunte}}, *marca);
  // The accepted one has gone, and the next one stands in its place; or it is still there.
  if (ui_->ChkTodos->isChecked() && antes + 1 < int(filas_.size()))
    ui_->GrdMovimientos->irA(antes + 1);
}

void FrmNorma43::CmdTodas_Click() {
  if (parejas_.empty()) return mensaje("No hay ninguna partida propuesta", windowTitle());
  const auto marca = punteo();
  if (!marca) return;
  const auto cuantas = parejas_.size();
  acepta(std::vector(parejas_), *marca);
  mensaje(QStringLiteral("Partidas punteadas: %1").arg(cuantas), windowTitle());
}

void FrmNorma43::CmdDeshacer_Click() {
  const Fila fila = actual();
  const MovimientoGuardado* const m = movimiento(fila);
  if (!m || m->apunte == kSinApunte)
    return mensaje("Elija un movimiento conciliado («Ver también lo conciliado»)", windowTitle());
  cambia([&] { deshaceConciliacion(ctx.motor, *empresa(), conciliacion_, fila.movimiento); });
  propone();
}

bool FrmNorma43::asienta(const std::vector<Contrapartida>& contrapartidas) {
  const auto marca = punteo();
  if (!marca) return false;
  const QString limite = sesion().FechaNoModificar;
  const bool antes =
      EsFecha(limite) && std::ranges::any_of(contrapartidas, [&](const Contrapartida& c) {
        return conciliacion_.movimientos[size_t(c.movimiento)].operacion < Variant(limite).date();
      });
  if (antes) {
    avisaDeFechaLimite(*this, ctx);
    return false;
  }
  cambia([&] { asientaMovimientos(ctx.motor, *empresa(), conciliacion_, contrapartidas, *marca); });
  return true;
}

void FrmNorma43::CmdAsentar_Click() {
  const Fila fila = actual();
  const MovimientoGuardado* const m = movimiento(fila);
  if (!m || !m->sinAsentar() || fila.apunte >= 0)
    return mensaje("Elija un movimiento sin asentar", windowTitle());
  const ReglaBanco regla{ui_->TxtPalabras->text(), ui_->TxtContrapartida->text()};
  if (regla.subcuenta.isEmpty()) {
    mensaje("Indique la contrapartida", windowTitle(), Icono::Aviso);
    return enfocar(ui_->TxtContrapartida);
  }
  const bool recuerda = ui_->ChkRecuerda->isChecked();
  if (recuerda && regla.palabras.trimmed().isEmpty()) {
    mensaje("Indique las palabras de la regla", windowTitle(), Icono::Aviso);
    return enfocar(ui_->TxtPalabras);
  }
  if (!asienta({{fila.movimiento, regla.subcuenta}})) return;
  if (recuerda) cambia([&] { recuerdaRegla(ctx.motor, *empresa(), regla); });
  lee();
  enfocar(ui_->GrdMovimientos);
}

void FrmNorma43::CmdAsentarReglas_Click() {
  std::vector<Contrapartida> contrapartidas;
  for (const Fila& fila : filas_) {
    const MovimientoGuardado* const m = movimiento(fila);
    if (!m || !m->sinAsentar() || fila.apunte >= 0) continue;
    if (const auto regla = reglas_.para(m->concepto))
      contrapartidas.push_back({fila.movimiento, regla->subcuenta});
  }
  if (contrapartidas.empty())
    return mensaje("Ningún movimiento sin asentar tiene regla", windowTitle());
  if (!pregunta(QStringLiteral("Movimientos con regla: %1. ¿Desea asentarlos?")
                    .arg(contrapartidas.size()),
                windowTitle(), Icono::Pregunta) ||
      !asienta(contrapartidas))
    return;
  lee();
}

void FrmNorma43::CmdOlvidar_Click() {
  const MovimientoGuardado* const m = movimiento(actual());
  const auto regla = m ? reglas_.para(m->concepto) : std::nullopt;
  if (!regla || !pregunta(QStringLiteral("¿Desea olvidar la regla «%1», que va a %2?")
                              .arg(regla->palabras, regla->subcuenta),
                          windowTitle(), Icono::Pregunta))
    return;
  olvidaRegla(ctx.motor, *empresa(), regla->palabras);
  lee();
}
