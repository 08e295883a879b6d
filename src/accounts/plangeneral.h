// The standing national plan of accounts, in order of code.
#pragma once

#include <span>

struct CuentaDelPlan {
  const char* codigo;  // three digits
  const char* nombre;  // UTF-8
};

std::span<const CuentaDelPlan> planGeneral();
