// The forms of the chart of accounts, by name.
#pragma once

class Registro;

void registraAccounts(Registro& formularios);
