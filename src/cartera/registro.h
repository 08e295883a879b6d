// The screens of the cartera de efectos.
#pragma once

class Registro;

void registraCartera(Registro& registro);
