// The forms of the books and extracts, by name.
#pragma once

class Registro;

void registraReports(Registro& registro);
