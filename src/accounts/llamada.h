// What the session's CodigoLlamada asks of the dialogs of the plan.
#pragma once

constexpr int kAlta = 1;
constexpr int kModificacion = 2;
