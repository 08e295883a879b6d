// What every screen shares: completing what a bookkeeper types, and the error log.
//
// Four digits make a date, two numbers with a point between make an account code.
#pragma once

#include <optional>
#include <QDate>
#include <QString>

// The date that a typed text stands for within the working year, which is the company's and not
// the clock's: 2 characters are a day of this month, 4 a day and month, 3 or 5 the same with a
// separator, 6 add the year in the century of the working one; 7 or more are a full date. Nothing
// when it can't be one.
std::optional<QDate> FechaTecleada(const QString& tecleado, int anoActual, QDate hoy);

// The same as "dd/mm/yyyy", and always a date: what can't be one becomes `hoy`, without a word,
// because a wrong key must not stop the typing.
//   NormalizaFecha("1502", 2003, hoy) == "15/02/2003"
QString NormalizaFecha(const QString& tecleado, int anoActual, QDate hoy);

// A folder's path with its final backslash.
QString AjustaBarra(const QString& ruta);

// A subcuenta's code at full width: the first point stands for as many zeros as are missing up to
// `digitos`. A text without a point comes back as it is. Raises 5 when the code is longer than
// that.
//   ExpandeCodigo("43.7", 9) == "430000007"
QString ExpandeCodigo(const QString& texto, int digitos);

// The two decimal signs, one for the other.
QString ComaAPunto(QString texto);
QString PuntoAComa(QString texto);

// Adds one line to Errores.txt in `dirPrograma`. `lugar` names the routine, "CmdAceptar_Click -
// FrmEmpresas". Raises 75 when the log can't be written.
void RegistraError(const QString& dirPrograma, int numero, const QString& descripcion,
                   const QString& lugar);
