// The screens that bring books in, take them out and keep their files sound.
#pragma once

class Registro;

void registraTransfer(Registro& registro);
