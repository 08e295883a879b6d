// The screens of what the law of today wants.
#pragma once

class Registro;

void registraOficial(Registro& registro);
