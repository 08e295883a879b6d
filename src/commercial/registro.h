// The screens over the books of the commercial program.
#pragma once

class Registro;

void registraCommercial(Registro& registro);
