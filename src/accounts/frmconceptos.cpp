#include "accounts/frmconceptos.h"

FrmConceptos::FrmConceptos(Contexto& contexto)
    : FrmTabla(contexto, "FrmConceptos", "Conceptos", "Conceptos",
               {{.campo = "NConcepto", .titulo = "Código", .ancho = 8},
                {.campo = "Descripcion", .titulo = "Descripción", .ancho = 50}}) {}
