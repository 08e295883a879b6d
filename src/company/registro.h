// The forms of the company file, by name.
#pragma once

class Registro;

void registraCompany(Registro& registro);
