// The installation's settings into the session, at each login.
#pragma once

#include "common/sesion.h"

// Reads every setting of `archivo`, the full path of Config.ini. What is missing becomes empty: a
// first start is known by the catalogue that isn't found, not by the settings.
void LeeConfiguracion(const QString& archivo, Sesion& sesion);
