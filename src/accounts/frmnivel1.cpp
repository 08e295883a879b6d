#include "accounts/frmnivel1.h"

FrmNivel1::FrmNivel1(Contexto& contexto)
    : FrmTabla(contexto, "FrmNivel1", "Nivel 01", "Nivel01",
               {{.campo = "NNivel", .titulo = "Nivel", .ancho = 6},
                {.campo = "Descripcion", .titulo = "Descripción", .ancho = 50},
                {.campo = "ActPas", .titulo = "Activo/Pasivo", .ancho = 12}}) {}
