// The forms of the ground floor, by name.
#pragma once

class Registro;

void registraStart(Registro& registro);
