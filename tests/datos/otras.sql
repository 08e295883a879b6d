/* Cuentas con los mismos códigos, como las tiene el motor ("Propias") y como las hacen otros
   programas: unos distinguen las mayúsculas, otros repiten códigos. */
CREATE TABLE Distintas(Codigo TEXT(9), Nombre TEXT COLLATE NOCASE);
CREATE UNIQUE INDEX d ON Distintas(Codigo);
CREATE TABLE Parciales(Codigo TEXT(9) COLLATE NOCASE, Nombre TEXT COLLATE NOCASE);
CREATE UNIQUE INDEX p ON Parciales(Codigo) WHERE Nombre IS NOT NULL;
CREATE TABLE Dobles(Codigo TEXT(9) COLLATE NOCASE, Nombre TEXT COLLATE NOCASE);
CREATE UNIQUE INDEX b ON Dobles(Codigo, Nombre);
CREATE TABLE Numeros(Codigo STRING, Nombre TEXT COLLATE NOCASE);
CREATE UNIQUE INDEX n ON Numeros(Codigo COLLATE NOCASE);
INSERT INTO Distintas VALUES ('43a','uno'),('43A','dos'),('9','tres'),(NULL,'nada');
INSERT INTO Parciales VALUES ('43a','uno'),('43a',NULL),('9',NULL),('9',NULL);
INSERT INTO Dobles VALUES ('43a','uno'),('43a','dos'),('9','tres');
INSERT INTO Numeros VALUES ('43a','uno'),('09','dos');
INSERT INTO Propias VALUES ('43a','uno'),('9','ñu'),('09','nube'),('8','Óscar'),(NULL,'nada'),(NULL,'nadie');
/* Apuntes de cuentas que no están, o de ninguna, delante de las demás y entre ellas. */
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<400)
INSERT INTO Diario(NLinea, NAsiento, Subcuenta, DH, Importe)
SELECT i, i*7%50, CASE i%6 WHEN 0 THEN '43A' WHEN 1 THEN '9' WHEN 2 THEN 'no' WHEN 3 THEN NULL WHEN 4 THEN '43a' ELSE '8' END,
  CASE i%2 WHEN 0 THEN 'D' ELSE 'H' END, i FROM n;
