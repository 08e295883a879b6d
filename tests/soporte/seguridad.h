// What the safety tests tell in their long form, which `./dev soak` asks for.
#pragma once

#include <iostream>
#include <QRandomGenerator>

// Where a test's chances begin: the usual place, or in the long form another each time, which is
// told so that what fails can be repeated.
inline quint32 semilla(quint32 usual) {
  if (!qEnvironmentVariableIsSet("LIBRANO_SOAK")) return usual;
  const quint32 una = QRandomGenerator::global()->generate();
  std::cout << "Semilla: " << una << std::endl;
  return una;
}

// What a test has gone through, which the order adds up.
inline void cuenta(int cuantos, const char* de) {
  if (qEnvironmentVariableIsSet("LIBRANO_SOAK"))
    std::cout << "Contado: " << cuantos << ' ' << de << std::endl;
}
