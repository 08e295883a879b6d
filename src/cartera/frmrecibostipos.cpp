#include "cartera/frmrecibostipos.h"

FrmRecibosTipos::FrmRecibosTipos(Contexto& contexto)
    : FrmTabla(contexto, "FrmRecibosTipos", "Tipos de recibo", "TipoRecibos",
               {{.campo = "Codigo", .titulo = "Código", .ancho = 8},
                {.campo = "Tipo", .titulo = "Tipo", .ancho = 50}}) {}
