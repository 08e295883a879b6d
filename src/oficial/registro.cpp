#include "oficial/registro.h"

#include "toolkit/registro.h"

void registraOficial(Registro&) {}
