// The screens of payrolls.
#pragma once

class Registro;

void registraPayroll(Registro& registro);
