// The screens of the year-end.
#pragma once

class Registro;

void registraYearend(Registro& registro);
