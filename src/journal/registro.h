// The main window and the forms of the journal, by name.
#pragma once

class Registro;

void registraJournal(Registro& registro);
