// The screens of invoices and their registers.
#pragma once

class Registro;

void registraIVA(Registro& registro);
