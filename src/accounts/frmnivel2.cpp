#include "accounts/frmnivel2.h"

FrmNivel2::FrmNivel2(Contexto& contexto)
    : FrmTabla(contexto, "FrmNivel2", "Nivel 02", "Nivel02",
               {{.campo = "NNivel", .titulo = "Nivel", .ancho = 6},
                {.campo = "Descripcion", .titulo = "Descripción", .ancho = 50},
                {.campo = "NNivel01", .titulo = "Nivel 01", .ancho = 10}}) {}
